// Builds an IRI with a query: nothing needs to be escaped by hand, whatever stands in a name or a value.
//
// Prints:
//   http://example.org/s%C3%B6k?q=a%2Bb+%26+c&page=2
//   The path reads /sök, and q a+b & c
//   http://example.org/s%C3%B6k?q=a%2Bb+%26+c&page=3

#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/With.hpp>

#include <iostream>
#include <string>

int main() {
    using namespace foundation::network;

    std::string const words = "a+b & c"; // as a form gives them, in UTF-8
    IRI const page = withPath(IRI(u"http://example.org"), "/sök", Encoding::Raw);
    QueryParameters parameters(page);
    parameters.append("q", words);
    parameters.append("page", "2");
    IRI const iri = withQuery(page, parameters);
    std::cout << iri << '\n'
              << "The path reads " << utf8(iri).getPath(Encoding::Raw) << ", and q "
              << toUtf8(QueryParameters(iri).find("q").value_or(u"")) << '\n';

    parameters.set("page", "3");
    std::cout << withQuery(iri, parameters) << '\n';
}
