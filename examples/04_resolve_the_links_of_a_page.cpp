// Where the links of a page lead. What must keep the escapes of paths as they are written, such as a crawler,
// takes `resolveExactly` of References.hpp, as example 09 does.
//
// Prints:
//   logo.png                 -> http://example.org/docs/logo.png
//   ../style.css?v=2         -> http://example.org/style.css?v=2
//   //cdn.example.net/x.js   -> http://cdn.example.net/x.js
//   #top                     -> http://example.org/docs/page.html?lang=en#top
//   mailto:jo@example.org    -> mailto:jo@example.org
//   two words.html           -> no link: U+0020 cannot stand in a path, at offset 3

#include <foundation/network/IRI.hpp>
#include <foundation/network/ParseResult.hpp>

#include <iomanip>
#include <iostream>

int main() {
    using foundation::network::IRI;
    using foundation::network::tryParse;

    IRI const page(u"http://example.org/docs/page.html?lang=en");
    for (char const* const link : {"logo.png", "../style.css?v=2", "//cdn.example.net/x.js", "#top",
                                   "mailto:jo@example.org", "two words.html"}) {
        std::cout << std::left << std::setw(24) << link << " -> ";
        if (auto const reference = tryParse(link)) {
            std::cout << reference->resolveAgainst(page) << '\n';
        } else {
            std::cout << "no link: " << reference.error() << '\n';
        }
    }
}
