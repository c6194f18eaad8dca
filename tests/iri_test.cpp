#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include "support/Generator.hpp"
#include "support/Laws.hpp"
#include "support/Threads.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <optional>
#include <vector>

namespace {

using namespace foundation::network;
using namespace support;
using Text = std::u16string;

TEST(IriParse, RefusesWhatIsNoReference) { // the words for what is no UTF-16 stand with those of tryParse
    EXPECT_EQ(thrown<std::logic_error>([] { IRI iri(u"a b"); }), "IRI parsing failed");
    // Behind the stretches that are converted at once, and across their ends.
    for (std::size_t length = 0; length != 600; ++length) {
        EXPECT_THROW(IRI(Text(length, u'a') + Text(1, char16_t(0xDFFF))), std::out_of_range);
        Text const pair = Text(length, u'a') + u"\U0001F600" + Text(20, u'b');
        EXPECT_EQ(IRI(pair).toString(false), pair);
        EXPECT_EQ(IRI(pair).getPath(Encoding::Raw), pair);
    }
}

TEST(IriParse, AnAbsentPartIsNamed) {
    IRI const none;
    auto const refusal = [](auto ask) { return thrown<std::runtime_error>(ask); };
    EXPECT_EQ(refusal([&] { none.getScheme(); }), "No scheme");
    EXPECT_EQ(refusal([&] { none.getPort(); }), "No port");
    EXPECT_EQ(refusal([&] { none.getPortNumber(); }), "No port");
    EXPECT_EQ(refusal([&] { none.getAuthority(Encoding::UriStrict); }),
              "Item not set: Host: Host (in getAuthority)");
    EXPECT_EQ(refusal([&] { none.getSchemeSpecificPart(Encoding::Raw); }), "Item not set: Path");
    EXPECT_EQ(refusal([&] { none.getUserInfo(Encoding::Raw); }), "Item not set: UserInfo");
    EXPECT_EQ(refusal([&] { none.getHost(Encoding::Iri); }), "Item not set: Host");
    EXPECT_EQ(refusal([&] { none.getQuery(Encoding::Uri); }), "Item not set: Query");
    EXPECT_EQ(refusal([&] { none.getFragment(Encoding::IriStrict); }), "Item not set: Fragment");
    EXPECT_EQ(IRI(u"").getPath(Encoding::Iri), u"");
}

TEST(IriText, WholeAndAuthorityInEveryForm) {
    IRI const iri(u"http://u%41@h\u00E9:08/a%20%/\u00E9?\uE000%4#%zz");
    Text const expected[] = {
        u"//uA@h\u00E9:08/a %/\u00E9?\uE000%4", u"//u%41@h\u00E9:08/a%20%/\u00E9?\uE000%4",
        u"//u%41@h\u00E9:08/a%20%25/\u00E9?\uE000%254", u"//u%41@h%C3%A9:08/a%20%/%C3%A9?%EE%80%80%4",
        u"//u%41@h%C3%A9:08/a%20%25/%C3%A9?%EE%80%80%254"};
    for (std::size_t i = 0; i != std::size(encodings); ++i) {
        EXPECT_EQ(iri.getSchemeSpecificPart(encodings[i]), expected[i]);
        EXPECT_EQ(iri.getAuthority(encodings[i]), expected[i].substr(2, expected[i].find(u'/', 2) - 2));
    }
    EXPECT_EQ(iri.toString(false), u"http:" + expected[1] + u"#%zz");
    EXPECT_EQ(iri.toString(true), u"http:" + expected[2] + u"#%25zz");
    EXPECT_EQ(iri.toAsciiString(false), u"http:" + expected[3] + u"#%zz");
    EXPECT_EQ(iri.toAsciiString(true), u"http:" + expected[4] + u"#%25zz");
    EXPECT_EQ(iri.getFragment(Encoding::IriStrict), u"%25zz");
    EXPECT_EQ(IRI(u"http://[::1]/%").toString(true), u"http://[::1]/%25");
    EXPECT_EQ(IRI(IRIArgs().setHost(u"h").setUserInfo(u"%")).getUserInfo(Encoding::IriStrict), u"%");
    EXPECT_EQ(IRI(u"//[::1]").getHost(Encoding::IriStrict), u"[::1]");
    EXPECT_EQ(IRI(IRIArgs().setQuery(u"]").setFragment(u"[")).toString(true), u"?%5D#%5B");
    EXPECT_EQ(IRI().toAsciiString(true), u"");
    EXPECT_EQ(IRI(u"").toString(true), u"");
}

TEST(IriThreads, OneValueAnswersManyAsOne) {
    // The first parse of this process is raced as well: ctest runs each test in a process of its own.
    Text const text = u"http://u%41@h\u00E9:8/a%20b/\u00E9?q%C3%A9=%25#f%";
    auto const questions = support::questions();
    ASSERT_EQ(questions.size(), 53u);
    for (int round = 0; round < 30; ++round) {
        std::optional<IRI> shared, base;
        std::once_flag made;
        std::vector<std::vector<Text>> given(16, std::vector<Text>(questions.size()));
        onThreads(given.size(), [&](std::size_t i) {
            IRI own(text);
            std::call_once(made, [&] {
                shared.emplace(round % 2 == 0 ? IRI(text) : IRI(IRIArgs(own)));
                base.emplace(u"http://u%41@h\u00E9:8/./c?q");
            });
            Generator order(i);
            for (int step = 0; step < 100; ++step) {
                std::size_t const which = order.below(questions.size());
                bool const ofCopy = order.chance(30); // which is assigned and swapped beside the readers
                IRI copy(u"x");
                ofCopy ? (copy = *shared).swap(own) : (void)0;
                given[i].at(which) = questions[which](ofCopy ? own : *shared, *base);
            }
        });
        for (std::size_t which = 0; which != questions.size(); ++which) {
            Text const alone = questions[which](round % 2 == 0 ? IRI(text) : IRI(IRIArgs(IRI(text))), *base);
            for (auto const& answer : given) {
                ASSERT_TRUE(answer[which].empty() || answer[which] == alone) << which << show(answer[which]);
            }
        }
    }
}

} // namespace
