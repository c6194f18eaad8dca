#pragma once

// RFC 3986, section 5.2, to the letter, and where the library differs from it by design.

#include "support/Laws.hpp"

#include <foundation/network/References.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace support {

using Text = std::u16string;
inline constexpr auto Iri = Encoding::Iri;

// The value of a text, made in one of three ways: as it is, of its parts, or out of a resolution, so that its
// parts are stored in several forms. What such a way refuses stays as it is.
inline IRI inAnotherWay(IRI const& iri, std::size_t how) {
    try {
        return how == 0   ? IRI(foundation::network::IRIArgs(iri))
               : how == 1 ? iri.resolveAgainst(IRI(u"//h\u00E9%41@h/%2541/%2e/%25//b?%26"))
                          : iri;
    } catch (std::logic_error const&) {
        return iri;
    }
}

// RFC 3986, section 5.2, on the texts of components: slow, plain, and to the letter.
struct Components {
    std::optional<Text> scheme, authority, query, fragment;
    Text path;

    static Components of(IRI const& iri, Encoding pathEncoding = Iri) {
        Components parts;
        parts.scheme = iri.hasScheme() ? std::optional(iri.getScheme()) : std::nullopt;
        parts.authority = iri.hasAuthority() ? std::optional(iri.getAuthority(Iri)) : std::nullopt;
        parts.path = iri.isEmpty() ? u"" : iri.getPath(pathEncoding);
        parts.query = iri.hasQuery() ? std::optional(iri.getQuery(Iri)) : std::nullopt;
        parts.fragment = iri.hasFragment() ? std::optional(iri.getFragment(Iri)) : std::nullopt;
        return parts;
    }
    bool operator==(Components const&) const = default;
    Text text() const { // section 5.3
        return (scheme ? *scheme + u":" : u"") + (authority ? u"//" + *authority : u"") + path +
               (query ? u"?" + *query : u"") + (fragment ? u"#" + *fragment : u"");
    }
};

inline Text removeDotSegments(Text input) { // section 5.2.4
    Text output;
    auto const drop = [&input](Text const& prefix, Text const& by) {
        bool const fits = input.starts_with(prefix);
        input = fits ? by + input.substr(prefix.size()) : input;
        return fits;
    };
    while (!input.empty()) {
        if (drop(u"../", u"") || drop(u"./", u"") || drop(u"/./", u"/")) {
            continue;
        }
        if (input == u"/.") {
            input = u"/";
        } else if (bool const last = input == u"/.."; last || drop(u"/../", u"/")) {
            input = last ? u"/" : input;
            output.erase(output.rfind(u'/') == Text::npos ? 0 : output.rfind(u'/'));
        } else if (input == u"." || input == u"..") {
            input.clear();
        } else {
            output += input.substr(0, input.find(u'/', 1));
            input.erase(0, std::min(input.find(u'/', 1), input.size()));
        }
    }
    return output;
}

inline bool hasDots(Text const& path) {
    Text const framed = u"/" + path + u"/";
    return framed.find(u"/./") != Text::npos || framed.find(u"/../") != Text::npos;
}

// What the texts of paths do not tell once they are decoded: what was a "/" or a dot when they were written.
// The dots of a path that a resolution made (`isResolved`) stay.
struct AsWritten {
    bool absolute, dots;

    static AsWritten of(IRI const& iri, bool isResolved) {
        return {iri.hasAbsolutePath(), !isResolved && hasDots(Components::of(iri).path)};
    }
};

inline Components byRfc(Components const& reference, Components const& base, AsWritten const& written,
                        bool removesDots) { // section 5.2.2
    Components target = reference;
    target.scheme = reference.scheme ? reference.scheme : base.scheme;
    if (!reference.scheme && !reference.authority) {
        target.authority = base.authority;
        if (reference.path.empty()) {
            target.query = reference.query ? reference.query : base.query;
            target.path = base.path;
            return target;
        }
        if (!written.absolute) { // section 5.2.3
            bool const root = base.authority && base.path.empty();
            Text front = root ? u"/" : base.path.substr(0, base.path.rfind(u'/') + 1);
            bool const splits = (base.path + u"|" + reference.path).find(u"//") == Text::npos;
            if (removesDots && splits && front.ends_with(u'/') && reference.path[0] == u'/') {
                front.pop_back(); // one slash stands between the two, escaped or not
            }
            target.path = front + reference.path;
        }
    }
    target.path = removesDots ? removeDotSegments(target.path) : target.path;
    return target;
}

