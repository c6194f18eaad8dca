// What an IRI costs, beside the field's other libraries where they are installed.
//
//   bench [--urls=FILE] [--iris=FILE] [--pairs=FILE] [google-benchmark options]
//
// FILE is UTF-8, an IRI a line; of the pairs base and reference, separated by a tab. The lists of
// examples/data are the default; neighbours in the list of home pages are the default pairs. It prints a
// table in Markdown: a row an operation and a list, a column a library, in each cell nanoseconds an item, the
// least of many passes that are interleaved with those of the others.

#include "Bench.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/Normalization.hpp>

#include <unicode/unistr.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>

namespace bench {

namespace {

using foundation::network::Encoding;
using foundation::network::IRI;

std::u16string toUtf16(std::string const& utf8) {
    auto const wide = icu::UnicodeString::fromUTF8(utf8);
    return {wide.getBuffer(), static_cast<std::size_t>(wide.length())};
}

std::vector<std::string> lines(std::string const& path) {
    std::ifstream file(path);
    std::vector<std::string> result;
    for (std::string line; std::getline(file, line);) {
        result.push_back(line);
    }
    if (result.empty()) {
        std::cerr << "bench: nothing in " << path << '\n';
        std::exit(2);
    }
    return result;
}

// So many that they can be timed.
template <class Texts>
Texts overAgain(Texts texts) {
    constexpr std::size_t enough = 1000;
    for (std::size_t i = 0; !texts.empty() && texts.size() < enough; ++i) {
        texts.push_back(texts[i]);
    }
    return texts;
}

std::string nameOf(std::string const& path) {
    return path.substr(path.rfind('/') + 1);
}

TextList textsOf(std::vector<std::string> utf8) {
    TextList texts{std::move(utf8), {}};
    std::transform(texts.utf8.begin(), texts.utf8.end(), std::back_inserter(texts.utf16), toUtf16);
    return texts;
}

Corpus corpusOf(std::string name, std::vector<std::string> texts) {
    return {textsOf(std::move(texts)), std::move(name)};
}

std::size_t behindSlashes(std::string const& text) {
    std::size_t const slashes = text.find("//");
    return slashes == std::string::npos ? 0 : slashes + 2;
}

std::size_t behindQuery(std::string const& text) {
    return std::min(text.find('#'), text.size());
}

template <class Place>
TextList withSpace(std::vector<std::string> texts, Place placeIn) {
    for (auto& text : texts) {
        text.insert(placeIn(text), " ");
    }
    return textsOf(std::move(texts));
}

Identifiers identifiersOf(std::string const& path) {
    auto const texts = lines(path);
    return {corpusOf(nameOf(path), texts), withSpace(texts, behindSlashes), withSpace(texts, behindQuery)};
}

std::vector<std::string> withQueries(std::vector<std::string> texts) {
    auto const hasNone = [](std::string const& text) { return !IRI(toUtf16(text)).hasQuery(); };
    texts.erase(std::remove_if(texts.begin(), texts.end(), hasNone), texts.end());
    return overAgain(std::move(texts));
}

std::vector<std::string> inNormalForm(std::vector<std::string> texts) {
    auto const isRough = [](std::string const& text) {
        IRI const iri(toUtf16(text));
        return foundation::network::normalize(iri) != iri;
    };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isRough), texts.end());
    return overAgain(std::move(texts));
}

// Scheme and host in upper case, and in front of the path what each step of a normalisation finds: it leaves
// "/~%3C" of that.
std::vector<std::string> roughened(std::vector<std::string> texts) {
    for (auto& text : texts) {
        std::size_t const path = std::min(text.find_first_of("/?#", behindSlashes(text)), text.size());
        std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(path), text.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
        text.insert(path, "/./x/../%7e%3c");
    }
    return texts;
}

