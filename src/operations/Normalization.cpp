// Normalisation (RFC 3986, section 6.2). Its steps rewrite a copy of the value in place, one step after the
// other.

#include <foundation/network/Normalization.hpp>

#include <foundation/network/IdnConverter.hpp>

#include "base/NeverDestroyed.hpp"
#include "iri/Paths.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/CharacterClasses.hpp"
#include "operations/ComponentViews.hpp"
#include "text/AsciiCase.hpp"
#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network {

namespace {

using iri::detail::Components;
using iri::detail::Part;
using iri::detail::StoredText;
using operations::ComponentViews;
using operations::IriFormText;
using View = std::u32string_view;

constexpr bool has(Normalization steps, Normalization step) {
    return (steps & step) != Normalization{};
}

// Percent-encoding normalisation (RFC 3986, section 6.2.2.2).

/// Bidirectional formatting characters that Unicode has added since RFC 3987. The older ones (section 4.1) no
/// IRI may hold.
bool isNewerBidiControl(char32_t c) {
    return c == 0x061C || (c >= 0x2066 && c <= 0x2069);
}

bool mayBeDecoded(char32_t c) {
    using namespace iri::grammar;
    constexpr ClassMask unreserved = ALNUM | UNRESERVED_MARK;
    return c < 0x80 ? is<unreserved>(c)
                    : is<UCSCHAR>(c) && !iri::encoding::isIriForbidden(c) && !isNewerBidiControl(c);
}

/// A character of a text. An escaped one is decoded if it may stand as itself; else its "%" is the character.
struct Character {
    char32_t codePoint = 0; // 0 at the end of the text
    std::size_t length = 0; // in the text
    bool wasDecoded = false;
};

Character characterAt(View text, std::size_t at) {
    if (at == text.size()) {
        return {};
    }
    int const lead = text::escapedByte(text, at);
    if (lead < 0) {
        return {text[at], 1, false};
    }
    auto const byteAt = [text, at](unsigned i) {
        std::size_t const next = at + 3 * std::size_t{i};
        return next < text.size() ? text::escapedByte(text, next) : -1;
    };
    auto const sequence = text::decodeUtf8(static_cast<unsigned>(lead), byteAt);
    if (sequence.wellFormed && mayBeDecoded(sequence.codePoint)) {
        return {sequence.codePoint, 3 * std::size_t{sequence.length}, true};
    }
    return {text[at], 1, false};
}

char32_t upperCaseDigit(char32_t digit) {
    return digit >= U'a' && digit <= U'f' ? digit - 0x20 : digit;
}

/// Writes the digits of the escape at a place in upper case, if one stands there.
void upperCaseEscape(std::u32string& text, std::size_t at) {
    if (text::escapedByte(text, at) >= 0) {
        text[at + 1] = upperCaseDigit(text[at + 1]);
        text[at + 2] = upperCaseDigit(text[at + 2]);
    }
}

/// Decodes the escapes of characters that may stand as themselves, with `decode`; writes the digits of the
/// others in upper case, with `upperCase`. `ends` are places in the text in ascending order, which move with
/// it. Gives where the first "%" stood.
///
/// An escaped digit stays if decoding all of them would make it part of a new escape ("%%34%31", which would
/// become "%41"). So normalising the result again changes nothing.
std::size_t rewriteEscapes(std::u32string& text, std::span<std::size_t* const> ends, bool decode,
                           bool upperCase) {
    auto const isDigit = [](char32_t c) { return iri::grammar::is<iri::grammar::XDIGIT>(c); };
    auto end = ends.begin();
    std::size_t written = 0; // the result is [0, written), what is to be copied to it begins at `copied`
    std::size_t copied = 0;
    auto const copyUpTo = [&](std::size_t place) {
        for (; end != ends.end() && **end <= place; ++end) {
            **end -= copied - written;
        }
        std::copy(text.data() + copied, text.data() + place, text.data() + written);
        written += place - copied;
    };
    std::array<char32_t, 2> before{}; // the two characters in front, decoded
    std::size_t from = 0;
    std::size_t const first = text::find(text, U'%', 0);
    for (std::size_t at = first; at != text.size(); at = text::find(text, U'%', from)) {
        for (std::size_t i = at - std::min(at - from, before.size()); i != at; ++i) {
            before = {before[1], text[i]};
        }
        if (upperCase) {
            upperCaseEscape(text, at);
        }
        Character const character = decode ? characterAt(text, at) : Character{U'%', 1, false};
        char32_t const c = character.codePoint;
        from = at + character.length;
        bool const makesEscape = character.wasDecoded && isDigit(c) &&
                                 ((before[1] == U'%' && isDigit(characterAt(text, from).codePoint)) ||
                                  (before[0] == U'%' && isDigit(before[1])));
        if (character.wasDecoded && !makesEscape) {
            copyUpTo(at);
            text[written++] = c;
            copied = from;
        }
        before = {before[1], c};
    }
    if (copied != 0) {
        copyUpTo(text.size());
        text.resize(written);
    }
    return first;
}

// Case normalisation (RFC 3986, section 6.2.2.1).

/// Writes the ASCII letters of a stretch in lower case, but, with `hasEscapes`, the digits of escapes in
/// upper case.
void lowerCaseLetters(std::u32string& text, std::size_t begin, std::size_t end, bool hasEscapes) {
    std::transform(text.data() + begin, text.data() + end, text.data() + begin, text::lower);
    for (std::size_t at = begin; hasEscapes && at != end; ++at) {
        upperCaseEscape(text, at);
    }
}

// ASCII hosts (UTS #46).

/// Whether a name consists of labels of 1 to 63 ASCII letters, digits, "-" and "_".
bool isAsciiHostName(View name) {
    constexpr std::size_t longest = 63;
    for (;;) {
        std::size_t const dot = name.find(U'.');
        View const label = name.substr(0, dot);
        bool const plain = std::all_of(label.begin(), label.end(), [](char32_t c) {
            return c < 0x80 && (iri::grammar::is<iri::grammar::ALNUM>(c) || c == U'-' || c == U'_');
        });
        if (label.empty() || label.size() > longest || !plain) {
            return false;
        }
        if (dot == View::npos) {
            return true;
        }
        name.remove_prefix(dot + 1);
    }
}

/// What `IdnConverter` makes of a host, unless that stays. The result is used only if it is a host name: for
/// an invalid name it may hold any character, and a "/" or an "@" would end the host.
std::optional<std::u32string> convertedHost(View text) {
    if (text::isAllWithin(text, 0, 0x7F)) {
        return std::nullopt;
    }
    std::string converted;
    try {
        static base::NeverDestroyed<IdnConverter> const converter;
        converted = (*converter).toAscii(text::toUtf16(text));
    } catch (IdnConverterException const& refusal) {
        if (std::string_view(refusal.what()) == "U_MEMORY_ALLOCATION_ERROR") {
            throw std::bad_alloc();
        }
        return std::nullopt;
    }
    std::u32string name(converted.begin(), converted.end());
    return isAsciiHostName(name) ? std::optional(std::move(name)) : std::nullopt;
}

// Scheme-based normalisation (RFC 3986, section 6.2.3).

constexpr std::array<std::pair<View, unsigned short>, 5> defaultPorts{
    {{U"http", 80}, {U"https", 443}, {U"ws", 80}, {U"wss", 443}, {U"ftp", 21}}};

std::optional<unsigned short> defaultPort(View scheme) {
    for (auto const& [name, port] : defaultPorts) {
        if (text::isWord(scheme, name)) {
            return port;
        }
    }
    return std::nullopt;
}

// Characters that a built value may hold although its text could not be parsed with them.

std::u32string withEscaped(View text, View characters) {
    std::u32string result;
    for (std::size_t at = 0; at != text.size(); ++at) {
        if (characters.find(text[at]) != View::npos && text::escapedByte(text, at) < 0) {
            text::percentByte(result, static_cast<unsigned char>(text[at]));
        } else {
            result.push_back(text[at]);
        }
    }
    return result;
}

/// A built value as its text parsed.
IRI asParsed(IRI const& built) {
    IriFormText const form(built);
    ComponentViews views(form.stored());
    std::array<std::u32string, 3> texts;
    auto const escape = [](std::optional<View>& component, View characters, std::u32string& own) {
        if (component) {
            component = own = withEscaped(*component, characters);
        }
    };
    escape(views.userInfo, U"%", texts[0]);
    escape(views.query, U"[]", texts[1]);
    escape(views.fragment, U"#[]", texts[2]);
    return views.recomposed();
}

/// A value as its text parsed, to which steps are applied in place.
class Normalizer {
public:
    explicit Normalizer(StoredText& parsed) : value(parsed), components(parsed.components) {}
    Normalizer(Normalizer const&) = delete;
    Normalizer& operator=(Normalizer const&) = delete;
    ~Normalizer() = default;

