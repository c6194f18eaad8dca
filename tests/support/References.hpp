#pragma once

// RFC 3986, section 5.2, to the letter, and where the library differs from it by design.

#include "support/Laws.hpp"

#include <algorithm>
#include <optional>
#include <string>

namespace support {

using Text = std::u16string;
inline constexpr auto Iri = Encoding::Iri;

// RFC 3986, section 5.2, on the texts of components: slow, plain, and to the letter.
struct Components {
    std::optional<Text> scheme, authority, query, fragment;
    Text path;

    static Components of(IRI const& iri) {
        Components parts;
        parts.scheme = iri.hasScheme() ? std::optional(iri.getScheme()) : std::nullopt;
        parts.authority = iri.hasAuthority() ? std::optional(iri.getAuthority(Iri)) : std::nullopt;
        parts.path = iri.hasScheme() || iri.hasAuthority() || !iri.isEmpty() ? iri.getPath(Iri) : u"";
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

inline Components byRfc(Components const& reference, Components const& base) { // section 5.2.2
    Components target = reference;
    if (reference.scheme || reference.authority) {
        target.path = removeDotSegments(reference.path);
    } else {
        target.authority = base.authority;
        if (reference.path.empty()) {
            target.path = base.path;
            target.query = reference.query ? reference.query : base.query;
        } else if (reference.path[0] == u'/') {
            target.path = removeDotSegments(reference.path);
        } else {
            bool const root = base.authority && base.path.empty();
            Text const merged = root ? u"/" : base.path.substr(0, base.path.rfind(u'/') + 1);
            target.path = removeDotSegments(merged + reference.path);
        }
    }
    target.scheme = reference.scheme ? reference.scheme : base.scheme;
    return target;
}

inline bool hasDots(Text const& path) {
    Text const framed = u"/" + path + u"/";
    return framed.find(u"/./") != Text::npos || framed.find(u"/../") != Text::npos;
}

// Where a resolution is by design not that of the RFC.
struct Difference {
    char const* reason;
    bool (*applies)(Components const& reference, Components const& base, Components const& target);
};
inline bool isRelativePath(Components const& r) {
    return !r.scheme && !r.authority && !r.path.empty() && r.path[0] != u'/';
}
inline constexpr Difference differences[] = {
    {"an escape in a path is decoded, and encoded again",
     [](auto const& r, auto const& b, auto const&) { return (r.path + b.path).find(u'%') != Text::npos; }},
    {"the reference stands behind an empty path of a base with an authority, dots included",
     [](auto const& r, auto const& b, auto const&) {
         return isRelativePath(r) && b.authority && b.path.empty() && hasDots(r.path);
     }},
    {"the base's dot segments go before its last segment",
     [](auto const& r, auto const& b, auto const&) { return isRelativePath(r) && hasDots(b.path); }},
    {"a rootless path stays rootless, or an absolute base makes it absolute",
     [](auto const& r, auto const& b, auto const&) {
         return (hasDots(r.path) || hasDots(b.path)) && !r.path.starts_with(u"/") &&
                (r.scheme || !b.path.starts_with(u"/"));
     }},
    {"no host from nowhere: /. before //",
     [](auto const&, auto const&, auto const& t) { return !t.authority && t.path.starts_with(u"//"); }},
    {"no scheme from nowhere: %3A for a colon in the first segment",
     [](auto const&, auto const&, auto const& t) {
         return !t.scheme && !t.authority && t.path.substr(0, t.path.find(u'/')).find(u':') != Text::npos;
     }},
};

// Why what a reference gives back can differ from the target.
struct BackLoss {
    char const* reason;
    bool (*applies)(Components const& iri, Components const& base);
};
inline constexpr BackLoss backLosses[] = {
    {"the target's own dot segments are removed",
     [](auto const& iri, auto const&) { return hasDots(iri.path); }},
    {"the base's dot segments stay where its path is taken over, or go before its last segment",
     [](auto const&, auto const& base) { return hasDots(base.path); }},
    {"escapes in a path are decoded, and encoded again",
     [](auto const& iri, auto const& base) { return (iri.path + base.path).find(u'%') != Text::npos; }},
    {"an authority that reads like the base's comes back with the escapes of the base",
     [](auto const& iri, auto const& base) {
         return (iri.authority.value_or(u"") + base.authority.value_or(u"")).find(u'%') != Text::npos;
     }},
    {"a path that begins with // keeps the /. that a reference without a host needs before it",
     [](auto const& iri, auto const&) { return iri.path.starts_with(u"//"); }},
};

// Every result has a text that reads as the same parts again.
inline void readsAgain(IRI const& result) {
    Text const text = result.toString(false);
    IRI const again(text);
    require(Components::of(again) == Components::of(result), "other parts", text);
    require(again == result && again.hashValue() == result.hashValue(), "another value", text);
}

// A resolution is that of the RFC but for the named differences, and can be read again.
inline Named resolutionHolds(IRI const& reference, IRI const& base) {
    IRI const result = reference.resolveAgainst(base);
    readsAgain(result);
    Components const r = Components::of(reference);
    Components const b = Components::of(base);
    Components const target = byRfc(r, b);
    bool const same = result.toString(false) == target.text();
    Named const found = named(!same, differences, r, b, target);
    require(found.known || same, "not the target of the RFC", r.text(), b.text(), result.toString(false));
    return found;
}

// A relative reference can be read again, and gives its target back but for the named losses.
inline Named relativisationHolds(IRI const& reference, IRI const& iri, IRI const& base) {
    readsAgain(reference);
    IRI const back = reference.resolveAgainst(base);
    Named const found = named(back != iri, backLosses, Components::of(iri), Components::of(base));
    require(found.known || back == iri, "not the target", iri.toString(false), base.toString(false));
    return found;
}

} // namespace support
