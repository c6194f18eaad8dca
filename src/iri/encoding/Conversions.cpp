#include "iri/encoding/Conversions.hpp"

#include "base/NeverDestroyed.hpp"
#include "iri/encoding/PartRules.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/PercentDecoder.hpp"
#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace foundation::network::iri::encoding {

namespace {

using grammar::percentDecodeGrammar;
using text::escapedByte;
using text::percentByte;

percentDecodeGrammar const& fullDecoder() {
    static base::NeverDestroyed<percentDecodeGrammar> const decoder(std::u32string{});
    return *decoder;
}

// A decoder for each component, which does not decode what is special to it.
struct SelectiveDecoders {
    struct SelectiveDecoder : percentDecodeGrammar {
        explicit SelectiveDecoder(Part of)
            : percentDecodeGrammar(std::u32string(rulesOf(of).kept.begin(), rulesOf(of).kept.end())) {}
    };
    std::array<SelectiveDecoder, 5> all{SelectiveDecoder(Part::userInfo), SelectiveDecoder(Part::host),
                                        SelectiveDecoder(Part::path), SelectiveDecoder(Part::query),
                                        SelectiveDecoder(Part::fragment)};
};

percentDecodeGrammar const& selectiveDecoderOf(Part part) {
    static base::NeverDestroyed<SelectiveDecoders> const decoders;
    return (*decoders).all[static_cast<std::size_t>(part)];
}

constexpr std::array<AsciiSet, 5> escapedSets = [] {
    std::array<AsciiSet, 5> sets;
    std::transform(partRules.begin(), partRules.end(), sets.begin(),
                   [](PartRules const& rules) { return AsciiSet(rules.escaped); });
    return sets;
}();
constexpr AsciiSet formEncodedSet{formEncodedEscaped};

bool isFormEncodedQuery(Part part, PartContext const& context) {
    return part == Part::query && context.formEncoded;
}

// The length of the path's first segment if a ":" in it would make the text before it read as a scheme; else
// 0.
std::size_t schemeLikeLength(Part part, std::u32string_view text, PartContext const& context) {
    bool const applies = rulesOf(part).escapesFirstColons && !context.schemePresent && !context.hasUserInfo &&
                         !context.hasHost;
    return applies ? std::min(text.find(U'/'), text.size()) : 0;
}

std::u32string escapeFirstColons(Part part, std::u32string text, PartContext const& context) {
    std::size_t const length = schemeLikeLength(part, text, context);
    if (std::u32string_view(text).substr(0, length).find(U':') == std::u32string_view::npos) {
        return text;
    }
    std::u32string result;
    result.reserve(text.size() + 8);
    for (std::size_t i = 0; i != length; ++i) {
        if (text[i] == U':') {
            percentByte(result, ':');
        } else {
            result.push_back(text[i]);
        }
    }
    return result.append(text, length);
}

std::u32string escapeForbidden(std::u32string text) {
    if (std::none_of(text.begin(), text.end(), isIriForbidden)) {
        return text;
    }
    std::u32string result;
    result.reserve(text.size() + 16);
    for (char32_t const c : text) {
        escapeIriForbidden(c, result);
    }
    return result;
}

// Writes each character of `escaped` as its `%XX`, or a space as "+" with `spaceIsPlus`.
std::u32string applyEncodeTable(std::u32string text, AsciiSet const& escaped, bool spaceIsPlus) {
    auto const isEscaped = [&escaped](char32_t c) { return escaped.contains(c); };
    auto const first = std::find_if(text.begin(), text.end(), isEscaped);
    if (first == text.end()) {
        return text;
    }
    std::u32string result(text.begin(), first);
    result.reserve(text.size() + 16);
    std::for_each(first, text.end(), [&](char32_t c) {
        if (!isEscaped(c)) {
            result.push_back(c);
        } else if (c == U' ' && spaceIsPlus) {
            result.push_back(U'+');
        } else {
            percentByte(result, static_cast<unsigned char>(c));
        }
    });
    return result;
}

// Whether `iriFromRaw` would change nothing. It may say no for a text that would stay the same.
bool isInIriForm(Part part, std::u32string_view text, AsciiSet const& escaped, PartContext const& context) {
    bool const privateUse = rulesOf(part).escapesPrivateUse;
    return std::none_of(text.begin(), text.end(),
                        [&](char32_t c) {
                            return c == U'%' || escaped.contains(c) || isIriForbidden(c) ||
                                   (privateUse && isIriExcluded(c));
                        }) &&
           text.substr(0, schemeLikeLength(part, text, context)).find(U':') == std::u32string_view::npos;
}

// Reads the code point whose escapes stand at `at`, or the "%" there, and moves `at` behind it. Returns
// nothing for escapes that are no UTF-8.
std::optional<char32_t> decodedAt(std::u32string_view text, std::size_t& at) {
    int const lead = escapedByte(text, at);
    if (lead < 0) {
        return text[at++];
    }
    auto const byteAt = [text, at](unsigned i) {
        std::size_t const place = at + 3 * std::size_t{i};
        return place < text.size() ? escapedByte(text, place) : -1;
    };
    text::Utf8Sequence const sequence = text::decodeUtf8(static_cast<unsigned>(lead), byteAt);
    at += 3 * std::size_t{sequence.length};
    return sequence.wellFormed ? std::optional(sequence.codePoint) : std::nullopt;
}

// The text with its escapes decoded; nothing if not all of them are UTF-8. The result takes at most `room`
// units. `oneUnitEach`: all of the text takes as many units in the result as it has characters.
template <class String>
std::optional<String> decodedText(std::u32string_view text, std::size_t room, bool oneUnitEach) {
    String result(room, 0);
    auto* out = result.data();
    for (std::size_t at = 0; at != text.size();) {
        std::size_t const escape = text::find(text, U'%', at);
        if (oneUnitEach) {
            out = std::transform(text.data() + at, text.data() + escape, out,
                                 [](char32_t c) { return static_cast<typename String::value_type>(c); });
            at = escape;
        }
        while (at < escape) {
            if (!text::isScalar(text[at])) {
                return std::nullopt;
            }
            out = text::put(text[at++], out);
        }
        while (at != text.size() && text[at] == U'%') { // escapes mostly come in rows
            if (int const byte = escapedByte(text, at); byte >= 0 && byte < 0x80) {
                out = text::put(static_cast<char32_t>(byte), out);
                at += 3;
                continue;
            }
            auto const codePoint = decodedAt(text, at);
            if (!codePoint) {
                return std::nullopt;
            }
            out = text::put(*codePoint, out);
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}

// UTF-8 as code points. Bytes that are no UTF-8 become escapes; `repaired` tells whether there were any.
struct DecodedText {
    bool repaired;
    std::u32string text;
};
DecodedText decodeUtf8(std::string bytes) {
    auto const repaired = repairUtf8(std::move(bytes));
    return {repaired.repaired, text::toUtf32(repaired.bytes)};
}

} // namespace

Converted rawFromIri(Part part, std::u32string_view text, PartContext const& context) {
    if (isFormEncodedQuery(part, context)) {
        return uriFromIri(part, text, context);
    }
    bool const scalars =
        text::bitsOfAll(text) < 0xD800 || std::all_of(text.begin(), text.end(), text::isScalar);
    if (scalars && !text::contains(text, U'%')) {
        return std::nullopt;
    }
    if (auto result = decodedText<std::u32string>(text, text.size(), scalars)) {
        return result;
    }
    // Makes the bytes that the Uri form stands for, without writing that form.
    std::string bytes;
    fullDecoder().decode(text, bytes);
    auto decoded = decodeUtf8(std::move(bytes));
    if (decoded.repaired) {
        // The escapes of faulty bytes become the code points of their values.
        fullDecoder().decode(std::u32string(decoded.text), decoded.text);
    }
    return std::move(decoded.text);
}

Converted iriFromRaw(Part part, std::u32string_view text, PartContext const& context) {
    bool const form = isFormEncodedQuery(part, context);
    AsciiSet const& escaped = form ? formEncodedSet : escapedSets[static_cast<std::size_t>(part)];
    if (isInIriForm(part, text, escaped, context)) {
        return std::nullopt;
    }
    std::u32string result(text);
    if (!form) {
        result = protectPercentEscapes(std::move(result));
    }
    result = applyEncodeTable(std::move(result), escaped, form);
    if (rulesOf(part).escapesPrivateUse) {
        result = escapeIriExcluded(std::move(result));
    }
    return escapeFirstColons(part, escapeForbidden(std::move(result)), context);
}

Converted iriFromUri(Part part, std::u32string_view text, PartContext const& context) {
    if (isFormEncodedQuery(part, context)) {
        return std::nullopt; // nothing in it is decoded
    }
    std::u32string decoded;
    selectiveDecoderOf(part).decode(text, decoded);
    std::string bytes(decoded.size(), '\0');
    std::transform(decoded.begin(), decoded.end(), bytes.begin(),
                   [](char32_t c) { return static_cast<char>(c); });

    std::u32string result = escapeFirstColons(part, decodeUtf8(std::move(bytes)).text, context);
    if (rulesOf(part).escapesPrivateUse) {
        result = escapeIriExcluded(std::move(result));
    }
    return escapeForbidden(std::move(result));
}

Converted uriFromIri(Part /*part*/, std::u32string_view text, PartContext const& /*context*/) {
    return isUriForm(text) ? Converted() : Converted(toUriForm(text));
}

template <class String>
std::optional<String> rawTextFromIri(std::u32string_view text) {
    using Char = typename String::value_type;
    constexpr char32_t lastOfOneUnit = sizeof(Char) == 1 ? 0x7F : 0xFFFF;
    if (!text::containsOrAbove(text, U'%', lastOfOneUnit)) {
        return String(text.begin(), text.end()); // most components; parsed text has no surrogates
    }
    bool const oneUnitEach = text::bitsOfAll(text) <= lastOfOneUnit;
    if (!oneUnitEach && !text::contains(text, U'%')) {
        return text::to<String>(text);
    }
    // An escape never takes fewer units than what it stands for, but a code point may take several.
    constexpr std::size_t most = sizeof(Char) == 1 ? 4 : 2;
    return decodedText<String>(text, oneUnitEach ? text.size() : most * text.size(), oneUnitEach);
}
template std::optional<std::u16string> rawTextFromIri(std::u32string_view text);
template std::optional<std::string> rawTextFromIri(std::u32string_view text);

Converted convert(Part part, detail::Form from, detail::Form to, std::u32string_view text,
                  PartContext const& context) {
    using detail::Form;
    if (from == to) {
        return std::nullopt;
    }
    if (from == Form::iri) {
        return to == Form::raw ? rawFromIri(part, text, context) : uriFromIri(part, text, context);
    }
    auto iri = from == Form::raw ? iriFromRaw(part, text, context) : iriFromUri(part, text, context);
    if (to == Form::iri) {
        return iri;
    }
    auto converted = convert(part, Form::iri, to, iri ? *iri : text, context);
    return converted ? std::move(converted) : std::move(iri);
}

} // namespace foundation::network::iri::encoding