    void apply(Normalization steps) {
        bool const decode = has(steps, Normalization::Escapes);
        bool const fold = has(steps, Normalization::Case);
        // No escape goes from one component to the next, so all are rewritten at once.
        std::size_t const percent =
            decode || fold ? rewriteEscapes(value.text, ends, decode, fold) : View::npos;
        if (has(steps, Normalization::AsciiHost)) {
            if (auto const host = convertedHost(given(Part::host))) {
                replace(components.hostBegin, given(Part::host).size(), *host, components.hostEnd);
            }
        }
        if (fold) {
            bool const hasEscapes = percent < components.hostEnd;
            if (components.hasUserInfo()) {
                lowerCaseLetters(value.text, 0, components.schemeEnd, false);
                lowerCaseLetters(value.text, components.hostBegin, components.hostEnd, hasEscapes);
            } else {
                lowerCaseLetters(value.text, 0, components.hostEnd, hasEscapes);
            }
        }
        // Path segment normalisation (RFC 3986, section 6.2.2.3). A relative reference keeps its dot
        // segments.
        if (has(steps, Normalization::Segments) && (components.hasScheme() || components.hasHost())) {
            removeDotSegments();
        }
        if (has(steps, Normalization::Scheme) && components.hasHost()) {
            applyScheme();
        }
        components.pathIsAbsolute = given(Part::path).substr(0, 1) == U"/";
    }

private:
    [[nodiscard]] View given(Part part) const { return components.has(part) ? value.given(part) : View(); }

