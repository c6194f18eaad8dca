// Takes IRIs apart: from arguments, from files or from standard input, as a table or as JSON.

#include "console.hpp"

#include <foundation/network/IRI.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using foundation::network::Encoding;
using foundation::network::IRI;

constexpr char const* help = R"(Usage: iri_inspect [OPTION]... [IRI]...
Take IRIs (RFC 3987) apart and show their components.

  -f, --file FILE   read IRIs from FILE, a line each, UTF-8; - is standard input;
                    may be given several times
      --forms       show each part in all of its forms, side by side
      --base IRI    resolve each line against IRI, and show the way back
      --json        print one JSON object a line
      --quiet       print counts and refusals only
      --help        show this help

Without an IRI and a file, standard input is read. A line that is no IRI goes to
standard error with its number and the reason. The exit status is 0 if every IRI
was taken, 1 if one was refused, 2 if the command line or a file was at fault.

Examples:
  iri_inspect 'http://jo@example.org:8080/a%20b?q=1#top'
  iri_inspect --forms 'http://bücher.example/straße?q=50%'
  iri_inspect --base http://example.org/docs/ ../img/logo.png '?page=2'
  iri_inspect --json --file links.txt | jq .host
)";

struct Options {
    bool forms = false;
    bool json = false;
    bool quiet = false;
    std::optional<IRI> base;
    std::vector<std::string> files;
    std::vector<std::string> iris;
};

struct Counts {
    std::size_t taken = 0;
    std::size_t refused = 0;
};

constexpr std::array<std::pair<char const*, Encoding>, 5> encodings{{{"Raw", Encoding::Raw},
                                                                     {"Iri", Encoding::Iri},
                                                                     {"IriStrict", Encoding::IriStrict},
                                                                     {"Uri", Encoding::Uri},
                                                                     {"UriStrict", Encoding::UriStrict}}};

struct Component {
    std::string name;
    std::string text;
};

// A part in a form; a text that has no such form says why.
template <class Getter>
std::string textOf(IRI const& iri, Getter getter, Encoding encoding) {
    try {
        return console::toUtf8((iri.*getter)(encoding));
    } catch (std::exception const& e) {
        return std::string("(") + e.what() + ")";
    }
}

std::vector<Component> encodedParts(IRI const& iri, Encoding encoding) {
    std::vector<Component> parts;
    auto const add = [&](bool present, char const* name, auto getter) {
        if (present) {
            parts.push_back({name, textOf(iri, getter, encoding)});
        }
    };
    add(iri.hasUserInfo(), "userInfo", &IRI::getUserInfo);
    add(iri.hasHost(), "host", &IRI::getHost);
    add(true, "path", &IRI::getPath);
    add(iri.hasQuery(), "query", &IRI::getQuery);
    add(iri.hasFragment(), "fragment", &IRI::getFragment);
    return parts;
}

// What a reference leads to from the base, and the reference that leads there; a refusal says why.
std::vector<Component> resolved(IRI const& iri, IRI const& base) {
    std::vector<Component> result;
    auto const add = [&result](char const* name, auto make) {
        try {
            result.push_back({name, console::toUtf8(make().toString(false))});
            return true;
        } catch (std::exception const& e) {
            result.push_back({name, std::string("(") + e.what() + ")"});
            return false;
        }
    };
    if (add("target", [&] { return iri.resolveAgainst(base); })) {
        add("back", [&] { return iri.resolveAgainst(base).makeRelativeTo(base); });
    }
    return result;
}

// All components that are there, in the order of the text.
std::vector<Component> components(IRI const& iri) {
    auto parts = encodedParts(iri, Encoding::Iri);
    if (iri.hasPort()) {
        auto const path =
            std::find_if(parts.begin(), parts.end(), [](auto const& part) { return part.name == "path"; });
        parts.insert(path, {"port", console::toUtf8(iri.getPort())});
    }
    if (iri.hasScheme()) {
        parts.insert(parts.begin(), {"scheme", console::toUtf8(iri.getScheme())});
    }
    return parts;
}

void printTable(std::vector<Component> const& rows, std::string const& line, console::Style const& style) {
    std::cout << style.title(line) << '\n';
    for (auto const& row : rows) {
        std::cout << "  " << style.label(console::padded(row.name, 10)) << row.text << '\n';
    }
}

void printForms(IRI const& iri, std::string const& line, console::Style const& style) {
    // A column a form; the row above all is the heading.
    std::vector<std::vector<std::string>> columns{{""}};
    for (auto const& part : encodedParts(iri, Encoding::Iri)) {
        columns.front().push_back(part.name);
    }
    for (auto const& [name, encoding] : encodings) {
        auto& column = columns.emplace_back(1, name);
        for (auto const& part : encodedParts(iri, encoding)) {
            column.push_back(part.text);
        }
    }
    std::cout << style.title(line) << '\n';
    for (std::size_t row = 0; row != columns.front().size(); ++row) {
        std::string text;
        for (auto const& column : columns) {
            std::size_t width = 0;
            for (auto const& cell : column) {
                width = std::max(width, console::columns(cell));
            }
            bool const label = row == 0 || &column == &columns.front();
            auto const cell = console::padded(column[row], width + 2);
            text += label ? style.label(cell) : cell;
        }
        std::cout << "  " << text.substr(0, text.find_last_not_of(' ') + 1) << '\n';
    }
}

