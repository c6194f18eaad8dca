// References on the texts of components, in the Iri form: RFC 3986, section 5.2, and its inverse. Every value
// that is made here is as its text parsed again.

#include <foundation/network/References.hpp>

#include "iri/Draft.hpp"
#include "iri/RelativePath.hpp"
#include "iri/ValueAccess.hpp"
#include "operations/InIriForm.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <cstddef>
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

/// T.path = remove_dot_segments(merge(Base.path, R.path)).
void setMergedPath(View reference, StoredText const& base, Draft& draft, std::u32string& own) {
    View directory = directoryOf(base);
    if (iri::hasRelativePathSegments(directory)) {
        own.append(directory).append(reference);
        iri::removeDotSegments(own);
        return draft.setPath(own, Form::iri);
    }
    if (directory.substr(0, 1) == U"/") { // most references only go up first
        iri::goUp(directory, reference);
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
        draft.takeScheme(reference);
        draft.takeAuthority(reference);
        draft.setPath(withoutDots(path, own), Form::iri);
    } else {
        draft.takeScheme(base);
        if (reference.components.hasHost()) {
            draft.takeAuthority(reference);
            draft.setPath(withoutDots(path, own), Form::iri);
        } else {
            draft.takeAuthority(base);
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
    draft.takeQuery(reference);
    draft.takeFragment(reference);
}

/// The length of a text in UTF-16.
std::size_t unitsOf(View text) {
    return text.size() + static_cast<std::size_t>(
                             std::count_if(text.begin(), text.end(), [](char32_t c) { return c > 0xFFFF; }));
}

/// A relative path that leads to a path: `front` and then `rest`, which is the end of the path.
struct RelativePath {
    bool found = false;
    std::u32string front;
    View rest;
};

/// The shortest relative path from a directory, by which section 5.2.3 begins, to a path without dot
/// segments.
///
/// A directory without its dots ends in "/" or is empty, and what is merged with it is put behind it. Each
/// "../" takes its last segment off; what is left of a rootless one is "/" then, but an empty one stays.
/// So "../" is written until the rest of the directory begins the path.
RelativePath relativePathTo(View path, View directory) {
    RelativePath result;
    std::size_t up = 0;
    std::size_t shared = text::commonLength(path, directory);
    if (shared != directory.size()) {
        std::size_t const slash = shared == 0 ? View::npos : directory.rfind(U'/', shared - 1);
        if (slash == View::npos && path.substr(0, 1) != U"/") {
            return result;
        }
        shared = slash == View::npos ? 0 : slash + 1;
        up = static_cast<std::size_t>(
            std::count(directory.begin() + static_cast<std::ptrdiff_t>(shared), directory.end(), U'/'));
        if (slash == View::npos) {
            shared = 1; // the "/" that is left of a rootless directory
        }
    }
    result.found = true;
    result.rest = path.substr(shared);
    if (result.rest.empty()) { // "." and ".." name a directory as well as "./" and "../" do
        for (std::size_t i = 1; i < up; ++i) {
            result.front += U"../";
        }
        result.front += up == 0 ? U"." : U"..";
        return result;
    }
    for (std::size_t i = 0; i != up; ++i) {
        result.front += U"../";
    }
    bool const readsAsOtherwise =
        result.rest.front() == U'/' || result.rest.substr(0, result.rest.find(U'/')).find(U':') != View::npos;
    if (up == 0 && readsAsOtherwise) {
        result.front = U"./";
    }
    return result;
}

/// The directory of a base without its dot segments.
View cleanDirectoryOf(StoredText const& base, std::u32string& own) {
    View const directory = directoryOf(base);
    if (!iri::hasRelativePathSegments(directory)) {
        return directory;
    }
    own = directory;
    own += U'x'; // a segment to be merged: it shows whether a "/" is left in front of it
    iri::removeDotSegments(own);
    own.pop_back();
    return own;
}

bool hasSameQuery(StoredText const& left, StoredText const& right) {
    return left.components.hasQuery() == right.components.hasQuery() &&
           (!left.components.hasQuery() || text::isSame(left.given(Part::query), right.given(Part::query)));
}

/// A path behind a scheme and, if there is one, an authority. Beside none, a path that begins with "//" needs
/// a dot segment in front; "./" leads to it as "/." does, and has no "/" in front.
void setWhole(StoredText const& target, View path, Draft& draft) {
    draft.takeScheme(target);
    draft.takeAuthority(target);
    bool const guarded = !target.components.hasHost() && path.substr(0, 2) == U"//";
    draft.setPath(guarded ? View(U"./") : View(), path, Form::iri);
}

/// All but query and fragment of the shortest reference to `path`, which is that of `target` without dot
/// segments. Returns whether the query goes without saying.
bool setReference(StoredText const& target, View path, StoredText const& base, Draft& draft,
                  RelativePath& relative, std::u32string& own) {
    Components const& t = target.components;
    Components const& b = base.components;
    if (target.scheme() != base.scheme()) {
        setWhole(target, path, draft);
        return false;
    }
    View const authority = target.stretch(t.authorityBegin(), t.pathBegin);
    if (!text::isSame(authority, base.stretch(b.authorityBegin(), b.pathBegin))) {
        if (t.hasHost()) {
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
    relative = relativePathTo(path, cleanDirectoryOf(base, own));
    bool const absolute = path.substr(0, 1) == U"/";
    std::size_t const shared = path.size() - relative.rest.size();
    std::size_t const asAbsolute = unitsOf(path.substr(0, shared)) + (path.substr(0, 2) == U"//" ? 2 : 0);
    if (relative.found && (!absolute || relative.front.size() <= asAbsolute)) {
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
    Draft draft(ValueAccess::stored(result), Draft::Kind::exact);
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
    Draft draft(ValueAccess::stored(result), Draft::Kind::exact);
    bool queryIsTaken = false;
    if (!iri.hasScheme() || !base.hasScheme()) {
        draft.takeScheme(target.get());
        draft.takeAuthority(target.get());
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
