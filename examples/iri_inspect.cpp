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
#include <cstring>
#include <exception>
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

constexpr char const* help =
#include "iri_inspect.help" // of which the man page and the completions are made, too
    ;

// Where an IRI stands: in which file, - for standard input, or on the command line, where this is empty; and
// which line or argument it is.
struct Place {
    std::string file;
    std::size_t number;

    void addTo(console::Json& object) const {
        file.empty() ? object.add("argument", number) : object.add("source", file).add("line", number);
    }
};

std::string inWords(std::string const& file) {
    return file == "-" ? "standard input" : console::abridged(file);
}

std::string inWords(Place const& place) {
    return (place.file.empty() ? "argument " : inWords(place.file) + ":") + std::to_string(place.number);
}

struct Argument {
    std::string text;
    Place place;
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

std::vector<FormText> encodedComponents(IRI const& iri, Encoding encoding) {
    std::vector<FormText> forms;
    auto const add = [&](bool present, char const* name, auto getter) {
        if (!present) {
            return;
        }
        try {
            forms.push_back({name, (utf8(iri).*getter)(encoding)});
        } catch (std::exception const& e) {
            forms.push_back({name, std::string("(") + e.what() + ")", true});
        }
    };
    add(iri.hasUserInfo(), "userInfo", &Utf8View::getUserInfo);
    add(iri.hasHost(), "host", &Utf8View::getHost);
    add(true, "path", &Utf8View::getPath);
    add(iri.hasQuery(), "query", &Utf8View::getQuery);
    add(iri.hasFragment(), "fragment", &Utf8View::getFragment);
    return forms;
}

// The reference that leads from the base to a target. None that is relative leads to mailto:a@b, but it leads
// to itself.
IRI relative(IRI const& target, IRI const& base) {
    try {
        return target.makeRelativeTo(base);
    } catch (std::logic_error const&) {
        if (target.hasScheme()) {
            return target;
        }
        throw;
    }
}

// What a reference leads to from the base, and the reference that leads there; an error says why there is
// none.
std::vector<Component> resolved(IRI const& iri, IRI const& base, bool exact) {
    std::vector<Component> result;
    try {
        IRI const target = exact ? resolveExactly(iri, base) : iri.resolveAgainst(base);
        result.push_back({"target", utf8(target).toString(false)});
        IRI const back = exact ? makeRelativeExactly(target, base) : relative(target, base);
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
    std::vector<Component> rows;
    if (iri.hasScheme()) {
        rows.push_back({"scheme", utf8(iri).getScheme()});
    }
    for (auto const& part : encodedComponents(iri, Encoding::Iri)) {
        if (part.name == "path" && iri.hasPort()) {
            rows.push_back({"port", utf8(iri).getPort()});
        }
        rows.push_back({part.name, part.text});
    }
    return rows;
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
    for (auto const& part : encodedComponents(iri, Encoding::Iri)) {
        rows.push_back({part.name});
    }
    for (auto const& [name, encoding] : encodings) {
        rows.front().emplace_back(name);
        auto row = rows.begin();
        for (auto const& part : encodedComponents(iri, encoding)) {
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

void printJson(IRI const& iri, std::vector<Component> const& made, Argument const& line,
               Options const& options) {
    console::Json object;
    object.add("iri", line.text);
    bool refused = false;
    for (auto const& rows : {components(iri), made}) {
        for (auto const& member : rows) {
            object.add(member.name, member.text);
            refused = refused || member.name == "error";
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
            console::Json texts;
            for (auto const& part : encodedComponents(iri, encoding)) {
                part.missing ? texts.addNull(part.name) : texts.add(part.name, part.text);
            }
            forms.add(name, texts);
        }
        object.add("forms", forms);
    }
    if (refused) {
        line.place.addTo(object);
    }
    std::cout << object.text() << '\n';
}

void printRefusal(ParseFault const& fault, Argument const& line) {
    console::Json object;
    object.add("iri", line.text)
        .add("error", fault.describe())
        .add("offset", fault.offset)
        .add("component", componentWords.at(static_cast<std::size_t>(fault.component)))
        .add("reason", reasonWords.at(static_cast<std::size_t>(fault.reason)));
    line.place.addTo(object);
    std::cout << object.text() << '\n';
}

// A refusal as standard error has it, behind the place where it was met.
std::string told(ParseFault const& fault, std::string const& line) {
    return fault.describe() + '\n' + console::pointedAt(line, fault.offset);
}
std::string told(std::string const& error, std::string const& line) {
    return error + "\n  " + console::abridged(line) + '\n';
}

// On standard error, in one write.
void tellRefusal(std::string const& where, std::string const& refusal) {
    std::cerr << where + ": " + refusal;
}

// Shows the IRI of a path, or says why there is none.
std::optional<std::string> inspectPath(Argument const& line, Options const& options,
                                       console::Style const& style) {
    std::vector<Component> members;
    std::optional<std::string> refusal;
    try {
        IRI const iri = iriFromFile(line.text);
        members.push_back({"iri", utf8(iri).toString(false)});
        members.push_back({"back", fileFromIri(iri).string()});
    } catch (std::exception const& e) {
        members = {{"error", e.what()}};
        refusal = told(e.what(), line.text);
    }
    if (options.json && (refusal || !options.quiet)) {
        console::Json object;
        object.add("file", line.text);
        for (auto const& member : members) {
            object.add(member.name, member.text);
        }
        if (refusal) {
            line.place.addTo(object);
        }
        std::cout << object.text() << '\n';
    } else if (!options.quiet && !refusal) {
        printTable(members, line.text, style);
    }
    return refusal;
}

// Shows an IRI, or says why it is none or what could not be done with it.
std::optional<std::string> inspect(Argument const& line, Options const& options,
                                   console::Style const& style) {
    if (options.paths) {
        return inspectPath(line, options, style);
    }
    auto const iri = tryParse(line.text);
    if (!iri) {
        if (options.json) {
            printRefusal(iri.error(), line);
        }
        return told(iri.error(), line.text);
    }
    auto made = results(*iri, options);
    std::optional<std::string> refusal;
    auto const error =
        std::find_if(made.begin(), made.end(), [](Component const& row) { return row.name == "error"; });
    if (error != made.end()) {
        refusal = told(error->text, line.text);
    }
    if (options.json) {
        if (refusal || !options.quiet) {
            printJson(*iri, made, line, options);
        }
        return refusal;
    }
    if (refusal) {
        made.erase(error); // standard error has it
    }
    if (options.quiet) {
        return refusal;
    }
    if (options.shows()) {
        if (!made.empty()) {
            printTable(made, line.text, style);
        }
    } else if (options.query) {
        printParameters(*iri, line.text, style);
    } else if (options.forms) {
        printForms(*iri, line.text, style);
    } else {
        printTable(components(*iri), line.text, style);
    }
    return refusal;
}

// A line on a terminal that tells how far a long file is, where it does not get between the lines of a table.
class Progress {
public:
    Progress(std::string file, bool quiet)
        : name(std::move(file)),
          enabled(console::isTerminal(STDERR_FILENO) && (quiet || isatty(STDOUT_FILENO) == 0)) {}

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
    console::Lines lines(name);
    Progress progress(inWords(name), options.quiet);
    Counts here;
    auto const begin = std::chrono::steady_clock::now();
    for (Argument line{"", {name, 1}}; std::cout && lines.next(line.text); ++line.place.number) {
        if (!options.paths && !line.text.empty() && line.text.back() == '\r') {
            line.text.pop_back(); // of CRLF: no IRI has one
        }
        if (auto const refusal = inspect(line, options, style)) {
            ++here.refused;
            if (!options.json) {
                progress.clear();
                tellRefusal(inWords(line.place), *refusal);
            }
        } else {
            ++here.taken;
        }
        progress.tell(line.place.number);
    }
    std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - begin;
    progress.clear();
    counts.taken += here.taken;
    counts.refused += here.refused;
    if (lines.fault() != 0) {
        std::cerr << "iri_inspect: cannot read " << inWords(name) << ": " << std::strerror(lines.fault())
                  << '\n';
        return false;
    }
    if (options.quiet) {
        auto const all = static_cast<double>(here.taken + here.refused);
        auto const speed = static_cast<std::size_t>(all / std::max(seconds.count(), 1e-9));
        if (options.json) {
            console::Json object;
            object.add("source", name).add("taken", here.taken).add("refused", here.refused);
            std::cout << object.add("perSecond", speed).text() << '\n' << std::flush;
        } else {
            std::cout << inWords(name) << ": " << here.taken << " taken, " << here.refused << " refused, "
                      << speed << " a second\n"
                      << std::flush;
        }
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

// Why not all of the options can be honoured; null if they can.
char const* clash(Options const& options) {
    bool const ownView = options.forms || options.query;
    if (options.exact && !options.base) {
        return "--exact needs --base";
    }
    if (options.paths && (ownView || options.shows())) {
        return "--path goes with --file, --json and --quiet alone";
    }
    if (options.quiet && (ownView || options.changes() || options.normal)) {
        return "--quiet goes with --file, --json, --path and --base alone";
    }
    if (!options.json && ownView && (options.forms == options.query || options.shows())) {
        return "without --json, --forms and --query show nothing else";
    }
    return nullptr;
}

// Returns -1 to go on, or the exit status.
int readOptions(console::Words words, Options& options) {
    std::string value;
    while (words.next()) {
        if (words.answered("iri_inspect", help)) {
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
                std::cerr << "iri_inspect: --with-query: no NAME=VALUE in UTF-8: " << console::abridged(value)
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
            std::cerr << "iri_inspect: unknown or incomplete option " << console::abridged(words.word())
                      << "\nTry iri_inspect --help\n";
            return 2;
        } else {
            options.iris.push_back({words.word(), {"", words.place()}});
        }
    }
    if (char const* const reason = clash(options)) {
        std::cerr << "iri_inspect: " << reason << "\nTry iri_inspect --help\n";
        return 2;
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
        return console::finish("iri_inspect", status);
    }
    console::Style const style;
    Counts counts;
    bool readable = true;
    for (auto const& iri : options.iris) {
        if (auto const refusal = inspect(iri, options, style)) {
            ++counts.refused;
            if (!options.json) {
                tellRefusal(inWords(iri.place), *refusal);
            }
        } else {
            ++counts.taken;
        }
    }
    for (auto const& file : options.files) {
        readable = inspectFile(file, options, style, counts) && readable;
    }
    return console::finish("iri_inspect", !readable ? 2 : counts.refused == 0 ? 0 : 1);
}
