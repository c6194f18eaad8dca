// Boost.URL 1.81, in a library of its own: this program's other Boost does not meet it. A value holds its
// text and a table of offsets. It takes ASCII only; equality and hash normalise.

#include "../Bench.hpp"

#include <boost/url.hpp>

namespace bench {

namespace {

using benchmark::DoNotOptimize;
using boost::urls::url;
using boost::urls::url_view_base; // what only reads

url parse(std::string const& text) {
    return url(text);
}

} // namespace

__attribute__((visibility("default"))) void addBoostUrl(Data const& data) {
    constexpr char const* library = "Boost.URL";
    auto const& corpus = data.urls;
    auto const& texts = corpus.utf8;
    auto const row = utf8RowsOf(library, corpus);
    auto const fresh = [&texts] { return makeAll(texts, parse); };
    row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(url(text)); }));
    row(operation::bytesHeld, held(fresh));
    row(operation::parseAndRead, over(texts, [](auto const& text) {
            url const value(text);
            DoNotOptimize(std::string(value.scheme()));
            DoNotOptimize(std::string(value.encoded_host()));
            DoNotOptimize(std::string(value.encoded_path()));
            DoNotOptimize(std::string(value.encoded_query()));
        }));
    row(operation::text,
        overFresh(fresh, [](url const& value) { DoNotOptimize(std::string(value.buffer())); }));
    row(operation::readUtf8, overFresh(fresh, [](url const& value) {
            DoNotOptimize(std::string(value.scheme()));
            DoNotOptimize(std::string(value.encoded_userinfo()));
            DoNotOptimize(std::string(value.encoded_host()));
            DoNotOptimize(std::string(value.port()));
            DoNotOptimize(std::string(value.encoded_path()));
            DoNotOptimize(std::string(value.encoded_query()));
            DoNotOptimize(std::string(value.encoded_fragment()));
        }));
    addRefusals(row, operation::refuse, corpus, &TextList::utf8,
                [](auto const& text) { DoNotOptimize(boost::urls::parse_uri_reference(text)); });
    addRefusals(row, operation::refuseByException, corpus, &TextList::utf8, catching(parse));
    row(operation::hash, overFresh(fresh, [](url const& value) { DoNotOptimize(std::hash<url>()(value)); }));
    row(operation::equal, overFreshPairs([fresh] { return std::pair(fresh(), fresh()); },
                                         [](url const& a, url const& b) { DoNotOptimize(a == b); }));
    row(operation::copy, overFresh(fresh, [](url const& value) { DoNotOptimize(url(value)); }));
    row(operation::replaceFragment,
        overFresh(fresh, onCopy([](url& value) { value.set_encoded_fragment(newFragment); })));
    row(operation::replaceQuery,
        overFresh(fresh, onCopy([](url& value) { value.set_encoded_query(newQuery); })));
    row(operation::segments, overFresh(fresh, [](url_view_base const& value) {
            auto const segments = value.segments();
            std::vector<std::string> own;
            own.reserve(segments.size());
            own.assign(segments.begin(), segments.end());
            DoNotOptimize(own);
        }));
    auto const ofQueries = rowsOf(library, data.queries);
    auto const queries = [&data] { return makeAll(data.queries.utf8, parse); };
    ofQueries(operation::parameters, overFresh(queries, [](url_view_base const& value) {
                  for (boost::urls::param const parameter : value.params()) {
                      DoNotOptimize(parameter);
                  }
              }));
    auto const toView = [](std::string_view text) { return text; };
    ofQueries(operation::appendParameters,
              overFresh(queries, [more = parametersToAppend(toView)](url const& value) {
                  url copy = value;
                  for (auto const& [name, own] : more) {
                      copy.params().append({name, own});
                  }
                  DoNotOptimize(std::string(copy.encoded_query()));
              }));
    addNormalForms(library, data, &TextList::utf8, parse, onCopy([](url& value) { value.normalize(); }));
    auto const& pairs = data.pairs;
    auto const pairsRow = rowsOf(library, pairs);
    auto const values = makePairs(pairs.references.utf8, pairs.bases.utf8, parse);
    pairsRow(&operation::References::resolve,
             overFreshPairs(values, [](url const& reference, url const& base) {
                 url target;
                 (void)boost::urls::resolve(base, reference, target);
                 DoNotOptimize(target);
             }));
}

} // namespace bench
