// Builds an IRI from parts: nothing needs to be escaped by hand, whatever stands in a key or a value.
//
// Prints:
//   http://example.org/s%C3%B6k?q=a%2Bb+%26+c&page=2
//   The path reads /sök again

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/Utf8.hpp>

#include <iostream>
#include <string>

int main() {
    using namespace foundation::network;

    std::string const words = "a+b & c"; // as a form gives them, in UTF-8
    IRIArgs args;
    args.setScheme(u"http").setHost(u"example.org").setPath(fromUtf8("/sök"));
    args.appendQueryKeyValuePair(u"q", fromUtf8(words), false, false);
    args.appendQueryKeyValuePair(u"page", u"2", false, false);
    IRI const iri(args);
    std::cout << iri << '\n' << "The path reads " << utf8(iri).getPath(Encoding::Raw) << " again\n";
}