// Where a resolution is by design not that of the RFC: a reference stands as it is behind an empty path of a
// base with an authority; the base's dot segments go before its last segment; a rootless path stays rootless,
// or an absolute base makes it absolute; there is no host from nowhere, but a "/." before "//"; dots that a
// base only decodes to stay before a mere "." or "..".
inline bool differsByDesign(Components const& r, AsWritten const& rWritten, Components const& b,
                            AsWritten const& bWritten, Components const& target) {
    bool const merged = !r.scheme && !r.authority && !r.path.empty() && !rWritten.absolute;
    bool const rootless = !rWritten.absolute && (r.scheme || !bWritten.absolute);
    bool const onlyDots = r.path == u"." || r.path == u"./" || r.path == u".." || r.path == u"../";
    return (merged && b.authority && b.path.empty() && rWritten.dots) ||
           (merged && (bWritten.dots || (onlyDots && hasDots(b.path)))) ||
           (rootless && (rWritten.dots || bWritten.dots)) ||
           (!target.authority && target.path.starts_with(u"//"));
}

// Whether a path is cut and climbs the same once it is decoded: then only the spelling of its escapes is
// lost.
inline bool keepsItsShape(IRI const& iri) {
    auto const shape = [](Text const& path) {
        Text segments = u"/" + path + u"/", marks;
        for (std::size_t at = 0; at + 1 != segments.size(); at = segments.find(u'/', at + 1)) {
            Text const segment = segments.substr(at + 1, segments.find(u'/', at + 1) - at - 1);
            marks += segment == u"." || segment == u".." ? segment + u"/" : u"/";
        }
        return marks;
    };
    try {
        return iri.isEmpty() || shape(iri.getPath(Encoding::Raw)) == shape(iri.getPath(Iri));
    } catch (std::out_of_range const&) {
        return false;
    }
}

// Whether a reference can lead elsewhere: by dot segments of the target; by those of the base, where a path
// has empty segments, or where the base is the target but for them; by a slash or dots that are escaped.
inline bool losesOnTheWay(IRI const& iri, IRI const& base) {
    Text const own = Components::of(iri).path, others = Components::of(base).path;
    bool const hasEmpty = (own + u"|" + others).find(u"//") != Text::npos;
    Text const onlyItsDots = removeDotSegments(others); // a rootless path stays so
    bool const ownDotsGo = own.starts_with(u'/') && !hasEmpty && !hasDots(others) && !others.empty();
    return (hasDots(own) && !ownDotsGo) || !keepsItsShape(iri) || !keepsItsShape(base) ||
           (hasDots(others) && (hasEmpty || onlyItsDots == own || onlyItsDots == u"/" + own));
}

// Every result has a text that reads as the same parts again.
inline void readsAgain(IRI const& result) {
    Text const text = result.toString(false);
    IRI const again(text);
    require(Components::of(again) == Components::of(result), "other parts", text);
    require(again == result && again.hashValue() == result.hashValue(), "another value", text);
}

// A resolution is that of the RFC, on decoded paths, and can be read again. Returns whether the RFC was to be
// followed.
inline bool resolutionHolds(IRI const& reference, IRI const& base, bool referenceIsResolved = false,
                            bool baseIsResolved = false) {
    IRI const result = reference.resolveAgainst(base);
    readsAgain(result);
    auto const r = Components::of(reference, Encoding::Raw);
    auto const b = Components::of(base, Encoding::Raw);
    auto const rWritten = AsWritten::of(reference, referenceIsResolved);
    auto const bWritten = AsWritten::of(base, baseIsResolved);
    bool const merged = !r.scheme && !r.authority && !rWritten.absolute;
    Components const target = byRfc(r, b, rWritten, rWritten.dots || (merged && bWritten.dots));
    bool const byDesign = differsByDesign(r, rWritten, b, bWritten, target);
    require(byDesign || Components::of(result, Encoding::Raw) == target, "not the target of the RFC",
            r.text(), b.text(), result.toString(false));
    require(!reference.isEmpty() || Components::of(result).path == Components::of(base).path,
            "another spelling of the base's path", b.text(), result.toString(false));
    return !byDesign;
}

// A relative reference can be read again, and leads back to its target: with other escapes in the path, and
// in the base's spelling where an authority or, beside the same path, a query reads like the base's. Returns
// whether it had to.
inline bool relativisationHolds(IRI const& reference, IRI const& iri, IRI const& base) {
    readsAgain(reference);
    if (losesOnTheWay(iri, base)) {
        return false;
    }
    IRI const back = reference.resolveAgainst(base);
    auto const is = Components::of(back), was = Components::of(iri), given = Components::of(base);
    auto const alike = [&](Getter get) { return readsAlike(iri, base, get); };
    auto const port = [](IRI const& of) { return of.hasPort() ? of.getPort() : u""; };
    bool const authority = alike(&IRI::getUserInfo) && alike(&IRI::getHost) && port(iri) == port(base);
    bool const query = alike(&IRI::getPath) && alike(&IRI::getQuery);
    auto const withoutDots = [](Text const& path) { return hasDots(path) ? removeDotSegments(path) : path; };
    bool const samePath = was.path.find(u'%') == Text::npos
                              ? is.path == withoutDots(was.path)
                              : back.getPath(Encoding::Raw) == withoutDots(iri.getPath(Encoding::Raw));
    require(is.scheme == was.scheme && is.fragment == was.fragment && samePath &&
                (is.authority == was.authority || (authority && is.authority == given.authority)) &&
                (is.query == was.query || (query && is.query == given.query)),
            "not the target", was.text(), given.text(), is.text());
    return true;
}

