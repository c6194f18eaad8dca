#pragma once

#include <foundation/network/iri/detail/Part.hpp>

#include <array>
#include <cstdint>
#include <string_view>

namespace foundation::network::iri::encoding {

using detail::Part;

/// A set of ASCII characters.
class AsciiSet {
public:
    constexpr AsciiSet() = default;
    constexpr explicit AsciiSet(std::string_view characters) {
        for (char const c : characters) {
            auto const at = static_cast<unsigned char>(c);
            bits[at / 64] |= std::uint64_t{1} << at % 64;
        }
    }
    [[nodiscard]] constexpr bool contains(char32_t c) const {
        return c < 128 && (bits[c / 64] >> c % 64 & 1) != 0;
    }

private:
    std::array<std::uint64_t, 2> bits{};
};

/// What the strict forms do with square brackets.
enum class StrictBrackets { asTheyStand, escaped };

/// Which characters of a component change between its forms: a row of the table below.
struct PartRules {
    /// The component's name in messages.
    std::string_view name;
    /// From Raw to Iri these become `%XX`, besides what no IRI may hold (`isIriForbidden`).
    std::string_view escaped;
    /// From Uri to Iri the `%XX` of these stay. Every other escape is decoded.
    std::string_view kept;
    /// Whether private-use characters become `%XX` in the Iri form.
    bool escapesPrivateUse;
    /// Whether a ":" in the first segment of a relative reference is written "%3A" (RFC 3986, section 4.2).
    bool escapesFirstColons;
    /// Whether the component's getter applies `escapeStrayPercent` for a strict encoding.
    bool strictGetter;
    /// Whether `escapeStrayPercent` escapes brackets as well.
    StrictBrackets strictBrackets;
};

/// Which characters the conversions escape and keep, a row a component. Not in the table: what no IRI may
/// hold (`isIriForbidden`), and what `operations::escaped` escapes besides, so that a component can be read
/// again.
// clang-format off
inline constexpr std::array<PartRules, 5> partRules{{
    //                                                              private colons strict
    // name       escaped                 kept                      use            getter
    {"UserInfo", " \"#/<;=>?@[\\]^`{|}", " \"#/<;=>?@[\\]^`{|}%", true,   false, false, StrictBrackets::asTheyStand},
    {"Host",     " #%/:?@[\\]",          " #%/:?@[\\]",           true,   false, true,  StrictBrackets::asTheyStand},
    {"Path",     " \"#<>?[]`{}",         " \"#%<>?[]`{}",         true,   true,  true,  StrictBrackets::escaped},
    {"Query",    " \"#<>`",              " \"#<>`%",              false,  false, true,  StrictBrackets::escaped},
    {"Fragment", " \"<>`",               " \"<>`%",               true,   false, true,  StrictBrackets::escaped},
}};
// clang-format on

/// What becomes `%XX` in a form-encoded query instead of its row's `escaped`, but for the space, which
/// becomes "+".
inline constexpr std::string_view formEncodedEscaped = " #[]";

[[nodiscard]] constexpr PartRules const& rulesOf(Part part) {
    return partRules[static_cast<std::size_t>(part)];
}

} // namespace foundation::network::iri::encoding
