#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Questions about whole texts, each answered in one look.
///
/// How they are quick: a test of one place gives a number whose sign bit says yes, and a loop gathers these
/// numbers. It has no way out before its end, or before that of a block, so the compiler makes vector code of
/// it. Nearly all texts are short, and hold nothing that is looked for; a loop that could stop at each place
/// would be several times slower.
namespace foundation::network::text {

/// All bits where the two are the same, none where not.
[[nodiscard]] constexpr std::uint32_t allOnesIfSame(char32_t left, char32_t right) {
    return left == right ? ~std::uint32_t{0} : 0;
}
[[nodiscard]] constexpr std::uint32_t allOnesIfSame(char32_t left, char32_t right, char32_t left2,
                                                    char32_t right2) {
    return allOnesIfSame(left, right) & allOnesIfSame(left2, right2);
}
/// A number with its sign bit set exactly where `c` lies above `limit`, which is below U+80000000.
[[nodiscard]] constexpr std::uint32_t signIfAbove(char32_t c, char32_t limit) {
    return (limit - c) | c;
}

/// Whether the sign bit of `test(i)` is set for one of the places from 0 to `count`. The loop runs over whole
/// registers of four; the last of them is filled up with places that were looked at before.
template <class Test>
[[nodiscard]] constexpr bool isAnySigned(std::size_t count, Test test) {
    constexpr std::size_t lanes = 4;
    std::uint32_t signs = 0;
    if (count < lanes) {
        for (std::size_t i = 0; i != count; ++i) {
            signs |= test(i);
        }
    } else {
        for (std::size_t i = 0; i != count / lanes * lanes; ++i) {
            signs |= test(i);
        }
        for (std::size_t i = count - lanes; i != count; ++i) {
            signs |= test(i);
        }
    }
    return signs >> 31 != 0;
}

[[nodiscard]] constexpr bool contains(std::u32string_view text, char32_t wanted) {
    return isAnySigned(text.size(), [text, wanted](std::size_t i) { return allOnesIfSame(text[i], wanted); });
}

/// Whether `wanted` or something above `limit` is in `text`.
[[nodiscard]] constexpr bool containsOrAbove(std::u32string_view text, char32_t wanted, char32_t limit) {
    return isAnySigned(text.size(), [text, wanted, limit](std::size_t i) {
        return allOnesIfSame(text[i], wanted) | signIfAbove(text[i], limit);
    });
}

/// Whether `first` stands right before `second` somewhere in `text`.
[[nodiscard]] constexpr bool containsPair(std::u32string_view text, char32_t first, char32_t second) {
    return !text.empty() && isAnySigned(text.size() - 1, [text, first, second](std::size_t i) {
        return allOnesIfSame(text[i], first, text[i + 1], second);
    });
}

/// The first place from `from` to `size` for which `test(i)` gives all ones rather than 0; `size` if there is
/// none. Each place of a block gives one bit of a word, so the loop over it does not stop early. The last
/// block is filled up with places in front of `from`.
template <class Test>
[[nodiscard]] constexpr std::size_t firstPlace(std::size_t from, std::size_t size, Test test) {
    constexpr std::size_t block = 32;
    constexpr auto bits = [] {
        std::array<std::uint32_t, block> made{};
        for (std::size_t i = 0; i != block; ++i) {
            made[i] = std::uint32_t{1} << i;
        }
        return made;
    }();
    if (size < block) {
        while (from < size && test(from) == 0) {
            ++from;
        }
        return from;
    }
    while (from < size) {
        std::size_t const begin = std::min(from, size - block);
        std::uint32_t found = 0;
        for (std::size_t i = 0; i != block; ++i) {
            found |= test(begin + i) & bits[i];
        }
        found >>= from - begin;
        if (found != 0) {
            return from + static_cast<std::size_t>(std::countr_zero(found));
        }
        from = begin + block;
    }
    return size;
}

/// Where `wanted` stands next, or the end.
[[nodiscard]] constexpr std::size_t find(std::u32string_view text, char32_t wanted, std::size_t from) {
    return firstPlace(from, text.size(),
                      [text, wanted](std::size_t i) { return allOnesIfSame(text[i], wanted); });
}

/// Where `first` stands next right before `second`, or the end.
[[nodiscard]] constexpr std::size_t findPair(std::u32string_view text, char32_t first, char32_t second,
                                             std::size_t from) {
    std::size_t const pairs = text.empty() ? 0 : text.size() - 1;
    std::size_t const at = firstPlace(from, pairs, [text, first, second](std::size_t i) {
        return allOnesIfSame(text[i], first, text[i + 1], second);
    });
    return at < pairs ? at : text.size();
}

namespace detail {

constexpr std::size_t unitsPerMask = 16;

/// A bit for each of sixteen units, from the lowest on, that is one of `wanted`.
template <char16_t... wanted>
unsigned maskOf(char16_t const* block) {
#if defined(__SSE2__)
    auto const* const eight = reinterpret_cast<__m128i const*>(block);
    __m128i const low = _mm_loadu_si128(eight);
    __m128i const high = _mm_loadu_si128(eight + 1);
    auto const same = [](__m128i units, char16_t unit) {
        return _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(unit)));
    };
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_packs_epi16((same(low, wanted) | ...), (same(high, wanted) | ...))));
#else
    unsigned mask = 0;
    for (std::size_t i = 0; i != unitsPerMask; ++i) {
        mask |= unsigned{((block[i] == wanted) || ...)} << i;
    }
    return mask;
