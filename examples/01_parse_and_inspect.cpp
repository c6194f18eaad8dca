// Takes an IRI apart and shows a part in its three forms.
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

#include <boost/locale/encoding_utf.hpp>

#include <iostream>

int main() {
    using boost::locale::conv::utf_to_utf; // text is UTF-16; a terminal wants UTF-8
    using foundation::network::Encoding;
    using foundation::network::IRI;

    IRI const iri(u"http://bücher.example:8080/a%20b/é?q=1");
    std::cout << "scheme    " << utf_to_utf<char>(iri.getScheme()) << '\n'
              << "host      " << utf_to_utf<char>(iri.getHost(Encoding::Raw)) << '\n'
              << "port      " << iri.getPortNumber() << '\n'
              << "path      " << utf_to_utf<char>(iri.getPath(Encoding::Raw)) << '\n'
              << "as text   " << utf_to_utf<char>(iri.getPath(Encoding::Iri)) << '\n'
              << "in ASCII  " << utf_to_utf<char>(iri.getPath(Encoding::Uri)) << '\n'
              << "fragment? " << (iri.hasFragment() ? "yes" : "no") << '\n'
              << "whole     " << utf_to_utf<char>(iri.toString(false)) << '\n';
}
