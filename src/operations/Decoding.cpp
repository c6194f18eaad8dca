#include "operations/Decoding.hpp"

#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"

#include <array>

namespace foundation::network::operations {

namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;

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
    return sequence.wellFormed ? sequence.codePoint : REPLACEMENT;
}

std::u16string decoded(std::u16string_view text, Plus plus) {
    std::u16string result;
    std::size_t const first = plus == Plus::isSpace ? text.find_first_of(u"%+") : text.find(u'%');
    if (first == std::u16string_view::npos) {
        return std::u16string(text);
    }
    result.reserve(text.size()); // an escape is longer than what it stands for
    result.append(text, 0, first);
    for (std::size_t at = first; at != text.size();) {
        std::array<char16_t, 2> units{};
        char16_t const* const end = text::put(decodeNext(text, at, plus), units.data());
        result.append(units.data(), static_cast<std::size_t>(end - units.data()));
    }
    return result;
}

} // namespace foundation::network::operations
