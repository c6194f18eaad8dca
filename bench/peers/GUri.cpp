// GLib's GUri, with its encoded parts left as they are. Values are immutable and counted; there is no
// equality and no hash. With G_URI_FLAGS_NON_DNS unset a host that is not ASCII goes through IDNA.

#include "../Bench.hpp"

#include <glib.h>

#include <memory>

namespace bench {

namespace {

using benchmark::DoNotOptimize;

struct Unref {
    void operator()(GUri* uri) const { g_uri_unref(uri); }
    void operator()(char* text) const { g_free(text); }
};
using Uri = std::unique_ptr<GUri, Unref>;
using Text = std::unique_ptr<char, Unref>;

Uri parse(std::string const& text) {
    return Uri(g_uri_parse(text.c_str(), G_URI_FLAGS_ENCODED, nullptr));
}

std::string owned(char const* part) {
    return part != nullptr ? part : "";
}

} // namespace

void addGUri(Data const& data) {
    constexpr char const* library = "GUri";
    for (auto const* const corpus : {&data.urls, &data.iris}) {
        auto const& texts = corpus->utf8;
        auto const row = utf8RowsOf(library, *corpus);
        auto const fresh = [&texts] { return makeAll(texts, parse); };
        row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(parse(text)); }));
        row(operation::bytesHeld, held(fresh));
        row(operation::parseAndRead, over(texts, [](auto const& text) {
                Uri const uri = parse(text);
                DoNotOptimize(std::string(g_uri_get_scheme(uri.get())));
                DoNotOptimize(std::string(g_uri_get_host(uri.get())));
                DoNotOptimize(std::string(g_uri_get_path(uri.get())));
                DoNotOptimize(owned(g_uri_get_query(uri.get())));
            }));
        row(operation::readUtf8, overFresh(fresh, [](Uri const& uri) {
                DoNotOptimize(owned(g_uri_get_scheme(uri.get())));
                DoNotOptimize(owned(g_uri_get_userinfo(uri.get())));
                DoNotOptimize(owned(g_uri_get_host(uri.get())));
                DoNotOptimize(g_uri_get_port(uri.get()));
                DoNotOptimize(owned(g_uri_get_path(uri.get())));
                DoNotOptimize(owned(g_uri_get_query(uri.get())));
                DoNotOptimize(owned(g_uri_get_fragment(uri.get())));
            }));
        row(operation::text,
            overFresh(fresh, [](Uri const& uri) { DoNotOptimize(Text(g_uri_to_string(uri.get()))); }));
    }
    auto const& pairs = data.pairs;
    auto const pairsRow = rowsOf(library, pairs);
    pairsRow(&operation::References::resolveTexts,
             overFreshPairs([&pairs] { return std::pair(pairs.references.utf8, pairs.bases.utf8); },
                            [](std::string const& reference, std::string const& base) {
                                DoNotOptimize(Text(g_uri_resolve_relative(base.c_str(), reference.c_str(),
                                                                          G_URI_FLAGS_ENCODED, nullptr)));
                            }));
}

} // namespace bench