// The target of a reference by the RFC alone, as a text: with the guards of sections 3.3 and 4.2.
inline Text exactTarget(IRI const& reference, IRI const& base) {
    Components const r = Components::of(reference);
    Components target = byRfc(r, Components::of(base), {r.path.starts_with(u"/"), true}, true);
    if (r.path.empty() && !r.scheme && !r.authority) {
        target.scheme = Components::of(base).scheme;
    }
    target.fragment = r.fragment;
    if (!target.authority && target.path.starts_with(u"//")) {
        target.path.insert(0, u"/.");
    }
    bool const colon = target.path.substr(0, target.path.find(u'/')).find(u':') != Text::npos;
    if (!target.authority && !target.scheme && colon) {
        target.path.insert(0, u"./");
    }
    return target.text();
}

// A result is as its text parsed again: in every answer, and in what is made of it.
inline void isAsParsed(IRI const& result, IRI const& other) {
    IRI const again(result.toString(false));
    require(answers(result) == answers(again), "other answers", result.toString(false));
    auto const made = [&other](IRI const& iri) {
        auto const say = [](auto operation) { return said([&] { return operation().toString(false); }); };
        return say([&] { return iri.resolveAgainst(other); }) +
               say([&] { return other.resolveAgainst(iri); }) +
               say([&] { return iri.makeRelativeTo(other); }) +
               say([&] { return other.makeRelativeTo(iri); }) +
               say([&] { return resolveExactly(iri, other); }) +
               say([&] { return resolveExactly(other, iri); });
    };
    require(made(result) == made(again), "something else is made of it", result.toString(false));
}

inline IRI exactResolutionHolds(IRI const& reference, IRI const& base) {
    IRI const target = resolveExactly(reference, base);
    require(target.toString(false) == exactTarget(reference, base), "not the target of the RFC",
            reference.toString(false), base.toString(false), target.toString(false));
    return target;
}

// The shortest reference from a base to a target without dot segments: by trying every start of it, every end
// of its path, and every way to name what is in between.
inline Text shortestReference(IRI const& target, IRI const& base) {
    Components const t = Components::of(target);
    Text const rest = (t.query ? u"?" + *t.query : u"") + (t.fragment ? u"#" + *t.fragment : u"");
    Text const pathAlone = !t.authority && t.path.starts_with(u"/.//") ? t.path.substr(2) : t.path;
    std::vector<Text> paths{u"", pathAlone, u"/." + pathAlone};
    Text up;
    for (int ups = 0; ups != 8; ++ups, up += u"../") {
        for (std::size_t from = 0; from <= pathAlone.size(); ++from) {
            paths.push_back(up + pathAlone.substr(from));
            paths.push_back(u"./" + up + pathAlone.substr(from));
        }
        paths.push_back(up + u".");
        paths.push_back(up + u"..");
    }
    using Rank = std::tuple<std::size_t, bool, bool, bool>;
    std::optional<std::pair<Rank, Text>> best;
    for (Text const& front : {Text(), t.authority ? u"//" + *t.authority : u"", *t.scheme + u":",
                              *t.scheme + u":" + (t.authority ? u"//" + *t.authority : u"")}) {
        for (Text const& path : paths) {
            for (Text const& behind : {rest, t.fragment ? u"#" + *t.fragment : Text()}) {
                Text const text = front + path + behind;
                if (auto const iri = parsed(text)) {
                    Rank const rank(text.size(), iri->hasScheme(), iri->hasHost(), iri->hasAbsolutePath());
                    if ((!best || rank < best->first) && resolveExactly(*iri, base) == target) {
                        best = {rank, text};
                    }
                }
            }
        }
    }
    require(best.has_value(), "no reference leads to", target.toString(false), base.toString(false));
    return best->second;
}

// A relative reference leads back, to the target without its dots. Returns whether there was a way to find.
inline bool exactRelativisationHolds(IRI const& iri, IRI const& base, bool searches) {
    IRI const reference = makeRelativeExactly(iri, base);
    if (!iri.hasScheme() || !base.hasScheme()) {
        require(reference.toString(false) == iri.toString(false), "not the whole", iri.toString(false));
        return false;
    }
    IRI const target = resolveExactly(iri, base);
    require(resolveExactly(reference, base) == target, "leads elsewhere", iri.toString(false),
            base.toString(false), reference.toString(false));
    if (searches) {
        Text const best = shortestReference(target, base);
        require(reference.toString(false) == best, "not the shortest", iri.toString(false),
                base.toString(false), reference.toString(false), best);
    }
    return true;
}

} // namespace support
