// Builds an IRI from parts: nothing needs to be escaped by hand, whatever stands in a key or a value.
//
// Prints:
//   http://example.org/s%C3%B6k?q=a%2Bb+%26+c&page=2
//   The path reads /sök again

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <boost/locale/encoding_utf.hpp>

#include <iostream>

int main() {
    using namespace foundation::network;

    IRIArgs args;
    args.setScheme(u"http").setHost(u"example.org").setPath(u"/sök");
    args.appendQueryKeyValuePair(u"q", u"a+b & c", false, false);
    args.appendQueryKeyValuePair(u"page", u"2", false, false);
    IRI const iri(args);
    std::cout << iri << '\n'
              << "The path reads " << boost::locale::conv::utf_to_utf<char>(iri.getPath(Encoding::Raw))
              << " again\n";
}
