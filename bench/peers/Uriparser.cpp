// uriparser. A value is pointers into the text that it was parsed from, which it does not own; a path is a
// list of segments. It takes ASCII only, and equality compares the pieces.

#include "../Bench.hpp"

#include <uriparser/Uri.h>

#include <memory>

namespace bench {

namespace {

using benchmark::DoNotOptimize;

struct Free {
    void operator()(UriUriA* uri) const {
        uriFreeUriMembersA(uri);
        delete uri;
    }
};
using Uri = std::unique_ptr<UriUriA, Free>;

Uri parse(std::string const& text) {
    Uri uri(new UriUriA());
    uriParseSingleUriExA(uri.get(), text.data(), text.data() + text.size(), nullptr);
    return uri;
}

std::string textOf(UriUriA const& uri) {
    int length = 0;
    uriToStringCharsRequiredA(&uri, &length);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    uriToStringA(text.data(), &uri, length + 1, nullptr);
    text.pop_back();
    return text;
}

} // namespace

void addUriparser(Data const& data) {
    constexpr char const* library = "uriparser";
    auto const& corpus = data.urls;
    auto const& texts = corpus.utf8;
    auto const row = utf8RowsOf(library, corpus);
    auto const fresh = [&texts] { return makeAll(texts, parse); };
    auto const parseOnStack = [](std::string const& text) {
        UriUriA uri;
        DoNotOptimize(uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), nullptr));
        DoNotOptimize(uri);
        uriFreeUriMembersA(&uri);
    };
    row(operation::parse, over(texts, parseOnStack));
    addRefusals(row, operation::refuse, corpus, &TextList::utf8, parseOnStack);
    row(operation::bytesHeld, held(fresh));
    row(operation::text, overFresh(fresh, [](Uri const& uri) { DoNotOptimize(textOf(*uri)); }));
    row(operation::equal,
        overFreshPairs([fresh] { return std::pair(fresh(), fresh()); },
                       [](Uri const& a, Uri const& b) { DoNotOptimize(uriEqualsUriA(a.get(), b.get())); }));
    auto const ofQueries = rowsOf(library, data.queries);
    auto const queries = [&data] { return makeAll(data.queries.utf8, parse); };
    ofQueries(operation::parameters, overFresh(queries, [](Uri const& uri) {
                  UriQueryListA* parameters = nullptr;
                  int count = 0;
                  uriDissectQueryMallocA(&parameters, &count, uri->query.first, uri->query.afterLast);
                  DoNotOptimize(parameters);
                  uriFreeQueryListA(parameters);
              }));
    addNormalForms(library, data, &TextList::utf8, parse, [](Uri const& uri) {
        uriNormalizeSyntaxA(uri.get()); // in place; all texts are its own then
        DoNotOptimize(*uri);
        uriFreeUriMembersA(uri.get());
    });
    auto const& pairs = data.pairs;
    auto const pairsRow = rowsOf(library, pairs);
    auto const values = makePairs(pairs.references.utf8, pairs.bases.utf8, parse);
    pairsRow(&operation::References::resolve,
             overFreshPairs(values, [](Uri const& reference, Uri const& base) {
                 UriUriA target;
                 uriAddBaseUriA(&target, reference.get(), base.get());
                 DoNotOptimize(target);
                 uriFreeUriMembersA(&target);
             }));
    pairsRow(&operation::References::resolveTexts,
             overFreshPairs([&pairs] { return std::pair(pairs.references.utf8, pairs.bases.utf8); },
                            [](std::string const& reference, std::string const& base) {
                                Uri const r = parse(reference);
                                Uri const b = parse(base);
                                UriUriA target;
                                uriAddBaseUriA(&target, r.get(), b.get());
                                DoNotOptimize(textOf(target));
                                uriFreeUriMembersA(&target);
                            }));
    // The texts of the targets stay: the values point into them.
    auto const targets = std::make_shared<std::vector<std::string>>();
    for (std::size_t i = 0; i != pairs.bases.utf8.size(); ++i) {
        UriUriA target;
        uriAddBaseUriA(&target, parse(pairs.references.utf8[i]).get(), parse(pairs.bases.utf8[i]).get());
        targets->push_back(textOf(target));
        uriFreeUriMembersA(&target);
    }
    pairsRow(&operation::References::relativise,
             overFreshPairs(
                 [&pairs, targets] {
                     return std::pair(makeAll(*targets, parse), makeAll(pairs.bases.utf8, parse));
                 },
                 [](Uri const& target, Uri const& base) {
                     UriUriA reference;
                     uriRemoveBaseUriA(&reference, target.get(), base.get(), URI_FALSE);
                     DoNotOptimize(reference);
                     uriFreeUriMembersA(&reference);
                 }));
}

} // namespace bench
