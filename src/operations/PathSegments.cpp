#include <foundation/network/PathSegments.hpp>

#include "except/Refuse.hpp"
#include "operations/ComponentText.hpp"
#include "operations/ComponentViews.hpp"
#include "operations/Decoding.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>

namespace foundation::network {

using iri::detail::Part;
using iri::detail::PartContext;
using operations::ComponentViews;
using operations::IriFormText;

std::vector<std::u16string> getPathSegments(IRI const& iri) {
    IriFormText const form(iri);
    std::u32string_view const path = form.path();
    std::vector<std::u16string> segments;
    if (path.empty()) {
        return segments;
    }
    segments.reserve(1 + static_cast<std::size_t>(std::count(path.begin() + 1, path.end(), U'/')));
    bool const isEscaped = text::contains(path, U'%');
    for (std::size_t at = path.front() == U'/' ? 1 : 0;;) {
        std::size_t const slash = path.find(U'/', at);
        segments.push_back(text::toUtf16(path.substr(at, slash - at)));
        if (isEscaped) {
            segments.back() = operations::decoded(segments.back(), operations::Plus::asItStands);
        }
        if (slash == std::u32string_view::npos) {
            return segments;
        }
        at = slash + 1;
    }
}

IRI withPathSegments(IRI const& iri, std::vector<std::u16string> const& segments) {
    IriFormText const form(iri);
    ComponentViews views(form.stored());
    bool const rooted = views.host || (!views.path.empty() && views.path.front() == U'/');
    PartContext context;
    context.schemePresent = true; // so that `escaped` leaves every ":" behind the first segment as it is
    bool colonEndsScheme = !views.scheme && !rooted; // in the first segment only
    std::u32string path;
    for (auto const& segment : segments) {
        if (segment == u"." || segment == u"..") {
            core::except::refuse("Path segment must not be a dot segment");
        }
        if (rooted || &segment != &segments.front()) {
            path.push_back(U'/');
        } else if (segment.empty()) {
            path.append(U"./"); // else the next "/" would be the first character and make the path absolute
        }
        for (char32_t const c : operations::escaped(Part::path, text::toUtf32(segment), context)) {
            if (c == U'/') {
                path.append(U"%2F");
            } else if (c == U':' && colonEndsScheme) {
                path.append(U"%3A");
            } else {
                path.push_back(c);
            }
        }
        colonEndsScheme = false;
    }
    views.path = path;
    return views.recomposed();
}

} // namespace foundation::network
