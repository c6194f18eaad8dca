// A text is an address exactly where the system's function takes it, and each address comes back from its
// text and from its bytes.

#include "Input.hpp"

#include <foundation/network/InterfaceAddress.hpp>

#include <arpa/inet.h>
#include <array>

using namespace foundation::network;

int fuzz::holds(std::string_view input) {
    std::string const text(input);
    fuzz::Text const shown(text.begin(), text.end());
    auto const made = fuzz::unlessRefused<std::invalid_argument>([&] { return InetAddress(text); });
    if (text.find_first_of(std::string_view("%\0", 2)) == text.npos) { // neither scope nor an early end
        std::array<unsigned char, 16> bytes{};
        bool const four = inet_pton(AF_INET, text.c_str(), bytes.data()) == 1;
        bool const six = !four && inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1;
        require(made.has_value() == (four || six), "taken or refused unlike the system", shown);
        require(!made || made->bytes() ==
                             std::vector<unsigned char>(bytes.begin(), bytes.begin() + (four ? 4 : 16)),
                "other bytes", shown);
    }
    if (made) {
        bool const four = made->getVersion() == 4;
        auto const bytes = made->bytes();
        require(bytes.size() == (four ? 4 : 16), "a length", shown);
        require(InetAddress(made->toString()).bytes() == bytes, "its own text is another address", shown);
        require(InetAddress(bytes).toString() == made->toString().substr(0, made->toString().find('%')),
                "its own bytes are another address", shown);
        require(made->isMulticast() == (four ? bytes[0] >> 4 == 14 : bytes[0] == 255), "multicast", shown);
        auto const prefix = static_cast<unsigned short>(input.size() % 130);
        auto const onLink =
            fuzz::unlessRefused<std::out_of_range>([&] { return InterfaceAddress(*made, prefix); });
        require(onLink.has_value() == (prefix <= bytes.size() * 8), "a prefix", shown);
        require(!onLink || onLink->toString() == made->toString() + '/' + std::to_string(prefix), "text",
                shown);
    }
    return 0;
}
