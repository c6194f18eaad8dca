#pragma once

// What the benchmarks of this library and of its peers share: the texts, the operations and how a row is
// measured.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

#include <malloc.h>

namespace bench {

/// Texts in both encodings: a library is given the one that it takes.
struct TextList {
    std::vector<std::string> utf8;
    std::vector<std::u16string> utf16;
};

/// A list of IRIs.
struct Corpus : TextList {
    std::string name;
};

/// A list of IRIs, and what no library has to take: each with a space in it.
struct Identifiers : Corpus {
    TextList faultEarly; // behind the "//"
    TextList faultLate;  // at the end of path and query
};

/// Links and the pages that they stand on.
struct Pairs {
    std::string name;
    Corpus bases;
    Corpus references;
};

struct Data {
    Identifiers urls;
    Identifiers iris;
    Corpus queries; // the URLs that have a query
    Corpus normal;  // the URLs that are in normal form
    Corpus rough;   // the same, written in another way
    Pairs pairs;
    Corpus hosts; // domain names in Unicode
};

/// The operations; a row of the table is one of them on one list.
namespace operation {
inline constexpr char const* parse = "parse, destroy";
inline constexpr char const* parseUtf8 = "parse from UTF-8, destroy";
inline constexpr char const* parseAndRead = "parse, read scheme, host, path, query";
inline constexpr char const* parseToAscii = "parse, write in ASCII";
inline constexpr char const* text = "text of a parsed value";
inline constexpr char const* textUtf8 = "text in UTF-8 of a parsed value";
inline constexpr char const* readUtf8 = "read all parts in UTF-8";
inline constexpr char const* rawPathPlain = "decoded path, fresh, no escape in it";
inline constexpr char const* rawPathEscaped = "decoded path, fresh, escapes in it";
inline constexpr char const* ascii = "ASCII text, fresh";
inline constexpr char const* asciiWarm = "ASCII text, asked for before";
inline constexpr char const* allForms = "path in all forms, fresh";
inline constexpr char const* hash = "hash, fresh";
inline constexpr char const* equal = "equality of equal values, fresh";
inline constexpr char const* different = "equality of neighbours, fresh";
inline constexpr char const* copy = "copy, destroy";
inline constexpr char const* move = "move there and back";
inline constexpr char const* insert = "insert into an unordered set";
inline constexpr char const* build = "build from parts, write";
inline constexpr char const* replaceFragment = "replace the fragment";
inline constexpr char const* replaceQuery = "replace the query";
inline constexpr char const* parameters = "all query parameters, decoded, owned";
inline constexpr char const* appendParameters = "append ten parameters to a query, write it";
inline constexpr char const* segments = "path segments, decoded, owned";
inline constexpr char const* normalizeNormal = "normalise, in normal form already";
inline constexpr char const* normalizeRough = "normalise, not in normal form";
inline constexpr char const* parseTwice = "parse on two threads at once";
inline constexpr char const* bytesHeld = "bytes held by a parsed value, not ns";
inline constexpr char const* addressFromText = "address from text";
inline constexpr char const* addressToText = "address to text";
inline constexpr char const* tryAddress = "address from text, without exceptions";
inline constexpr char const* addressEqual = "equality with another address";
inline constexpr char const* addressHash = "hash of an address";
inline constexpr char const* networkContains = "is an address in a network";
inline constexpr char const* addressIsGlobal = "is an address global";
inline constexpr char const* listAdapters = "list the adapters";
inline constexpr char const* nameToAscii = "domain name to ASCII";
// Of texts with the fault early, and with the fault late.
inline constexpr std::array refuse{"refuse, fault early", "refuse, fault late"};
inline constexpr std::array refuseByException{"refuse by exception, fault early",
                                              "refuse by exception, fault late"};

/// What is done with a reference and a base.
struct References {
    char const* resolve;
    char const* resolveTexts;
    char const* relativise;
};
inline constexpr References onDecodedPaths{"resolve parsed values", "parse both, resolve, write",
                                           "make relative"};
inline constexpr References exactly{"resolve parsed values exactly", "parse both, resolve exactly, write",
                                    "make relative exactly"};
} // namespace operation

/// What fragments and queries are replaced with.
inline constexpr std::string_view newFragment = "section-3.2";
inline constexpr std::string_view newQuery = "page=2&sort=name";

/// What is appended to queries, each text by a function of it.
template <class Make>
auto parametersToAppend(Make make) {
    using namespace std::string_view_literals;
    std::vector<std::pair<decltype(make(""sv)), decltype(make(""sv))>> made;
    for (auto const& [name, value] :
         {std::pair("page"sv, "2"sv), std::pair("sort"sv, "name"sv), std::pair("city"sv, "New York"sv),
          std::pair("q"sv, "black & white"sv), std::pair("lang"sv, "en"sv), std::pair("sum"sv, "1=1"sv),
          std::pair("return to"sv, "/a/b?c#d"sv), std::pair("share"sv, "50%"sv),
          std::pair("session"sv, "5f2b7c1e9a"sv), std::pair("debug"sv, ""sv)}) {
        made.emplace_back(make(name), make(value));
    }
    return made;
}

/// The texts whose path has escapes in it where they are `wanted`, or those whose path has none; over again
/// where they are too few to be timed.
std::vector<std::u16string> thoseWithEscapes(std::vector<std::u16string> const& texts, bool wanted);

using Clock = std::chrono::steady_clock;

/// One pass over all items of a row; gives the seconds of what counts.
using Pass = std::function<double()>;

/// Registers a row's cell. Passes of all cells are interleaved, and the least of a cell's passes is shown.
void add(char const* operation, std::string const& list, char const* library, std::size_t items, Pass pass);

/// Registers cells of one library and one list, by operation.
inline auto rowsOf(char const* library, Corpus const& corpus) {
    return [library, &corpus](char const* operation, Pass pass) {
        add(operation, corpus.name, library, corpus.utf8.size(), std::move(pass));
    };
}

/// The same for a library whose own text is UTF-8: what it parses and writes stands in the rows of UTF-8 as
/// well.
inline auto utf8RowsOf(char const* library, Corpus const& corpus) {
    return [row = rowsOf(library, corpus)](char const* operation, Pass const& pass) {
        row(operation, pass);
        std::string_view const name = operation;
        if (name == operation::parse) {
            row(operation::parseUtf8, pass);
        } else if (name == operation::text) {
            row(operation::textUtf8, pass);
        }
    };
}

/// Registers cells of another library on pairs. It has one way with references, whose time stands in the rows
/// of both of this library's ways.
inline auto rowsOf(char const* library, Pairs const& pairs) {
    return [library, &pairs](auto operation, Pass const& pass) {
        for (auto const* const way : {&operation::onDecodedPaths, &operation::exactly}) {
            add(way->*operation, pairs.name, library, pairs.bases.utf8.size(), pass);
        }
    };
}

/// A pass over items as they are.
template <class Items, class Operation>
Pass over(Items const& items, Operation operation) {
    return [&items, operation] {
        auto const begin = Clock::now();
        for (auto const& item : items) {
            operation(item);
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    };
}

/// A pass over values that are made for it outside the time that counts, so that nothing has been worked out
/// yet.
template <class Make, class Operation>
Pass overFresh(Make make, Operation operation) {
    return [make, operation] {
        auto values = make();
        auto const begin = Clock::now();
        for (auto& value : values) {
            operation(value);
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    };
}

/// The same for two lists of values side by side.
template <class Make, class Operation>
Pass overFreshPairs(Make make, Operation operation) {
    return [make, operation] {
        auto values = make();
        auto const begin = Clock::now();
        for (std::size_t i = 0; i != values.first.size(); ++i) {
            operation(values.first[i], values.second[i]);
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    };
}

/// Values of all items of a list, by a function of the item.
template <class Items, class Make>
auto makeAll(Items const& items, Make make) {
    std::vector<decltype(make(items[0]))> values;
    values.reserve(items.size());
    for (auto const& item : items) {
        values.push_back(make(item));
    }
    return values;
}

/// Makes values of the items of two lists whenever it is called, for `overFreshPairs`.
template <class Items, class Make>
auto makePairs(Items const& first, Items const& second, Make make) {
    return [&first, &second, make] { return std::pair(makeAll(first, make), makeAll(second, make)); };
}

/// The function of a value that changes a copy of it.
template <class Change>
auto onCopy(Change change) {
    return [change](auto const& value) {
        auto copy = value;
        change(copy);
        benchmark::DoNotOptimize(copy);
    };
}

/// A pass on two threads, each over all items; so many times that starting a thread does not tell.
template <class Items, class Operation>
Pass overTwice(Items const& items, Operation operation) {
    return [&items, operation] {
        constexpr int rounds = 20;
        auto const run = [&items, operation] {
            for (int round = 0; round != rounds; ++round) {
                for (auto const& item : items) {
                    operation(item);
                }
            }
        };
        auto const begin = Clock::now();
        std::thread other(run);
        run();
        other.join();
        return std::chrono::duration<double>(Clock::now() - begin).count() / rounds;
    };
}

/// Not a time: the bytes that values hold, object and heap, as so many nanoseconds.
template <class Make>
Pass held(Make make) {
    return [make] {
        auto const inUse = [] {
            auto const now = mallinfo2();
            return now.uordblks + now.hblkhd; // in the arenas, and mapped by themselves
        };
        auto const before = inUse();
        auto const values = make();
        return static_cast<double>(inUse() - before) * 1e-9;
    };
}

/// The two rows of refusals, by a function of a text in the encoding, a member of TextList, that the library
/// takes.
template <class Row, class Member, class Refuse>
void addRefusals(Row row, std::array<char const*, 2> const& operations, Identifiers const& corpus,
                 Member encoding, Refuse refuse) {
    row(operations[0], over(corpus.faultEarly.*encoding, refuse));
    row(operations[1], over(corpus.faultLate.*encoding, refuse));
}

/// The function of a text that catches what `parse` throws.
template <class Parse>
auto catching(Parse parse) {
    return [parse](auto const& text) {
        try {
            benchmark::DoNotOptimize(parse(text));
        } catch (std::exception const& refusal) {
            benchmark::DoNotOptimize(&refusal);
        }
    };
}

/// The rows of a value type that can be hashed and compared.
template <class Hash, class Row, class Fresh>
void addValueRows(Row row, Fresh fresh) {
    using Values = decltype(fresh());
    using Value = typename Values::value_type;
    using benchmark::DoNotOptimize;
    row(operation::hash, overFresh(fresh, [](Value const& value) { DoNotOptimize(Hash()(value)); }));
    row(operation::equal, overFreshPairs([fresh] { return std::pair(fresh(), fresh()); },
                                         [](Value const& a, Value const& b) { DoNotOptimize(a == b); }));
    row(operation::different, [fresh] {
        auto const values = fresh();
        auto const begin = Clock::now();
        for (std::size_t i = 1; i != values.size(); ++i) {
            DoNotOptimize(values[i - 1] == values[i]);
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    });
    row(operation::copy, overFresh(fresh, [](Value const& value) { DoNotOptimize(Value(value)); }));
    row(operation::move, overFresh(fresh, [](Value& value) {
            Value there(std::move(value));
            value = std::move(there);
        }));
    row(operation::insert, [fresh] {
        auto values = fresh();
        std::unordered_set<Value, Hash> set;
        set.reserve(values.size());
        auto const begin = Clock::now();
        for (auto& value : values) {
            set.insert(std::move(value));
        }
        return std::chrono::duration<double>(Clock::now() - begin).count();
    });
}

/// The two rows of normal forms, by functions that parse a text in the encoding that the library takes and
/// normalise a value.
template <class List, class Parse, class Normalize>
void addNormalForms(char const* library, Data const& data, List TextList::*encoding, Parse parse,
                    Normalize normalize) {
    for (auto const& [operation, corpus] : {std::pair(operation::normalizeNormal, &data.normal),
                                            std::pair(operation::normalizeRough, &data.rough)}) {
        auto const fresh = [&texts = corpus->*encoding, parse] { return makeAll(texts, parse); };
        rowsOf(library, *corpus)(operation, overFresh(fresh, normalize));
    }
}

void addIri(Data const& data);
void addNetwork(Data const& data);

// The peers that this program was built with.
void addQUrl(Data const& data);
void addUriparser(Data const& data);
void addGUri(Data const& data);
void addPoco(Data const& data);
void addCurl(Data const& data);
void addBoostUrl(Data const& data);

} // namespace bench
