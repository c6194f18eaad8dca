#pragma once

#include "iri/grammar/CharacterClasses.hpp"

namespace foundation::network::iri::grammar {

enum class Escapes { none, percent };

/// The end of the longest run of characters of the classes of `mask` and, with `Escapes::percent`, of
/// `pct-encoded`, from `at` up to `last`.
template <ClassMask mask, Escapes escapes = Escapes::none>
[[nodiscard]] inline char32_t const* endOfRun(char32_t const* at, char32_t const* const last) {
    // Moves behind one more character or escape, if there is one.
    auto const step = [&] {
        if (is<mask>(*at)) {
            ++at;
            return true;
        }
        if constexpr (escapes == Escapes::percent) {
            if (*at == U'%' && last - at >= 3 && is<XDIGIT>(at[1]) && is<XDIGIT>(at[2])) {
                at += 3;
                return true;
            }
        }
        return false;
    };
    constexpr auto beyond = (mask & UCSCHAR) != 0 ? text::AndBeyond::yes : text::AndBeyond::no;
    for (;;) {
        at = text::skipMembers<detail::asciiTable<mask>, beyond>(at, last);
        do { // what is not ASCII mostly comes in rows
            if (at == last || !step()) {
                return at;
            }
        } while (at != last && *at > 0x7F);
    }
}

} // namespace foundation::network::iri::grammar
