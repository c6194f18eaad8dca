#include "inet/ResolverContext.hpp"

#include <foundation/core/except/InternalException.hpp>

#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>

#include <system_error>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using Resolver = ip::tcp::resolver;

// No message: the text is then the category's alone.
[[noreturn]] void fail(boost::system::error_code const& error) {
    std::error_category const& category = error.category();
    throw core::except::detail::makeInternalException(std::system_error(error.value(), category));
}

template <class Question>
ResolverContext::Results ask(Resolver& resolver, Question const& question) {
    ResolverContext::Results results;
    try {
        results = resolver.resolve(question);
    } catch (boost::system::system_error const& e) {
        fail(e.code());
    }
    return ResolverContext::usable(std::move(results));
}

Resolver::query queryFor(std::string const& name, Resolver::query::flags flags) {
    return {name, std::string(), flags};
}

} // namespace

ResolverContext::Results ResolverContext::usable(Results results) {
    if (results.empty()) {
        fail(boost::asio::error::host_not_found);
    }
    return results;
}

std::vector<std::shared_ptr<InetAddressImpl>> ResolverContext::forwardLookupAll(std::string const& name) {
    std::vector<std::shared_ptr<InetAddressImpl>> addresses;
    for (auto const& entry : ask(resolver, queryFor(name, Resolver::query::address_configured))) {
        addresses.push_back(std::make_shared<InetAddressImpl>(entry.endpoint().address()));
    }
    return addresses;
}

std::shared_ptr<InetAddressImpl> ResolverContext::forwardLookupFirst(std::string const& name) {
    auto const results = ask(resolver, queryFor(name, Resolver::query::address_configured));
    return std::make_shared<InetAddressImpl>(results.begin()->endpoint().address());
}

std::string ResolverContext::reverseLookup(ip::address const& address) {
    return ask(resolver, ip::tcp::endpoint(address, 0)).begin()->host_name();
}

std::string ResolverContext::canonicalLookup(std::string const& name) {
    return ask(resolver, queryFor(name, Resolver::query::canonical_name)).begin()->host_name();
}

} // namespace foundation::network
