#include <foundation/network/fmt.hpp>
#include <foundation/network/format.hpp>

#include <fmt/ranges.h> // a hardware address and parameters are ranges too, and must stay unambiguous
#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace {

using namespace foundation::network;

template <class Value>
std::string streamed(Value const& value) {
    std::ostringstream stream;
    stream << std::setw(48) << std::setfill('*') << std::left << value;
    return stream.str();
}

TEST(Formatters, AllWriteTheSameTextWithItsWidth) {
    IRI const iri(u"\u00E9:/\u00FC");
    InetAddress const address("2001:DB8::1");
    InterfaceAddress const onLink(address, 64);
    HardwareAddress const hardware({0, 0x1A, 0xFF});
    auto const row = [](auto const& value, std::string const& text) {
        EXPECT_EQ(streamed(value), text + std::string(48 - text.size(), '*'));
        EXPECT_EQ(fmt::format("{:*<48}", value), streamed(value));
#ifdef __cpp_lib_format
        EXPECT_EQ(std::format("{:*<48}", value), streamed(value));
#endif
    };
    row(iri, "\x1A:/%C3%BC");
    row(address, "2001:db8::1");
    row(onLink, "2001:db8::1/64");
    row(InetNetwork("2001:DB8::/33"), "2001:db8::/33");
    row(hardware, "00:1a:ff");
    row(utf8(IRI(u"http://h/a%20b")), "http://h/a%20b");
    row(ParseFault{8, IRIComponent::Host, ParseReason::NotInHost, U' '},
        "U+0020 cannot stand in a host, at offset 8");
    row(QueryParameters(u"a+b=%26&c"), "a+b=%26&c");
    EXPECT_EQ(fmt::format("{}", HardwareAddress()), "");
}

// Beyond ASCII a stream's width counts bytes, a format's columns: so it is with any string.
TEST(Formatters, WriteUtf8ThatIsNotAscii) {
    IRI const iri(u"\u00E9:/\u00FC");
    std::string const text = "\u00E9:/\u00FC"; // four columns, six bytes
    std::ostringstream stream;
    stream << std::setw(6) << utf8(iri);
    EXPECT_EQ(stream.str(), text);
    EXPECT_EQ(fmt::format("{:>6}", utf8(iri)), "  " + text);
    QueryParameters const parameters(u"\u00E9=1");
    EXPECT_EQ(fmt::format("{:>6}", parameters), "   \u00E9=1");
#ifdef __cpp_lib_format
    EXPECT_EQ(std::format("{:>6}", utf8(iri)), "  " + text);
    EXPECT_EQ(std::format("{:>6}", parameters), "   \u00E9=1");
#endif
}

} // namespace
