// Makes texts of a value: single components and the whole, in every encoding.
//
// `StoredText::inForm` gives a component in one of the three forms; for a strict encoding
// `escapeStrayPercent` is applied to it. The commonest conversions are made in one pass instead
// (`ValueReader::component`). `kept` gives the whole in the Iri and the Raw form, which comparisons need.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/ValueAccess.hpp"
#include "iri/ValueReader.hpp"
#include "iri/encoding/Conversions.hpp"
#include "iri/encoding/PartRules.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <array>

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

// The strict form of a component's text; where that is another text, `own` holds it.
std::u32string_view strictText(Part part, std::u32string_view text, std::u32string& own) {
    bool const brackets = encoding::rulesOf(part).strictBrackets == encoding::StrictBrackets::escaped;
    bool const mayChange = text::contains(text, U'%') ||
                           (brackets && (text::contains(text, U'[') || text::contains(text, U']')));
    if (!mayChange) {
        return text;
    }
    own = encoding::escapeStrayPercent(text, brackets);
    return own;
}

/// The components of a value in one encoding, and the texts that they make up together.
class EncodedComponents {
public:
    /// Converts the components up to `last`, in the order of an IRI. The others must not be asked for.
    EncodedComponents(StoredText const& from, Encoding encoding, Part last) : stored(from) {
        for (std::size_t i = 0; i <= static_cast<std::size_t>(last); ++i) {
            auto const part = static_cast<Part>(i);
            if (stored.components.has(part)) {
                texts[i] = stored.inForm(part, formOf(encoding), own[i]);
                if (isStrict(encoding)) {
                    texts[i] = strictText(part, texts[i], own[i]);
                }
            }
        }
    }
    EncodedComponents(EncodedComponents const&) = delete;
    EncodedComponents& operator=(EncodedComponents const&) = delete;
    ~EncodedComponents() = default;

    /// Whether each text is the one that was given.
    [[nodiscard]] bool areAsGiven() const {
        for (std::size_t i = 0; i != texts.size(); ++i) { // a text that is no view of `own` was not converted
            if (texts[i].data() == own[i].data() &&
                !text::isSame(texts[i], stored.given(static_cast<Part>(i)))) {
                return false;
            }
        }
        return true;
    }

    void appendAuthority(std::u32string& out) const {
        if (stored.components.hasUserInfo()) {
            out.append((*this)[Part::userInfo]).push_back(U'@');
        }
        out.append((*this)[Part::host]);
        if (stored.components.hasPort()) {
            out.append(1, U':').append(stored.port());
        }
    }
    void appendSchemeSpecificPart(std::u32string& out) const {
        if (stored.components.hasHost()) {
            out.append(U"//");
            appendAuthority(out);
        }
        out.append((*this)[Part::path]);
        if (stored.components.hasQuery()) {
            out.append(1, U'?').append((*this)[Part::query]);
        }
    }
    [[nodiscard]] std::u32string whole() const {
        std::u32string out;
        out.reserve(stored.text.size());
        out.append(stored.text, 0, stored.components.authorityBegin());
        appendSchemeSpecificPart(out);
        if (stored.components.hasFragment()) {
            out.append(1, U'#').append((*this)[Part::fragment]);
        }
        return out;
    }
    template <class String>
    [[nodiscard]] String wholeAs() const {
        return areAsGiven() ? text::to<String>(stored.text) : text::to<String>(whole());
    }

private:
    std::u32string_view operator[](Part part) const { return texts[static_cast<std::size_t>(part)]; }

    StoredText const& stored;
    std::array<std::u32string, 5> own;
    std::array<std::u32string_view, 5> texts; // views of `own` or of the stored text
};

} // namespace

template <class String>
ValueReader<String>::ValueReader(Value const& of) : value(of), stored(ValueAccess::stored(of)) {}

template <class String>
String ValueReader<String>::scheme() const {
    if (!stored.components.hasScheme()) {
        throw makeInternalException(std::runtime_error("No scheme"));
    }
    return text::to<String>(stored.scheme());
}

template <class String>
String ValueReader<String>::port() const {
    if (!stored.components.hasPort()) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return text::to<String>(stored.port());
}

