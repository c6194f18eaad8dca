// Normalisation (RFC 3986, section 6.2). Its steps rewrite the components in the Iri form, one step after the
// other. A component that no step changes stays a view of the text that it came from.

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
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network {

namespace {

using iri::detail::Part;
using iri::detail::StoredText;
using operations::ComponentViews;
using operations::IriFormText;
using View = std::u32string_view;

constexpr bool has(Normalization steps, Normalization step) {
    return (steps & step) != Normalization{};
}

/// The text of a component, which steps may replace.
class RewrittenText {
public:
    explicit RewrittenText(View given) : view(given) {}
    RewrittenText(RewrittenText const&) = delete;
    RewrittenText& operator=(RewrittenText const&) = delete;
    ~RewrittenText() = default;

    [[nodiscard]] View get() const { return view; }
    [[nodiscard]] bool isChanged() const { return changed; }
    void set(std::u32string text) {
        own = std::move(text);
        view = own;
        changed = true;
    }

private:
    View view;
    std::u32string own;
    bool changed = false;
};

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

/// Decodes the escapes of characters that may stand as themselves. But an escaped digit stays if decoding all
/// of them would make it part of a new escape ("%%34%31", which would become "%41"). So normalising the
/// result again changes nothing.
void decodeEscapes(RewrittenText& component) {
    View const text = component.get();
    if (!text::contains(text, U'%')) {
        return;
    }
    auto const isDigit = [](char32_t c) { return iri::grammar::is<iri::grammar::XDIGIT>(c); };
    std::u32string result;
    std::size_t copied = 0;           // how much of the text is in the result
    std::array<char32_t, 2> before{}; // the two characters in front, decoded
    for (std::size_t at = 0; at != text.size();) {
        Character const character = characterAt(text, at);
        char32_t const c = character.codePoint;
        std::size_t const next = at + character.length;
        if (character.wasDecoded) {
            bool const makesEscape =
                isDigit(c) && ((before[1] == U'%' && isDigit(characterAt(text, next).codePoint)) ||
                               (before[0] == U'%' && isDigit(before[1])));
            if (!makesEscape) {
                result.append(text, copied, at - copied);
                result.push_back(c);
                copied = next;
            }
        }
        before = {before[1], c};
        at = next;
    }
    if (copied != 0) {
        component.set(result.append(text, copied));
    }
}

// Case normalisation (RFC 3986, section 6.2.2.1).

bool isLowerCaseHexDigit(char32_t c) {
    return c >= U'a' && c <= U'f';
}

/// Where the next escape with a lower-case digit stands.
std::size_t findLowerCaseEscape(View text, std::size_t from) {
    std::size_t at = text.find(U'%', from);
    while (at != View::npos && (text::escapedByte(text, at) < 0 ||
                                (!isLowerCaseHexDigit(text[at + 1]) && !isLowerCaseHexDigit(text[at + 2])))) {
        at = text.find(U'%', at + 1);
    }
    return at;
}

void upperCaseEscapes(RewrittenText& component) {
    View const text = component.get();
    std::size_t at = text::contains(text, U'%') ? findLowerCaseEscape(text, 0) : View::npos;
    if (at == View::npos) {
        return;
    }
    std::u32string result(text);
    for (; at != View::npos; at = findLowerCaseEscape(text, at + 3)) {
        for (std::size_t const digit : {at + 1, at + 2}) {
            result[digit] -= isLowerCaseHexDigit(result[digit]) ? 0x20U : 0U;
        }
    }
    component.set(std::move(result));
}

void lowerCaseLetters(RewrittenText& component) {
    View const text = component.get();
    std::u32string result;
    for (std::size_t at = 0; at != text.size();) {
        if (text::escapedByte(text, at) >= 0) {
            at += 3;
            continue;
        }
        if (text[at] != text::lower(text[at])) {
            if (result.empty()) {
                result = text;
            }
            result[at] = text::lower(text[at]);
        }
        ++at;
    }
    if (!result.empty()) {
        component.set(std::move(result));
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

/// Converts a host with `IdnConverter`. The result is used only if it is a host name: for an invalid name it
/// may hold any character, and a "/" or an "@" would end the host.
void convertHost(RewrittenText& host) {
    View const text = host.get();
    if (text::isAllWithin(text, 0, 0x7F)) {
        return;
    }
    std::string converted;
    try {
        static base::NeverDestroyed<IdnConverter> const converter;
        converted = (*converter).toAscii(text::toUtf16(text));
    } catch (IdnConverterException const& refusal) {
        if (std::string_view(refusal.what()) == "U_MEMORY_ALLOCATION_ERROR") {
            throw std::bad_alloc();
        }
        return;
    }
    std::u32string name(converted.begin(), converted.end());
    if (isAsciiHostName(name)) {
        host.set(std::move(name));
    }
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

void escapeCharacters(RewrittenText& component, View characters) {
    View const text = component.get();
    auto const isEscaped = [text, characters](std::size_t at) {
        return characters.find(text[at]) != View::npos && text::escapedByte(text, at) < 0;
    };
    std::u32string result;
    for (std::size_t at = 0; at != text.size(); ++at) {
        if (isEscaped(at)) {
            text::percentByte(result, static_cast<unsigned char>(text[at]));
        } else {
            result.push_back(text[at]);
        }
    }
    if (result.size() != text.size()) {
        component.set(std::move(result));
    }
}

/// The components of a value, to which steps are applied.
struct NormalizedComponents {
    explicit NormalizedComponents(ComponentViews& from)
        : views(from),
          scheme(from.scheme.value_or(View())),
          userInfo(from.userInfo.value_or(View())),
          host(from.host.value_or(View())),
          path(from.path),
          query(from.query.value_or(View())),
          fragment(from.fragment.value_or(View())) {}

    void makeParsable() {
        escapeCharacters(userInfo, U"%");
        escapeCharacters(query, U"[]");
        escapeCharacters(fragment, U"#[]");
    }

    void apply(Normalization steps) {
        if (has(steps, Normalization::Escapes)) {
            forEach(decodeEscapes);
        }
        if (has(steps, Normalization::AsciiHost)) {
            convertHost(host);
        }
        if (has(steps, Normalization::Case)) {
            lowerCaseLetters(scheme);
            lowerCaseLetters(host);
            forEach(upperCaseEscapes);
        }
        // Path segment normalisation (RFC 3986, section 6.2.2.3). A relative reference keeps its dot
        // segments.
        if (has(steps, Normalization::Segments) && (views.scheme || views.host) &&
            iri::hasRelativePathSegments(path.get())) {
            std::u32string text(path.get());
            iri::removeDotSegments(text);
            path.set(std::move(text));
        }
        if (has(steps, Normalization::Scheme) && views.host) {
            if (auto const port = defaultPort(scheme.get())) {
                if (views.port && views.portNumber == *port) {
                    views.port = std::nullopt;
                    portWasDropped = true;
                }
                if (path.get().empty()) {
                    path.set(U"/");
                }
            }
        }
    }

    [[nodiscard]] bool isChanged() const {
        return portWasDropped || scheme.isChanged() || userInfo.isChanged() || host.isChanged() ||
               path.isChanged() || query.isChanged() || fragment.isChanged();
    }

    [[nodiscard]] IRI recomposed() {
        auto const put = [](std::optional<View>& to, RewrittenText const& from) {
            to = to ? from.get() : to;
        };
        put(views.scheme, scheme);
        put(views.userInfo, userInfo);
        put(views.host, host);
        views.path = path.get();
        put(views.query, query);
        put(views.fragment, fragment);
        return views.recomposed();
    }

private:
    template <class Step>
    void forEach(Step step) {
        for (RewrittenText* const each : {&userInfo, &host, &path, &query, &fragment}) {
            step(*each);
        }
    }

    ComponentViews& views;
    RewrittenText scheme;
    RewrittenText userInfo;
    RewrittenText host;
    RewrittenText path;
    RewrittenText query;
    RewrittenText fragment;
    bool portWasDropped = false;
};

} // namespace

IRI normalize(IRI const& iri, Normalization steps) {
    IriFormText const form(iri);
    ComponentViews views(form.stored());
    NormalizedComponents components(views);
    bool const isParsed = &form.stored() == &iri::detail::ValueAccess::stored(iri);
    if (!isParsed) {
        components.makeParsable();
    }
    components.apply(steps);
    return isParsed && !components.isChanged() ? iri : components.recomposed();
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
    auto const isSame = [](View one, View other) {
        RewrittenText first(one);
        RewrittenText second(other);
        for (RewrittenText* const each : {&first, &second}) {
            decodeEscapes(*each);
            lowerCaseLetters(*each);
            upperCaseEscapes(*each);
        }
        return text::isSame(first.get(), second.get());
    };
    View const host = left.stored().given(Part::host);
    return isSame(left.stored().scheme(), right.stored().scheme()) &&
           isSame(host, right.stored().given(Part::host));
}

} // namespace foundation::network
