#pragma once

// Texts that look like IRIs, and texts that nearly do: the one source of generated input of all tests.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace support {

class Generator {
public:
    explicit Generator(std::uint64_t seed) : state(seed) {}

    /// A number below `limit`. The same on every platform, unlike the standard distributions.
    std::size_t below(std::size_t limit) {
        state += 0x9E3779B97F4A7C15; // splitmix64
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return static_cast<std::size_t>((z ^ (z >> 31)) % limit);
    }
    bool chance(std::size_t percent) { return below(100) < percent; }
    template <class Table>
    auto const& pick(Table const& table) {
        return table[below(std::size(table))];
    }

    /// A text in the shape of an IRI reference, with or without faults.
    std::u32string reference() {
        std::u32string text = chance(60) ? std::u32string(pick(schemes)) + U":" : U"";
        if (chance(60)) {
            text += U"//" + (chance(30) ? pieces(3) + U"@" : U"");
            text += chance(70) ? std::u32string(pick(hosts)) : pieces(3);
            text += chance(30) ? U":" + std::u32string(pick(ports)) : U"";
        }
        text += path();
        text += chance(40) ? U"?" + pieces(4) : U"";
        return text + (chance(30) ? U"#" + pieces(3) : U"");
    }

    /// A reference with some characters dropped, doubled or replaced.
    std::u32string mutated() {
        std::u32string text = reference();
        for (std::size_t changes = 1 + below(3); changes != 0 && !text.empty(); --changes) {
            std::size_t const at = below(text.size());
            std::size_t const how = below(3);
            how == 0   ? text.erase(at, 1)
            : how == 1 ? text.insert(at, pick(fragments))
                       : text.replace(at, 1, pick(fragments).substr(0, 1));
        }
        return text;
    }

    std::u32string path() {
        std::u32string text;
        for (std::size_t segments = below(5); segments != 0; --segments) {
            text += text.empty() && !chance(70) ? U"" : U"/";
            text.append(chance(30) ? std::u32string(pick(dots)) : pieces(3));
        }
        return text;
    }

    /// Up to `limit` fragments, mostly harmless ones.
    std::u32string pieces(std::size_t limit) {
        std::u32string text;
        for (std::size_t count = below(limit + 1); count != 0; --count) {
            text.append(chance(85) ? std::u32string_view(pick(plain)) : pick(fragments));
        }
        return text;
    }

private:
    using Text = std::u32string_view;
    static constexpr char32_t surrogate = 0xD800;
    static constexpr char32_t beyond = 0x110000;
    static constexpr char32_t farBeyond = 0xFFFFFF3A; // ":" in its lowest eight bits
    // clang-format off
    static constexpr std::array<Text, 9> schemes{
        U"http", U"x", U"a1+.-", U"\u00E9", U"1a", U"+", U"", U"\u0660x", U"x\u0660"};
    static constexpr std::array<Text, 31> hosts{
        U"h", U"", U"example.org", U"b\u00FCcher.example", U"1.2.3.4", U"1.2.3.4.5", U"1.2.3.256",
        U"01.2.3.4", U"0.0.0.0", U"255.255.255.255", U"1.2.3", U"1.2.3.4a", U"1.2.3.4%41", U"[::]", U"[::1]",
        U"[1:2:3:4:5:6:7:8]", U"[1:2:3:4:5:6:7]", U"[1:2:3:4:5:6:1.2.3.4]", U"[::ffff:1.2.3.4]",
        U"[1::2:3:4]", U"[1:2::7:8]", U"[1:2:3:4:5:6:7::]", U"[1:::2]", U"[12345::]", U"[v1.a:b]", U"[V1.a]",
        U"[vF.]", U"[]", U"[\uFF21::\uFF10]", U"[::1", U"[::01.2.3.4]"};
    static constexpr std::array<Text, 9> ports{
        U"80", U"", U"0", U"00080", U"65535", U"65536", U"\u0661", U"8a", U"99999999999"};
    static constexpr std::array<Text, 6> dots{U".", U"..", U"...", U"", U".a", U"%2e"};
    static constexpr std::array<Text, 16> plain{
        U"a", U"b", U"Z", U"0", U"9", U"-", U"_~", U"\u00E9", U"\u4E2D", U"\U0001F600", U"%41", U"%C3%A9",
        U"=", U"&", U"+;", U"abc"};
    static constexpr std::array<Text, 45> fragments{
        U"/", U"//", U"?", U"#", U"[", U"]", U"@", U":", U"%", U"%4", U"%zz", U"%00", U"%FF", U"%2F", U"%2f", U"%25",
        U"%E4%B8", U"%ED%A0%80", U"%C0%AF", U"%F8%88%80%80%80", U"%\uFF14\uFF11", U" ", U"\"", U"<", U">",
        U"\\", U"^", U"`", U"{|}", U"!$'()*,", Text(U"\0", 1), U"\x7F", U"\u0080", U"\u00A0", U"\uE000",
        U"\U000E0000", U"\U000E1000", U"\U0010FFFD", U"\U0010FFFF", U"\uFDD0", U"\uFFFD", U"\u202E",
        Text(&surrogate, 1), Text(&beyond, 1), Text(&farBeyond, 1)};
    // clang-format on

    std::uint64_t state;
};

/// Gives each text of up to `longest` characters of an alphabet to `body`. Returns how many those are.
template <class Body>
std::size_t eachText(std::u32string_view alphabet, std::size_t longest, Body body) {
    std::size_t texts = 0;
    for (std::size_t length = 0, count = 1; length <= longest; ++length, count *= alphabet.size()) {
        for (std::size_t number = 0; number != count; ++number, ++texts) {
            std::u32string text;
            for (std::size_t rest = number; text.size() != length; rest /= alphabet.size()) {
                text += alphabet[rest % alphabet.size()];
            }
            body(text);
        }
    }
    return texts;
}

/// How many code points a test takes, and in how many runs.
template <class Test>
std::pair<int, int> countRuns(Test test) {
    std::pair<int, int> found;
    bool before = false;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        bool const now = test(c);
        found.first += now;
        found.second += now && !before;
        before = now;
    }
    return found;
}

} // namespace support
