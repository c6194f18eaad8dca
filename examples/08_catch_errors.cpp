// What the library throws is caught as the standard exception that it is, or as the library's own.
//
// Prints:
//   not an IRI: IRI parsing failed
//   and why: U+0020 cannot stand in a host, at offset 8
//   no such part: Item not set: Query
//   not an address: Can not create InetAddress from 5 elements. Vector must have 0, 4 or 16 elements.
//   not decodable: Invalid UTF-8 sequence encountered while trying to encode UTF-32 character

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/ParseResult.hpp>

#include <iostream>
#include <stdexcept>

int main() {
    using namespace foundation::network;

    try {
        IRI const iri(u"http://a b/");
    } catch (std::logic_error const& e) { // the text is at fault
        std::cout << "not an IRI: " << e.what() << '\n';
    }
    if (auto const result = tryParse("http://a b/"); !result) { // asked, and nothing thrown
        std::cout << "and why: " << result.error() << '\n';
    }
    try {
        IRI(u"http://a/").getQuery(Encoding::Raw);
    } catch (std::runtime_error const& e) { // asked for what is not there: look with hasQuery() first
        std::cout << "no such part: " << e.what() << '\n';
    }
    try {
        InetAddress const address(std::vector<unsigned char>(5));
    } catch (foundation::core::except::IInternalException const& e) { // any check of this library
        std::cout << "not an address: " << e.what() << '\n';
    }
    try {
        IRI(u"http://a/%C0%AF").getPath(Encoding::Raw);
    } catch (std::exception const& e) { // anything
        std::cout << "not decodable: " << e.what() << '\n';
    }
}
