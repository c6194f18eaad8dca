// libcurl's URL API. It takes absolute URLs only; parts are copied out one at a time.

#include "../Bench.hpp"

#include <curl/curl.h>

#include <memory>

namespace bench {

namespace {

using benchmark::DoNotOptimize;

struct Cleanup {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
    void operator()(char* text) const { curl_free(text); }
};
using Url = std::unique_ptr<CURLU, Cleanup>;
using Text = std::unique_ptr<char, Cleanup>;

Url parse(std::string const& text) {
    Url url(curl_url());
    curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_NON_SUPPORT_SCHEME);
    return url;
}

Text get(Url const& url, CURLUPart part) {
    char* text = nullptr;
    curl_url_get(url.get(), part, &text, 0);
    return Text(text);
}

} // namespace

void addCurl(Data const& data) {
    constexpr char const* library = "curl";
    for (auto const* const corpus : {&data.urls, &data.iris}) {
        auto const& texts = corpus->utf8;
        auto const row = utf8RowsOf(library, *corpus);
        auto const fresh = [&texts] { return makeAll(texts, parse); };
        row(operation::parse, over(texts, [](auto const& text) { DoNotOptimize(parse(text)); }));
        row(operation::bytesHeld, held(fresh));
        row(operation::parseAndRead, over(texts, [](auto const& text) {
                Url const url = parse(text);
                for (auto const part : {CURLUPART_SCHEME, CURLUPART_HOST, CURLUPART_PATH, CURLUPART_QUERY}) {
                    DoNotOptimize(get(url, part));
                }
            }));
        row(operation::text,
            overFresh(fresh, [](Url const& url) { DoNotOptimize(get(url, CURLUPART_URL)); }));
        row(operation::readUtf8, overFresh(fresh, [](Url const& url) {
                for (auto const part :
                     {CURLUPART_SCHEME, CURLUPART_USER, CURLUPART_PASSWORD, CURLUPART_HOST, CURLUPART_PORT,
                      CURLUPART_PATH, CURLUPART_QUERY, CURLUPART_FRAGMENT}) {
                    DoNotOptimize(get(url, part));
                }
            }));
        addRefusals(row, operation::refuse, *corpus, &TextList::utf8,
                    [](auto const& text) { DoNotOptimize(parse(text)); });
        row(operation::copy,
            overFresh(fresh, [](Url const& url) { DoNotOptimize(Url(curl_url_dup(url.get()))); }));
    }
}

} // namespace bench