template <class String>
String ValueReader<String>::component(Part part, Encoding encoding) const {
    Components const& components = stored.components;
    if (!components.has(part)) {
        throwNotSet(part);
    }
    // Nearly every call asks for a component that was given in the Iri form, in one of these encodings, which
    // are made in one pass.
    if (components.form(part) == Form::iri) {
        std::u32string_view const iri = stored.given(part);
        bool const decodes = part != Part::query || !components.queryIsFormEncoded;
        if (encoding == Encoding::Raw && decodes) {
            if (auto raw = encoding::rawTextFromIri<String>(iri)) {
                return std::move(*raw);
            }
        } else if (encoding == Encoding::Iri) {
            return text::to<String>(iri);
        } else if (encoding == Encoding::Uri) {
            return encoding::toUriText<String>(iri);
        }
    }
    std::u32string own;
    std::u32string strict;
    std::u32string_view text = stored.inForm(part, formOf(encoding), own);
    if (isStrict(encoding) && encoding::rulesOf(part).strictGetter) {
        text = strictText(part, text, strict);
    }
    return text::to<String>(text);
}

template <class String>
String ValueReader<String>::authority(Encoding encoding) const {
    if (!stored.components.hasHost()) {
        throw makeInternalException(std::runtime_error("Item not set: Host: Host (in getAuthority)"));
    }
    std::u32string authority;
    EncodedComponents(stored, encoding, Part::host).appendAuthority(authority);
    return text::to<String>(authority);
}

template <class String>
String ValueReader<String>::schemeSpecificPart(Encoding encoding) const {
    if (!stored.components.hasPath) {
        throwNotSet(Part::path);
    }
    std::u32string schemeSpecificPart;
    EncodedComponents(stored, encoding, Part::query).appendSchemeSpecificPart(schemeSpecificPart);
    return text::to<String>(schemeSpecificPart);
}

template <class String>
String ValueReader<String>::whole(bool strict) const {
    return strict ? EncodedComponents(stored, Encoding::IriStrict, Part::fragment).template wholeAs<String>()
                  : text::to<String>(ValueAccess::kept(value, Form::iri));
}

template <class String>
String ValueReader<String>::wholeInAscii(bool strict) const {
    if (strict) {
        return EncodedComponents(stored, Encoding::UriStrict, Part::fragment).template wholeAs<String>();
    }
    // The delimiters are ASCII, so the whole is converted like one component. But a scheme stays as it is,
    // even if it is not ASCII.
    std::u32string_view const iri = ValueAccess::kept(value, Form::iri);
    std::u32string_view const scheme = stored.scheme();
    if (encoding::isUriForm(scheme)) {
        return encoding::toUriText<String>(iri);
    }
    return text::to<String>(scheme) + encoding::toUriText<String>(iri.substr(scheme.size()));
}

template class ValueReader<std::u16string>;
template class ValueReader<std::string>;

using Reader = ValueReader<std::u16string>;

std::u16string Value::getScheme() const {
    return Reader(*this).scheme();
}
std::u16string Value::getPort() const {
    return Reader(*this).port();
}
unsigned short Value::getPortNumber() const {
    if (!hasPort()) {
        throw makeInternalException(std::runtime_error("No port"));
    }
    return stored.components.port;
}
std::u16string Value::getUserInfo(Encoding const& encoding) const {
    return Reader(*this).component(Part::userInfo, encoding);
}
std::u16string Value::getHost(Encoding const& encoding) const {
    return Reader(*this).component(Part::host, encoding);
}
std::u16string Value::getPath(Encoding const& encoding) const {
    return Reader(*this).component(Part::path, encoding);
}
std::u16string Value::getQuery(Encoding const& encoding) const {
    return Reader(*this).component(Part::query, encoding);
}
std::u16string Value::getFragment(Encoding const& encoding) const {
    return Reader(*this).component(Part::fragment, encoding);
}
std::u16string Value::getAuthority(Encoding const& encoding) const {
    return Reader(*this).authority(encoding);
}
std::u16string Value::getSchemeSpecificPart(Encoding const& encoding) const {
    return Reader(*this).schemeSpecificPart(encoding);
}
std::u16string Value::toString(bool strict) const {
    return Reader(*this).whole(strict);
}
std::u16string Value::toAsciiString(bool strict) const {
    return Reader(*this).wholeInAscii(strict);
}

// The whole in the Iri or the Raw form. It is kept, since comparisons ask for it again and again.
std::u32string const& Value::kept(Form form) const {
    auto const bit = static_cast<unsigned char>(1U << static_cast<unsigned>(form));
    if ((stored.parsed && form == Form::iri) || (storedIsIn.load(std::memory_order_relaxed) & bit) != 0) {
        return stored.text;
    }
    auto const& place = form == Form::iri ? iriText : rawText;
    if (auto const* const there = place.get()) {
        return *there;
    }
    EncodedComponents const components(stored, encodingOf(form), Part::fragment);
    if (components.areAsGiven()) {
        storedIsIn.fetch_or(bit, std::memory_order_relaxed);
        return stored.text;
    }
    return place.publish(components.whole());
}

} // namespace foundation::network::iri::detail
