// A link checker: 09_check_the_links_of_a_page [FILE [ADDRESS]] reads a page in UTF-8, or a short one of its
// own, and prints where its links lead, each once and in order. What is no link is told as it is met, with
// its place. It looks for href="..." and knows no more of HTML: "&amp;" stays as it is.
//
// Prints:
//   line 3, the link at byte 10: U+0020 cannot stand in a path, at offset 3
//   line 4, the link at byte 10: U+0039 begins a port above 65535, at offset 9
//   http://bücher.example/straße?q=1
//   http://example.org/docs/b.html
//   http://example.org/docs/c%2B%2B.html
//   http://example.org/index.html#top
//   mailto:jo@example.org

#include <foundation/network/IRI.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/References.hpp>
#include <foundation/network/Utf8.hpp>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

constexpr char const* shortPage = R"(<a href="b.html">b</a> <a href="./b.html">b again</a>
<a href="http://bücher.example/straße?q=1">books</a> <a href="../index.html#top">home</a>
<a href="two words.html">two words</a> <a href="mailto:jo@example.org">mail</a>
<a href="http://h:99999/">nowhere</a> <a href="c%2B%2B.html">C++</a>)";

int main(int argc, char** argv) {
    using namespace foundation::network;

    auto const address = tryParse(argc > 2 ? argv[2] : "http://example.org/docs/");
    std::istringstream own(shortPage);
    std::ifstream file(argc > 1 ? argv[1] : "");
    std::istream& page = argc > 1 ? static_cast<std::istream&>(file) : own;
    if (!page || !address) {
        std::cerr << "FILE cannot be read, or ADDRESS is no IRI\n";
        return 2;
    }
    std::set<IRI, IRITextLess> targets;
    std::string line;
    for (int number = 1; std::getline(page, line); ++number) {
        for (std::size_t end = 0, at = 0; (at = line.find("href=\"", end)) != std::string::npos;) {
            at += 6;
            end = std::min(line.find('"', at), line.size());
            if (auto const link = tryParse(std::string_view(line).substr(at, end - at))) {
                targets.insert(resolveExactly(*link, *address)); // a server may tell "%2B" from "+"
            } else {
                std::cout << "line " << number << ", the link at byte " << at + 1 << ": " << link.error()
                          << '\n';
            }
        }
    }
    for (IRI const& target : targets) {
        std::cout << utf8(target) << '\n';
    }
}
