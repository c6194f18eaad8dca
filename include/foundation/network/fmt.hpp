#pragma once

/// Formats values with the library {fmt}, 8.1 or newer, which must be installed.
///
///     #include <foundation/network/fmt.hpp>
///
///     fmt::print("{} is at {:>15}\n", iri, address);
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

#include <fmt/format.h>

namespace foundation::network::detail {

template <class Value>
struct FmtFormatter : fmt::formatter<fmt::string_view> {
    template <class Context>
    auto format(Value const& value, Context& context) const {
        return fmt::formatter<fmt::string_view>::format(printed(value), context);
    }
};

} // namespace foundation::network::detail

namespace fmt {

template <>
struct formatter<foundation::network::IRI>
    : foundation::network::detail::FmtFormatter<foundation::network::IRI> {};
template <>
struct formatter<foundation::network::InetAddress>
    : foundation::network::detail::FmtFormatter<foundation::network::InetAddress> {};
template <>
struct formatter<foundation::network::InterfaceAddress>
    : foundation::network::detail::FmtFormatter<foundation::network::InterfaceAddress> {};
template <>
struct formatter<foundation::network::InetNetwork>
    : foundation::network::detail::FmtFormatter<foundation::network::InetNetwork> {};
template <>
struct formatter<foundation::network::HardwareAddress>
    : foundation::network::detail::FmtFormatter<foundation::network::HardwareAddress> {};
template <>
struct formatter<foundation::network::Utf8View>
    : foundation::network::detail::FmtFormatter<foundation::network::Utf8View> {};
template <>
struct formatter<foundation::network::ParseFault>
    : foundation::network::detail::FmtFormatter<foundation::network::ParseFault> {};
template <>
struct formatter<foundation::network::QueryParameters>
    : foundation::network::detail::FmtFormatter<foundation::network::QueryParameters> {};

} // namespace fmt
