// From a value to text: the components in every form, the whole in every form.
//
// There is one road: `inForm` gives a component in one of the three forms, and what is asked for in a strict
// encoding passes `escapeStrayPercent` besides. `kept` gives the whole in the two forms that comparisons
// need.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/SameText.hpp"
#include "iri/encoding/Conversions.hpp"
#include "iri/encoding/PartRules.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/encoding/Transcoding.hpp"

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;
using Value = TemplateIRI<std::u32string>;

namespace {

constexpr bool isStrict(Encoding encoding) {
    return encoding == Encoding::IriStrict || encoding == Encoding::UriStrict;
}

[[noreturn]] void throwNotSet(Part part) {
    throw makeInternalException(
        std::runtime_error("Item not set: " + std::string(encoding::rulesOf(part).name)));
}

bool escapesBrackets(Part part) {
    return encoding::rulesOf(part).strictBrackets == encoding::StrictBrackets::escaped;
}

// A present component, in a form or in a strict encoding.
void appendPart(std::u32string& out, StoredText const& stored, Part part, Encoding encoding) {
    std::u32string own;
    std::u32string_view const converted = stored.inForm(part, formOf(encoding), own);
    if (isStrict(encoding)) {
        out.append(encoding::escapeStrayPercent(converted, escapesBrackets(part)));
    } else {
        out.append(converted);
    }
}

void appendAuthority(std::u32string& out, StoredText const& stored, Encoding encoding) {
    if (stored.components.hasUserInfo()) {
        appendPart(out, stored, Part::userInfo, encoding);
        out.push_back(U'@');
    }
    appendPart(out, stored, Part::host, encoding);
    if (stored.components.hasPort()) {
        out.append(1, U':').append(stored.port());
    }
}

void appendSchemeSpecificPart(std::u32string& out, StoredText const& stored, Encoding encoding) {
    if (stored.components.hasHost()) {
        out.append(U"//");
        appendAuthority(out, stored, encoding);
    }
    appendPart(out, stored, Part::path, encoding);
    if (stored.components.hasQuery()) {
        out.push_back(U'?');
        appendPart(out, stored, Part::query, encoding);
    }
}

std::u32string wholeIn(StoredText const& stored, Encoding encoding) {
    std::u32string whole;
    if (stored.isEmpty()) {
        return whole; // also `IRI()`, which has no path to append
    }
    whole.reserve(stored.text.size());
    whole.append(stored.text, 0, stored.components.authorityBegin());
    appendSchemeSpecificPart(whole, stored, encoding);
    if (stored.components.hasFragment()) {
        whole.push_back(U'#');
        appendPart(whole, stored, Part::fragment, encoding);
    }
    return whole;
}

// Whether every component is in a form as it was given.
bool isWholeIn(StoredText const& stored, Form form) {
    for (Part const part : {Part::userInfo, Part::host, Part::path, Part::query, Part::fragment}) {
        std::u32string own;
        if (stored.components.has(part) && !isSame(stored.inForm(part, form, own), stored.given(part))) {
            return false;
        }
    }
    return true;
}

} // namespace

std::u16string Value::getScheme() const {
    if (!hasScheme()) {
        throw makeInternalException(std::runtime_error("No scheme"));
    }
    return encoding::toUtf16(stored.scheme());
}

std::u16string Value::getPort() const {
    if (!hasPort()) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return encoding::toUtf16(stored.port());
}

unsigned short Value::getPortNumber() const {
    if (!hasPort()) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return stored.components.port;
}

std::u16string Value::getPart(Part part, Encoding const& encoding) const {
    if (!stored.components.has(part)) {
        throwNotSet(part);
    }
    Form const form = formOf(encoding);
    auto const& rules = encoding::rulesOf(part);
    bool const strict = isStrict(encoding) && rules.strictGetter;
    if (stored.components.form(part) == Form::iri && !strict) {
        // Nearly every call: of a parsed value, made in UTF-16 at once.
        std::u32string_view const iri = stored.given(part);
        bool const decodes = form == Form::raw && !(part == Part::query && stored.components.queryIsFormEncoded);
        if (form == Form::iri) {
            return encoding::toUtf16(iri);
        }
        if (!decodes) {
            return encoding::toUriFormUtf16(iri);
        }
        if (auto raw = encoding::rawUtf16FromIri(iri)) {
            return std::move(*raw);
        }
    }
    std::u32string own;
    std::u32string_view const converted = stored.inForm(part, form, own);
    return strict ? encoding::toUtf16(encoding::escapeStrayPercent(converted, escapesBrackets(part)))
                  : encoding::toUtf16(converted);
}

std::u16string Value::getUserInfo(Encoding const& encoding) const {
    return getPart(Part::userInfo, encoding);
}
std::u16string Value::getHost(Encoding const& encoding) const {
    return getPart(Part::host, encoding);
}
std::u16string Value::getPath(Encoding const& encoding) const {
    return getPart(Part::path, encoding);
}
std::u16string Value::getQuery(Encoding const& encoding) const {
    return getPart(Part::query, encoding);
}
std::u16string Value::getFragment(Encoding const& encoding) const {
    return getPart(Part::fragment, encoding);
}

std::u16string Value::getAuthority(Encoding const& encoding) const {
    if (!hasHost()) {
        throw makeInternalException(std::runtime_error("Item not set: Host: Host (in getAuthority)"));
    }
    std::u32string authority;
    appendAuthority(authority, stored, encoding);
    return encoding::toUtf16(authority);
}

std::u16string Value::getSchemeSpecificPart(Encoding const& encoding) const {
    if (!stored.components.hasPath) {
        throwNotSet(Part::path);
    }
    std::u32string schemeSpecificPart;
    appendSchemeSpecificPart(schemeSpecificPart, stored, encoding);
    return encoding::toUtf16(schemeSpecificPart);
}

// The whole in the Iri or the Raw form, which comparisons come back to.
std::u32string const& Value::kept(Form form) const {
    auto const bit = static_cast<unsigned char>(1U << static_cast<unsigned>(form));
    if ((stored.parsed && form == Form::iri) || (storedIsIn.load(std::memory_order_relaxed) & bit) != 0) {
        return stored.text;
    }
    auto const& place = form == Form::iri ? iriText : rawText;
    if (auto const* const there = place.get()) {
        return *there;
    }
    if (isWholeIn(stored, form)) {
        storedIsIn.fetch_or(bit, std::memory_order_relaxed);
        return stored.text;
    }
    return place.publish(wholeIn(stored, encodingOf(form)));
}

std::u16string Value::toString(bool strict) const {
    return encoding::toUtf16(strict ? wholeIn(stored, Encoding::IriStrict) : kept(Form::iri));
}

std::u16string Value::toAsciiString(bool strict) const {
    if (strict) {
        return encoding::toUtf16(wholeIn(stored, Encoding::UriStrict));
    }
    // The delimiters are in ASCII, so the whole is made like a component; only a scheme that is not stays as
    // it is.
    std::u32string_view const iri = kept(Form::iri);
    std::u32string_view const scheme = stored.scheme();
    if (encoding::isUriForm(scheme)) {
        return encoding::toUriFormUtf16(iri);
    }
    return encoding::toUtf16(scheme) + encoding::toUriFormUtf16(iri.substr(scheme.size()));
}

} // namespace foundation::network::iri::detail
