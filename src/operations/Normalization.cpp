// Normalisation on the texts of components in the Iri form, step by step, each from the text that the step
// before has left. A step that changes nothing makes nothing.

#include <foundation/network/Normalization.hpp>

#include <foundation/network/IdnConverter.hpp>

#include "base/NeverDestroyed.hpp"
#include "iri/Paths.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/CharacterClasses.hpp"
#include "operations/Assembly.hpp"
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
using operations::Assembly;
using operations::InIriForm;
using View = std::u32string_view;

constexpr bool has(Normalization steps, Normalization step) {
    return (steps & step) != Normalization{};
}

/// A text, or what was made of it.
class Text {
public:
    explicit Text(View given) : view(given) {}
    Text(Text const&) = delete;
    Text& operator=(Text const&) = delete;
    ~Text() = default;

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

// Escapes.

/// Controls of direction that are younger than RFC 3987, whose own (section 4.1) no IRI may hold.
bool isYoungDirection(char32_t c) {
    return c == 0x061C || (c >= 0x2066 && c <= 0x2069);
}

bool isToBeDecoded(char32_t c) {
    using namespace iri::grammar;
    return c < 0x80 ? is<ALNUM | UNRESERVED_MARK>(c)
                    : is<UCSCHAR>(c) && !iri::encoding::isIriForbidden(c) && !isYoungDirection(c);
}

/// What stands at a place of a text all of whose escapes are decoded that are to be.
struct Place {
    char32_t c = 0; // 0 behind the end
    std::size_t length = 0;
    bool isDecoded = false;
};

Place placeAt(View text, std::size_t at) {
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
    if (sequence.wellFormed && isToBeDecoded(sequence.codePoint)) {
        return {sequence.codePoint, 3 * std::size_t{sequence.length}, true};
    }
    return {text[at], 1, false};
}

/// Decodes escapes. Where a character that was decoded would be a digit of another escape, in the text as it
/// were with all of them decoded, its escape stays. What a second look finds decoded is that same text, so it
/// changes nothing.
void decodeEscapes(Text& component) {
    View const text = component.get();
    if (!text::contains(text, U'%')) {
        return;
    }
    auto const isDigit = [](char32_t c) { return iri::grammar::is<iri::grammar::XDIGIT>(c); };
    std::u32string result;
    std::size_t copied = 0;           // what the result holds of the text
    std::array<char32_t, 2> before{}; // what stands in front, decoded
    for (std::size_t at = 0; at != text.size();) {
        Place const place = placeAt(text, at);
        std::size_t const next = at + place.length;
        if (place.isDecoded) {
            bool const completes =
                isDigit(place.c) && ((before[1] == U'%' && isDigit(placeAt(text, next).c)) ||
                                     (before[0] == U'%' && isDigit(before[1])));
            if (!completes) {
                result.append(text, copied, at - copied);
                result.push_back(place.c);
                copied = next;
            }
        }
        before = {before[1], place.c};
        at = next;
    }
    if (copied != 0) {
        component.set(result.append(text, copied));
    }
}

// Case.

bool isLowerDigit(char32_t c) {
    return c >= U'a' && c <= U'f';
}

/// The next escape with a digit in lower case.
std::size_t findLowEscape(View text, std::size_t from) {
    std::size_t at = text.find(U'%', from);
    while (at != View::npos && (text::escapedByte(text, at) < 0 ||
                                (!isLowerDigit(text[at + 1]) && !isLowerDigit(text[at + 2])))) {
        at = text.find(U'%', at + 1);
    }
    return at;
}

void raiseEscapes(Text& component) {
    View const text = component.get();
    std::size_t at = text::contains(text, U'%') ? findLowEscape(text, 0) : View::npos;
    if (at == View::npos) {
        return;
    }
    std::u32string result(text);
    for (; at != View::npos; at = findLowEscape(text, at + 3)) {
        for (std::size_t const digit : {at + 1, at + 2}) {
            result[digit] -= isLowerDigit(result[digit]) ? 0x20U : 0U;
        }
    }
    component.set(std::move(result));
}

void lowerLetters(Text& component) {
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

// AsciiHost.

bool isName(View name) {
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

/// The host that `IdnConverter` gives. What it gives for an invalid name may hold any character, so that a
/// "/" or "@" in it would end the host.
void convertHost(Text& host) {
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
    if (isName(name)) {
        host.set(std::move(name));
    }
}

// Scheme.

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

// What building lets through and no text can carry.

void escapeAll(Text& component, View unwanted) {
    View const text = component.get();
    auto const isUnwanted = [text, unwanted](std::size_t at) {
        return unwanted.find(text[at]) != View::npos && text::escapedByte(text, at) < 0;
    };
    std::u32string result;
    for (std::size_t at = 0; at != text.size(); ++at) {
        if (isUnwanted(at)) {
            text::percentByte(result, static_cast<unsigned char>(text[at]));
        } else {
            result.push_back(text[at]);
        }
    }
    if (result.size() != text.size()) {
        component.set(std::move(result));
    }
}

/// The components of a value while steps are applied to them.
struct Components {
    explicit Components(Assembly& from)
        : assembly(from),
          scheme(from.scheme.value_or(View())),
          userInfo(from.userInfo.value_or(View())),
          host(from.host.value_or(View())),
          path(from.path),
          query(from.query.value_or(View())),
          fragment(from.fragment.value_or(View())) {}

    void makeReadable() {
        escapeAll(userInfo, U"%");
        escapeAll(query, U"[]");
        escapeAll(fragment, U"#[]");
    }

    void apply(Normalization steps) {
        if (has(steps, Normalization::Escapes)) {
            forEach(decodeEscapes);
        }
        if (has(steps, Normalization::AsciiHost)) {
            convertHost(host);
        }
        if (has(steps, Normalization::Case)) {
            lowerLetters(scheme);
            lowerLetters(host);
            forEach(raiseEscapes);
        }
        if (has(steps, Normalization::Segments) && (assembly.scheme || assembly.host) &&
            iri::hasRelativePathSegments(path.get())) {
            std::u32string text(path.get());
            iri::removeDotSegments(text);
            path.set(std::move(text));
        }
        if (has(steps, Normalization::Scheme) && assembly.host) {
            if (auto const port = defaultPort(scheme.get())) {
                if (assembly.port && assembly.portNumber == *port) {
                    assembly.port = std::nullopt;
                    portIsGone = true;
                }
                if (path.get().empty()) {
                    path.set(U"/");
                }
            }
        }
    }

    [[nodiscard]] bool isChanged() const {
        return portIsGone || scheme.isChanged() || userInfo.isChanged() || host.isChanged() ||
               path.isChanged() || query.isChanged() || fragment.isChanged();
    }

    [[nodiscard]] IRI assembled() {
        auto const put = [](std::optional<View>& to, Text const& from) { to = to ? from.get() : to; };
        put(assembly.scheme, scheme);
        put(assembly.userInfo, userInfo);
        put(assembly.host, host);
        assembly.path = path.get();
        put(assembly.query, query);
        put(assembly.fragment, fragment);
        return assembly.assembled();
    }

private:
    template <class Step>
    void forEach(Step step) {
        for (Text* const each : {&userInfo, &host, &path, &query, &fragment}) {
            step(*each);
        }
    }

    Assembly& assembly;
    Text scheme;
    Text userInfo;
    Text host;
    Text path;
    Text query;
    Text fragment;
    bool portIsGone = false;
};

} // namespace

IRI normalize(IRI const& iri, Normalization steps) {
    InIriForm const form(iri);
    Assembly assembly(form.get());
    Components components(assembly);
    bool const isParsed = &form.get() == &iri::detail::ValueAccess::stored(iri);
    if (!isParsed) {
        components.makeReadable();
    }
    components.apply(steps);
    return isParsed && !components.isChanged() ? iri : components.assembled();
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
    InIriForm const left(a);
    InIriForm const right(b);
    auto const isSame = [](View one, View other) {
        Text first(one);
        Text second(other);
        for (Text* const each : {&first, &second}) {
            decodeEscapes(*each);
            lowerLetters(*each);
            raiseEscapes(*each);
        }
        return text::isSame(first.get(), second.get());
    };
    View const host = left.get().given(Part::host);
    // A scheme has no escapes.
    return isSame(left.get().scheme(), right.get().scheme()) && isSame(host, right.get().given(Part::host));
}

} // namespace foundation::network
