// An IRI keeps its host as it was written; a name server wants the ASCII form of UTS #46.
//
// Prints:
//   http://b%C3%BCcher.example/a is at xn--bcher-kva.example
//   and that reads bücher.example

#include <foundation/network/IRI.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/Utf8.hpp>

#include <iostream>

int main() {
    using namespace foundation::network;

    IdnConverter const idn; // the first of a process loads ICU's data, all others are cheap
    IRI const iri = iriFromUtf8("http://bücher.example/a");
    std::string const ascii = idn.toAscii(iri.getHost(Encoding::Raw));
    std::cout << iri << " is at " << ascii << '\n'
              << "and that reads " << toUtf8(idn.toUnicode(ascii)) << '\n';
}