    /// Replaces a stretch. `end` and the ends behind it move.
    void replace(std::size_t begin, std::size_t length, View by, std::size_t& end) {
        value.text.replace(begin, length, by);
        for (auto moved = std::find(ends.begin(), ends.end(), &end); moved != ends.end(); ++moved) {
            **moved += by.size() - length;
        }
    }

    void removeDotSegments() {
        std::size_t const begin = components.pathBegin;
        std::size_t const length = components.pathEnd - begin;
        std::size_t const left = iri::removeDotSegments(value.text.data() + begin, length);
        if (left != length) {
            replace(begin + left, length - left, View(), components.pathEnd);
            if (!components.hasHost() && value.given(Part::path).substr(0, 2) == U"//") {
                replace(begin, 0, U"/.", components.pathEnd); // or it would be read as a host
            }
        }
    }

    void applyScheme() {
        auto const port = defaultPort(value.scheme());
        if (port && components.hasPort() && components.port == *port) {
            components.port = 0;
            replace(components.hostEnd, components.pathBegin - components.hostEnd, View(),
                    components.pathBegin);
        }
        if (port && components.pathIsEmpty()) {
            replace(components.pathBegin, 0, U"/", components.pathEnd);
        }
    }

    StoredText& value;
    Components& components;
    std::array<std::size_t*, 6> const ends{&components.hostBegin, &components.hostEnd,  &components.pathBegin,
                                           &components.pathEnd,   &components.queryEnd, &components.end};
};

} // namespace

IRI normalize(IRI const& iri, Normalization steps) {
    StoredText const& stored = iri::detail::ValueAccess::stored(iri);
    IRI result;
    if (stored.parsed) {
        iri::detail::ValueAccess::stored(result) = stored;
    } else {
        result = asParsed(iri);
    }
    Normalizer(iri::detail::ValueAccess::stored(result)).apply(steps);
    return result;
}

bool areEquivalent(IRI const& a, IRI const& b, Normalization steps) {
    return normalize(a, steps) == normalize(b, steps);
}

std::optional<unsigned short> getEffectivePort(IRI const& iri) noexcept {
    StoredText const& stored = iri::detail::ValueAccess::stored(iri);
    return stored.components.hasPort() ? stored.components.port : defaultPort(stored.scheme());
}

bool isSameOrigin(IRI const& a, IRI const& b) {
    if (!a.hasScheme() || !b.hasScheme() || !a.hasHost() || !b.hasHost() ||
        getEffectivePort(a) != getEffectivePort(b)) {
        return false;
    }
    IriFormText const left(a);
    IriFormText const right(b);
    auto const normalized = [](View component) {
        std::u32string text(component);
        rewriteEscapes(text, {}, true, true);
        lowerCaseLetters(text, 0, text.size(), true);
        return text;
    };
    auto const isSame = [normalized](View one, View other) {
        return text::isSame(one, other) || normalized(one) == normalized(other);
    };
    View const host = left.stored().given(Part::host);
    return isSame(left.stored().scheme(), right.stored().scheme()) &&
           isSame(host, right.stored().given(Part::host));
}

} // namespace foundation::network
