#include "iri/grammar/Runs.hpp"
#include "support/Iris.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace foundation::network::iri::grammar;
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
        std::u32string text(random() % 100, U'a');
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
        std::size_t const from = random() % (text.size() + 1);
        ASSERT_EQ(find(text, U'%', from), std::min(text.find(U'%', from), text.size()));
        ASSERT_EQ(findPair(text, U'/', U'.', from), std::min(text.find(U"/.", from), text.size()));
        std::u16string const units(text.begin(), text.end());
        std::vector<std::size_t> places;
        forEachOf<u'%', u'/', 0xFFFF>(units, [&places](std::size_t at) { places.push_back(at); });
        for (std::size_t at = 0, i = 0; at != units.size(); ++at) {
            bool const wanted = units[at] == u'%' || units[at] == u'/' || units[at] == 0xFFFF;
            ASSERT_EQ(i != places.size() && places[i] == at, wanted);
            i += wanted ? 1 : 0;
        }
        ASSERT_EQ(isSame(text, other), text == other);
        ASSERT_TRUE(isSame(text, std::u32string(text)));
    }
    EXPECT_EQ(std::size(scans), 8u);
}

// A run beside its definition, at the end of the memory that may be read: of every length that the vector
// code and its ends treat differently, with each character once at each place of a row of another one.
template <ClassMask mask, Escapes escapes = Escapes::none>
std::size_t checkRuns(char32_t* endOfMemory) {
    std::vector<char32_t> characters{0x80,    0x9F,    0xA0,     0xFF,     0x100,      0x7FFF,
                                     0x8000,  0xD7FF,  0xD800,   0xFF11,   0xFFFF,     0x10021,
                                     0x10061, 0xE0061, 0x10FFFF, 0x110000, 0x80000061, 0xFFFFFF61};
    for (char32_t c = 0; c != 0x80; ++c) {
        characters.push_back(c);
    }
    std::size_t runs = 0;
    for (char32_t const filler : {U'1', U'語'}) {
        for (std::size_t length = 0; is<mask>(filler) && length != 52; ++length) {
            char32_t* const text = endOfMemory - length;
            for (std::size_t place = 0; place <= length; ++place) {
                for (char32_t const c : characters) {
                    std::fill(text, endOfMemory, filler);
                    if (place != length) {
                        text[place] = c;
                    }
                    bool const isEscape =
                        escapes == Escapes::percent && c == U'%' && length - place >= 3 && is<XDIGIT>(filler);
                    bool const goesOn = place == length || is<mask>(c) || isEscape;
                    EXPECT_EQ((endOfRun<mask, escapes>(text, endOfMemory)), text + (goesOn ? length : place))
                        << "U+" << std::hex << static_cast<unsigned>(c) << " at " << place << " of "
                        << length;
                    ++runs;
                }
            }
        }
    }
    return runs;
}

TEST(Runs, EndAtTheFirstCharacterOfNoClassOfTheirs) {
    auto const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    ASSERT_EQ(mprotect(static_cast<char*>(pages) + page, page, PROT_NONE), 0);
    auto* const end = reinterpret_cast<char32_t*>(static_cast<char*>(pages) + page);
    std::size_t const runs = checkRuns<SCHEME>(end) + checkRuns<DIGIT>(end) + checkRuns<XDIGIT>(end) +
                             checkRuns<IREG_NAME, Escapes::percent>(end) +
                             checkRuns<IUSERINFO, Escapes::percent>(end) + checkRuns<PATH>(end) +
                             checkRuns<IQUERY>(end);
    EXPECT_EQ(runs, (2u + 5 * 2) * 146 * 52 * 53 / 2); // two hold digits alone
    munmap(pages, 2 * page);
}

TEST(Transcoding, RefusesWhatIsNoCharacter) {
    constexpr std::pair<char32_t, char const*> rows[] = {
        {0xD800, "0xd800"}, {0xDFFF, "0xdfff"}, {0x110000, "0x110000"}, {0xFFFFFFFF, "0xffffffff"}};
    for (auto const& [c, named] : rows) {
        std::u32string const text = U"a\U0001F600" + std::u32string(1, c);
        std::string const words = std::string("Invalid UTF-32 code point U+") + named +
                                  " encountered while trying to encode UTF-16 sequence";
        EXPECT_EQ(support::thrown<std::out_of_range>([&] { (void)toUtf16(text); }), words);
        EXPECT_EQ(support::thrown<std::out_of_range>([&] { (void)toUtf8(text); }), words);
    }
}

} // namespace