Pairs readPairs(std::string const& path, std::vector<std::string> const& homepages) {
    std::vector<std::string> bases;
    std::vector<std::string> references;
    if (path.empty()) {
        bases.assign(homepages.begin(), homepages.end() - 1);
        references.assign(homepages.begin() + 1, homepages.end());
    } else {
        for (auto const& line : lines(path)) {
            std::size_t const tab = line.find('\t');
            bases.push_back(line.substr(0, tab));
            references.push_back(line.substr(tab + 1, line.find('\t', tab + 1) - tab - 1));
        }
    }
    // The few whose target cannot be made relative again have no row of all operations.
    Pairs pairs{path.empty() ? "neighbours" : nameOf(path), {}, {}};
    for (std::size_t i = 0; i != bases.size(); ++i) {
        try {
            IRI const base(toUtf16(bases[i]));
            (void)IRI(toUtf16(references[i])).resolveAgainst(base).makeRelativeTo(base);
        } catch (std::logic_error const&) {
            continue;
        }
        pairs.bases.utf8.push_back(bases[i]);
        pairs.references.utf8.push_back(references[i]);
    }
    pairs.bases = corpusOf("", pairs.bases.utf8);
    pairs.references = corpusOf("", pairs.references.utf8);
    return pairs;
}

// Takes `--name=value` out of the arguments.
std::string takeOption(int& argc, char** argv, std::string const& name, std::string value) {
    std::string const prefix = "--" + name + "=";
    auto const isOption = [&](char const* argument) {
        return std::strncmp(argument, prefix.c_str(), prefix.size()) == 0;
    };
    auto* const end = argv + argc;
    if (auto* const found = std::find_if(argv + 1, end, isOption); found != end) {
        value = *found + prefix.size();
        std::rotate(found, found + 1, end);
        --argc;
    }
    return value;
}

// So often that the first ones do not tell.
std::vector<std::string> fiveNames() {
    std::vector<std::string> names;
    for (int i = 0; i != 200; ++i) {
        for (auto const* const name :
             {"bücher.example", "例え.テスト", "почта.example", "www.example.org", "ελλάδα.example"}) {
            names.emplace_back(name);
        }
    }
    return names;
}

constexpr char const* OWN = "this library";
constexpr char separator = '|'; // between the pieces of a benchmark's name

// Rows in the order in which they were registered.
std::vector<std::string>& rowNames() {
    static std::vector<std::string> names;
    return names;
}

// Collects the least time of each cell and prints them as one table.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(Context const&) override { return true; }

    void ReportRuns(std::vector<Run> const& runs) override {
        for (auto const& run : runs) {
            if (run.run_type == Run::RT_Aggregate) {
                continue;
            }
            std::string const name = run.run_name.function_name;
            std::size_t const at = name.rfind(separator);
            auto& row = rowOf(name.substr(0, at));
            auto const found =
                row.cells.try_emplace(name.substr(at + 1), std::numeric_limits<double>::max()).first;
            double const items = run.counters.at("items").value;
            found->second = std::min(found->second, run.GetAdjustedRealTime() / items);
        }
    }

    void Finalize() override {
        std::vector<std::string> libraries;
        for (auto const& row : rows) {
            for (auto const& [library, time] : row.cells) {
                if (std::find(libraries.begin(), libraries.end(), library) == libraries.end()) {
                    libraries.push_back(library);
                }
            }
        }
        std::sort(libraries.begin(), libraries.end(), [](auto const& a, auto const& b) {
            return std::pair(a != OWN, a != "QUrl") < std::pair(b != OWN, b != "QUrl");
        });
        std::printf("| operation | list |");
        for (auto const& library : libraries) {
            std::printf(" %s |", library.c_str());
        }
        std::printf(" of QUrl | of the best |\n| --- | --- |");
        for (std::size_t i = 0; i != libraries.size() + 2; ++i) {
            std::printf(" ---: |");
        }
        std::printf("\n");
        auto const place = [](Row const& row) {
            return std::find(rowNames().begin(), rowNames().end(), row.name) - rowNames().begin();
        };
        std::sort(rows.begin(), rows.end(), [&](Row const& a, Row const& b) { return place(a) < place(b); });
        for (auto const& row : rows) {
            print(row, libraries);
        }
    }

