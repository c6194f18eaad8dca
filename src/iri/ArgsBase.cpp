#include <foundation/network/iri/detail/ArgsBase.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "iri/encoding/PercentEncoding.hpp"
#include "iri/encoding/Transcoding.hpp"

#include <foundation/network/iri/detail/Parts.hpp>

#include <utility>

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

namespace {

// A part that is set takes its text, is present, and is not trusted any more.
template <class String>
void set(String& part, bool& present, bool& trusted, String text) noexcept {
    part = std::move(text);
    present = true;
    trusted = false;
}

template <class String>
void clear(String& part, bool& present, bool& trusted) noexcept {
    part.clear();
    present = false;
    trusted = false;
}

} // namespace

template <class String>
ArgsBase<String>::ArgsBase() = default;

template <class String>
ArgsBase<String>::ArgsBase(ArgsBase const& other) = default;

template <class String>
ArgsBase<String>::~ArgsBase() = default;

template <class String>
ArgsBase<String>& ArgsBase<String>::operator=(ArgsBase const& other) {
    Content copy(other.content);
    content = std::move(copy);
    return *this;
}

template <class String>
void ArgsBase<String>::setScheme(std::u16string const& text) {
    setScheme(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setScheme(String text) noexcept {
    set(content.scheme, content.hasScheme, content.schemeTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearScheme() noexcept {
    clear(content.scheme, content.hasScheme, content.schemeTrusted);
}

template <class String>
void ArgsBase<String>::setUserInfo(std::u16string const& text) {
    setUserInfo(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setUserInfo(String text) noexcept {
    set(content.userInfo, content.hasUserInfo, content.userInfoTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearUserInfo() noexcept {
    clear(content.userInfo, content.hasUserInfo, content.userInfoTrusted);
}

template <class String>
void ArgsBase<String>::setHost(std::u16string const& text) {
    setHost(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setHost(String text) noexcept {
    set(content.host, content.hasHost, content.hostTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearHost() noexcept {
    clear(content.host, content.hasHost, content.hostTrusted);
}

template <class String>
void ArgsBase<String>::setPort(unsigned short number) noexcept {
    content.port = number;
    content.hasPort = true;
}

template <class String>
void ArgsBase<String>::setPort(std::u16string const& text) {
    setPort(String(encoding::toUtf32(text)));
}

template <class String>
void ArgsBase<String>::setPort(String const& text) {
    unsigned short number = 0;
    if (!portStringToNumeric(text, number)) {
        throw makeInternalException(std::logic_error("Port must be numeric"));
    }
    setPort(number);
}

template <class String>
void ArgsBase<String>::clearPort() noexcept {
    content.port = 0;
    content.hasPort = false;
}

template <class String>
void ArgsBase<String>::setPath(std::u16string const& text) {
    setPath(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setPath(String text) noexcept {
    set(content.path, content.hasPath, content.pathTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearPath() noexcept {
    clear(content.path, content.hasPath, content.pathTrusted);
}

template <class String>
void ArgsBase<String>::setQuery(std::u16string const& text) {
    setQuery(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setQuery(String text) noexcept {
    set(content.query, content.hasQuery, content.queryTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearQuery() noexcept {
    clear(content.query, content.hasQuery, content.queryTrusted);
}

template <class String>
void ArgsBase<String>::setFragment(std::u16string const& text) {
    setFragment(encoding::toUtf32(text));
}

template <class String>
void ArgsBase<String>::setFragment(String text) noexcept {
    set(content.fragment, content.hasFragment, content.fragmentTrusted, std::move(text));
}

template <class String>
void ArgsBase<String>::clearFragment() noexcept {
    clear(content.fragment, content.hasFragment, content.fragmentTrusted);
}

template <class String>
std::tuple<std::u16string, bool> ArgsBase<String>::percentEncodeFormEncodedReservedChars(
    std::u16string const& text, bool useSemicolon) const {
    char16_t const separator = useSemicolon ? u';' : u'&';
    std::u16string encoded;
    encoded.reserve(text.size());
    bool escaped = false;
    for (char16_t const unit : text) {
        if (unit == separator || unit == u'=' || unit == u'+') {
            encoding::percentByte(encoded, static_cast<unsigned char>(unit));
            escaped = true;
        } else {
            encoded.push_back(unit == u' ' ? u'+' : unit);
        }
    }
    return {std::move(encoded), escaped};
}

template <class String>
void ArgsBase<String>::appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value,
                                               bool encodeQuery, bool useSemicolon) {
    if (key.empty()) {
        throw makeInternalException(std::logic_error("Key must not be empty"));
    }
    auto [pair, keyEscaped] = percentEncodeFormEncodedReservedChars(key, useSemicolon);
    auto const [encodedValue, valueEscaped] = percentEncodeFormEncodedReservedChars(value, useSemicolon);
    pair.append(1, u'=').append(encodedValue);
    String addition = encoding::toUtf32(pair);
    if (!content.query.empty()) {
        addition.insert(addition.begin(), useSemicolon ? U';' : U'&');
    }
    content.query.append(addition); // the last step that can fail
    content.hasQuery = true;
    content.queryFormEncoded = encodeQuery;
    content.queryFormEscaped = content.queryFormEscaped || keyEscaped || valueEscaped;
}

template class ArgsBase<std::u32string>;

} // namespace foundation::network::iri::detail