#endif
}

} // namespace detail

/// Calls `each` with the place of each unit of a text that is one of `wanted`, in order.
template <char16_t... wanted, class Each>
void forEachOf(std::u16string_view text, Each each) {
    std::size_t at = 0;
    for (; text.size() - at >= detail::unitsPerMask; at += detail::unitsPerMask) {
        for (unsigned mask = detail::maskOf<wanted...>(&text[at]); mask != 0; mask &= mask - 1) {
            each(at + static_cast<std::size_t>(std::countr_zero(mask)));
        }
    }
    for (; at != text.size(); ++at) {
        if (((text[at] == wanted) || ...)) {
            each(at);
        }
    }
}

/// Whether all of `text` lies from `first` to `last`, which are below U+80000000.
[[nodiscard]] constexpr bool isAllWithin(std::u32string_view text, char32_t first, char32_t last) {
    return !isAnySigned(text.size(), [text, first, last](std::size_t i) {
        return (text[i] - first) | (last - text[i]) | text[i];
    });
}

[[nodiscard]] constexpr bool isSurrogate(char32_t c) {
    return (c & 0xFFFFF800) == 0xD800;
}
template <class Unit>
[[nodiscard]] constexpr bool hasSurrogate(std::basic_string_view<Unit> text) {
    return isAnySigned(text.size(),
                       [text](std::size_t i) { return allOnesIfSame(text[i] & 0xFFFFF800U, 0xD800); });
}

/// The bits of all elements of a text together: 0 for an empty one.
template <class Unit>
[[nodiscard]] constexpr Unit bitsOfAll(std::basic_string_view<Unit> text) {
    Unit bits = 0;
    for (Unit const unit : text) {
        bits = static_cast<Unit>(bits | unit);
    }
    return bits;
}

/// Whether two texts have the same code points. Quicker than `==`, which compares one at a time.
[[nodiscard]] inline bool isSame(std::u32string_view left, std::u32string_view right) {
    return left.size() == right.size() &&
           (left.empty() || std::memcmp(left.data(), right.data(), left.size() * sizeof(char32_t)) == 0);
}

/// How many leading code points two texts have in common.
[[nodiscard]] inline std::size_t commonLength(std::u32string_view left, std::u32string_view right) {
    constexpr std::size_t block = 4;
    std::size_t const most = std::min(left.size(), right.size());
    std::size_t length = 0;
    while (most - length >= block && isSame({&left[length], block}, {&right[length], block})) {
        length += block;
    }
    while (length != most && left[length] == right[length]) {
        ++length;
    }
    return length;
}

} // namespace foundation::network::text
