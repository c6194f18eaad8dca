#include <foundation/network/HardwareAddress.hpp>

#include <string_view>

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

} // namespace foundation::network