private:
    struct Row {
        std::string name;
        std::map<std::string, double> cells;
    };

    Row& rowOf(std::string const& name) {
        auto const found =
            std::find_if(rows.begin(), rows.end(), [&](Row const& row) { return row.name == name; });
        return found != rows.end() ? *found : rows.emplace_back(Row{name, {}});
    }

    static void print(Row const& row, std::vector<std::string> const& libraries) {
        std::size_t const at = row.name.find(separator);
        std::printf("| %s | %s |", row.name.substr(0, at).c_str(), row.name.substr(at + 1).c_str());
        double best = std::numeric_limits<double>::max();
        for (auto const& library : libraries) {
            auto const cell = row.cells.find(library);
            if (cell == row.cells.end()) {
                std::printf(" |");
                continue;
            }
            best = library == OWN ? best : std::min(best, cell->second);
            std::printf(" %.0f |", cell->second);
        }
        auto const own = row.cells.find(OWN);
        auto const ratio = [&](bool known, double other) {
            known&& own != row.cells.end() ? std::printf(" %.2f |", own->second / other) : std::printf(" |");
        };
        auto const qurl = row.cells.find("QUrl");
        ratio(qurl != row.cells.end(), qurl != row.cells.end() ? qurl->second : 1);
        ratio(best < std::numeric_limits<double>::max(), best);
        std::printf("\n");
    }

    std::vector<Row> rows;
};

} // namespace

std::vector<std::u16string> thoseWithEscapes(std::vector<std::u16string> const& texts, bool wanted) {
    std::vector<std::u16string> result;
    for (auto const& text : texts) {
        if ((IRI(text).getPath(Encoding::Iri).find(u'%') != std::u16string::npos) == wanted) {
            result.push_back(text);
        }
    }
    return overAgain(std::move(result));
}

void add(char const* operation, std::string const& list, char const* library, std::size_t items, Pass pass) {
    if (items == 0) { // a list without what this row is of
        return;
    }
    std::string const row = std::string(operation) + separator + list;
    if (std::find(rowNames().begin(), rowNames().end(), row) == rowNames().end()) {
        rowNames().push_back(row);
    }
    std::string const name = row + separator + library;
    // NOLINTNEXTLINE(readability-redundant-string-cstr): that of Debian 12 takes no string
    benchmark::RegisterBenchmark(name.c_str(),
                                 [pass = std::move(pass), items](benchmark::State& state) {
                                     for (auto _ : state) {
                                         state.SetIterationTime(pass());
                                     }
                                     state.counters["items"] = static_cast<double>(items);
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(40)
        ->Unit(benchmark::kNanosecond);
}

} // namespace bench

int main(int argc, char** argv) {
    using namespace bench;
    std::string const urls = takeOption(argc, argv, "urls", BENCH_DATA "/homepages.txt");
    std::string const iris = takeOption(argc, argv, "iris", BENCH_DATA "/iris.txt");
    std::string const pairs = takeOption(argc, argv, "pairs", "");
    std::string const hosts = takeOption(argc, argv, "hosts", "");
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaved.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    auto const normal = inNormalForm(lines(urls));
    Data const data{identifiersOf(urls),
                    identifiersOf(iris),
                    corpusOf(nameOf(urls), withQueries(lines(urls))),
                    corpusOf(nameOf(urls), normal),
                    corpusOf(nameOf(urls), roughened(normal)),
                    readPairs(pairs, lines(BENCH_DATA "/homepages.txt")),
                    hosts.empty() ? corpusOf("five names", fiveNames())
                                  : corpusOf(nameOf(hosts), lines(hosts))};
    addIri(data);
    addNetwork(data);
#ifdef BENCH_QT
    addQUrl(data);
#endif
#ifdef BENCH_URIPARSER
    addUriparser(data);
#endif
#ifdef BENCH_GLIB
    addGUri(data);
#endif
#ifdef BENCH_POCO
    addPoco(data);
#endif
#ifdef BENCH_CURL
    addCurl(data);
#endif
#ifdef BENCH_BOOST_URL
    addBoostUrl(data);
#endif
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::Shutdown();
    return 0;
}
