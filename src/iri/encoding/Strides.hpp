#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Text sixteen elements at a time. Nearly all of it has one unit in every encoding and nothing to look at;
/// strides of such text are told by their bits and copied as they are, which is several times quicker than
/// one by one.
namespace foundation::network::iri::encoding {

inline constexpr std::size_t STRIDE = 16;

/// Has its sign bit set exactly where the code points are the same; with four, where both pairs are. Signs
/// that are gathered over a text, without a way out of the loop before its end, become vector code.
[[nodiscard]] constexpr std::uint32_t signOfSame(char32_t left, char32_t right) {
    return (left ^ right) - 1;
}
[[nodiscard]] constexpr std::uint32_t signOfSame(char32_t left, char32_t right, char32_t left2,
                                                 char32_t right2) {
    return ((left ^ right) | (left2 ^ right2)) - 1;
}
[[nodiscard]] constexpr bool isSigned(std::uint32_t bits) {
    return bits >> 31 != 0;
}

/// The bits of all elements of a text together.
template <class Unit>
[[nodiscard]] Unit bitsOfAll(std::basic_string_view<Unit> text) {
    Unit bits = 0;
    for (Unit const unit : text) {
        bits = static_cast<Unit>(bits | unit);
    }
    return bits;
}

[[nodiscard]] constexpr bool isSurrogate(char32_t c) {
    return (c & 0xFFFFF800) == 0xD800;
}

/// The elements of a stride in machine words, whose bits are gathered quicker than those of units.
template <class Unit>
std::array<std::uint64_t, STRIDE * sizeof(Unit) / sizeof(std::uint64_t)> wordsOf(Unit const* stride) {
    std::array<std::uint64_t, STRIDE * sizeof(Unit) / sizeof(std::uint64_t)> words;
    std::memcpy(words.data(), stride, sizeof words);
    return words;
}

template <class Unit>
std::uint64_t bitsOf(Unit const* stride) {
    std::uint64_t bits = 0;
    for (std::uint64_t const word : wordsOf(stride)) {
        bits |= word;
    }
    return bits;
}

/// Whether each element of a stride has one unit in UTF-16 and in UTF-32. The bits of all together nearly
/// always tell; where one of them might be a surrogate or lie above U+FFFF, each is looked at.
inline bool isPlain(char16_t const* stride) {
    return (bitsOf(stride) & 0x8000800080008000) == 0 || std::none_of(stride, stride + STRIDE, isSurrogate);
}
inline bool isPlain(char32_t const* stride) {
    return (bitsOf(stride) & 0xFFFF8000FFFF8000) == 0 ||
           std::none_of(stride, stride + STRIDE, [](char32_t c) { return c > 0xFFFF || isSurrogate(c); });
}

/// Whether a stride holds a "%".
inline bool hasPercent(char32_t const* stride) {
    std::uint32_t found = 0;
    for (std::size_t i = 0; i != STRIDE; ++i) {
        found |= signOfSame(stride[i], U'%');
    }
    return isSigned(found);
}

template <class In, class Out>
void copyStride(In const* from, Out* to) {
    for (std::size_t i = 0; i != STRIDE; ++i) {
        to[i] = static_cast<Out>(from[i]);
    }
}

} // namespace foundation::network::iri::encoding
