// The links of a page, as a browser would follow them.
//
// Prints:
//   logo.png                 -> http://example.org/docs/logo.png
//   ../style.css?v=2         -> http://example.org/style.css?v=2
//   //cdn.example.net/x.js   -> http://cdn.example.net/x.js
//   #top                     -> http://example.org/docs/page.html?lang=en#top
//   mailto:jo@example.org    -> mailto:jo@example.org
//   two words.html           -> no link: IRI parsing failed

#include <foundation/network/IRI.hpp>

#include <boost/locale/encoding_utf.hpp>

#include <iomanip>
#include <iostream>

int main() {
    using foundation::network::IRI;

    IRI const page(u"http://example.org/docs/page.html?lang=en");
    for (char16_t const* const link : {u"logo.png", u"../style.css?v=2", u"//cdn.example.net/x.js", u"#top",
                                       u"mailto:jo@example.org", u"two words.html"}) {
        std::cout << std::left << std::setw(24) << boost::locale::conv::utf_to_utf<char>(link) << " -> ";
        try {
            std::cout << IRI(link).resolveAgainst(page) << '\n';
        } catch (std::logic_error const& e) {
            std::cout << "no link: " << e.what() << '\n';
        }
    }
}
