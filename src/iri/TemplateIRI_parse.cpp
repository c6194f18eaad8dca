// From a text to a value: match, flags, parts, port.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/encoding/Transcoding.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "iri/grammar/PortReader.hpp"

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

namespace {

[[noreturn]] void throwParsingFailed() {
    throw makeInternalException(std::logic_error("IRI parsing failed"));
}

} // namespace

template <class String>
TemplateIRI<String>::TemplateIRI(std::u16string const& text) {
    parts.writableSource() = encoding::toUtf32(text);
    parse();
}

template <class String>
void TemplateIRI<String>::parse() {
    flags.textCurrent = true;
    if (sourceText().empty()) {
        parts.setSlice(Part::path, Slice(), Form::iri);
        return;
    }
    flags.empty = false;

    Parts<Iterator> found;
    if (!grammar::matchIriReference(sourceText(), found)) {
        throwParsingFailed();
    }
    setPartFlags(found);
    found.update();
    setStringParts(found);
    if (flags.hasScheme) {
        scheme = sliceOf(schemeRange(found));
    }
    if (flags.hasPort) {
        portText = sliceOf(portRange(found));
        auto const number = grammar::readPort(portView());
        if (!number) {
            throwParsingFailed();
        }
        port = *number;
    }
}

// Runs on the record as the grammar left it: the flags must see what is absent.
template <class String>
void TemplateIRI<String>::setPartFlags(Parts<Iterator> const& found) {
    if (flags.empty) {
        return;
    }
    flags.hasScheme = found.scheme.has_value();
    flags.hasQuery = found.query.has_value();
    flags.hasFragment = found.fragment.has_value();
    flags.hasHost = found.host.has_value();
    flags.hasUserInfo = found.userInfo.has_value();
    flags.hasAuthority = flags.hasHost;
    flags.hasPort = found.port.has_value();
    Range const path = pathRange(found);
    flags.pathIsEmpty = path.empty();
    flags.hasAbsolutePath = !path.empty() && path.front() == FORWARD_SLASH;
    if (flags.hasScheme) {
        flags.isAbsolute = true;
        flags.isOpaque = !flags.hasHost && !flags.hasAbsolutePath;
    }
}

template <class String>
void TemplateIRI<String>::setStringParts(Parts<Iterator> const& found) {
    auto const set = [this](Part part, Range const& range) {
        parts.setSlice(part, sliceOf(range), Form::iri);
    };
    set(Part::path, pathRange(found));
    if (flags.hasUserInfo) {
        set(Part::userInfo, userInfoRange(found));
    }
    if (flags.hasHost) {
        set(Part::host, hostRange(found));
    }
    if (flags.hasQuery) {
        set(Part::query, queryRange(found));
    }
    if (flags.hasFragment) {
        set(Part::fragment, fragmentRange(found));
    }
    parts.setContext(flags.hasScheme, flags.queryIsFormEncoded);
}

template TemplateIRI<std::u32string>::TemplateIRI(std::u16string const&);
template void TemplateIRI<std::u32string>::parse();
template void TemplateIRI<std::u32string>::setPartFlags(Parts<Iterator> const&);
template void TemplateIRI<std::u32string>::setStringParts(Parts<Iterator> const&);

} // namespace foundation::network::iri::detail
