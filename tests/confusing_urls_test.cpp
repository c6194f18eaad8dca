// The table of docs/confusing-urls.md, row by row.

#include "support/Iris.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <string>

namespace {

using support::Encoding;
using support::IRI;

// A cell as UTF-16: ASCII in which \u{...} stands for a character.
std::u16string textOf(std::string const& cell) {
    std::u16string text;
    for (std::size_t at = 0; at != cell.size(); ++at) {
        bool const escape = cell.compare(at, 3, "\\u{") == 0;
        text += static_cast<char16_t>(escape ? std::stoul(cell.substr(at + 3), nullptr, 16)
                                             : static_cast<unsigned char>(cell[at]));
        at = escape ? cell.find('}', at) : at;
    }
    return text;
}

// The parts as the table writes them: in their Iri forms, a host that reads differently with what it reads.
std::string answer(std::u16string const& text) {
    auto const iri = support::parsed(text);
    if (!iri) {
        return "refused";
    }
    std::string all = iri->hasScheme() ? "scheme `" + support::show(iri->getScheme()) + "`, " : "";
    auto const add = [&](bool present, char const* name, auto getter) {
        std::string const value = present ? support::show((*iri.*getter)(Encoding::Iri)) : "";
        all += present ? name + (value.empty() ? " empty, " : " `" + value + "`, ") : "";
    };
    add(iri->hasUserInfo(), "user", &IRI::getUserInfo);
    add(iri->hasHost(), "host", &IRI::getHost);
    if (iri->hasHost() && iri->getHost(Encoding::Raw) != iri->getHost(Encoding::Iri)) {
        all += "which reads `" + support::show(iri->getHost(Encoding::Raw)) + "`, ";
    }
    all += iri->hasPort() ? "port " + std::to_string(iri->getPortNumber()) + ", " : "";
    add(true, "path", &IRI::getPath);
    add(iri->hasQuery(), "query", &IRI::getQuery);
    add(iri->hasFragment(), "fragment", &IRI::getFragment);
    return all.substr(0, all.size() - 2);
}

TEST(ConfusingUrls, AreAnsweredAsDocumented) {
    std::ifstream table(CONFUSING_URLS);
    std::regex const row(R"(\| `(.+?)` \| (.+?) \| .+ \|)");
    int rows = 0;
    for (std::string line; std::getline(table, line);) {
        std::smatch cells;
        if (std::regex_match(line, cells, row)) {
            ++rows;
            EXPECT_EQ(answer(textOf(cells[1])), cells[2]) << cells[1];
        }
    }
    EXPECT_EQ(rows, 48);
}

} // namespace
