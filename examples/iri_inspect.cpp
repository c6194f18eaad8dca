// Takes IRIs apart: from arguments, from files or from standard input, as a table or as JSON.

#include "console.hpp"

#include <foundation/network/FileIri.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/Normalization.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/References.hpp>
#include <foundation/network/Utf8.hpp>
#include <foundation/network/With.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using foundation::network::Encoding;
using foundation::network::fileFromIri;
using foundation::network::fromUtf8;
using foundation::network::IRI;
using foundation::network::IRIComponent;
using foundation::network::iriFromFile;
using foundation::network::makeRelativeExactly;
using foundation::network::normalize;
using foundation::network::ParseFault;
using foundation::network::ParseReason;
using foundation::network::QueryParameter;
using foundation::network::QueryParameters;
using foundation::network::resolveExactly;
using foundation::network::toUtf8;
using foundation::network::tryParse;
using foundation::network::utf8;
using foundation::network::Utf8View;
using foundation::network::withoutFragment;
using foundation::network::withQuery;

constexpr char const* help = R"(Usage: iri_inspect [OPTION]... [IRI]...
Take IRIs (RFC 3987) apart and show their components.

  -f, --file FILE   read IRIs from FILE, a line each, UTF-8; - is standard input;
                    may be given several times
      --forms       show each part in all of its forms, side by side
      --base IRI    resolve each line against IRI, and show the way back
      --exact       with --base: keep every escape as it is written
      --query       show the parameters of the query, decoded, a line each
      --with-query NAME=VALUE
                    give the query's parameter NAME this VALUE, both without
                    escapes, and show the changed IRI; may be given several times
      --without-fragment
                    show the IRI without its fragment
      --normalize   show the normal form: escapes, case, dot segments
      --path        take each line as an absolute path of this machine; show its
                    file: IRI, and the path that it leads back to
      --json        print one JSON object a line (docs/json-output.md)
  -q, --quiet       print counts and refusals only
  -h, --help        show this help

Without an IRI and a file, standard input is read. What is no IRI goes to
standard error with its line's number, the reason, and a caret under the place;
with --json it is an object with an "error". The exit status is 0 if every IRI
was taken, 1 if one was refused, 2 if the command line or a file was at fault.
NO_COLOR switches colours off.

Examples:
  iri_inspect 'http://jo@example.org:8080/a%20b?q=1#top'
  iri_inspect --forms 'http://bücher.example/straße?q=50%'
  iri_inspect --base http://example.org/docs/ ../img/logo.png '?page=2'
  iri_inspect --base http://example.org/docs/ --exact a%2Fb
  iri_inspect --query 'http://example.org/?name=J+%26+J&page=2'
  iri_inspect --with-query 'name=J & J' --without-fragment http://example.org/#top
  iri_inspect --normalize HTTP://EXAMPLE.org/%7ejo/./a
  iri_inspect --path "$PWD/50% of é.txt"
  iri_inspect --json --file links.txt | jq -r .host | sort | uniq -c
  iri_inspect --quiet --file links.txt
)";

struct Argument {
    std::string text;
    std::size_t place; // on the command line
};

struct Options {
    bool forms = false;
    bool exact = false;
    bool normal = false;
    bool paths = false;
    bool json = false;
    bool quiet = false;
    bool query = false;
    bool fragmentGoes = false;
    std::vector<std::pair<std::u16string, std::u16string>> parameters; // that are set
    std::optional<IRI> base;
    std::vector<std::string> files;
    std::vector<Argument> iris;

