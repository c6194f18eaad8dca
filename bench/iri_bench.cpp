// What an IRI costs, beside the field's other libraries where they are installed.
//
//   iri_bench [google-benchmark options] [FILE]...
//
// Each FILE (UTF-8, an IRI a line; by default the lists of examples/data) makes a set of rows
// "operation/library/ file". A row's time is that of one item; bytes are those of the text as the library is
// given it: UTF-16 for this library and QUrl, UTF-8 for uriparser and GUri, which do not take UTF-16 and are
// spared the conversion. GUri keeps the text's UTF-8; uriparser keeps pointers into it and owns nothing. A
// library refuses what its grammar refuses; "refused" is how many in a hundred.

#include <foundation/network/IRI.hpp>

#include <benchmark/benchmark.h>
#include <unicode/unistr.h>

#ifdef BENCH_QT
#include <QtCore/QUrl>
#endif
#ifdef BENCH_URIPARSER
#include <uriparser/Uri.h>
#endif
#ifdef BENCH_GLIB
#include <glib.h>
#endif

#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using foundation::network::Encoding;
using foundation::network::IRI;

struct Corpus {
    std::string name;
    std::vector<std::string> utf8;
    std::vector<std::u16string> utf16;
};

Corpus read(std::string const& path) {
    Corpus corpus{path.substr(path.rfind('/') + 1), {}, {}};
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        auto const wide = icu::UnicodeString::fromUTF8(line);
        corpus.utf16.emplace_back(wide.getBuffer(), static_cast<std::size_t>(wide.length()));
        corpus.utf8.push_back(line);
    }
    if (corpus.utf8.empty()) {
        std::cerr << "iri_bench: nothing in " << path << '\n';
        std::exit(2);
    }
    return corpus;
}

// An iteration is one item, the next of the list each time. `operation` gives false for an item that it
// refuses.
template <class Items, class Operation>
void measure(std::string const& row, Corpus const& corpus, Items const& items, Operation operation) {
    benchmark::RegisterBenchmark(
        (row + "/" + corpus.name).c_str(), [&items, operation](benchmark::State& state) {
            std::size_t at = 0;
            std::size_t bytes = 0;
            std::size_t refused = 0;
            for (auto _ : state) {
                auto const& item = items[at];
                refused += operation(item) ? 0 : 1;
                bytes += item.size() * sizeof(item[0]);
                at = at + 1 == items.size() ? 0 : at + 1;
            }
            state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
            state.counters["refused"] =
                benchmark::Counter(100.0 * static_cast<double>(refused), benchmark::Counter::kAvgIterations);
        });
}

template <class Operation>
bool unlessRefused(Operation operation) {
    try {
        operation();
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

void parseRows(Corpus const& corpus) {
    measure("parse/IRI", corpus, corpus.utf16, [](std::u16string const& text) {
        return unlessRefused([&] { benchmark::DoNotOptimize(IRI(text)); });
    });
#ifdef BENCH_QT
    measure("parse/QUrl", corpus, corpus.utf16, [](std::u16string const& text) {
        QUrl url(QString::fromUtf16(text.data(), static_cast<int>(text.size())), QUrl::TolerantMode);
        benchmark::DoNotOptimize(url);
        return url.isValid();
    });
#endif
#ifdef BENCH_URIPARSER
    measure("parse/uriparser", corpus, corpus.utf8, [](std::string const& text) {
        UriUriA uri;
        bool const taken =
            uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), nullptr) == URI_SUCCESS;
        if (taken) {
            uriFreeUriMembersA(&uri);
        }
        return taken;
    });
#endif
#ifdef BENCH_GLIB
    measure("parse/GUri", corpus, corpus.utf8, [](std::string const& text) {
        GUri* const uri = g_uri_parse(text.c_str(), G_URI_FLAGS_ENCODED, nullptr);
        if (uri != nullptr) {
            g_uri_unref(uri);
        }
        return uri != nullptr;
    });
#endif
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::vector<Corpus> corpora;
    for (int i = 1; i < argc; ++i) {
        corpora.push_back(read(argv[i]));
    }
    if (corpora.empty()) {
        corpora = {read(BENCH_DATA "/homepages.txt"), read(BENCH_DATA "/iris.txt")};
    }
    for (auto const& corpus : corpora) {
        parseRows(corpus);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
