// The rows of this library. What a value works out is not there yet when an operation begins: values are made
// afresh for each pass, outside the time that counts.

#include "Bench.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/Normalization.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/PathSegments.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/References.hpp>
#include <foundation/network/Utf8.hpp>
#include <foundation/network/With.hpp>

namespace bench {

namespace {

using benchmark::DoNotOptimize;
using foundation::network::Encoding;
using foundation::network::IRI;
using foundation::network::IRIArgs;
using foundation::network::QueryParameters;
using foundation::network::utf8;

constexpr char const* library = "this library";

IRI parse(std::u16string const& text) {
    return IRI(text);
}

void addValues(Corpus const& corpus) {
    auto const& texts = corpus.utf16;
    auto const row = rowsOf(library, corpus);
    auto const fresh = [&texts] { return makeAll(texts, parse); };
    row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(IRI(text)); }));
    row(operation::parseTwice, overTwice(texts, [](auto const& text) { DoNotOptimize(IRI(text)); }));
    row(operation::bytesHeld, held(fresh));
    row(operation::parseAndRead, over(texts, [](auto const& text) {
            IRI const iri(text);
            DoNotOptimize(iri.getScheme());
            DoNotOptimize(iri.hasHost() ? iri.getHost(Encoding::Iri) : std::u16string());
            DoNotOptimize(iri.getPath(Encoding::Iri));
            DoNotOptimize(iri.hasQuery() ? iri.getQuery(Encoding::Iri) : std::u16string());
        }));
    row(operation::parseToAscii,
        over(texts, [](auto const& text) { DoNotOptimize(IRI(text).toAsciiString(false)); }));
    row(operation::text, overFresh(fresh, [](IRI const& iri) { DoNotOptimize(iri.toString(false)); }));
    row(operation::ascii, overFresh(fresh, [](IRI const& iri) { DoNotOptimize(iri.toAsciiString(false)); }));
    auto const asked = [fresh] {
        auto values = fresh();
        for (auto const& iri : values) {
            (void)iri.toAsciiString(false);
        }
        return values;
    };
    row(operation::asciiWarm,
        overFresh(asked, [](IRI const& iri) { DoNotOptimize(iri.toAsciiString(false)); }));
    row(operation::allForms, overFresh(fresh, [](IRI const& iri) {
            for (auto const form :
                 {Encoding::Raw, Encoding::Iri, Encoding::IriStrict, Encoding::Uri, Encoding::UriStrict}) {
                DoNotOptimize(iri.getPath(form));
            }
        }));
    addValueRows<std::hash<IRI>>(row, fresh);
    row(operation::build,
        overFresh([fresh] { return makeAll(fresh(), [](IRI const& iri) { return IRIArgs(iri); }); },
                  [](IRIArgs const& args) { DoNotOptimize(IRI(args).toString(false)); }));
}

void addUtf8(Corpus const& corpus) {
    auto const row = rowsOf(library, corpus);
    auto const fresh = [&corpus] { return makeAll(corpus.utf16, parse); };
    row(operation::parseUtf8, over(corpus.utf8, [](std::string const& text) {
            DoNotOptimize(foundation::network::iriFromUtf8(text));
        }));
    row(operation::textUtf8,
        overFresh(fresh, [](IRI const& iri) { DoNotOptimize(utf8(iri).toString(false)); }));
    row(operation::readUtf8, overFresh(fresh, [](IRI const& iri) {
            auto const view = utf8(iri);
            auto const form = Encoding::Iri;
            DoNotOptimize(iri.hasScheme() ? view.getScheme() : std::string());
            DoNotOptimize(iri.hasUserInfo() ? view.getUserInfo(form) : std::string());
            DoNotOptimize(iri.hasHost() ? view.getHost(form) : std::string());
            DoNotOptimize(iri.hasPort() ? view.getPort() : std::string());
            DoNotOptimize(view.getPath(form));
            DoNotOptimize(iri.hasQuery() ? view.getQuery(form) : std::string());
            DoNotOptimize(iri.hasFragment() ? view.getFragment(form) : std::string());
        }));
}

void addRefused(Identifiers const& corpus) {
    auto const row = rowsOf(library, corpus);
    addRefusals(row, operation::refuse, corpus, &TextList::utf16,
                [](auto const& text) { DoNotOptimize(foundation::network::tryParse(text)); });
    addRefusals(row, operation::refuseByException, corpus, &TextList::utf16, catching(parse));
}

