// From a value to text: the parts in every form, the whole in every form.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/encoding/Conversions.hpp"
#include "iri/encoding/PartRules.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/encoding/Transcoding.hpp"

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

namespace {

constexpr bool isStrict(Encoding encoding) {
    return encoding == Encoding::IriStrict || encoding == Encoding::UriStrict;
}

// The store of parts knows plain standard exceptions; a caller of the value gets those of the family.
template <class Operation>
auto inFamily(Operation operation) {
    try {
        return operation();
    } catch (std::runtime_error const& e) {
        throw makeInternalException(std::runtime_error(e.what()));
    }
}

} // namespace

template <class String>
std::u16string TemplateIRI<String>::getPart(Part part, Encoding const& encoding) const {
    // What the caller gets is a text of its own: another form is made for it straight from the text of a
    // parsed value.
    if (!isStrict(encoding)) {
        Form const form = formOf(encoding);
        if (auto const iri = parts.unconvertedIri(part, form)) {
            if (form == Form::uri || (part == Part::query && parts.getContext().formEncoded)) {
                return encoding::toUriFormUtf16(*iri);
            }
            auto const contents = encoding::contentsOf(*iri);
            if (!contents.percent && !contents.beyondBmp) {
                return std::u16string(iri->begin(), iri->end()); // most parts; a parsed one has no surrogates
            }
            if (auto text = encoding::rawUtf16FromIri(*iri, contents)) {
                return std::move(*text);
            }
        }
    }
    return inFamily([&] {
        View const text = parts.view(part, encoding);
        auto const& rules = encoding::rulesOf(part);
        if (isStrict(encoding) && rules.strictGetter) {
            bool const escapeBrackets = rules.strictBrackets == encoding::StrictBrackets::escaped;
            return encoding::toUtf16(encoding::escapeStrayPercent(text, escapeBrackets));
        }
        return encoding::toUtf16(text);
    });
}

template <class String>
std::u16string TemplateIRI<String>::getUserInfo(Encoding const& encoding) const {
    return getPart(Part::userInfo, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getHost(Encoding const& encoding) const {
    return getPart(Part::host, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getPath(Encoding const& encoding) const {
    return getPart(Part::path, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getQuery(Encoding const& encoding) const {
    return getPart(Part::query, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getFragment(Encoding const& encoding) const {
    return getPart(Part::fragment, encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getAuthority(Encoding const& encoding) const {
    return inFamily([&] { return encoding::toUtf16(getNativeAuthority(encoding)); });
}

template <class String>
std::u16string TemplateIRI<String>::getSchemeSpecificPart(Encoding const& encoding) const {
    return inFamily([&] { return encoding::toUtf16(getNativeSsp(encoding)); });
}

template <class String>
void TemplateIRI<String>::appendPart(String& text, Part part, Encoding const& encoding) const {
    View const form = parts.view(part, encoding);
    if (isStrict(encoding)) {
        bool const escapeBrackets =
            encoding::rulesOf(part).strictBrackets == encoding::StrictBrackets::escaped;
        text.append(encoding::escapeStrayPercent(form, escapeBrackets));
    } else {
        text.append(form);
    }
}

template <class String>
String TemplateIRI<String>::getNativeAuthority(Encoding const& encoding) const {
    String authority = parts.getAuthority(encoding);
    if (isStrict(encoding)) {
        authority = encoding::escapeStrayPercent(authority, false);
    }
    if (flags.hasPort) {
        authority.push_back(COLON);
        authority.append(portView());
    }
    return authority;
}

template <class String>
void TemplateIRI<String>::appendSsp(String& text, Encoding const& encoding) const {
    if (flags.hasAuthority) {
        text.append(2, FORWARD_SLASH).append(getNativeAuthority(encoding));
    }
    appendPart(text, Part::path, encoding);
    if (flags.hasQuery) {
        text.push_back(QUESTION_MARK);
        appendPart(text, Part::query, encoding);
    }
}

template <class String>
String TemplateIRI<String>::getNativeSsp(Encoding const& encoding) const {
    String ssp;
    appendSsp(ssp, encoding);
    return ssp;
}

template <class String>
String const& TemplateIRI<String>::toNativeStringFromParts(Encoding const& encoding) const {
    static String const nothing;
    if (flags.textCurrent && encoding == Encoding::Iri) {
        return sourceText();
    }
    if (flags.empty) {
        return nothing;
    }
    if (!isStrict(encoding) && parts.isSourceIn(formOf(encoding))) {
        return sourceText(); // all pieces stand in it as they are in this form
    }
    auto const* places = wholeTexts.get();
    auto const& place =
        (places != nullptr ? *places : wholeTexts.publish(WholeTexts()))[static_cast<std::size_t>(encoding)];
    if (auto const* const there = place.get()) {
        return *there;
    }
    String text;
    text.reserve(scheme.length + parts.lengthHint() + portText.length + 6); // 6 delimiters at the most
    if (flags.hasScheme) {
        text.append(schemeView()).push_back(COLON);
    }
    appendSsp(text, encoding);
    if (flags.hasFragment) {
        text.push_back(HASH_SIGN);
        appendPart(text, Part::fragment, encoding);
    }
    return place.publish(std::move(text));
}

template <class String>
std::u16string TemplateIRI<String>::toStringFromParts(Encoding const& encoding) const {
    return encoding::toUtf16(toNativeStringFromParts(encoding));
}

template <class String>
std::u16string TemplateIRI<String>::toString(bool strict) const {
    return toStringFromParts(strict ? Encoding::IriStrict : Encoding::Iri);
}

template <class String>
std::u16string TemplateIRI<String>::toAsciiString(bool strict) const {
    if (!strict && flags.textCurrent) {
        // The delimiters are in ASCII, so the whole is made like a part; only a scheme that is not stays as
        // it is.
        View const text = sourceText();
        return encoding::isUriForm(schemeView())
                   ? encoding::toUriFormUtf16(text)
                   : encoding::toUtf16(schemeView()) + encoding::toUriFormUtf16(text.substr(scheme.length));
    }
    return toStringFromParts(strict ? Encoding::UriStrict : Encoding::Uri);
}

template std::u16string TemplateIRI<std::u32string>::getUserInfo(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getHost(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getPath(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getQuery(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getFragment(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getAuthority(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getSchemeSpecificPart(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::toString(bool) const;
template std::u16string TemplateIRI<std::u32string>::toAsciiString(bool) const;
template std::u32string const& TemplateIRI<std::u32string>::toNativeStringFromParts(Encoding const&) const;
template std::u32string TemplateIRI<std::u32string>::getNativeAuthority(Encoding const&) const;
template std::u32string TemplateIRI<std::u32string>::getNativeSsp(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::toStringFromParts(Encoding const&) const;
template std::u16string TemplateIRI<std::u32string>::getPart(Part, Encoding const&) const;
template void TemplateIRI<std::u32string>::appendPart(std::u32string&, Part, Encoding const&) const;
template void TemplateIRI<std::u32string>::appendSsp(std::u32string&, Encoding const&) const;

} // namespace foundation::network::iri::detail
