#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Algorithms on the text of a path that know nothing of the value around it. All are linear.
///
/// RFC 3986, section 5.2.4 ("remove dot segments"), is done in two ways, since they differ where segments are
/// empty, and both answers are promised:
///
/// | The path                                    | Way                                                     |
/// |---------------------------------------------|---------------------------------------------------------|
/// | has no empty segments                       | by segments that `splitPath` cuts; one that is left     |
/// |                                             | without its "/" in front gets it back                   |
/// | holds "//", so that it cannot be cut        | on the text, to the letter of the RFC                   |
/// | an absolute base without dot segments, and  | on the text: both give the same there, and the text is  |
/// | a reference that does not begin with "/"    | quicker                                                 |
namespace foundation::network::iri {

/// A component of a path: what stands behind a "/", or at the start of a path without one. The name is a view
/// of the path that it was cut from; only that of a path taken as a whole holds slashes.
struct PathComponent {
    bool slash;
    std::u32string_view name;

    [[nodiscard]] bool isSlash() const { return slash && name.empty(); }
};
using PathComponents = std::vector<PathComponent>;

/// What a path looks like.
struct PathShape {
    bool hasDotSegments = false;   // as `hasRelativePathSegments`
    bool hasEmptySegments = false; // holds "//"
    bool isRaw = true;             // of a parsed path: reads the same in the Raw form
};
PathShape shapeOf(std::u32string_view path) noexcept;

/// Whether a segment of `path`, between slashes or at either end, is exactly "." or "..".
bool hasRelativePathSegments(std::u32string_view path) noexcept;

/// The components of a path; none for an empty one. The path must be one that can be split.
PathComponents componentsOf(std::u32string_view path);

/// The components one after the other.
std::u32string joined(PathComponents const& components);

/// Appends `path`, as one component, or, with `removeDots`, component by component and without dot segments.
/// With `removeDots` the path must be one that can be split.
///
/// `absolute`: the result of removing dots begins with "/". If it is false, a result that came from a
/// relative start loses the "/" that the removal left in front.
void appendPathComponents(std::u32string_view path, PathComponents& components, bool absolute,
                          bool removeDots);

/// The path without its dot segments, absolute as told at `appendPathComponents`.
std::u32string removeRelativePathSegments(std::u32string_view path, bool absolute);

/// Removes the dot segments of a path: RFC 3986, section 5.2.4, to the letter.
void removeDotSegments(std::u32string& path);

/// The two paths merged and their dot segments removed, by RFC 3986, sections 5.2.3 and 5.2.4, on whole
/// texts. `absolute`: the result begins with "/". If it is false and neither path begins with "/", nor does
/// the result.
std::u32string mergeAsTexts(std::u32string_view base, std::u32string_view reference, bool absolute);

/// Takes each "../" that a reference begins with off it, and the last segment off the directory that it goes
/// up from: a path from "/" to "/" without dot segments.
void goUp(std::u32string_view& directory, std::u32string_view& reference);

/// A relative path: so many times "../", and what follows.
struct Way {
    std::size_t up;
    std::u32string_view rest;
};

/// The way from one path to another, both without dot segments, that differ and have no empty segments.
/// `absolute`: the other one counts as beginning with "/".
Way wayBetween(std::u32string_view from, std::u32string_view to, bool absolute) noexcept;

/// The way as a text.
std::u32string textOf(Way const& way);

} // namespace foundation::network::iri