void printJson(IRI const& iri, std::string const& line, Options const& options) {
    std::cout << "{\"iri\":" << console::json(line);
    auto members = components(iri);
    if (options.base) {
        auto const more = resolved(iri, *options.base);
        members.insert(members.end(), more.begin(), more.end());
    }
    for (auto const& member : members) {
        std::cout << ',' << console::json(member.name) << ':' << console::json(member.text);
    }
    if (options.forms) {
        std::cout << ",\"forms\":{";
        for (auto const& [name, encoding] : encodings) {
            std::cout << (encoding == Encoding::Raw ? "" : ",") << console::json(name) << ":{";
            char const* separator = "";
            for (auto const& part : encodedParts(iri, encoding)) {
                std::cout << std::exchange(separator, ",") << console::json(part.name) << ':'
                          << console::json(part.text);
            }
            std::cout << '}';
        }
        std::cout << '}';
    }
    std::cout << "}\n";
}

// `where` stands before the reason of a refusal: a file and a line, or the text itself.
void inspect(std::string const& line, std::string const& where, Options const& options,
             console::Style const& style, Counts& counts) {
    try {
        IRI const iri(console::toUtf16(line));
        ++counts.taken;
        if (options.quiet) {
            return;
        }
        if (options.json) {
            printJson(iri, line, options);
        } else if (options.base) {
            printTable(resolved(iri, *options.base), line, style);
        } else if (options.forms) {
            printForms(iri, line, style);
        } else {
            printTable(components(iri), line, style);
        }
    } catch (std::exception const& e) {
        ++counts.refused;
        std::cerr << where << ": " << e.what() << '\n';
    }
}

bool inspectFile(std::string const& name, Options const& options, console::Style const& style,
                 Counts& counts) {
    using Clock = std::chrono::steady_clock;
    std::ifstream file;
    bool const standardInput = name == "-";
    if (!standardInput) {
        file.open(name);
        if (!file) {
            std::cerr << "iri_inspect: cannot read " << name << '\n';
            return false;
        }
    }
    std::istream& input = standardInput ? std::cin : file;
    std::string const shown = standardInput ? "standard input" : name;
    // Progress only where it does not get between the lines of a table.
    bool const progress = isatty(STDERR_FILENO) != 0 && (options.quiet || isatty(STDOUT_FILENO) == 0);
    Counts here;
    auto const begin = Clock::now();
    auto nextReport = begin + std::chrono::milliseconds(500);
    std::string line;
    for (std::size_t number = 1; std::getline(input, line); ++number) {
        inspect(line, shown + ":" + std::to_string(number), options, style, here);
        if (progress && number % 1024 == 0 && Clock::now() > nextReport) {
            std::cerr << '\r' << shown << ": " << number << " lines" << std::flush;
            nextReport += std::chrono::milliseconds(500);
        }
    }
    std::chrono::duration<double> const seconds = Clock::now() - begin;
    std::size_t const all = here.taken + here.refused;
    std::cerr << (progress ? "\r" : "") << shown << ": " << here.taken << " taken, " << here.refused
              << " refused, " << static_cast<long>(static_cast<double>(all) / std::max(seconds.count(), 1e-9))
              << " a second\n";
    counts.taken += here.taken;
    counts.refused += here.refused;
    return true;
}

// Returns -1 to go on, or the exit status.
int readOptions(int argc, char** argv, Options& options) {
    bool literal = false;
    for (int i = 1; i < argc; ++i) {
        std::string const argument = argv[i];
        if (literal || argument.empty() || argument[0] != '-') {
            options.iris.push_back(argument);
        } else if (argument == "--") {
            literal = true;
        } else if (argument == "--help") {
            std::cout << help;
            return 0;
        } else if (argument == "--forms") {
            options.forms = true;
        } else if (argument == "--json") {
            options.json = true;
        } else if (argument == "--quiet") {
            options.quiet = true;
        } else if (argument == "--base" && i + 1 < argc) {
            try {
                options.base.emplace(console::toUtf16(argv[++i]));
            } catch (std::exception const& e) {
                std::cerr << "iri_inspect: --base " << argv[i] << ": " << e.what() << '\n';
                return 2;
            }
        } else if ((argument == "-f" || argument == "--file") && i + 1 < argc) {
            options.files.emplace_back(argv[++i]);
        } else {
            std::cerr << "iri_inspect: unknown or incomplete option " << argument
                      << "\nTry iri_inspect --help\n";
            return 2;
        }
    }
    if (options.iris.empty() && options.files.empty()) {
        options.files.emplace_back("-");
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    Options options;
    if (int const status = readOptions(argc, argv, options); status >= 0) {
        return status;
    }
    console::Style const style;
    Counts counts;
    bool readable = true;
    for (auto const& iri : options.iris) {
        inspect(iri, iri, options, style, counts);
    }
    for (auto const& file : options.files) {
        readable = inspectFile(file, options, style, counts) && readable;
    }
    std::cout.flush();
    return !readable ? 2 : counts.refused == 0 ? 0 : 1;
}
