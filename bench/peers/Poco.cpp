// POCO's URI. It decodes each part when it parses, and folds scheme and host.

#include "../Bench.hpp"

#include <Poco/URI.h>

namespace bench {

namespace {

using benchmark::DoNotOptimize;
using Poco::URI;

URI parse(std::string const& text) {
    return URI(text);
}

} // namespace

void addPoco(Data const& data) {
    constexpr char const* library = "POCO";
    for (auto const* const corpus : {&data.urls, &data.iris}) {
        auto const& texts = corpus->utf8;
        auto const row = utf8RowsOf(library, *corpus);
        auto const fresh = [&texts] { return makeAll(texts, parse); };
        row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(URI(text)); }));
        row(operation::bytesHeld, held(fresh));
        row(operation::parseAndRead, over(texts, [](auto const& text) {
                URI const uri(text);
                DoNotOptimize(std::string(uri.getScheme()));
                DoNotOptimize(std::string(uri.getHost()));
                DoNotOptimize(std::string(uri.getPath()));
                DoNotOptimize(uri.getQuery());
            }));
        row(operation::parseToAscii,
            over(texts, [](auto const& text) { DoNotOptimize(URI(text).toString()); }));
        row(operation::text, overFresh(fresh, [](URI const& uri) { DoNotOptimize(uri.toString()); }));
        row(operation::readUtf8, overFresh(fresh, [](URI const& uri) {
                DoNotOptimize(std::string(uri.getScheme()));
                DoNotOptimize(std::string(uri.getUserInfo()));
                DoNotOptimize(std::string(uri.getHost()));
                DoNotOptimize(uri.getPort());
                DoNotOptimize(std::string(uri.getPath()));
                DoNotOptimize(uri.getQuery());
                DoNotOptimize(uri.getFragment());
            }));
        row(operation::equal, overFreshPairs([fresh] { return std::pair(fresh(), fresh()); },
                                             [](URI const& a, URI const& b) { DoNotOptimize(a == b); }));
        row(operation::copy, overFresh(fresh, [](URI const& uri) { DoNotOptimize(URI(uri)); }));
    }
    auto const row = rowsOf(library, data.urls);
    auto const fresh = [&data] { return makeAll(data.urls.utf8, parse); };
    auto const toText = [](std::string_view text) { return std::string(text); };
    row(operation::replaceFragment,
        overFresh(fresh, onCopy([text = toText(newFragment)](URI& uri) { uri.setFragment(text); })));
    row(operation::replaceQuery,
        overFresh(fresh, onCopy([text = toText(newQuery)](URI& uri) { uri.setRawQuery(text); })));
    row(operation::segments, overFresh(fresh, [](URI const& uri) {
            std::vector<std::string> segments;
            uri.getPathSegments(segments);
            DoNotOptimize(segments);
        }));
    auto const ofQueries = rowsOf(library, data.queries);
    auto const queries = [&data] { return makeAll(data.queries.utf8, parse); };
    ofQueries(operation::parameters,
              overFresh(queries, [](URI const& uri) { DoNotOptimize(uri.getQueryParameters()); }));
    ofQueries(operation::appendParameters,
              overFresh(queries, [more = parametersToAppend(toText)](URI const& uri) {
                  URI copy = uri;
                  for (auto const& [name, value] : more) {
                      copy.addQueryParameter(name, value);
                  }
                  DoNotOptimize(std::string(copy.getRawQuery()));
              }));
    auto const& pairs = data.pairs;
    auto const pairsRow = rowsOf(library, pairs);
    auto const values = makePairs(pairs.references.utf8, pairs.bases.utf8, parse);
    pairsRow(&operation::References::resolve,
             overFreshPairs(values, [](URI const& reference, URI const& base) {
                 URI target(base);
                 target.resolve(reference);
                 DoNotOptimize(target);
             }));
}

} // namespace bench
