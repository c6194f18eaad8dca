// Takes an IRI apart and shows a component in its three forms.
//
// Prints:
//   scheme    http
//   host      bücher.example
//   port      8080
//   path      /a b/é
//   as text   /a%20b/é
//   in ASCII  /a%20b/%C3%A9
//   fragment? no
//   whole     http://bücher.example:8080/a%20b/é?q=1

#include <foundation/network/IRI.hpp>
#include <foundation/network/Utf8.hpp>

#include <iostream>

int main() {
    using foundation::network::Encoding;
    using foundation::network::IRI;
    using foundation::network::iriFromUtf8;
    using foundation::network::utf8;

    IRI const iri = iriFromUtf8("http://bücher.example:8080/a%20b/é?q=1");
    auto const text = utf8(iri); // the getters in UTF-8
    std::cout << "scheme    " << text.getScheme() << '\n'
              << "host      " << text.getHost(Encoding::Raw) << '\n'
              << "port      " << iri.getPortNumber() << '\n'
              << "path      " << text.getPath(Encoding::Raw) << '\n'
              << "as text   " << text.getPath(Encoding::Iri) << '\n'
              << "in ASCII  " << text.getPath(Encoding::Uri) << '\n'
              << "fragment? " << (iri.hasFragment() ? "yes" : "no") << '\n'
              << "whole     " << text << '\n';
}
