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

using Bytes = std::vector<unsigned char>;

// The bytes of a text, where the system takes it for an address, and the text that it writes for bytes.
inline std::optional<Bytes> systemBytes(std::string const& text) {
    Bytes bytes(16);
    bool const four = inet_pton(AF_INET, text.c_str(), bytes.data()) == 1;
    bool const taken = four || inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1;
    bytes.resize(four ? 4 : 16);
    return taken ? std::optional(bytes) : std::nullopt;
}
inline std::string systemText(Bytes const& bytes) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(bytes.size() == 4 ? AF_INET : AF_INET6, bytes.data(), text.data(), text.size());
}

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
        auto const bytes = systemBytes(text);
        require(made.has_value() == bytes.has_value(), "taken or refused unlike the system", text);
        require(!made || (made->bytes() == bytes && made->toString() == systemText(*bytes)),
                "another address", text);
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
