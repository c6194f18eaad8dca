#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Runs of characters of a set of ASCII characters. Most of the time of a parse goes into such runs.
///
/// How they are quick: with SSE2, which every x86-64 has, sixteen code points are narrowed to bytes and
/// compared with the ranges of the set at once; a bit for each tells which are in it. Elsewhere one test
/// tells of four.
namespace foundation::network::text {

/// For each ASCII character, 1 where it is in the set and 0 where not. U+0000 is in none.
using AsciiTable = std::array<std::uint8_t, 128>;

#if defined(__SSE2__)

namespace detail {

struct AsciiRange {
    unsigned char first = 0;
    unsigned char last = 0;
};
struct AsciiRanges {
    std::array<AsciiRange, 16> list;
    std::size_t count = 0;
};

/// The ranges that a set is made of. Of those of a single character only "=" and "_" are worth a comparison;
/// the others are rare.
constexpr AsciiRanges rangesOf(AsciiTable const& set) {
    AsciiRanges ranges;
    for (std::size_t c = 1; c != set.size(); ++c) {
        if (set[c] == 0) {
            continue;
        }
        std::size_t const first = c;
        while (c + 1 != set.size() && set[c + 1] != 0) {
            ++c;
        }
        if (c != first || c == '=' || c == '_') {
            ranges.list[ranges.count++] = {static_cast<unsigned char>(first), static_cast<unsigned char>(c)};
        }
    }
    return ranges;
}

template <AsciiTable const& set>
inline constexpr AsciiRanges rangesIn = rangesOf(set);

/// Sixteen code points as bytes: what is not ASCII becomes a byte that is not, or zero.
inline __m128i bytesOf(char32_t const* block) {
    auto const* const four = reinterpret_cast<__m128i const*>(block);
    return _mm_packus_epi16(_mm_packs_epi32(_mm_loadu_si128(four), _mm_loadu_si128(four + 1)),
                            _mm_packs_epi32(_mm_loadu_si128(four + 2), _mm_loadu_si128(four + 3)));
}

/// All bits of each byte that is from `first` to `last`.
template <unsigned char first, unsigned char last>
__m128i within(__m128i bytes) {
    if constexpr (first == last) {
        return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(first));
    } else { // the comparison is signed: moved to the least number, the range is what lies below one limit
        return _mm_cmplt_epi8(_mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(-128 - first))),
                              _mm_set1_epi8(static_cast<char>(-128 + (last - first + 1))));
    }
}

/// A bit for each of sixteen code points, from the lowest on; it is set only where it is in the set.
template <AsciiTable const& set>
unsigned membersIn(char32_t const* block) {
    __m128i const bytes = bytesOf(block);
    auto const bits = [bytes]<std::size_t... i>(std::index_sequence<i...>) {
        constexpr auto const& ranges = rangesIn<set>.list;
        return static_cast<unsigned>(
            _mm_movemask_epi8((within<ranges[i].first, ranges[i].last>(bytes) | ...)));
    };
    return bits(std::make_index_sequence<rangesIn<set>.count>());
}

} // namespace detail

#endif

/// A place from `at` to `last` in front of which all is in the set. The character at that place may be in it
/// as well: the caller looks.
template <AsciiTable const& set>
[[nodiscard]] inline char32_t const* skipAscii(char32_t const* at, char32_t const* const last) {
#if defined(__SSE2__)
    constexpr std::ptrdiff_t block = 16;
    constexpr unsigned all = 0xFFFF;
    bool const isLong = last - at >= block;
    while (last - at >= block) {
        unsigned const members = detail::membersIn<set>(at);
        if (members != all) {
            return at + std::countr_one(members);
        }
        at += block;
    }
    if (isLong) { // what is left is looked at with some of what is known to be in the set
        return at == last ? at : last - block + std::countr_one(detail::membersIn<set>(last - block));
    }
#endif
    constexpr std::ptrdiff_t few = 4;
    while (last - at >= few && (at[0] | at[1] | at[2] | at[3]) < set.size() &&
           (set[at[0]] & set[at[1]] & set[at[2]] & set[at[3]]) != 0) {
        at += few;
    }
    return at;
}

} // namespace foundation::network::text