    // Whether a refusal is an object of JSON, and nothing on standard error.
    [[nodiscard]] bool objects() const { return json && !quiet; }
    [[nodiscard]] bool changes() const { return fragmentGoes || !parameters.empty(); }
    // Whether something that is made of an IRI is shown.
    [[nodiscard]] bool shows() const { return changes() || base || normal; }
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

// The words of JSON, in the order of the enumerators.
constexpr std::array componentWords{"text", "scheme", "userInfo", "host",
                                    "port", "path",   "query",    "fragment"};
static_assert(componentWords.size() == static_cast<std::size_t>(IRIComponent::Fragment) + 1);
constexpr std::array reasonWords{"notUtf16",      "notUtf8",       "emptyScheme",  "notInScheme",
                                 "notInUserInfo", "notInHost",     "notAnAddress", "emptyPort",
                                 "notInPort",     "portTooLarge",  "notInPath",    "notInQuery",
                                 "notInFragment", "escapeNotWhole"};
static_assert(reasonWords.size() == static_cast<std::size_t>(ParseReason::EscapeNotWhole) + 1);

struct Component {
    std::string name;
    std::string text;
};

// A component in a form. A text can have no such form: then `missing` says why.
struct FormText {
    std::string name;
    std::string text;
    bool missing = false;
};

std::vector<FormText> encodedParts(IRI const& iri, Encoding encoding) {
    std::vector<FormText> parts;
    auto const add = [&](bool present, char const* name, auto getter) {
        if (!present) {
            return;
        }
        try {
            parts.push_back({name, (utf8(iri).*getter)(encoding)});
        } catch (std::exception const& e) {
            parts.push_back({name, std::string("(") + e.what() + ")", true});
        }
    };
    add(iri.hasUserInfo(), "userInfo", &Utf8View::getUserInfo);
    add(iri.hasHost(), "host", &Utf8View::getHost);
    add(true, "path", &Utf8View::getPath);
    add(iri.hasQuery(), "query", &Utf8View::getQuery);
    add(iri.hasFragment(), "fragment", &Utf8View::getFragment);
    return parts;
}

// What a reference leads to from the base, and the reference that leads there; a refusal says why.
std::vector<Component> resolved(IRI const& iri, IRI const& base, bool exact) {
    std::vector<Component> result;
    try {
        IRI const target = exact ? resolveExactly(iri, base) : iri.resolveAgainst(base);
        result.push_back({"target", utf8(target).toString(false)});
        IRI const back = exact ? makeRelativeExactly(target, base) : target.makeRelativeTo(base);
        result.push_back({"back", utf8(back).toString(false)});
    } catch (std::exception const& e) {
        result.push_back({"error", e.what()});
    }
    return result;
}

// The IRI with the changes that were asked for, and with all else as it is written.
IRI changed(IRI const& iri, Options const& options) {
    IRI result = options.fragmentGoes ? withoutFragment(iri) : iri;
    if (!options.parameters.empty()) {
        QueryParameters parameters(result);
        for (auto const& [name, value] : options.parameters) {
            parameters.set(name, value);
        }
        result = withQuery(result, parameters);
    }
    return result;
}

// What the changes, the base and the normal form make of an IRI.
std::vector<Component> results(IRI const& iri, Options const& options) {
    std::vector<Component> rows;
    if (options.changes()) {
        rows.push_back({"changed", utf8(changed(iri, options)).toString(false)});
    }
    if (options.base) {
        auto const more = resolved(iri, *options.base, options.exact);
        rows.insert(rows.end(), more.begin(), more.end());
    }
    if (options.normal) {
        rows.push_back({"normal", utf8(normalize(iri)).toString(false)});
    }
    return rows;
}

// All components that are there, in the order of the text.
std::vector<Component> components(IRI const& iri) {
    std::vector<Component> parts;
    if (iri.hasScheme()) {
        parts.push_back({"scheme", utf8(iri).getScheme()});
    }
    for (auto const& part : encodedParts(iri, Encoding::Iri)) {
        if (part.name == "path" && iri.hasPort()) {
            parts.push_back({"port", utf8(iri).getPort()});
        }
        parts.push_back({part.name, part.text});
    }
    return parts;
}

void printTable(std::vector<Component> const& rows, std::string const& line, console::Style const& style) {
    std::cout << style.title(console::shown(line)) << '\n';
    for (auto const& row : rows) {
        std::cout << "  " << style.label(console::padded(row.name, 10)) << console::shown(row.text) << '\n';
    }
}

// A row a component, a column a form.
void printForms(IRI const& iri, std::string const& line, console::Style const& style) {
    std::vector<console::Row> rows{{""}};
    for (auto const& part : encodedParts(iri, Encoding::Iri)) {
        rows.push_back({part.name});
    }
    for (auto const& [name, encoding] : encodings) {
        rows.front().emplace_back(name);
        auto row = rows.begin();
        for (auto const& part : encodedParts(iri, encoding)) {
            (++row)->push_back(console::shown(part.text));
        }
    }
    std::cout << style.title(console::shown(line)) << '\n';
    auto const widths = console::widths(rows);
    for (auto const& row : rows) {
        std::cout << "  ";
        for (std::size_t i = 0; i != row.size(); ++i) {
            auto const cell = i + 1 == row.size() ? row[i] : console::padded(row[i], widths[i] + 2);
            std::cout << (i == 0 || &row == &rows.front() ? style.label(cell) : cell);
        }
        std::cout << '\n';
    }
}

// A row a parameter, and nothing where there is no query.
void printParameters(IRI const& iri, std::string const& line, console::Style const& style) {
    std::vector<console::Row> rows;
    for (QueryParameter const parameter : QueryParameters(iri)) {
        rows.push_back({console::shown(toUtf8(parameter.getName()))});
        if (parameter.hasValue()) {
            rows.back().push_back(console::shown(toUtf8(parameter.getValue())));
        }
    }
    std::cout << style.title(console::shown(line)) << '\n';
    auto const widths = console::widths(rows);
    for (auto const& row : rows) {
        std::cout << "  "
                  << (row.size() == 1 ? style.label(row[0])
                                      : style.label(console::padded(row[0], widths[0])) + "  " + row[1])
                  << '\n';
    }
}

void printJson(IRI const& iri, std::string const& line, Options const& options) {
    console::Json object;
    object.add("iri", line);
    for (auto const& rows : {components(iri), results(iri, options)}) {
        for (auto const& member : rows) {
            object.add(member.name, member.text);
        }
    }
    if (options.query && iri.hasQuery()) {
        std::vector<console::Json> parameters;
        for (QueryParameter const parameter : QueryParameters(iri)) {
            console::Json& added = parameters.emplace_back();
            added.add("name", toUtf8(parameter.getName()));
            parameter.hasValue() ? added.add("value", toUtf8(parameter.getValue())) : added.addNull("value");
        }
        object.add("parameters", parameters);
    }
    if (options.forms) {
        console::Json forms;
        for (auto const& [name, encoding] : encodings) {
            console::Json parts;
            for (auto const& part : encodedParts(iri, encoding)) {
                part.missing ? parts.addNull(part.name) : parts.add(part.name, part.text);
            }
            forms.add(name, parts);
        }
        object.add("forms", forms);
    }
    std::cout << object.text() << '\n';
}

void printRefusal(ParseFault const& fault, std::string const& line) {
    console::Json object;
    object.add("iri", line)
        .add("error", fault.describe())
        .add("offset", fault.offset)
        .add("component", componentWords.at(static_cast<std::size_t>(fault.component)))
        .add("reason", reasonWords.at(static_cast<std::size_t>(fault.reason)));
    std::cout << object.text() << '\n';
}

// A refusal as standard error has it, behind the place where it was met.
std::string told(ParseFault const& fault, std::string const& line) {
    return fault.describe() + '\n' + console::pointedAt(line, fault.offset);
}

// On standard error, in one write.
void tellRefusal(std::string const& where, std::string const& refusal) {
    std::cerr << where + ": " + refusal;
}

// Shows the IRI of a path, or says why there is none.
std::optional<std::string> inspectPath(std::string const& line, Options const& options,
                                       console::Style const& style) {
    std::vector<Component> members;
    std::optional<std::string> refusal;
    try {
        IRI const iri = iriFromFile(line);
        members.push_back({"iri", utf8(iri).toString(false)});
        members.push_back({"back", fileFromIri(iri).string()});
    } catch (std::exception const& e) {
        members = {{"error", e.what()}};
        refusal = std::string(e.what()) + "\n  " + console::shown(line) + '\n';
    }
    if (options.objects()) {
        console::Json object;
        object.add("file", line);
        for (auto const& member : members) {
            object.add(member.name, member.text);
        }
        std::cout << object.text() << '\n';
    } else if (!options.quiet && !refusal) {
        printTable(members, line, style);
    }
    return refusal;
}

// Shows an IRI, or says why it is none.
std::optional<std::string> inspect(std::string const& line, Options const& options,
                                   console::Style const& style) {
    if (options.paths) {
        return inspectPath(line, options, style);
    }
    auto const iri = tryParse(line);
    if (!iri) {
        if (options.objects()) {
            printRefusal(iri.error(), line);
        }
        return told(iri.error(), line);
    }
    if (options.quiet) {
        return std::nullopt;
    }
    if (options.json) {
        printJson(*iri, line, options);
    } else if (options.shows()) {
        printTable(results(*iri, options), line, style);
    } else if (options.query) {
        printParameters(*iri, line, style);
    } else if (options.forms) {
        printForms(*iri, line, style);
    } else {
        printTable(components(*iri), line, style);
    }
    return std::nullopt;
}

// A line on a terminal that tells how far a long file is, where it does not get between the lines of a table.
class Progress {
public:
    Progress(std::string file, bool quiet)
        : name(std::move(file)),
          enabled(isatty(STDERR_FILENO) != 0 && (quiet || isatty(STDOUT_FILENO) == 0)) {}

