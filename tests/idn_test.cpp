#include <foundation/network/IdnConverter.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "platform/TextConverters.hpp"

#include <gtest/gtest.h>
#include <unicode/idna.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <thread>

namespace {

using namespace foundation::network;
using namespace std::string_literals;

TEST(TextConverters, ReplaceWhatTheOtherSideCantHold) {
    fl::i18n::codecvt_ustring_to_ascii const narrow(false);
    // U+0141 and U+FF41 end in the byte of "A" and "a".
    EXPECT_EQ(narrow.convert(u"a\u007F\u0080\u0141\uFF41\U0001F600\0z"s), "a\x7F\x1A\x1A\x1A\x1A\x1A\0z"s);
    fl::i18n::codecvt_ascii_to_ustring const widen(false);
    EXPECT_EQ(widen.convert("a\x7F\x80\xE9\0z"s), u"a\u007F\uFFFD\uFFFD\0z"s);
    fl::i18n::codecvt_wstring_to_ustring const fromWide(false);
    std::wstring const wide = {L'a', 0xD7FF, 0xD800, 0xDFFF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF, 0x110000, -1};
    EXPECT_EQ(fromWide.convert(wide), u"a\uD7FF\uFFFD\uFFFD\uE000\uFFFF\U00010000\U0010FFFF\uFFFD\uFFFD"s);
}

TEST(Idn, ConvertsKnownNames) {
    IdnConverter const converter;
    // clang-format off
    struct Row { std::u16string unicode; std::string ascii; std::u16string back; };
    Row const rows[] = {
        {u"", "", u""}, {u"bücher.example", "xn--bcher-kva.example", u"bücher.example"},
        {u"Example.ORG", "example.org", u"example.org"},
        {u"straße.example", "strasse.example", u"strasse.example"},
        {u"\u4F8B\u3048\u3002\u30C6\u30B9\u30C8", "xn--r8jz45g.xn--zckzah",
         u"\u4F8B\u3048.\u30C6\u30B9\u30C8"},
        {u"a..b", "a..b", u"a..b"}, {u"-under_score-", "-under_score-", u"-under_score-"},
        {std::u16string(300, u'A'), std::string(300, 'a'), std::u16string(300, u'a')},
        {u"A.xn--a", "a.xn--a\x1A", u"a.xn--a\u001A"}, // ICU marks the second label with U+FFFD
        // Invalid: it decodes to a label that looks encoded still.
        {u"xn--xn--bcher-kv8a", "xn--xn--bcher-kv8a", u"xn--b\u110Fcher"},
    };
    // clang-format on
    for (auto const& [unicode, ascii, back] : rows) {
        EXPECT_EQ(converter.toAscii(unicode), ascii);
        EXPECT_EQ(converter.convert(unicode), ascii);
        EXPECT_EQ(idn_to_ascii(unicode), ascii);
        EXPECT_EQ(converter.toUnicode(ascii), back);
        EXPECT_EQ(converter.convert(ascii), back);
        EXPECT_EQ(ascii_to_idn(ascii), back);
    }
}

std::u16string units(icu::UnicodeString const& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

// Labels of neighbouring letters out of every block of Unicode: ours is what ICU says when asked directly.
TEST(Idn, AgreesWithIcuInEveryScript) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::IDNA> const idna(icu::IDNA::createUTS46Instance(0, status));
    ASSERT_TRUE(U_SUCCESS(status));
    IdnConverter const converter;
    std::size_t rows = 0;
    std::size_t marked = 0;
    for (UChar32 first = 0x80; first < 0x32000; first += 3) {
        icu::UnicodeString label;
        for (UChar32 point = first; point < first + 5; ++point) {
            label.append(u_isdefined(point) ? point : UChar32('a'));
        }
        auto const name = label + u".Ex\u00E4mple";
        icu::IDNAInfo info;
        icu::UnicodeString ascii;
        icu::UnicodeString unicode;
        idna->nameToASCII(name, ascii, info, status);
        auto const ours = converter.toAscii(units(name));
        ASSERT_EQ(ours.size(), static_cast<std::size_t>(ascii.length()));
        for (std::size_t i = 0; i < ours.size(); ++i) {
            char16_t const unit = ascii[static_cast<int32_t>(i)];
            ASSERT_EQ(ours[i], unit < 0x80 ? static_cast<char>(unit) : '\x1A');
            marked += unit >= 0x80;
        }
        idna->nameToUnicode(icu::UnicodeString::fromUTF8(ours), unicode, info, status);
        ASSERT_EQ(converter.toUnicode(ours), units(unicode));
        ASSERT_TRUE(U_SUCCESS(status));
        ++rows;
    }
    EXPECT_EQ(rows, 68'224u);
    EXPECT_GT(marked, 1000u); // invalid labels were among them
}

TEST(Idn, FailsWithTheNameOfIcusError) {
    IdnConverter const converter;
    try {
        converter.toAscii(std::u16string(5000, u'ü'));
        FAIL();
    } catch (IdnConverterException const& e) {
        EXPECT_STREQ(e.what(), "U_INPUT_TOO_LONG_ERROR");
        std::exception const& base = e;
        EXPECT_EQ(dynamic_cast<foundation::core::except::IException const*>(&base), nullptr);
    }
    EXPECT_EQ(converter.toAscii(u"ü"), "xn--tda"); // the converter stays usable
    IdnConverterException renamed("first");
    IdnConverterException const other("second");
    renamed = other;
    EXPECT_STREQ(renamed.what(), "second");
}

TEST(Idn, CopiesConvertOnManyThreads) {
    IdnConverter original;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([copy = original] {
            for (int round = 0; round < 500; ++round) {
                ASSERT_EQ(copy.toAscii(u"bücher.example"), "xn--bcher-kva.example");
                ASSERT_EQ(copy.toUnicode("xn--bcher-kva.example"), u"bücher.example");
            }
        });
    }
    IdnConverter const moved = std::move(original);
    EXPECT_EQ(moved.toAscii(u"Ä"), "xn--4ca");
    original = moved;
    EXPECT_EQ(original.toAscii(u"Ä"), "xn--4ca");
    for (auto& thread : threads) {
        thread.join();
    }
}

} // namespace
