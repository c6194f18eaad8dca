#pragma once

/// Formats values with `std::format` where the compiler's library has it (C++20); it defines no
/// formatter elsewhere.
///
///     #include <foundation/network/format.hpp>
///
///     std::format("{} is at {:>15}", iri, address);
///
/// Each value is formatted as `operator<<` writes it, and takes what a string takes: width, fill,
/// precision. A width counts columns here. The width of a stream counts bytes, of which a text beyond ASCII
/// has more than columns; `utf8(iri)` and `QueryParameters` can have such a text.

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/ParseFault.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/Utf8.hpp>
#include <foundation/network/detail/Printed.hpp>

#include <string_view>

#if __has_include(<version>)
#include <version>
#endif

#ifdef __cpp_lib_format
#include <format>

namespace foundation::network::detail {

template <class Value>
struct StdFormatter : std::formatter<std::string_view> {
    template <class Context>
    auto format(Value const& value, Context& context) const {
        return std::formatter<std::string_view>::format(printed(value), context);
    }
};

} // namespace foundation::network::detail

namespace std {

template <>
struct formatter<foundation::network::IRI>
    : foundation::network::detail::StdFormatter<foundation::network::IRI> {};
template <>
struct formatter<foundation::network::InetAddress>
    : foundation::network::detail::StdFormatter<foundation::network::InetAddress> {};
template <>
struct formatter<foundation::network::InterfaceAddress>
    : foundation::network::detail::StdFormatter<foundation::network::InterfaceAddress> {};
template <>
struct formatter<foundation::network::InetNetwork>
    : foundation::network::detail::StdFormatter<foundation::network::InetNetwork> {};
template <>
struct formatter<foundation::network::HardwareAddress>
    : foundation::network::detail::StdFormatter<foundation::network::HardwareAddress> {};
template <>
struct formatter<foundation::network::Utf8View>
    : foundation::network::detail::StdFormatter<foundation::network::Utf8View> {};
template <>
struct formatter<foundation::network::ParseFault>
    : foundation::network::detail::StdFormatter<foundation::network::ParseFault> {};
template <>
struct formatter<foundation::network::QueryParameters>
    : foundation::network::detail::StdFormatter<foundation::network::QueryParameters> {};

} // namespace std

#endif
