#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Algorithms on the text of a path that know nothing of the value around it. All are linear.
///
/// Dot segments are removed (RFC 3986, section 5.2.4) in two ways, which give different results where a path
/// holds "//", where the base has dot segments itself, and where a reference begins with an escaped "/":
///
/// - On a list of segments, one by one: `appendPathSegments`. Paths that hold "//" are not split into a list.
/// - On the text, to the letter of the RFC: `removeDotSegments` and `mergeAndRemoveDotSegments`. Paths that
///   hold "//" are merged so, and those for which both ways give the same, since this one is quicker.
namespace foundation::network::iri {

/// A segment of a path and whether a "/" stands before it. `text` is a view of the path. It holds slashes
/// only where `appendPathSegments` has taken a path whole.
struct PathSegment {
    bool hasSlash;
    std::u32string_view text;

    [[nodiscard]] bool isBareSlash() const { return hasSlash && text.empty(); }
};
using PathSegments = std::vector<PathSegment>;

/// What a scan of a path has found.
struct PathShape {
    bool hasDotSegments = false;   // as `hasRelativePathSegments`
    bool hasEmptySegments = false; // holds "//"
    bool isRaw = true;             // holds no "%": a parsed path without one reads the same in the Raw form
};
PathShape shapeOf(std::u32string_view path) noexcept;

/// Whether a segment of `path` is exactly "." or "..".
bool hasRelativePathSegments(std::u32string_view path) noexcept;

/// The segments of a path, which must not hold "//"; none of an empty one.
PathSegments segmentsOf(std::u32string_view path);

/// The path that a list of segments makes up.
std::u32string joined(PathSegments const& segments);

/// Appends `path` to a list of segments. Without `removeDots` it is appended whole, as one segment, with a
/// "/" in between if there is none. With `removeDots` it must not hold "//", and the list is left without dot
/// segments.
///
/// `absolute`: the list begins with "/" after its dot segments were removed. Without it, a list that was
/// empty or did not begin with "/" before does not begin with it afterwards.
///
/// A `path` that is ".", "./", ".." or "../" alone follows a rule of its own instead: it leaves an empty list
/// and the list "/" as they are; of any other it takes a final "/", for ".." the last segment as well, and
/// then puts a "/" at the end, whatever `absolute` says.
void appendPathSegments(std::u32string_view path, PathSegments& segments, bool absolute, bool removeDots);

/// The path without its dot segments. `absolute` is that of `appendPathSegments`.
std::u32string removeRelativePathSegments(std::u32string_view path, bool absolute);

/// Removes the dot segments of a path: RFC 3986, section 5.2.4, to the letter. Gives the length of the
/// result, which is `size` only if there are none.
std::size_t removeDotSegments(char32_t* text, std::size_t size);
void removeDotSegments(std::u32string& path);

/// Merges the two paths (RFC 3986, section 5.2.3, for a base with a path) and removes the dot segments of the
/// result. `absolute`: the result begins with "/". Without it, the result of two paths that do not begin with
/// "/" does not begin with it either.
std::u32string mergeAndRemoveDotSegments(std::u32string_view base, std::u32string_view reference,
                                         bool absolute);

/// Takes every leading "../" off a reference, and for each the last segment off the directory that the
/// reference is resolved against. The directory must begin and end with "/" and hold no dot segments.
void resolveLeadingDotDots(std::u32string_view& directory, std::u32string_view& reference);

/// A relative path: `dotDots` times "../", and then `rest`.
struct RelativePath {
    std::size_t dotDots;
    std::u32string_view rest;
};

/// The relative path that leads from one path to another. The two must differ and hold neither dot segments
/// nor "//". `absolute`: `to` begins with "/".
RelativePath relativePathBetween(std::u32string_view from, std::u32string_view to, bool absolute) noexcept;

std::u32string toText(RelativePath const& relative);

} // namespace foundation::network::iri
