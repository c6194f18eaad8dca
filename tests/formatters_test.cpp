#include <foundation/network/fmt.hpp>
#include <foundation/network/format.hpp>

#include <fmt/ranges.h> // a hardware address is a range too, and must stay unambiguous
#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace {

using namespace foundation::network;

template <class Value>
std::string streamed(Value const& value) {
    std::ostringstream stream;
    stream << std::setw(24) << std::setfill('*') << std::left << value;
    return stream.str();
}

TEST(Formatters, AllWriteTheSameTextWithItsWidth) {
    IRI const iri(u"\u00E9:/\u00FC");
    InetAddress const address("2001:DB8::1");
    InterfaceAddress const onLink(address, 64);
    HardwareAddress const hardware({0, 0x1A, 0xFF});
    auto const row = [](auto const& value, std::string const& text) {
        EXPECT_EQ(streamed(value), text + std::string(24 - text.size(), '*'));
        EXPECT_EQ(fmt::format("{:*<24}", value), streamed(value));
#ifdef __cpp_lib_format
        EXPECT_EQ(std::format("{:*<24}", value), streamed(value));
#endif
    };
    row(iri, "\x1A:/%C3%BC");
    row(address, "2001:db8::1");
    row(onLink, "2001:db8::1/64");
    row(hardware, "00:1a:ff");
    EXPECT_EQ(fmt::format("{}", HardwareAddress()), "");
}

} // namespace