    void tell(std::size_t lines) {
        if (enabled && Clock::now() >= next) {
            std::cerr << "\r" + name + ": " + std::to_string(lines) + " lines" << std::flush;
            next = Clock::now() + pause;
            visible = true;
        }
    }
    void clear() {
        if (visible) {
            std::cerr << "\r\x1b[K" << std::flush;
            visible = false;
        }
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds pause{100};

    std::string name;
    bool enabled;
    bool visible = false;
    Clock::time_point next = Clock::now() + pause;
};

bool inspectFile(std::string const& name, Options const& options, console::Style const& style,
                 Counts& counts) {
    std::ifstream file;
    bool const standardInput = name == "-";
    std::string const shown = standardInput ? "standard input" : console::shown(name);
    if (!standardInput) {
        file.open(name);
    }
    std::istream& input = standardInput ? std::cin : file;
    Progress progress(shown, options.quiet);
    Counts here;
    auto const begin = std::chrono::steady_clock::now();
    std::string line;
    for (std::size_t number = 1; std::getline(input, line); ++number) {
        if (auto const refusal = inspect(line, options, style)) {
            ++here.refused;
            if (!options.objects()) {
                progress.clear();
                tellRefusal(shown + ":" + std::to_string(number), *refusal);
            }
        } else {
            ++here.taken;
        }
        progress.tell(number);
    }
    std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - begin;
    progress.clear();
    counts.taken += here.taken;
    counts.refused += here.refused;
    if (input.bad() || !(standardInput || file.is_open())) { // a folder can be opened, and not read
        std::cerr << "iri_inspect: cannot read " << shown << '\n';
        return false;
    }
    if (options.quiet) {
        auto const all = static_cast<double>(here.taken + here.refused);
        std::cout << shown << ": " << here.taken << " taken, " << here.refused << " refused, "
                  << static_cast<long>(all / std::max(seconds.count(), 1e-9)) << " a second\n"
                  << std::flush;
    }
    return true;
}

// Takes NAME=VALUE; false if it is none, or no UTF-8.
bool readParameter(std::string const& word, Options& options) {
    std::size_t const sign = word.find('=');
    if (sign == std::string::npos) {
        return false;
    }
    try {
        options.parameters.emplace_back(fromUtf8(word.substr(0, sign)), fromUtf8(word.substr(sign + 1)));
        return true;
    } catch (std::out_of_range const&) {
        return false;
    }
}

// Returns -1 to go on, or the exit status.
int readOptions(console::Words words, Options& options) {
    std::string value;
    while (words.next()) {
        if (words.is("-h") || words.is("--help")) {
            std::cout << help;
            return 0;
        }
        if (words.is("--forms")) {
            options.forms = true;
        } else if (words.is("--exact")) {
            options.exact = true;
        } else if (words.is("--normalize")) {
            options.normal = true;
        } else if (words.is("--path")) {
            options.paths = true;
        } else if (words.is("--json")) {
            options.json = true;
        } else if (words.is("-q") || words.is("--quiet")) {
            options.quiet = true;
        } else if (words.is("--query")) {
            options.query = true;
        } else if (words.is("--without-fragment")) {
            options.fragmentGoes = true;
        } else if (words.is("--with-query", value)) {
            if (!readParameter(value, options)) {
                std::cerr << "iri_inspect: --with-query: no NAME=VALUE in UTF-8: " << console::shown(value)
                          << '\n';
                return 2;
            }
        } else if (words.is("--base", value)) {
            auto base = tryParse(value);
            if (!base) {
                tellRefusal("iri_inspect: --base", told(base.error(), value));
                return 2;
            }
            options.base = *std::move(base);
        } else if (words.is("-f", value) || words.is("--file", value)) {
            options.files.push_back(value);
        } else if (words.isOption()) {
            std::cerr << "iri_inspect: unknown or incomplete option " << console::shown(words.word())
                      << "\nTry iri_inspect --help\n";
            return 2;
        } else {
            options.iris.push_back({words.word(), words.place()});
        }
    }
    if (options.iris.empty() && options.files.empty()) {
        options.files.emplace_back("-");
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    console::start();
    Options options;
    if (int const status = readOptions({argc, argv}, options); status >= 0) {
        return status;
    }
    console::Style const style;
    Counts counts;
    bool readable = true;
    for (auto const& iri : options.iris) {
        if (auto const refusal = inspect(iri.text, options, style)) {
            ++counts.refused;
            if (!options.objects()) {
                tellRefusal("argument " + std::to_string(iri.place), *refusal);
            }
        } else {
            ++counts.taken;
        }
    }
    for (auto const& file : options.files) {
        readable = inspectFile(file, options, style, counts) && readable;
    }
    std::cout.flush();
    return !readable || !std::cout ? 2 : counts.refused == 0 ? 0 : 1;
}
