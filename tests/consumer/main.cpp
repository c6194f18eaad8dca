// Uses something of each subsystem, and exits with 0 if all of it works from outside the library.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/Version.hpp>

#include <iostream>
#include <sstream>
#include <unordered_set>

#if ZVFLNETWORK_VERSION < 1000
#error "There is no version before 0.1.0"
#endif

// Takes the version of the library, as its build has it.
int main(int argc, char** argv) {
    using namespace foundation::network;
    int failures = 0;
    auto const check = [&failures](bool holds, char const* what) {
        failures += holds ? 0 : 1;
        std::cout << (holds ? "ok      " : "FAILED  ") << what << '\n';
    };

    std::ostringstream version;
    version << ZVFLNETWORK_VERSION_MAJOR << '.' << ZVFLNETWORK_VERSION_MINOR << '.'
            << ZVFLNETWORK_VERSION_PATCH;
    check(argc == 2 && version.str() == argv[1], "the version of the headers");

    IRI const base(u"http://example.org/a/b");
    std::ostringstream text;
    text << IRI(u"../c").resolveAgainst(base) << ' ' << InetAddress("2001:DB8::1");
    check(text.str() == "http://example.org/c 2001:db8::1", "values written to a stream");
    check(std::unordered_set<IRI>{base, IRI(IRIArgs(base))}.size() == 1, "an IRI as a key");
    check(idn_to_ascii(u"b\u00FCcher.example") == "xn--bcher-kva.example", "a domain name");
    NetworkInterface::listAll();
    try {
        IRI const refused(u"a b");
        check(false, "a refusal");
    } catch (foundation::core::except::IInternalException const& e) {
        check(std::string(e.what()) == "IRI parsing failed", "a refusal, caught as the library's");
    }
    try {
        InetAddress const refused("here");
        check(false, "a refusal");
    } catch (std::invalid_argument const&) {
        check(true, "a refusal, caught as the standard's");
    }
    return failures;
}
