// Qt's QUrl. A value shares its parts with its copies; it holds the path decoded but for a few characters. It
// is parsed in the tolerant mode, which mends what it can, and compares after a look at each part.

#include "../Bench.hpp"

#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtCore/QUrlQuery>

namespace bench {

namespace {

using benchmark::DoNotOptimize;

QString toQString(std::u16string const& text) {
    return QString::fromUtf16(text.data(), static_cast<int>(text.size()));
}
QString toQString(std::string_view ascii) {
    return QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size()));
}
QUrl parse(std::u16string const& text) {
    return QUrl(toQString(text));
}

struct Hash {
    std::size_t operator()(QUrl const& url) const { return qHash(url); }
};

} // namespace

void addQUrl(Data const& data) {
    constexpr char const* library = "QUrl";
    for (auto const* const corpus : {&data.urls, &data.iris}) {
        auto const& texts = corpus->utf16;
        auto const row = rowsOf(library, *corpus);
        auto const fresh = [&texts] { return makeAll(texts, parse); };
        row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(parse(text)); }));
        row(operation::parseTwice, overTwice(texts, [](auto const& text) { DoNotOptimize(parse(text)); }));
        row(operation::bytesHeld, held(fresh));
        row(operation::parseAndRead, over(texts, [](auto const& text) {
                QUrl const url = parse(text);
                DoNotOptimize(url.scheme());
                DoNotOptimize(url.host());
                DoNotOptimize(url.path());
                DoNotOptimize(url.query());
            }));
        row(operation::parseToAscii,
            over(texts, [](auto const& text) { DoNotOptimize(parse(text).toEncoded()); }));
        row(operation::text, overFresh(fresh, [](QUrl const& url) { DoNotOptimize(url.toString()); }));
        row(operation::ascii, overFresh(fresh, [](QUrl const& url) { DoNotOptimize(url.toEncoded()); }));
        addRefusals(row, operation::refuse, *corpus, &TextList::utf16, [](auto const& text) {
            DoNotOptimize(QUrl(toQString(text), QUrl::StrictMode).isValid());
        });
        addValueRows<Hash>(row, fresh);
        row(operation::build, overFresh(fresh, [](QUrl const& url) {
                QUrl built;
                built.setScheme(url.scheme());
                built.setHost(url.host());
                built.setPath(url.path());
                built.setQuery(url.query());
                DoNotOptimize(built.toString());
            }));
        for (bool const escaped : {false, true}) {
            auto const some = thoseWithEscapes(texts, escaped);
            if (!some.empty()) {
                add(escaped ? operation::rawPathEscaped : operation::rawPathPlain, corpus->name, library,
                    some.size(),
                    overFresh([some] { return makeAll(some, parse); },
                              [](QUrl const& url) { DoNotOptimize(url.path(QUrl::FullyDecoded)); }));
            }
        }
    }
    auto const row = rowsOf(library, data.urls);
    auto const fresh = [&data] { return makeAll(data.urls.utf16, parse); };
    row(operation::replaceFragment,
        overFresh(fresh, onCopy([text = toQString(newFragment)](QUrl& url) { url.setFragment(text); })));
    row(operation::replaceQuery,
        overFresh(fresh, onCopy([text = toQString(newQuery)](QUrl& url) { url.setQuery(text); })));
    auto const ofQueries = rowsOf(library, data.queries);
    auto const queries = [&data] { return makeAll(data.queries.utf16, parse); };
    ofQueries(operation::parameters, overFresh(queries, [](QUrl const& url) {
                  DoNotOptimize(QUrlQuery(url).queryItems(QUrl::FullyDecoded));
              }));
    auto const toText = [](std::string_view text) { return toQString(text); };
    ofQueries(operation::appendParameters,
              overFresh(queries, [more = parametersToAppend(toText)](QUrl const& url) {
                  QUrlQuery query(url);
                  for (auto const& [name, value] : more) {
                      query.addQueryItem(name, value);
                  }
                  DoNotOptimize(query.query(QUrl::FullyEncoded));
              }));
    addNormalForms(library, data, &TextList::utf16, parse, [](QUrl const& url) {
        DoNotOptimize(url.adjusted(QUrl::NormalizePathSegments)); // the rest was done by the parse
    });
    auto const& pairs = data.pairs;
    auto const pairsRow = rowsOf(library, pairs);
    auto const values = makePairs(pairs.references.utf16, pairs.bases.utf16, parse);
    pairsRow(&operation::References::resolve,
             overFreshPairs(values, [](QUrl const& reference, QUrl const& base) {
                 DoNotOptimize(base.resolved(reference));
             }));
    pairsRow(&operation::References::resolveTexts,
             overFreshPairs([&pairs] { return std::pair(pairs.references.utf16, pairs.bases.utf16); },
                            [](auto const& reference, auto const& base) {
                                DoNotOptimize(parse(base).resolved(parse(reference)).toString());
                            }));
}

} // namespace bench
