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

/// What the conversions do with square brackets when a strict form is asked for.
enum class StrictBrackets { asTheyStand, escaped };

/// Which characters of a part change between its forms: a row of the table below.
struct PartRules {
    /// The part's name in messages.
    std::string_view name;
    /// From Raw to Iri these become `%XX`, besides what no IRI holds as itself.
    std::string_view escaped;
    /// From Uri to Iri the `%XX` of these stay; every other escape is decoded.
    std::string_view kept;
    /// Whether private-use characters become `%XX` in the Iri form.
    bool escapesPrivateUse;
    /// Whether a ":" in the first segment of a relative reference is written "%3A" (RFC 3986, section 4.2).
    bool escapesFirstColons;
    /// Whether the strict forms go through `escapeStrayPercent` in the part's getter, and how.
    bool strictGetter;
    StrictBrackets strictBrackets;
};

/// The table of all characters that are special to a part, a row a part. Nothing about them stands elsewhere.
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

/// What a form-encoded query escapes instead; its spaces become "+".
inline constexpr std::string_view formEncodedEscaped = " #[]";

[[nodiscard]] constexpr PartRules const& rulesOf(Part part) {
    return partRules[static_cast<std::size_t>(part)];
}

} // namespace foundation::network::iri::encoding
