#include <foundation/network/FileIri.hpp>
#include <foundation/network/HostAddress.hpp>

#include "support/Generator.hpp"
#include "support/Laws.hpp"

#include <gtest/gtest.h>

namespace {

using namespace support;
using foundation::network::fileFromIri;
using foundation::network::getHostAddress;
using foundation::network::IRIArgs;
using foundation::network::iriFromFile;
using Text = std::u16string;

// There and back, byte by byte; the IRI is one that its text parses to, in ASCII as well.
void thereAndBack(std::string const& path, bool thoroughly = true) {
    IRI const iri = iriFromFile(path);
    require(fileFromIri(iri).native() == path, "another path", iri.toString(false));
    IRI const again(iri.toString(false));
    require(again == iri && (!thoroughly || answers(again) == answers(iri)), "other answers",
            iri.toString(false));
    require(fileFromIri(IRI(iri.toAsciiString(true))).native() == path, "another path by ASCII",
            iri.toString(false));
}

TEST(FileIri, GoesThereAndBack) {
    // clang-format off
    struct Row { std::string path; Text iri; };
    Row const rows[] = {
        {"/", u"file:///"}, {"/a/b", u"file:///a/b"}, {"/./../a/..", u"file:///./../a/.."},
        {"/a b", u"file:///a%20b"}, {"/50%", u"file:///50%25"}, {"/%41%2F", u"file:///%2541%252F"},
        {"/?#[]\\", u"file:///%3F%23%5B%5D%5C"}, {"/a:b@!$&'()*+,;=-._~", u"file:///a:b@!$&'()*+,;=-._~"},
        // No host; no UTF-8; what turns the text around; private, none, a control.
        {"//x", u"file:////x"}, {"///x//", u"file://///x//"},
        {"/\xC3\xA9\xF0\x9F\x98\x80", u"file:///\u00E9\U0001F600"},
        {"/\xFF\xC3/\xED\xA0\x80", u"file:///%FF%C3/%ED%A0%80"}, {"/\xE2\x80\xAE", u"file:///%E2%80%AE"},
        {"/\xEE\x80\x80\xEF\xBF\xBE\xC2\x85", u"file:///%EE%80%80%EF%BF%BE%C2%85"}, {"/\n\x7F", u"file:///%0A%7F"},
    };
    // clang-format on
    for (auto const& [path, iri] : rows) {
        EXPECT_EQ(iriFromFile(path).toString(false), iri) << path;
        thereAndBack(path);
    }
    EXPECT_EQ(std::size(rows), 15u);
    for (int first = 1; first != 256; ++first) {
        thereAndBack({'/', static_cast<char>(first)});
        for (int second = 1; second != 256; second += 3) {
            thereAndBack({'/', static_cast<char>(first), static_cast<char>(second), '4', '1'}, false);
        }
    }
    Generator generator(41);
    for (int round = 0; round != 3000; ++round) {
        std::string path = "/";
        for (std::size_t length = generator.below(12); length != 0; --length) {
            path += static_cast<char>(1 + generator.below(255));
        }
        thereAndBack(path);
    }
}

TEST(FileIri, TakesWhatIsLocal) {
    // clang-format off
    struct Row { Text iri; std::string path; };
    Row const rows[] = {
        {u"file:/a", "/a"}, {u"FILE:///a", "/a"}, {u"fIle://LOCALhost/a", "/a"}, {u"file:////h/a", "//h/a"},
        {u"file:/.//h/a", "/.//h/a"}, {u"file:///%2e%2e/%c3%A9", "/../\xC3\xA9"}, {u"file:///%", "/%"},
        {u"file:///%4\uFF11", "/%4\xEF\xBC\x91"}, {u"file:///c:/a%5Cb", "/c:/a\\b"},
    };
    // clang-format on
    for (auto const& [iri, path] : rows) {
        EXPECT_EQ(fileFromIri(IRI(iri)).native(), path) << show(iri);
    }
    EXPECT_EQ(std::size(rows), 9u);
    EXPECT_EQ(fileFromIri(IRI(IRIArgs().setScheme(u"file").setPath(u"/a b%41"))).native(), "/a b%41");
}

TEST(FileIri, RefusesTheRest) {
    // clang-format off
    Text const refused[] = {
        u"", u"/a", u"http:///a", u"files:///a", u"fil\u00E9:///a", u"file:", u"file:a", u"file://", u"file:?q",
        u"file://h/a", u"file://localhos/a", u"file://localhost./a", u"file://%6Cocalhost/a",
        u"file://loca\u2113host/a", u"file://127.0.0.1/a", u"file://u@/a", u"file://u@localhost/a", u"file://:80/a",
        u"file://localhost:0/a", u"file:///a?", u"file:///a?q", u"file:///a#", u"file:///a%00", u"file:///a%2Fb",
        u"file:///a%2fb",
    };
    // clang-format on
    for (Text const& text : refused) {
        EXPECT_EQ(thrown<std::logic_error>([&] { (void)fileFromIri(IRI(text)); }),
                  "Not the IRI of a local file")
            << show(text);
    }
    EXPECT_EQ(std::size(refused), 25u);
    EXPECT_THROW((void)fileFromIri(IRI()), std::logic_error);
    // A zero byte names no file: it is written, and not read.
    EXPECT_EQ(iriFromFile(std::string("/a\0b", 4)).toString(false), u"file:///a%00b");
    for (char const* const path : {"", "a", "./a", "..", "~/a"}) {
        EXPECT_EQ(thrown<std::logic_error>([&] { (void)iriFromFile(path); }), "Path must be absolute")
            << path;
    }
}

TEST(HostAddress, IsTheAddressThatStandsThere) {
    // clang-format off
    struct Row { Text iri; std::string address; }; // none where empty
    Row const rows[] = {
        {u"//192.0.2.1", "192.0.2.1"}, {u"x://u@255.255.255.255:80/", "255.255.255.255"}, {u"//[::]", "::"},
        {u"//[2001:DB8::1]:80", "2001:db8::1"}, {u"//[1:2:3:4:5:6:7::]", "1:2:3:4:5:6:7:0"},
        {u"//[1:2:3:4:5:6:1.2.3.4]", "1:2:3:4:5:6:102:304"}, {u"//[::ffff:1.2.3.4]", "::ffff:1.2.3.4"}, {u"", ""},
        {u"x:1.2.3.4", ""}, {u"//", ""}, {u"//localhost", ""}, {u"//127.1", ""}, {u"//2130706433", ""},
        {u"//0x7F.0.0.1", ""}, {u"//01.2.3.4", ""}, {u"//1.2.3.256", ""}, {u"//1.2.3.4.", ""}, {u"//1.2.3.4.5", ""},
        {u"//%31.2.3.4", ""}, {u"//1.2.3.\uFF14", ""}, {u"//%5B%3A%3A1%5D", ""}, {u"//[v1.a]", ""},
        {u"//[v1.::1]", ""}, {u"//[\uFF21::\uFF10]", ""},
    };
    // clang-format on
    for (auto const& [iri, address] : rows) {
        auto const found = getHostAddress(IRI(iri));
        EXPECT_EQ(found ? found->toString() : "", address) << show(iri);
    }
    EXPECT_EQ(std::size(rows), 24u);
    EXPECT_EQ(getHostAddress(IRI(IRIArgs().setHost(u"192.0.2.1")))->toString(), "192.0.2.1");
    EXPECT_FALSE(getHostAddress(IRI(IRIArgs().setHost(u"[::1]"))));
    // Each host that the grammar takes in brackets is an address of the system, or of a future version.
    Generator generator(42);
    int literals = 0;
    for (int round = 0; round != 60000; ++round) {
        Text host = u"[";
        for (std::size_t groups = 1 + generator.below(9); groups != 0; --groups) {
            // clang-format off
            constexpr char16_t const* pieces[] = {u":", u"::", u"a:", u"0:", u"1:2:", u"FFff:", u"12345:",
                                                  u"01.2.3.4", u"1.2.3.4", u"7"};
            // clang-format on
            host += generator.pick(pieces);
        }
        auto const iri = parsed(u"//" + host + u"]");
        literals += iri.has_value();
        require(!iri || getHostAddress(*iri).has_value(), "no address", host);
    }
    EXPECT_GT(literals, 1000);
}

} // namespace
