#pragma once

/// The path of an IRI as a list of segments.
///
///     #include <foundation/network/PathSegments.hpp>
///
///     IRI const iri(u"http://h/a%2Fb/c/");
///     getPathSegments(iri);                        // {u"a/b", u"c", u""}
///     withPathSegments(iri, {u"50%", u"é/ü"});     // http://h/50%/é%2Fü
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/core/StandardLibrary.hpp>
#include <foundation/network/IRI.hpp>

#include <string>
#include <vector>

namespace foundation::network {

/// The segments of the path, each decoded by itself, so that an escaped "/" stays inside its segment.
///
/// An empty path has none, "/" has one that is empty, "/a/" has two. Bytes that are no UTF-8 become U+FFFD,
/// as in `percentDecode`.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of the path; for a built value, of the whole.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::vector<std::u16string> getPathSegments(IRI const& iri);

/// A copy whose path has these segments, escaped, "/" as well. All else is left as it is written.
///
/// The path begins with "/" if that of `iri` does, and beside a host; without segments it is empty.
/// `getPathSegments` of the result gives the segments again, but where the first of them is empty and the
/// path is rootless, or begins with "/" beside no host and has further segments: such a path gets a guard,
/// "./" or "/.", in front.
///
/// Throws: the internal `std::logic_error`, "Path segment must not be a dot segment", for a segment that is
/// "." or ".."; the internal `std::out_of_range`, as `toUtf8`, for one that is no UTF-16.
/// Complexity: linear in the length of the IRI and of the segments.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withPathSegments(IRI const& iri,
                                                      std::vector<std::u16string> const& segments);

} // namespace foundation::network
