#include "operations/Decoding.hpp"

#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"

#include <cstdint>

namespace foundation::network::operations {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

} // namespace

char32_t decodeNext(std::u16string_view text, std::size_t& at, Plus plus) {
    int const lead = text::escapedByte(text, at);
    if (lead < 0) {
        char16_t const unit = text[at++];
        if (text::isLeadSurrogate(unit) && at != text.size() && text::isTrailSurrogate(text[at])) {
            return text::fromSurrogates(unit, text[at++]);
        }
        return plus == Plus::isSpace && unit == u'+' ? U' ' : char32_t{unit};
    }
    auto const byteAt = [text, at](unsigned i) {
        std::size_t const place = at + 3 * std::size_t{i};
        return place < text.size() ? text::escapedByte(text, place) : -1;
    };
    text::Utf8Sequence const sequence = text::decodeUtf8(static_cast<unsigned>(lead), byteAt);
    at += 3 * std::size_t{sequence.length};
    return sequence.wellFormed ? sequence.codePoint : replacementCharacter;
}

std::u16string decoded(std::u16string_view text, Plus plus) {
    std::u16string result(text);
    // What is read as a space: a "%", which is looked at before, where nothing is.
    char16_t const space = plus == Plus::isSpace ? u'+' : u'%';
    std::uint16_t found = 0; // as wide as a unit, so that a register tests as many of them as it holds
    for (char16_t const unit : text) {
        found |= static_cast<std::uint16_t>(unit == u'%' || unit == space ? 0xFFFF : 0);
    }
    if (found == 0) {
        return result;
    }
    // The result is written into a copy of the text: no escape is shorter than what it stands for.
    char16_t* out = result.data();
    for (std::size_t at = 0; at != text.size();) {
        if (char16_t const unit = text[at]; unit != u'%') {
            *out++ = unit == space ? u' ' : unit;
            ++at;
        } else if (int const byte = text::escapedByte(text, at); byte >= 0 && byte < 0x80) {
            *out++ = static_cast<char16_t>(byte);
            at += 3;
        } else {
            out = text::put(decodeNext(text, at, plus), out);
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}

} // namespace foundation::network::operations
