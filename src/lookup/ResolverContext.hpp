#pragma once

#include "inet/InetAddressImpl.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <memory>
#include <string>
#include <vector>

namespace foundation::network {

/// The private resolver of one lookup; it lives as long as the call. Each operation throws the internal
/// `std::system_error` with the value of the resolver's failure, and a category that has its name and
/// messages and is never destroyed; the system's own failures have `std::system_category()`.
class ResolverContext {
public:
    using Results = boost::asio::ip::tcp::resolver::results_type;

    /// The addresses of a host in the order of `getaddrinfo`.
    std::vector<std::shared_ptr<InetAddressImpl>> forwardLookupAll(std::string const& name);

    /// The first of them.
    std::shared_ptr<InetAddressImpl> forwardLookupFirst(std::string const& name);

    /// The name that `getnameinfo` has for an address: its numeric text where there is none.
    std::string reverseLookup(boost::asio::ip::address const& address);

    /// The canonical name of a host; `name` itself where the system has none.
    std::string canonicalLookup(std::string const& name);

    /// The same results. A success without an entry is a failure too: `host_not_found`.
    static Results usable(Results results);

private:
    boost::asio::io_context context;
    boost::asio::ip::tcp::resolver resolver{context};
};

} // namespace foundation::network
