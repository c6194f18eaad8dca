#include "lookup/ResolverContext.hpp"

#include <foundation/core/except/InternalException.hpp>

#include "base/NeverDestroyed.hpp"

#include <boost/asio/error.hpp>
#include <boost/system/error_code.hpp>

#include <system_error>

namespace foundation::network {

namespace {

namespace ip = boost::asio::ip;
using Resolver = ip::tcp::resolver;

/// A standard error category for one of the resolver's. Boost's own conversion makes objects that are
/// destroyed when the process ends, when an exception that refers to them may still be alive.
class ResolverCategory : public std::error_category {
public:
    explicit ResolverCategory(boost::system::error_category const& category) : original(category) {}
    [[nodiscard]] char const* name() const noexcept override { return original.name(); }
    [[nodiscard]] std::string message(int value) const override { return original.message(value); }

private:
    boost::system::error_category const& original;
};

std::error_category const& standardCategory(boost::system::error_category const& category) {
    static base::NeverDestroyed<ResolverCategory> const netdb(boost::asio::error::get_netdb_category());
    static base::NeverDestroyed<ResolverCategory> const addrinfo(boost::asio::error::get_addrinfo_category());
    return category == boost::asio::error::get_netdb_category()      ? *netdb
           : category == boost::asio::error::get_addrinfo_category() ? *addrinfo
                                                                     : std::system_category();
}

// Without a message of our own, `what` is the category's text alone.
[[noreturn]] void fail(boost::system::error_code const& error) {
    throw core::except::detail::makeInternalException(
        std::system_error(error.value(), standardCategory(error.category())));
}

template <class... Question>
ResolverContext::Results ask(Resolver& resolver, Question const&... question) {
    boost::system::error_code error;
    ResolverContext::Results results = resolver.resolve(question..., error);
    if (error) {
        fail(error);
    }
    return ResolverContext::usable(std::move(results));
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
    for (auto const& entry : ask(resolver, name, std::string(), Resolver::address_configured)) {
        addresses.push_back(std::make_shared<InetAddressImpl>(entry.endpoint().address()));
    }
    return addresses;
}

std::shared_ptr<InetAddressImpl> ResolverContext::forwardLookupFirst(std::string const& name) {
    auto const results = ask(resolver, name, std::string(), Resolver::address_configured);
    return std::make_shared<InetAddressImpl>(results.begin()->endpoint().address());
}

std::string ResolverContext::reverseLookup(ip::address const& address) {
    return ask(resolver, ip::tcp::endpoint(address, 0)).begin()->host_name();
}

std::string ResolverContext::canonicalLookup(std::string const& name) {
    return ask(resolver, name, std::string(), Resolver::canonical_name).begin()->host_name();
}

} // namespace foundation::network
