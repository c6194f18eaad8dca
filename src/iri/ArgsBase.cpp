#include <foundation/network/iri/detail/ArgsBase.hpp>

#include "except/Refuse.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "text/Escapes.hpp"
#include "text/Transcoding.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <utility>

namespace foundation::network::iri::detail {

using Args = ArgsBase<std::u32string>;

namespace {

void set(std::u32string& part, bool& present, std::u32string text) noexcept {
    part = std::move(text);
    present = true;
}

void clear(std::u32string& part, bool& present) noexcept {
    part.clear();
    present = false;
}

} // namespace

Args::ArgsBase() = default;

Args::ArgsBase(ArgsBase const& other) = default;

Args::~ArgsBase() = default;

Args& Args::operator=(ArgsBase const& other) {
    Content copy(other.content);
    content = std::move(copy);
    return *this;
}

void Args::setScheme(std::u16string const& text) {
    setScheme(text::toUtf32(text));
}

void Args::setScheme(String text) noexcept {
    set(content.scheme, content.hasScheme, std::move(text));
    content.schemeTrusted = false;
}

void Args::clearScheme() noexcept {
    clear(content.scheme, content.hasScheme);
    content.schemeTrusted = false;
}

void Args::setUserInfo(std::u16string const& text) {
    setUserInfo(text::toUtf32(text));
}

void Args::setUserInfo(String text) noexcept {
    set(content.userInfo, content.hasUserInfo, std::move(text));
}

void Args::clearUserInfo() noexcept {
    clear(content.userInfo, content.hasUserInfo);
}

void Args::setHost(std::u16string const& text) {
    setHost(text::toUtf32(text));
}

void Args::setHost(String text) noexcept {
    set(content.host, content.hasHost, std::move(text));
}

void Args::clearHost() noexcept {
    clear(content.host, content.hasHost);
}

void Args::setPort(unsigned short number) noexcept {
    content.port = number;
    content.hasPort = true;
}

void Args::setPort(std::u16string const& text) {
    setPort(String(text::toUtf32(text)));
}

void Args::setPort(String const& text) {
    unsigned short number = 0;
    if (!portStringToNumeric(text, number)) {
        core::except::refuse("Port must be numeric");
    }
    setPort(number);
}

void Args::clearPort() noexcept {
    content.port = 0;
    content.hasPort = false;
}

void Args::setPath(std::u16string const& text) {
    setPath(text::toUtf32(text));
}

void Args::setPath(String text) noexcept {
    set(content.path, content.hasPath, std::move(text));
}

void Args::clearPath() noexcept {
    clear(content.path, content.hasPath);
}

void Args::setQuery(std::u16string const& text) {
    setQuery(text::toUtf32(text));
}

void Args::setQuery(String text) noexcept {
    set(content.query, content.hasQuery, std::move(text));
}

void Args::clearQuery() noexcept {
    clear(content.query, content.hasQuery);
}

void Args::setFragment(std::u16string const& text) {
    setFragment(text::toUtf32(text));
}

void Args::setFragment(String text) noexcept {
    set(content.fragment, content.hasFragment, std::move(text));
}

void Args::clearFragment() noexcept {
    clear(content.fragment, content.hasFragment);
}

std::tuple<std::u16string, bool> Args::percentEncodeFormEncodedReservedChars(std::u16string const& text,
                                                                             bool useSemicolon) const {
    char16_t const separator = useSemicolon ? u';' : u'&';
    std::u16string encoded;
    encoded.reserve(text.size());
    bool escaped = false;
    for (char16_t const unit : text) {
        if (unit == separator || unit == u'=' || unit == u'+') {
            text::percentByte(encoded, static_cast<unsigned char>(unit));
            escaped = true;
        } else {
            encoded.push_back(unit == u' ' ? u'+' : unit);
        }
    }
    return {std::move(encoded), escaped};
}

void Args::appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value, bool encodeQuery,
                                   bool useSemicolon) {
    if (key.empty()) {
        core::except::refuse("Key must not be empty");
    }
    auto [pair, keyEscaped] = percentEncodeFormEncodedReservedChars(key, useSemicolon);
    auto const [encodedValue, valueEscaped] = percentEncodeFormEncodedReservedChars(value, useSemicolon);
    pair.append(1, u'=').append(encodedValue);
    String addition = text::toUtf32(pair);
    if (!content.query.empty()) {
        addition.insert(addition.begin(), useSemicolon ? U';' : U'&');
    }
    content.query.append(addition); // the last step that can throw
    content.hasQuery = true;
    content.queryFormEncoded = encodeQuery;
    content.queryFormEscaped = content.queryFormEscaped || keyEscaped || valueEscaped;
}

} // namespace foundation::network::iri::detail
