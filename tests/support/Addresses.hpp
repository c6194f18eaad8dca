#pragma once

// The laws of addresses.

#include "support/Laws.hpp"

#include <foundation/network/InetAddress.hpp>

#include <arpa/inet.h>
#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace support {

// A text is an address exactly where the system's functions say so, with their bytes and their text, by the
// constructor as by tryParseAddress; each address comes back from its text and from its bytes. Returns
// whether the text was one.
inline bool addressHolds(std::string const& text) {
    using namespace foundation::network;
    std::optional<InetAddress> made;
    try {
        made = InetAddress(text);
    } catch (std::invalid_argument const&) {
    }
    require(tryParseAddress(text) == made, "tryParseAddress is of another mind", text);
    if (text.find_first_of(std::string("%\0", 2)) == text.npos) { // neither scope nor an early end
        std::vector<unsigned char> bytes(16);
        std::array<char, INET6_ADDRSTRLEN> written{};
        bool const four = inet_pton(AF_INET, text.c_str(), bytes.data()) == 1;
        bool const taken = four || inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1;
        inet_ntop(four ? AF_INET : AF_INET6, bytes.data(), written.data(), written.size());
        bytes.resize(four ? 4 : 16);
        require(made.has_value() == taken, "taken or refused unlike the system", text);
        require(!made || (made->bytes() == bytes && made->toString() == written.data()), "another address",
                text);
    }
    if (made) {
        std::string const whole = made->toString();
        auto const bytes = made->bytes();
        require(bytes.size() == (made->getVersion() == 4 ? 4 : 16), "a length", text);
        require(InetAddress(whole) == *made, "its own text is another address", text);
        require(InetAddress(bytes).toString() == whole.substr(0, whole.find('%')),
                "its own bytes are another address", text);
    }
    return made.has_value();
}

} // namespace support
