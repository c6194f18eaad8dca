// The way back: links that still work when the whole site moves to another place.
//
// Prints:
//   http://example.org/docs/a/logo.png   logo.png
//   http://example.org/docs/b/           ../b/
//   http://example.org/docs/a/page#end   #end
//   http://example.net/docs/             //example.net/docs/
//   ftp://example.org/docs/a/page        ftp://example.org/docs/a/page

#include <foundation/network/IRI.hpp>

#include <iomanip>
#include <iostream>

int main() {
    using foundation::network::IRI;

    IRI const page(u"http://example.org/docs/a/page");
    for (char16_t const* const text : {u"http://example.org/docs/a/logo.png", u"http://example.org/docs/b/",
                                       u"http://example.org/docs/a/page#end", u"http://example.net/docs/",
                                       u"ftp://example.org/docs/a/page"}) {
        IRI const target(text);
        IRI const link = target.makeRelativeTo(page);
        std::cout << std::left << std::setw(37) << target << link << '\n';
        if (link.resolveAgainst(page) != target) {
            return 1;
        }
    }
}
