// References on the texts of components, in the Iri form: RFC 3986, section 5.2, and its inverse. Every value
// that is made here is as its text parsed again.

#include <foundation/network/References.hpp>

#include "iri/Draft.hpp"
#include "iri/Paths.hpp"
#include "iri/ValueAccess.hpp"
#include "operations/InIriForm.hpp"
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
using operations::InIriForm;
using View = std::u32string_view;

/// The path of a value without its dot segments.
View withoutDots(View path, std::u32string& own) {
    if (!iri::hasRelativePathSegments(path)) {
        return path;
    }
    own = path;
    iri::removeDotSegments(own);
    return own;
}

/// What a relative path is merged with (section 5.2.3): the base's path up to its last "/".
View directoryOf(StoredText const& base) {
    View const path = base.given(Part::path);
    if (base.components.hasHost() && path.empty()) {
        return U"/";
    }
    return path.substr(0, path.rfind(U'/') + 1); // nothing where there is no "/"
}

/// Hardly any directory holds a dot at all, which is quicker to see.
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
    if (directory.substr(0, 1) == U"/") { // most references only go up first
        iri::resolveLeadingDotDots(directory, reference);
    }
    if (iri::hasRelativePathSegments(reference)) {
        own.append(directory).append(reference);
        iri::removeDotSegments(own);
        return draft.setPath(own, Form::iri);
    }
    draft.setPath(directory, reference, Form::iri);
}

/// Section 5.2.2, strict.
void resolve(StoredText const& reference, StoredText const& base, Draft& draft, std::u32string& own) {
    View const path = reference.given(Part::path);
    if (reference.components.hasScheme()) {
        draft.takeSchemeAndAuthority(reference);
        draft.setPath(withoutDots(path, own), Form::iri);
    } else {
        if (reference.components.hasHost()) {
            draft.takeScheme(base);
            draft.takeAuthority(reference);
            draft.setPath(withoutDots(path, own), Form::iri);
        } else {
            draft.takeSchemeAndAuthority(base);
            if (path.empty()) {
                draft.setPath(base.given(Part::path), Form::iri);
                draft.takeQuery(reference.components.hasQuery() ? reference : base);
                return draft.takeFragment(reference);
            }
            if (path.front() == U'/') {
                draft.setPath(withoutDots(path, own), Form::iri);
            } else {
                setMergedPath(path, base, draft, own);
            }
        }
    }
    draft.takeQueryAndFragment(reference);
}

/// The length of a text in UTF-16.
std::size_t unitsOf(View text) {
    return text.size() + static_cast<std::size_t>(
                             std::count_if(text.begin(), text.end(), [](char32_t c) { return c > 0xFFFF; }));
}

/// A relative path that leads to a path: `front` and then `rest`, which is the end of the path.
struct RelativePath {
    bool found = false;
    View front;
    View rest;
    std::u32string own; // holds a long front
};

/// So many times "../"; `less` by so many of their last characters.
View upwards(std::size_t count, std::size_t less, std::u32string& own) {
    constexpr View some = U"../../../../../../../../";
    std::size_t const length = 3 * count - less;
    if (length <= some.size()) {
        return some.substr(0, length);
    }
    while (own.size() < length) {
        own += some;
    }
    return View(own).substr(0, length);
}

/// Whether a relative path needs "./" in front: it begins with "/", or its first segment holds ":". The draft
/// sees the latter as well; here it counts only where "./" could make the path longer than what it spares.
bool readsAsOtherwise(View path, std::size_t spared) {
    return path.front() == U'/' || (spared < 2 && iri::detail::hasColonInFirstSegment(path));
}

/// The relative path by so many times "../" and then what is behind the shared start.
void setRelativePath(View path, std::size_t shared, std::size_t up, RelativePath& result) {
    result.found = true;
    result.rest = path.substr(shared);
    if (up != 0) { // ".." names a directory as well as "../" does
        result.front = upwards(up, result.rest.empty() ? 1 : 0, result.own);
    } else if (result.rest.empty()) {
        result.front = U".";
    } else if (readsAsOtherwise(result.rest, shared)) {
        result.front = U"./";
    }
}

std::size_t slashesIn(View text) {
    std::uint32_t count = 0; // as wide as a code point, for the compiler's vector code
    for (char32_t const c : text) {
        count += c == U'/' ? 1U : 0U;
    }
    return count;
}

/// The shortest relative path from a directory, by which section 5.2.3 begins, to a path without dot
/// segments.
///
/// A directory without its dots ends in "/" or is empty, and what is merged with it is put behind it. Each
/// "../" takes its last segment off; what is left of a rootless one is "/" then, but an empty one stays.
/// So "../" is written until the rest of the directory begins the path.
void setRelativePathFrom(View directory, View path, RelativePath& result) {
    std::size_t shared = text::commonLength(path, directory);
    if (shared == directory.size()) {
        return setRelativePath(path, shared, 0, result);
    }
    std::size_t const slash = shared == 0 ? View::npos : directory.rfind(U'/', shared - 1);
    if (slash != View::npos) {
        return setRelativePath(path, slash + 1, slashesIn(directory.substr(slash + 1)), result);
    }
    if (path.substr(0, 1) == U"/") { // which is left of a rootless directory
        setRelativePath(path, 1, slashesIn(directory), result);
    }
}

