#include <foundation/network/iri/detail/StringParts.hpp>

#include "iri/encoding/Conversions.hpp"
#include "iri/encoding/PartRules.hpp"
#include "text/Scans.hpp"

#include <stdexcept>

namespace foundation::network::iri::detail {

using Store = StringParts<std::u32string>;

namespace {

constexpr std::array allParts{Part::userInfo, Part::host, Part::path, Part::query, Part::fragment};
constexpr std::array allForms{Form::raw, Form::iri, Form::uri};

std::size_t indexOf(Form form) {
    return static_cast<std::size_t>(form);
}

[[noreturn]] void throwNotSet(std::string const& suffix) {
    throw std::runtime_error("Item not set" + suffix);
}

[[noreturn]] void throwNotSet(Part part) {
    throwNotSet(": " + std::string(encoding::rulesOf(part).name));
}

} // namespace

Store::Component::Component(Component const& other) : form(other.form) {
    forms[indexOf(form)] = other.forms[indexOf(form)];
}

Store::StringParts() noexcept = default;
Store::StringParts(StringParts const& other) = default;
Store::~StringParts() = default;

Store::StringParts(StringParts&& other) noexcept {
    swap(other);
}

Store& Store::operator=(StringParts&& other) noexcept {
    if (this != &other) {
        reset();
        swap(other);
    }
    return *this;
}

Store& Store::operator=(StringParts const& other) {
    StringParts(other).swap(*this);
    return *this;
}

void Store::swap(StringParts& other) noexcept {
    for (Part const part : allParts) {
        for (Form const form : allForms) {
            at(part).forms[indexOf(form)].swap(other.at(part).forms[indexOf(form)]);
        }
        std::swap(at(part).form, other.at(part).form);
    }
    std::swap(context, other.context);
    std::swap(empty, other.empty);
}

void Store::reset() noexcept {
    StringParts().swap(*this);
}

bool Store::has(Part part) const noexcept {
    return at(part).forms[indexOf(at(part).form)].get() != nullptr;
}

// Conversions of the path depend on the components in front of it, so they are made anew.
void Store::setSchemePresent(bool schemePresent) {
    if (has(Part::path)) {
        context.schemePresent = schemePresent;
        context.hasUserInfo = has(Part::userInfo);
        context.hasHost = has(Part::host);
        dropDerived(Part::path);
    }
}

void Store::set(Part part, String text, Encoding const& encoding) {
    bool const stillEmpty = empty && part == Part::path && text.empty();
    Form const form = formOf(encoding);
    PublishedOnce<FormText> fresh;
    fresh.publish({std::move(text), form}); // the last step that can throw
    for (auto& old : at(part).forms) {
        old.reset();
    }
    at(part).forms[indexOf(form)].swap(fresh);
    at(part).form = form;
    empty = stillEmpty;
}

void Store::setUserInfo(String text, Encoding const& encoding) {
    set(Part::userInfo, std::move(text), encoding);
    setSchemePresent(context.schemePresent);
}

void Store::setHost(String text, Encoding const& encoding) {
    set(Part::host, std::move(text), encoding);
    setSchemePresent(context.schemePresent);
}

void Store::setPath(String text, Encoding const& encoding) {
    set(Part::path, std::move(text), encoding);
    setSchemePresent(false);
}

void Store::setFragment(String text, Encoding const& encoding) {
    set(Part::fragment, std::move(text), encoding);
}

void Store::setQuery(String text, Encoding const& encoding, bool formEncoded) {
    set(Part::query, std::move(text), encoding);
    context.formEncoded = formEncoded;
}

// Drops all forms of a present component but the one that was set.
void Store::dropDerived(Part part) noexcept {
    for (Form const form : allForms) {
        if (form != at(part).form) {
            at(part).forms[indexOf(form)].reset();
        }
    }
}

// The Raw and the Uri form are made from each other by way of the Iri form. So the text of a form never
// depends on which others were asked for before.
std::u32string const& Store::text(Part part, Form form) const {
    Component const& component = at(part);
    auto const& place = component.forms[indexOf(form)];
    FormText const* there = place.get();
    if (there == nullptr) {
        Form const from = form == Form::iri ? component.form : Form::iri;
        String const& source = text(part, from);
        auto converted = encoding::convert(part, from, form, source, context);
        if (converted && !text::isSame(*converted, source)) {
            there = &place.publish({std::move(converted), form});
        } else {
            FormText const& held = *component.forms[indexOf(from)].get();
            there = &place.publish({std::nullopt, held.own ? from : held.sharedWith});
        }
    }
    return there->own ? *there->own : *component.forms[indexOf(there->sharedWith)].get()->own;
}

std::u32string const& Store::get(Part part, Encoding const& encoding) const {
    if (!has(part)) {
        throwNotSet(part);
    }
    return text(part, formOf(encoding));
}

std::u32string const& Store::getUserInfo(Encoding const& encoding) const {
    return get(Part::userInfo, encoding);
}
std::u32string const& Store::getHost(Encoding const& encoding) const {
    return get(Part::host, encoding);
}
std::u32string const& Store::getPath(Encoding const& encoding) const {
    return get(Part::path, encoding);
}
std::u32string const& Store::getQuery(Encoding const& encoding) const {
    return get(Part::query, encoding);
}
std::u32string const& Store::getFragment(Encoding const& encoding) const {
    return get(Part::fragment, encoding);
}

std::u32string Store::getAuthority(Encoding const& encoding) const {
    String authority;
    if (has(Part::userInfo)) {
        authority.append(get(Part::userInfo, encoding)).push_back(U'@');
    }
    if (!has(Part::host)) {
        throwNotSet(": Host: Host (in getAuthority)");
    }
    return authority.append(get(Part::host, encoding));
}

std::pair<std::u32string const&, Encoding> Store::stored(Part part) const {
    if (!has(part)) {
        throwNotSet("");
    }
    return {text(part, at(part).form), encodingOf(at(part).form)};
}

std::pair<std::u32string const&, Encoding> Store::storedUserInfo() const {
    return stored(Part::userInfo);
}
std::pair<std::u32string const&, Encoding> Store::storedHost() const {
    return stored(Part::host);
}
std::pair<std::u32string const&, Encoding> Store::storedPath() const {
    return stored(Part::path);
}
std::pair<std::u32string const&, Encoding> Store::storedQuery() const {
    return stored(Part::query);
}
std::pair<std::u32string const&, Encoding> Store::storedFragment() const {
    return stored(Part::fragment);
}

bool Store::operator==(StringParts const& other) const {
    if (empty && other.empty) {
        return true;
    }
    for (Part const part : allParts) {
        if (has(part) != other.has(part) ||
            (has(part) && !text::isSame(text(part, at(part).form), other.text(part, at(part).form)))) {
            return false;
        }
    }
    return true;
}

} // namespace foundation::network::iri::detail
