#pragma once

// A network told bit by bit, without a word or a mask, and the laws that networks are held to by it.

#include "support/Addresses.hpp"

#include <foundation/network/InetNetwork.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>

namespace support {

inline bool bitOf(Bytes const& bytes, std::size_t at) {
    return ((bytes[at / 8] >> (7 - at % 8)) & 1) != 0;
}
inline void setBit(Bytes& bytes, std::size_t at, bool value) {
    auto const bit = static_cast<unsigned char>(1 << (7 - at % 8));
    bytes[at / 8] = static_cast<unsigned char>(value ? bytes[at / 8] | bit : bytes[at / 8] & ~bit);
}

struct ReferenceNetwork {
    Bytes bytes; // with host bits
    std::size_t prefix;

    // The address with its host bits set or cleared.
    Bytes filled(bool value) const {
        Bytes result = bytes;
        for (std::size_t at = prefix; at != bytes.size() * 8; ++at) {
            setBit(result, at, value);
        }
        return result;
    }
    // The addresses before the first and behind the last one; beyond all there are, those of the other end.
    Bytes below() const {
        Bytes result = filled(false);
        for (std::size_t at = result.size(); at-- > 0 && result[at]-- == 0;) {
        }
        return result;
    }
    Bytes above() const {
        Bytes result = filled(true);
        for (std::size_t at = result.size(); at-- > 0 && ++result[at] == 0;) {
        }
        return result;
    }
    bool sharesBits(Bytes const& other, std::size_t count) const {
        bool same = other.size() == bytes.size();
        for (std::size_t at = 0; same && at != count; ++at) {
            same = bitOf(bytes, at) == bitOf(other, at);
        }
        return same;
    }
    bool contains(Bytes const& address) const { return sharesBits(address, prefix); }
    bool contains(ReferenceNetwork const& other) const {
        return prefix <= other.prefix && contains(other.bytes);
    }
    bool overlaps(ReferenceNetwork const& other) const {
        return sharesBits(other.bytes, std::min(prefix, other.prefix));
    }
    bool hasHostBits() const { return bytes != filled(false); }
    auto ordered() const { return std::tuple(bytes.size(), filled(false), prefix); }
    std::string toString() const { return systemText(filled(false)) + '/' + std::to_string(prefix); }
};

// All that is told of two networks and of the addresses that they were made of.
inline void networksHold(ReferenceNetwork const& a, ReferenceNetwork const& b) {
    using namespace foundation::network;
    InetAddress const address(a.bytes), other(b.bytes);
    Bytes const ones(a.bytes.size(), 0xFF);
    auto const prefix = static_cast<unsigned short>(a.prefix);
    std::string const about = address.toString() + " " + a.toString() + " " + b.toString();
    InetNetwork const left = InetNetwork::masked(address, prefix);
    InetNetwork const right = InetNetwork::masked(other, static_cast<unsigned short>(b.prefix));
    require(left.toString() == a.toString(), "the text", about);
    require(InetNetwork(left.toString()) == left && tryParseNetwork(left.toString()) == left,
            "another network by its text", about);
    require(left.getFirst().bytes() == a.filled(false) && left.getLast().bytes() == a.filled(true),
            "the first or the last address", about);
    require(left.getNetmask().bytes() == ReferenceNetwork{ones, a.prefix}.filled(false) &&
                left.getPrefixLength() == prefix,
            "the mask", about);
    bool const broadcasts = a.bytes.size() == 4 && prefix < 31;
    require(left.getBroadcast() == (broadcasts ? std::optional(left.getLast()) : std::nullopt),
            "the broadcast", about);
    require(InetNetwork(left.getFirst(), prefix) == left, "another network by its first address", about);
    require(getNetwork(InterfaceAddress(address, prefix)) == left, "the network of an adapter", about);
    std::string const refusal = "Invalid network: " + address.toString() + "/" + std::to_string(prefix);
    require(thrown<std::invalid_argument>([&] { (void)InetNetwork(address, prefix); }) ==
                (a.hasHostBits() ? refusal : "nothing thrown"),
            "host bits", about);
    require(left.contains(address) && left.contains(left) && left.overlaps(left), "itself", about);
    require(left.contains(left.getFirst()) && left.contains(left.getLast()), "the ends", about);
    require(left.contains(other) == a.contains(b.bytes), "an address in it", about);
    require(left.contains(right) == a.contains(b), "a network in it", about);
    require(left.overlaps(right) == a.overlaps(b) && right.overlaps(left) == a.overlaps(b), "an overlap",
            about);
    bool const same = a.ordered() == b.ordered();
    require((left == right) == same && (left != right) == !same, "equality", about);
    require((left < right) == (a.ordered() < b.ordered()), "order", about);
    require((std::hash<InetNetwork>()(left) == std::hash<InetNetwork>()(right)) == same, "hash", about);
}

// A text is a network exactly where a reference implementation takes it, with the system's functions for the
// address. Returns whether it was one.
inline bool networkHolds(std::string const& text) {
    using namespace foundation::network;
    std::string made, expected = std::string("! Invalid network: ") + text.c_str(); // what() ends at a zero
    try {
        made = InetNetwork(text).toString();
    } catch (std::logic_error const& e) { // std::invalid_argument and std::out_of_range are of its kind
        made = std::string("! ") + e.what();
    }
    std::size_t const slash = text.rfind('/');
    if (slash != text.npos && text.find_first_of(std::string_view("%\0", 2)) == text.npos) {
        auto const bytes = systemBytes(text.substr(0, slash));
        std::string const digits = text.substr(slash + 1);
        bool const number = !digits.empty() && digits.find_first_not_of("0123456789") == digits.npos &&
                            (digits == "0" || digits[0] != '0');
        if (bytes && number) {
            std::size_t const prefix = digits.size() > 3 ? 1000 : std::stoul(digits);
            if (prefix > bytes->size() * 8) {
                expected = "! prefix length too large";
            } else if (ReferenceNetwork const plain{*bytes, prefix}; !plain.hasHostBits()) {
                expected = plain.toString();
            }
        }
    } else {
        made = made == "! prefix length too large" ? expected : made; // of an address with a scope
    }
    require(made == expected, "taken or refused unlike the reference", text, made, expected);
    require(tryParseNetwork(text).has_value() == (made[0] != '!'), "tryParseNetwork is of another mind",
            text);
    return made[0] != '!';
}

} // namespace support
