#include <foundation/network/iri/detail/StringParts.hpp>

#include "iri/encoding/PartRules.hpp"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace foundation::network::iri::detail {

namespace {

constexpr Encoding encodingOf(Form form) {
    return form == Form::raw ? Encoding::Raw : form == Form::iri ? Encoding::Iri : Encoding::Uri;
}

[[noreturn]] void throwNotSet(std::string const& suffix) {
    throw std::runtime_error("Item not set" + suffix);
}

[[noreturn]] void throwNotSet(Part part) {
    throwNotSet(": " + std::string(encoding::rulesOf(part).name));
}

} // namespace

template <class String>
StringParts<String>::StringParts() noexcept = default;

template <class String>
StringParts<String>::StringParts(StringParts const& other) = default;

template <class String>
StringParts<String>::StringParts(StringParts&& other) noexcept {
    swap(other);
}

template <class String>
StringParts<String>::~StringParts() = default;

template <class String>
StringParts<String>& StringParts<String>::operator=(StringParts const& other) {
    StringParts(other).swap(*this);
    return *this;
}

template <class String>
StringParts<String>& StringParts<String>::operator=(StringParts&& other) noexcept {
    StringParts(std::move(other)).swap(*this);
    return *this;
}

template <class String>
void StringParts<String>::swap(StringParts& other) noexcept {
    if (this != &other) {
        owner.swap(other.owner);
        for (std::size_t i = 0; i != parts.size(); ++i) {
            parts[i].swap(other.parts[i]);
        }
        std::swap(empty, other.empty);
    }
}

template <class String>
void StringParts<String>::reset() noexcept {
    StringParts().swap(*this);
}

// The path's conversions depend on what stands before it.
template <class String>
void StringParts<String>::adjustPathContext(bool schemePresent) noexcept {
    PartContext context;
    context.schemePresent = schemePresent;
    context.hasUserInfo = has(Part::userInfo);
    context.hasHost = has(Part::host);
    at(Part::path).setContext(context);
}

template <class String>
void StringParts<String>::setSchemePresent(bool schemePresent) {
    if (has(Part::path)) {
        adjustPathContext(schemePresent);
    }
}

template <class String>
void StringParts<String>::set(Part part, String text, Encoding const& encoding) {
    empty = empty && part == Part::path && text.empty();
    at(part).set(std::move(text), formOf(encoding));
}

template <class String>
void StringParts<String>::setSlice(Part part, std::size_t begin, std::size_t size,
                                   Encoding const& encoding) noexcept {
    empty = empty && part == Part::path && size == 0;
    at(part).setSlice(begin, size, formOf(encoding));
}

template <class String>
void StringParts<String>::setUserInfo(String text, Encoding const& encoding) {
    set(Part::userInfo, std::move(text), encoding);
    setSchemePresent(at(Part::path).getContext().schemePresent);
}

template <class String>
void StringParts<String>::setHost(String text, Encoding const& encoding) {
    set(Part::host, std::move(text), encoding);
    setSchemePresent(at(Part::path).getContext().schemePresent);
}

template <class String>
void StringParts<String>::setPath(String text, Encoding const& encoding) {
    set(Part::path, std::move(text), encoding);
    adjustPathContext(false);
}

template <class String>
void StringParts<String>::setFragment(String text, Encoding const& encoding) {
    set(Part::fragment, std::move(text), encoding);
}

template <class String>
void StringParts<String>::setQuery(String text, Encoding const& encoding, bool formEncoded) {
    set(Part::query, std::move(text), encoding);
    setFormEncoded(formEncoded);
}

template <class String>
void StringParts<String>::setFormEncoded(bool formEncoded) noexcept {
    PartContext context;
    context.formEncoded = formEncoded;
    at(Part::query).setContext(context);
}

template <class String>
typename StringParts<String>::View StringParts<String>::view(Part part, Encoding const& encoding) const {
    if (!has(part)) {
        throwNotSet(part);
    }
    return at(part).view(formOf(encoding), part, owner);
}

template <class String>
String const& StringParts<String>::text(Part part, Encoding const& encoding) const {
    if (!has(part)) {
        throwNotSet(part);
    }
    return at(part).text(formOf(encoding), part, owner);
}

template <class String>
String const& StringParts<String>::getUserInfo(Encoding const& encoding) const {
    return text(Part::userInfo, encoding);
}

template <class String>
String const& StringParts<String>::getHost(Encoding const& encoding) const {
    return text(Part::host, encoding);
}

template <class String>
String const& StringParts<String>::getPath(Encoding const& encoding) const {
    return text(Part::path, encoding);
}

template <class String>
String const& StringParts<String>::getQuery(Encoding const& encoding) const {
    return text(Part::query, encoding);
}

template <class String>
String const& StringParts<String>::getFragment(Encoding const& encoding) const {
    return text(Part::fragment, encoding);
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
std::pair<typename StringParts<String>::View, Encoding> StringParts<String>::storedView(Part part) const {
    if (!has(part)) {
        throwNotSet("");
    }
    Form const form = at(part).sourceForm();
    return {at(part).view(form, part, owner), encodingOf(form)};
}

template <class String>
std::pair<String const&, Encoding> StringParts<String>::stored(Part part) const {
    if (!has(part)) {
        throwNotSet("");
    }
    Form const form = at(part).sourceForm();
    return {at(part).text(form, part, owner), encodingOf(form)};
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
            Form const form = at(part).sourceForm();
            if (at(part).view(form, part, owner) != other.at(part).view(form, part, other.owner)) {
                return false;
            }
        }
    }
    return true;
}

template <class String>
bool StringParts<String>::isStoredLike(StringParts const& other) const noexcept {
    return std::equal(
        parts.begin(), parts.end(), other.parts.begin(), [&](Slot const& left, Slot const& right) {
            return left.isPresent() == right.isPresent() &&
                   (!left.isPresent() ||
                    (left.sourceForm() == right.sourceForm() && left.getContext() == right.getContext() &&
                     left.sourceView(owner) == right.sourceView(other.owner)));
        });
}

template <class String>
void StringParts<String>::adoptSource(String text) noexcept {
    owner = std::move(text);
}

template <class String>
std::size_t StringParts<String>::lengthHint() const noexcept {
    std::size_t sum = 0;
    for (auto const& part : parts) {
        sum += part.lengthHint();
    }
    return sum;
}

template class StringParts<std::u32string>;

} // namespace foundation::network::iri::detail