/// The directory of a base without its dot segments.
View cleanDirectoryOf(StoredText const& base, std::u32string& own) {
    View const directory = directoryOf(base);
    if (!hasDotSegments(directory)) {
        return directory;
    }
    own = directory;
    own += U'x'; // a segment to be merged: it shows whether a "/" is left in front of it
    iri::removeDotSegments(own);
    own.pop_back();
    return own;
}

/// Whether a relative path is no longer than the whole path, which is behind a scheme where it is rootless.
bool isNoLonger(RelativePath const& relative, View path, View scheme) {
    View const left = path.substr(0, path.size() - relative.rest.size()); // out of the relative one
    if (relative.front.size() <= left.size()) {
        return true;
    }
    std::size_t const inFront = path.substr(0, 1) != U"/"    ? unitsOf(scheme) + 1
                                : path.substr(0, 2) == U"//" ? 2
                                                             : 0;
    return relative.front.size() <= inFront + unitsOf(left);
}

bool hasSameQuery(StoredText const& left, StoredText const& right) {
    return left.components.hasQuery() == right.components.hasQuery() &&
           (!left.components.hasQuery() || text::isSame(left.given(Part::query), right.given(Part::query)));
}

/// A path behind a scheme and, if there is one, an authority. Beside none, a path that begins with "//" needs
/// a dot segment in front; "./" leads to it as "/." does, and has no "/" in front.
void setWhole(StoredText const& target, View path, Draft& draft) {
    draft.takeSchemeAndAuthority(target);
    bool const guarded = !target.components.hasHost() && path.substr(0, 2) == U"//";
    draft.setPath(guarded ? View(U"./") : View(), path, Form::iri);
}

/// All but query and fragment of the shortest reference to `path`, which is that of `target` without dot
/// segments. Returns whether the query goes without saying.
bool setReference(StoredText const& target, View path, StoredText const& base, Draft& draft,
                  RelativePath& relative, std::u32string& own) {
    Components const& t = target.components;
    Components const& b = base.components;
    bool const sameFront = t.schemeEnd == b.schemeEnd &&
                           text::isSame(target.stretch(0, t.pathBegin), base.stretch(0, b.pathBegin));
    if (!sameFront) {
        if (t.hasHost() && text::isSame(target.scheme(), base.scheme())) {
            draft.takeAuthority(target);
            draft.setPath(path, Form::iri);
        } else {
            setWhole(target, path, draft);
        }
        return false;
    }
    // The base's path is taken as it stands; only a target without dots can be the same.
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
    std::size_t const up = slashesIn(behind);
    // The directory is without dots if what is left behind the shared start is.
    if (slash != View::npos && (up == 0 || !iri::hasRelativePathSegments(behind))) {
        setRelativePath(path, slash + 1, up, relative);
    } else {
        setRelativePathFrom(cleanDirectoryOf(base, own), path, relative);
    }
    bool const absolute = !path.empty() && path.front() == U'/';
    if (relative.found && isNoLonger(relative, path, target.scheme())) {
        draft.setPath(relative.front, relative.rest, Form::iri);
    } else if (absolute) {
        draft.setPath(path, Form::iri);
    } else if (t.hasHost()) { // an empty path beside a host, which nothing else leads to
        draft.takeAuthority(target);
        draft.setPath(path, Form::iri);
    } else {
        setWhole(target, path, draft);
    }
    return false;
}

} // namespace

IRI resolveExactly(IRI const& reference, IRI const& base) {
    InIriForm const from(reference);
    InIriForm const to(base);
    std::u32string own; // the draft reads it until it is finished
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    resolve(from.get(), to.get(), draft, own);
    draft.finish();
    return result;
}

IRI makeRelativeExactly(IRI const& iri, IRI const& base) {
    InIriForm const target(iri);
    InIriForm const from(base);
    std::u32string path; // the draft reads these until it is finished
    std::u32string directory;
    RelativePath relative;
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    bool queryIsTaken = false;
    if (!iri.hasScheme() || !base.hasScheme()) {
        draft.takeSchemeAndAuthority(target.get());
        draft.setPath(target.path(), Form::iri);
    } else {
        queryIsTaken = setReference(target.get(), withoutDots(target.path(), path), from.get(), draft,
                                    relative, directory);
    }
    if (!queryIsTaken) {
        draft.takeQuery(target.get());
    }
    draft.takeFragment(target.get());
    draft.finish();
    return result;
}

} // namespace foundation::network
