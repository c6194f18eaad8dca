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

enum class AndBeyond : bool { no, yes };

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

template <AsciiTable const& set>
__m128i areMembers(__m128i bytes) {
    return [bytes]<std::size_t... i>(std::index_sequence<i...>) {
        constexpr auto const& ranges = rangesIn<set>.list;
        return (within<ranges[i].first, ranges[i].last>(bytes) | ...);
    }
    (std::make_index_sequence<rangesIn<set>.count>());
}

/// A bit for each of sixteen code points, from the lowest on; it is set only where it is in the set.
/// Narrowing saturates, so what is not ASCII becomes a byte that is not, or zero.
template <AsciiTable const& set, AndBeyond beyond>
unsigned membersIn(char32_t const* block) {
    auto const four = [block](int i) { return _mm_loadu_si128(reinterpret_cast<__m128i const*>(block) + i); };
    __m128i members;
    if constexpr (beyond == AndBeyond::no) {
        members = areMembers<set>(
            _mm_packus_epi16(_mm_packs_epi32(four(0), four(1)), _mm_packs_epi32(four(2), four(3))));
    } else { // sixteen bits hold a code point less 0x8000 with its sign
        __m128i const half = _mm_set1_epi32(0x8000);
        __m128i const low = _mm_packs_epi32(_mm_sub_epi32(four(0), half), _mm_sub_epi32(four(1), half));
        __m128i const high = _mm_packs_epi32(_mm_sub_epi32(four(2), half), _mm_sub_epi32(four(3), half));
        auto const isBeyond = [](__m128i lessHalf) {
            return _mm_and_si128(_mm_cmpgt_epi16(lessHalf, _mm_set1_epi16(0x9F - 0x8000)),
                                 _mm_cmplt_epi16(lessHalf, _mm_set1_epi16(0xD800 - 0x8000)));
        };
        __m128i const flip = _mm_set1_epi16(-0x8000);
        members = _mm_or_si128(
            areMembers<set>(_mm_packus_epi16(_mm_xor_si128(low, flip), _mm_xor_si128(high, flip))),
            _mm_packs_epi16(isBeyond(low), isBeyond(high)));
    }
    return static_cast<unsigned>(_mm_movemask_epi8(members));
}

/// Where the members of a set that begin at `at` end. If less than a block is behind `at`, the members reach
/// as far back as a block does.
template <AsciiTable const& set, AndBeyond beyond>
char32_t const* endOfBlocks(char32_t const* at, char32_t const* const last) {
    constexpr std::ptrdiff_t block = 16;
    constexpr unsigned all = 0xFFFF;
    for (; last - at >= block; at += block) {
        unsigned const members = membersIn<set, beyond>(at);
        if (members != all) {
            return at + std::countr_one(members);
        }
    }
    if (at != last) { // the rest, with some that is known
        at = last - block + std::countr_one(membersIn<set, beyond>(last - block));
    }
    return at;
}

/// Not inlined, so that the code for most texts stays short.
template <AsciiTable const& set>
[[gnu::noinline]] char32_t const* endOfMixedBlocks(char32_t const* at, char32_t const* last) {
    return endOfBlocks<set, AndBeyond::yes>(at, last);
}

} // namespace detail

#endif

/// A place from `at` to `last` in front of which all is in the set. The character at that place may be in it
/// as well: the caller looks.
template <AsciiTable const& set, AndBeyond beyond>
[[nodiscard]] inline char32_t const* skipMembers(char32_t const* at, char32_t const* const last) {
#if defined(__SSE2__)
    if (last - at >= 16) {
        at =
            detail::endOfBlocks<set, AndBeyond::no>(at, last); // most texts, for which less is to be compared
        if constexpr (beyond == AndBeyond::yes) {
            if (at != last && *at >= set.size()) {
                return detail::endOfMixedBlocks<set>(at, last);
            }
        }
        return at;
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
