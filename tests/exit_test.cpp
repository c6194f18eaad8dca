// Objects with static lifetime may use the library until the very end, after its own statics would have gone.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <system_error>

namespace {

using namespace foundation::network;

std::exception_ptr failedLookup() {
    try {
        (void)InetAddress::getByName("no-such-host.invalid");
    } catch (...) {
        return std::current_exception();
    }
    return {};
}

std::string categoryOf(std::exception_ptr const& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (std::system_error const& e) {
        return std::string(e.code().category().name()) + ": " + e.code().message();
    }
}

// Made before the library's own statics, so it would go after them.
struct Last {
    ~Last() {
        bool const listed = NetworkInterface::listAll().size() == adapters;
        bool const looked = categoryOf(kept) == category && categoryOf(failedLookup()) == category;
        bool const parsed = IRI(u"../b%41").resolveAgainst(IRI(u"x:/c/./d")).toString(false) == u"x:/bA" &&
                            idn_to_ascii(u"b\u00FCcher") == "xn--bcher-kva";
        if (!listed || !looked || !parsed) {
            std::fputs("not the same at the end\n", stderr);
            std::_Exit(1);
        }
    }
    std::size_t adapters = 0;
    std::exception_ptr kept;
    std::string category;
} last;

} // namespace

int main() {
    last.adapters = NetworkInterface::listAll().size();
    last.kept = failedLookup();
    last.category = categoryOf(last.kept);
    return last.category.rfind("asio.netdb: ", 0) == 0 ? 0 : 1;
}
