#include <foundation/network/IdnConverter.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "platform/TextConverters.hpp"
#include "support/Iris.hpp"
#include "support/Threads.hpp"

#include <gtest/gtest.h>
#include <unicode/uvernum.h>

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
    // A label that decodes to one that looks encoded still: ICU marks it since version 76.
    bool const marks = U_ICU_VERSION_MAJOR_NUM >= 76;
    std::string const toAscii = marks ? "xn--xn--bcher-kv8a\x1A" : "xn--xn--bcher-kv8a";
    std::u16string const toUnicode = marks ? u"xn--xn--bcher-kv8a\x1A" : u"xn--b\u110Fcher";
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
        {u"A.xn--a", "a.xn--a\x1A", u"a.xn--a\x1A"},
        // What UTS #46 lets its users choose: no check of joiners, of mixed directions, of ASCII; no ß.
        {u"a\u200Cb", "ab", u"ab"}, {u"a\u05D0", "xn--a-0hc", u"a\u05D0"}, {u"a<b", "a<b", u"a<b"},
        {u"xn--xn--bcher-kv8a", toAscii, toUnicode},
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

TEST(Idn, FailsWithTheNameOfIcusError) {
    IdnConverter const converter;
    try {
        converter.toAscii(std::u16string(5000, u'ü'));
        FAIL();
    } catch (IdnConverterException const& e) {
        EXPECT_STREQ(e.what(), "U_INPUT_TOO_LONG_ERROR");
        static_assert(!std::is_base_of_v<foundation::core::except::IException, IdnConverterException>);
    }
    EXPECT_EQ(converter.toAscii(u"ü"), "xn--tda"); // the converter stays usable
}

TEST(Idn, CopiesConvertOnManyThreads) {
    IdnConverter const original;
    support::onThreads(8, [&original](std::size_t) {
        IdnConverter copy;
        copy = original;
        for (int round = 0; round < 500; ++round) {
            ASSERT_EQ(copy.toAscii(u"bücher.example"), "xn--bcher-kva.example");
            ASSERT_EQ(copy.toUnicode("xn--bcher-kva.example"), u"bücher.example");
        }
    });
}

} // namespace
