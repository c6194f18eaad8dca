// Resolves references to the letter of RFC 3986, section 5.2, and makes references for that. Both work on the
// texts of components in the Iri form.

#include <foundation/network/References.hpp>

#include "iri/Draft.hpp"
#include "iri/Paths.hpp"
#include "iri/ValueAccess.hpp"
#include "operations/IriFormText.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::network {

namespace {

using iri::detail::Components;
using iri::detail::Draft;
using iri::detail::Form;
using iri::detail::Part;
using iri::detail::StoredText;
using iri::detail::ValueAccess;
using operations::IriFormText;
using View = std::u32string_view;

/// remove_dot_segments(path); `own` holds the result if it is another text.
View withoutDotSegments(View path, std::u32string& own) {
    if (!iri::hasRelativePathSegments(path)) {
        return path;
    }
    own = path;
    iri::removeDotSegments(own);
    return own;
}

/// What a reference's path is appended to (section 5.2.3): the base's path up to its last "/".
View directoryOf(StoredText const& base) {
    View const path = base.given(Part::path);
    if (base.components.hasHost() && path.empty()) {
        return U"/";
    }
    return path.substr(0, path.rfind(U'/') + 1); // empty without a "/"
}

/// Hardly any directory holds a dot, and that is quicker to find out.
bool hasDotSegments(View directory) {
    return text::contains(directory, U'.') && iri::hasRelativePathSegments(directory);
}

/// T.path = remove_dot_segments(merge(Base.path, R.path)).
void setMergedPath(View reference, StoredText const& base, Draft& draft, std::u32string& own) {
    View directory = directoryOf(base);
    if (hasDotSegments(directory)) {
        own.append(directory).append(reference);
        iri::removeDotSegments(own);
        return draft.setPath(own, Form::iri);
    }
    if (directory.substr(0, 1) == U"/") { // most references have no other dot segments
        iri::resolveLeadingDotDots(directory, reference);
    }
    if (iri::hasRelativePathSegments(reference)) {
        own.append(directory).append(reference);
        iri::removeDotSegments(own);
        return draft.setPath(own, Form::iri);
    }
    draft.setPath(directory, reference, Form::iri);
}

/// Section 5.2.2, for a strict parser. R is `reference`, Base is `base`.
void resolve(StoredText const& reference, StoredText const& base, Draft& draft, std::u32string& own) {
    View const path = reference.given(Part::path);
    if (reference.components.hasScheme()) {
        draft.takeSchemeAndAuthority(reference);
        draft.setPath(withoutDotSegments(path, own), Form::iri);
    } else {
        if (reference.components.hasHost()) {
            draft.takeScheme(base);
            draft.takeAuthority(reference);
            draft.setPath(withoutDotSegments(path, own), Form::iri);
        } else {
            draft.takeSchemeAndAuthority(base);
            if (path.empty()) {
                draft.setPath(base.given(Part::path), Form::iri);
                draft.takeQuery(reference.components.hasQuery() ? reference : base);
                return draft.takeFragment(reference);
            }
            if (path.front() == U'/') {
                draft.setPath(withoutDotSegments(path, own), Form::iri);
            } else {
                setMergedPath(path, base, draft, own);
            }
        }
    }
    draft.takeQueryAndFragment(reference);
}

std::size_t utf16Length(View text) {
    return text.size() + static_cast<std::size_t>(
                             std::count_if(text.begin(), text.end(), [](char32_t c) { return c > 0xFFFF; }));
}

/// A relative path that leads to a path: `front`, and then `rest`, with which that path ends.
struct RelativePathReference {
    bool found = false;
    View front;
    View rest;
    std::u32string own; // holds a long `front`
};

/// `count` times "../", without the last "/" if `endsInSlash` is false. `own` holds a long result.
View dotDots(std::size_t count, bool endsInSlash, std::u32string& own) {
    constexpr View someDotDots = U"../../../../../../../../";
    std::size_t const length = 3 * count - (endsInSlash ? 0 : 1);
    if (length <= someDotDots.size()) {
        return someDotDots.substr(0, length);
    }
    while (own.size() < length) {
        own += someDotDots;
    }
    return View(own).substr(0, length);
}

/// Whether "./" is set in front of a relative path, since it begins with "/" or its first segment holds a
/// ":". For a ":" the draft would write it, too; it is set here so that its length counts, which matters only
/// if fewer than two code points are left out of the path (`spared`).
bool needsDotSegment(View path, std::size_t spared) {
    return path.front() == U'/' || (spared < 2 && iri::detail::hasColonInFirstSegment(path));
}

/// Sets the relative path of `up` times "../" and what follows the `shared` code points that the path begins
/// with.
void setRelativePath(View path, std::size_t shared, std::size_t up, RelativePathReference& result) {
    result.found = true;
    result.rest = path.substr(shared);
    if (up != 0) { // ".." leads to a directory as "../" does
        result.front = dotDots(up, !result.rest.empty(), result.own);
    } else if (result.rest.empty()) {
        result.front = U".";
    } else if (needsDotSegment(result.rest, shared)) {
        result.front = U"./";
    }
}

std::size_t countSlashes(View text) {
    std::uint32_t count = 0; // as wide as a code point, which the compiler's vector code needs
    for (char32_t const c : text) {
        count += c == U'/' ? 1U : 0U;
    }
    return count;
}

/// Sets the shortest relative path from a directory to a path, both without dot segments.
///
/// The directory ends in "/" or is empty, and a reference is appended to it (section 5.2.3). Each "../" of
/// the reference removes its last segment. So "../" is repeated until the path begins with what is left of
/// the directory. Of a rootless directory "/" is left in the end, but an empty one stays empty.
void setRelativePathFrom(View directory, View path, RelativePathReference& result) {
    std::size_t shared = text::commonLength(path, directory);
    if (shared == directory.size()) {
        return setRelativePath(path, shared, 0, result);
    }
    std::size_t const slash = shared == 0 ? View::npos : directory.rfind(U'/', shared - 1);
    if (slash != View::npos) {
        return setRelativePath(path, slash + 1, countSlashes(directory.substr(slash + 1)), result);
    }
    if (path.substr(0, 1) == U"/") { // which is left of a rootless directory in the end
        setRelativePath(path, 1, countSlashes(directory), result);
    }
}

/// The directory of a base, without dot segments.
View directoryWithoutDotSegments(StoredText const& base, std::u32string& own) {
    View const directory = directoryOf(base);
    if (!hasDotSegments(directory)) {
        return directory;
    }
    own = directory;
    own += U'x'; // stands for a reference, which keeps the "/" in front of it
    iri::removeDotSegments(own);
    own.pop_back();
    return own;
}

/// Whether a relative path is no longer than the whole path. A whole path that is rootless needs its scheme
/// in front.
bool isNoLongerThanPath(RelativePathReference const& relative, View path, View scheme) {
    View const left = path.substr(0, path.size() - relative.rest.size()); // what the relative path leaves out
    if (relative.front.size() <= left.size()) {
        return true;
    }
    std::size_t const inFront = path.substr(0, 1) != U"/"    ? utf16Length(scheme) + 1
                                : path.substr(0, 2) == U"//" ? 2
                                                             : 0;
    return relative.front.size() <= inFront + utf16Length(left);
}

bool hasSameQuery(StoredText const& left, StoredText const& right) {
    return left.components.hasQuery() == right.components.hasQuery() &&
           (!left.components.hasQuery() || text::isSame(left.given(Part::query), right.given(Part::query)));
}

/// Sets the scheme, the authority if there is one, and the path. Without an authority a path that begins with
/// "//" needs a dot segment in front: "./" serves as "/." does, and leaves the path rootless.
void setAllButQueryAndFragment(StoredText const& target, View path, Draft& draft) {
    draft.takeSchemeAndAuthority(target);
    bool const guarded = !target.components.hasHost() && path.substr(0, 2) == U"//";
    draft.setPath(guarded ? View(U"./") : View(), path, Form::iri);
}

/// Sets all but query and fragment of the shortest reference to `target`, whose path without dot segments is
/// `path`. Returns whether the reference takes the right query from the base.
bool setShortestReference(StoredText const& target, View path, StoredText const& base, Draft& draft,
                          RelativePathReference& relative, std::u32string& own) {
    Components const& t = target.components;
    Components const& b = base.components;
    bool const sameSchemeAndAuthority =
        t.schemeEnd == b.schemeEnd &&
        text::isSame(target.stretch(0, t.pathBegin), base.stretch(0, b.pathBegin));
    if (!sameSchemeAndAuthority) {
        if (t.hasHost() && text::isSame(target.scheme(), base.scheme())) {
            draft.takeAuthority(target);
            draft.setPath(path, Form::iri);
        } else {
            setAllButQueryAndFragment(target, path, draft);
        }
        return false;
    }
    // A reference with an empty path takes the base's path as it is, so only one without dot segments will
    // do.
    bool const guarded = !t.hasHost() && path.substr(0, 2) == U"//";
    View const basePath = base.given(Part::path);
    bool const samePath = guarded ? basePath.substr(0, 2) == U"/." && text::isSame(basePath.substr(2), path)
                                  : text::isSame(basePath, path);
    bool const sameQuery = samePath && hasSameQuery(target, base);
    if (samePath && (sameQuery || t.hasQuery())) {
        draft.setPath(View(), Form::iri);
        return sameQuery;
    }
    std::size_t const shared = text::commonLength(path, basePath);
    std::size_t const slash = shared == 0 ? View::npos : basePath.rfind(U'/', shared - 1);
    View const behind = basePath.substr(slash + 1);
    std::size_t const up = countSlashes(behind);
    // The shared start holds no dot segments, so the directory holds none if the rest of it holds none.
    if (slash != View::npos && (up == 0 || !iri::hasRelativePathSegments(behind))) {
        setRelativePath(path, slash + 1, up, relative);
    } else {
        setRelativePathFrom(directoryWithoutDotSegments(base, own), path, relative);
    }
    bool const absolute = !path.empty() && path.front() == U'/';
    if (relative.found && isNoLongerThanPath(relative, path, target.scheme())) {
        draft.setPath(relative.front, relative.rest, Form::iri);
    } else if (absolute) {
        draft.setPath(path, Form::iri);
    } else if (t.hasHost()) { // only the authority leads to an empty path
        draft.takeAuthority(target);
        draft.setPath(path, Form::iri);
    } else {
        setAllButQueryAndFragment(target, path, draft);
    }
    return false;
}

} // namespace

IRI resolveExactly(IRI const& reference, IRI const& base) {
    IriFormText const from(reference);
    IriFormText const to(base);
    std::u32string own; // the draft reads it until it is finished
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    resolve(from.stored(), to.stored(), draft, own);
    draft.finish();
    return result;
}

IRI makeRelativeExactly(IRI const& iri, IRI const& base) {
    IriFormText const target(iri);
    IriFormText const from(base);
    std::u32string path; // the draft reads these until it is finished
    std::u32string directory;
    RelativePathReference relative;
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    bool queryIsInherited = false;
    if (!iri.hasScheme() || !base.hasScheme()) {
        draft.takeSchemeAndAuthority(target.stored());
        draft.setPath(target.path(), Form::iri);
    } else {
        queryIsInherited = setShortestReference(target.stored(), withoutDotSegments(target.path(), path),
                                                from.stored(), draft, relative, directory);
    }
    if (!queryIsInherited) {
        draft.takeQuery(target.stored());
    }
    draft.takeFragment(target.stored());
    draft.finish();
    return result;
}

} // namespace foundation::network