void addDecodedPaths(Corpus const& corpus) {
    for (bool const escaped : {false, true}) {
        auto const texts = thoseWithEscapes(corpus.utf16, escaped);
        if (!texts.empty()) {
            add(escaped ? operation::rawPathEscaped : operation::rawPathPlain, corpus.name, library,
                texts.size(),
                overFresh([texts] { return makeAll(texts, parse); },
                          [](IRI const& iri) { DoNotOptimize(iri.getPath(Encoding::Raw)); }));
        }
    }
}

std::u16string toUtf16(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

void addParts(Data const& data) {
    auto const row = rowsOf(library, data.urls);
    auto const fresh = [&data] { return makeAll(data.urls.utf16, parse); };
    row(operation::replaceFragment, overFresh(fresh, [text = toUtf16(newFragment)](IRI const& iri) {
            DoNotOptimize(foundation::network::withFragment(iri, text, Encoding::Iri));
        }));
    row(operation::replaceQuery, overFresh(fresh, [text = toUtf16(newQuery)](IRI const& iri) {
            DoNotOptimize(foundation::network::withQuery(iri, text, Encoding::Iri));
        }));
    row(operation::segments,
        overFresh(fresh, [](IRI const& iri) { DoNotOptimize(foundation::network::getPathSegments(iri)); }));
    auto const ofQueries = rowsOf(library, data.queries);
    auto const queries = [&data] { return makeAll(data.queries.utf16, parse); };
    ofQueries(operation::parameters, overFresh(queries, [](IRI const& iri) {
                  for (auto const& parameter : QueryParameters(iri)) {
                      DoNotOptimize(parameter.getName());
                      DoNotOptimize(parameter.getValue());
                  }
              }));
    ofQueries(operation::appendParameters,
              overFresh(queries, [more = parametersToAppend(toUtf16)](IRI const& iri) {
                  QueryParameters query(iri);
                  for (auto const& [name, value] : more) {
                      query.append(name, value);
                  }
                  DoNotOptimize(query.toQuery());
              }));
}

template <class Resolve, class Relativise>
void addReferences(Pairs const& pairs, operation::References const& way, Resolve resolve,
                   Relativise relativise) {
    auto const row = [&pairs](char const* operation, Pass pass) {
        add(operation, pairs.name, library, pairs.bases.utf16.size(), std::move(pass));
    };
    row(way.resolve, overFreshPairs(makePairs(pairs.references.utf16, pairs.bases.utf16, parse),
                                    [resolve](IRI const& reference, IRI const& base) {
                                        DoNotOptimize(resolve(reference, base));
                                    }));
    row(way.resolveTexts,
        overFreshPairs([&pairs] { return std::pair(pairs.references.utf16, pairs.bases.utf16); },
                       [resolve](auto const& reference, auto const& base) {
                           DoNotOptimize(resolve(IRI(reference), IRI(base)).toString(false));
                       }));
    auto const targets = [&pairs, resolve] {
        std::vector<IRI> made;
        for (std::size_t i = 0; i != pairs.bases.utf16.size(); ++i) {
            IRI const target = resolve(IRI(pairs.references.utf16[i]), IRI(pairs.bases.utf16[i]));
            made.emplace_back(target.toString(false));
        }
        return std::pair(std::move(made), makeAll(pairs.bases.utf16, parse));
    };
    row(way.relativise, overFreshPairs(targets, [relativise](IRI const& target, IRI const& base) {
            DoNotOptimize(relativise(target, base));
        }));
}

} // namespace

void addIri(Data const& data) {
    for (auto const* const corpus : {&data.urls, &data.iris}) {
        addValues(*corpus);
        addUtf8(*corpus);
        addRefused(*corpus);
        addDecodedPaths(*corpus);
    }
    addParts(data);
    addNormalForms(library, data, &TextList::utf16, parse,
                   [](IRI const& iri) { DoNotOptimize(foundation::network::normalize(iri)); });
    addReferences(
        data.pairs, operation::onDecodedPaths,
        [](IRI const& reference, IRI const& base) { return reference.resolveAgainst(base); },
        [](IRI const& iri, IRI const& base) { return iri.makeRelativeTo(base); });
    addReferences(data.pairs, operation::exactly, foundation::network::resolveExactly,
                  foundation::network::makeRelativeExactly);
}

} // namespace bench
