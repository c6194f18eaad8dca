#include <foundation/network/Utf8.hpp>

#include "iri/ReadText.hpp"
#include "iri/ValueAccess.hpp"
#include "iri/ValueReader.hpp"
#include "text/Transcoding.hpp"

#include <ostream>

namespace foundation::network {

using iri::detail::Part;
using iri::detail::ValueAccess;

namespace {

auto reader(IRI const& iri) {
    return iri::detail::ValueReader<std::string>(ValueAccess::value(iri));
}

} // namespace

IRI iriFromUtf8(std::string_view text) {
    IRI result;
    iri::ReadOutcome const outcome = iri::readText(text, ValueAccess::stored(result));
    if (outcome.malformedAt != text::noFault) {
        text::throwNotUtf8();
    }
    if (!outcome.isIri) {
        iri::throwParsingFailed();
    }
    return result;
}

std::string toUtf8(std::u16string_view text) {
    return text::toUtf8(text);
}

std::u16string fromUtf8(std::string_view text) {
    return text::toUtf16(text);
}

std::string Utf8View::getScheme() const {
    return reader(iri).scheme();
}
std::string Utf8View::getPort() const {
    return reader(iri).port();
}
std::string Utf8View::getUserInfo(Encoding encoding) const {
    return reader(iri).component(Part::userInfo, encoding);
}
std::string Utf8View::getHost(Encoding encoding) const {
    return reader(iri).component(Part::host, encoding);
}
std::string Utf8View::getPath(Encoding encoding) const {
    return reader(iri).component(Part::path, encoding);
}
std::string Utf8View::getQuery(Encoding encoding) const {
    return reader(iri).component(Part::query, encoding);
}
std::string Utf8View::getFragment(Encoding encoding) const {
    return reader(iri).component(Part::fragment, encoding);
}
std::string Utf8View::getAuthority(Encoding encoding) const {
    return reader(iri).authority(encoding);
}
std::string Utf8View::getSchemeSpecificPart(Encoding encoding) const {
    return reader(iri).schemeSpecificPart(encoding);
}
std::string Utf8View::toString(bool strict) const {
    return reader(iri).whole(strict);
}
std::string Utf8View::toAsciiString(bool strict) const {
    return reader(iri).wholeInAscii(strict);
}

std::ostream& operator<<(std::ostream& stream, Utf8View const& view) {
    return stream << view.toString(false);
}

} // namespace foundation::network
