// The face of the part store: setters, getters, comparison.

#include <foundation/network/iri/detail/StringParts.hpp>

#include "iri/encoding/PartRules.hpp"

#include <stdexcept>

namespace foundation::network::iri::detail {

namespace {

[[noreturn]] void throwNotSet(std::string const& suffix) {
    throw std::runtime_error("Item not set" + suffix);
}

[[noreturn]] void throwNotSet(Part part) {
    throwNotSet(": " + std::string(encoding::rulesOf(part).name));
}

} // namespace

template <class String>
StringParts<String>& StringParts<String>::operator=(StringParts const& other) {
    StringParts(other).swap(*this);
    return *this;
}

template <class String>
void StringParts<String>::reset() noexcept {
    StringParts().swap(*this);
}

// The path's conversions depend on what stands before it.
template <class String>
void StringParts<String>::setSchemePresent(bool schemePresent) {
    if (has(Part::path)) {
        setContext(schemePresent, context.formEncoded);
        dropDerived(Part::path);
    }
}

template <class String>
void StringParts<String>::setUserInfo(String text, Encoding const& encoding) {
    set(Part::userInfo, std::move(text), encoding);
    setSchemePresent(context.schemePresent);
}

template <class String>
void StringParts<String>::setHost(String text, Encoding const& encoding) {
    set(Part::host, std::move(text), encoding);
    setSchemePresent(context.schemePresent);
}

template <class String>
void StringParts<String>::setPath(String text, Encoding const& encoding) {
    set(Part::path, std::move(text), encoding);
    setSchemePresent(false);
}

template <class String>
void StringParts<String>::setFragment(String text, Encoding const& encoding) {
    set(Part::fragment, std::move(text), encoding);
}

template <class String>
void StringParts<String>::setQuery(String text, Encoding const& encoding, bool formEncoded) {
    set(Part::query, std::move(text), encoding);
    context.formEncoded = formEncoded;
}

template <class String>
typename StringParts<String>::View StringParts<String>::view(Part part, Encoding const& encoding) const {
    if (!has(part)) {
        throwNotSet(part);
    }
    return held(part, holder(part, formOf(encoding)));
}

template <class String>
String const& StringParts<String>::get(Part part, Encoding const& encoding) const {
    if (!has(part)) {
        throwNotSet(part);
    }
    return text(part, formOf(encoding));
}

template <class String>
String const& StringParts<String>::getUserInfo(Encoding const& encoding) const {
    return get(Part::userInfo, encoding);
}

template <class String>
String const& StringParts<String>::getHost(Encoding const& encoding) const {
    return get(Part::host, encoding);
}

template <class String>
String const& StringParts<String>::getPath(Encoding const& encoding) const {
    return get(Part::path, encoding);
}

template <class String>
String const& StringParts<String>::getQuery(Encoding const& encoding) const {
    return get(Part::query, encoding);
}

template <class String>
String const& StringParts<String>::getFragment(Encoding const& encoding) const {
    return get(Part::fragment, encoding);
}

template <class String>
String StringParts<String>::getAuthority(Encoding const& encoding) const {
    String authority;
    if (has(Part::userInfo)) {
        authority.append(view(Part::userInfo, encoding)).push_back('@');
    }
    if (!has(Part::host)) {
        throwNotSet(": Host: Host (in getAuthority)");
    }
    return authority.append(view(Part::host, encoding));
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::stored(Part part) const {
    if (!has(part)) {
        throwNotSet("");
    }
    Form const form = header(part).form;
    return {text(part, form), encodingOf(form)};
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::storedUserInfo() const {
    return stored(Part::userInfo);
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::storedHost() const {
    return stored(Part::host);
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::storedPath() const {
    return stored(Part::path);
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::storedQuery() const {
    return stored(Part::query);
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::storedFragment() const {
    return stored(Part::fragment);
}

template <class String>
bool StringParts<String>::operator==(StringParts const& other) const {
    if (empty && other.empty) {
        return true;
    }
    for (Part const part : {Part::userInfo, Part::host, Part::path, Part::query, Part::fragment}) {
        if (has(part) != other.has(part)) {
            return false;
        }
        if (has(part)) {
            Form const form = header(part).form;
            if (held(part, form) != other.held(part, other.holder(part, form))) {
                return false;
            }
        }
    }
    return true;
}

template class StringParts<std::u32string>;

} // namespace foundation::network::iri::detail
