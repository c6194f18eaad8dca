#include <foundation/network/HardwareAddress.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/Bits.hpp"

#include <stdexcept>

namespace foundation::network {

namespace {

// The value of a hexadecimal digit, 16 for another character.
unsigned int digitValue(char character) {
    unsigned int const decimal = static_cast<unsigned int>(character) - '0';
    unsigned int const letter = (static_cast<unsigned int>(character) | 0x20U) - 'a';
    return decimal <= 9 ? decimal : letter <= 5 ? letter + 10 : 16;
}

} // namespace

template class detail::ImmutableIterableRange<unsigned char>;

HardwareAddress::HardwareAddress(std::vector<unsigned char> bytes)
    : ImmutableIterableRange<unsigned char>(std::move(bytes)) {}

std::string HardwareAddress::toString() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (unsigned char const byte : *this) {
        if (!text.empty()) {
            text += ':';
        }
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

std::vector<unsigned char> HardwareAddress::bytes() const {
    return {begin(), end()};
}

HardwareAddress parseHardwareAddress(std::string_view text) {
    if (auto address = tryParseHardwareAddress(text)) {
        return *std::move(address);
    }
    throw core::except::detail::makeInternalException(
        std::invalid_argument("Invalid hardware address: " + std::string(text)));
}

std::optional<HardwareAddress> tryParseHardwareAddress(std::string_view text) {
    if (!text.empty() && text.size() % 3 != 2) {
        return std::nullopt;
    }
    char const separator = text.size() > 2 ? text[2] : ':';
    if (separator != ':' && separator != '-') {
        return std::nullopt;
    }
    std::vector<unsigned char> bytes;
    bytes.reserve((text.size() + 1) / 3);
    for (std::size_t at = 0; at < text.size(); at += 3) {
        unsigned int const high = digitValue(text[at]);
        unsigned int const low = digitValue(text[at + 1]);
        if (high > 15 || low > 15 || (at + 2 < text.size() && text[at + 2] != separator)) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<unsigned char>(high << 4U | low));
    }
    return HardwareAddress(std::move(bytes));
}

} // namespace foundation::network

std::size_t std::hash<foundation::network::HardwareAddress>::operator()(
    foundation::network::HardwareAddress const& address) const noexcept {
    std::uint64_t mixed = address.size();
    for (unsigned char const byte : address) {
        mixed = foundation::network::inet::mixed(mixed, byte);
    }
    return static_cast<std::size_t>(mixed);
}
