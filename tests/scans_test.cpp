#include "text/Scans.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>

namespace {

using namespace foundation::network::text;
using View = std::u32string_view;

template <class Test>
bool anyOf(View text, Test test) {
    return std::find_if(text.begin(), text.end(), test) != text.end();
}

// Each scan beside a loop that a reader believes at once, over texts of all lengths that the vector code and
// its ends treat differently.
TEST(Scans, AnswerAsPlainLoops) {
    // clang-format off
    struct Scan { char const* name; std::function<bool(View)> fast, plain; };
    Scan const scans[] = {
        {"contains", [](View t) { return contains(t, U'%'); }, [](View t) { return t.find(U'%') != t.npos; }},
        {"containsOrAbove", [](View t) { return containsOrAbove(t, U'%', 0xFFFF); },
         [](View t) { return anyOf(t, [](char32_t c) { return c == U'%' || c > 0xFFFF; }); }},
        {"containsPair", [](View t) { return containsPair(t, U'/', U'.'); },
         [](View t) { return t.find(U"/.") != t.npos; }},
        {"containsPair of one", [](View t) { return containsPair(t, U'/', U'/'); },
         [](View t) { return t.find(U"//") != t.npos; }},
        {"isAllWithin", [](View t) { return isAllWithin(t, 33, 126); },
         [](View t) { return !anyOf(t, [](char32_t c) { return c < 33 || c > 126; }); }},
        {"hasSurrogate", [](View t) { return hasSurrogate(t); },
         [](View t) { return anyOf(t, [](char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }); }},
        {"hasSurrogate in 16", [](View t) { return hasSurrogate<char16_t>(std::u16string(t.begin(), t.end())); },
         [](View t) { return anyOf(t, [](char32_t c) { return (c & 0xF800) == 0xD800; }); }},
        {"bitsOfAll", [](View t) { return bitsOfAll(t) < 0x80; },
         [](View t) { return !anyOf(t, [](char32_t c) { return c > 0x7F; }); }},
    };
    constexpr char32_t alphabet[] = {
        0, U'%', U'.', U'/', U'a', 32, 33, 126, 127, 0x7FFF, 0xD7FF, 0xD800, 0xDFFF, 0xE000, 0xFFFF, 0x10000,
        0x1D800, 0x10FFFF, 0x80000000, 0x80000001, 0x80000025, 0xFFFFFFFF};
    // clang-format on
    std::mt19937 random(1);
    for (int round = 0; round != 4000; ++round) {
        std::u32string text(random() % 40, U'a');
        for (std::size_t changes = random() % 4; changes != 0 && !text.empty(); --changes) {
            std::size_t const at = random() % text.size();
            text[at] = alphabet[random() % std::size(alphabet)];
            text[(at + random() % 2) % text.size()] = alphabet[random() % std::size(alphabet)];
        }
        for (auto const& scan : scans) {
            ASSERT_EQ(scan.fast(text), scan.plain(text)) << scan.name << ", length " << text.size();
        }
        std::u32string other = text.substr(0, random() % (text.size() + 1)) + U"b";
        std::size_t const same = static_cast<std::size_t>(
            std::mismatch(text.begin(), text.end(), other.begin(), other.end()).first - text.begin());
        ASSERT_EQ(commonLength(text, other), same);
        ASSERT_EQ(isSame(text, other), text == other);
        ASSERT_TRUE(isSame(text, std::u32string(text)));
    }
    EXPECT_EQ(std::size(scans), 8u);
}

} // namespace
