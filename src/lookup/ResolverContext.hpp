#pragma once

#include "inet/InetAddressImpl.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <memory>
#include <string>
#include <vector>

namespace foundation::network {

/// The resolver of one lookup; it lives as long as the call.
///
/// Throws: each operation, the internal `std::system_error`, with the value of the resolver's error. Its
/// category has the name and the messages of the resolver's and is never destroyed. Errors of the system have
/// `std::system_category()`.
class ResolverContext {
public:
    using Results = boost::asio::ip::tcp::resolver::results_type;

    /// The addresses of a host in the order of `getaddrinfo`.
    std::vector<std::shared_ptr<InetAddressImpl>> forwardLookupAll(std::string const& name);

    /// The first of them.
    std::shared_ptr<InetAddressImpl> forwardLookupFirst(std::string const& name);

    /// The name that `getnameinfo` has for an address; the numeric text if it has none.
    std::string reverseLookup(boost::asio::ip::address const& address);

    /// The canonical name of a host; `name` itself if the system has none.
    std::string canonicalLookup(std::string const& name);

    /// Returns `results`, or throws `host_not_found` if they are empty.
    static Results usable(Results results);

private:
    boost::asio::io_context context;
    boost::asio::ip::tcp::resolver resolver{context};
};

} // namespace foundation::network
