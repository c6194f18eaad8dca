#include <foundation/network/HardwareAddress.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "inet/Bits.hpp"
#include "text/Escapes.hpp"

#include <stdexcept>

namespace foundation::network {

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

std::optional<HardwareAddress> tryParseHardwareAddress(std::string_view digits) {
    if (!digits.empty() && digits.size() % 3 != 2) {
        return std::nullopt;
    }
    char const separator = digits.size() > 2 ? digits[2] : ':';
    if (separator != ':' && separator != '-') {
        return std::nullopt;
    }
    std::vector<unsigned char> bytes;
    bytes.reserve((digits.size() + 1) / 3);
    for (std::size_t at = 0; at < digits.size(); at += 3) {
        int const high = text::hexValue(digits[at]);
        int const low = text::hexValue(digits[at + 1]);
        if (high < 0 || low < 0 || (at + 2 < digits.size() && digits[at + 2] != separator)) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<unsigned char>(high * 16 | low));
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
