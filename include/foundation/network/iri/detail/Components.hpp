#pragma once

#include <foundation/network/iri/detail/Part.hpp>

#include <cstddef>

namespace foundation::network::iri::detail {

/// A stretch of a text.
struct Slice {
    std::size_t begin = 0;
    std::size_t length = 0;
};

/// Where the components of an IRI stand in its text, and in which form each was given. There is no other
/// record of them: the grammar fills this one when it matches a text, `Draft` fills it when it writes one,
/// and every question about presence is answered from it.
///
///     http://jo@h:80/p?q#f
///         |     ||  | | | |
///         |     ||  | | | end 20
///         |     ||  | | queryEnd 18
///         |     ||  | pathEnd 16
///         |     ||  pathBegin 14
///         |     |hostEnd 11
///         |     hostBegin 10
///         schemeEnd 4
///
/// A component stands between two of these places, with its delimiter. Where two that would have a
/// delimiter between them are equal, the component is absent; a present, empty one has its delimiter:
///
///     x:/p        no host: hostBegin, hostEnd and pathBegin are 2
///     x:///p      an empty host: hostBegin, hostEnd and pathBegin are 4
///     x:/p?       an empty query: pathEnd 4, queryEnd 5, end 5
///
/// Invariants: the places never go down in the order above, but for `schemeEnd`, which is 0 without a
/// scheme; user information and port stand beside a host only; `end` is the length of the text.
struct Components {
    std::size_t schemeEnd = 0; // the ":" behind the scheme
    std::size_t hostBegin = 0;
    std::size_t hostEnd = 0;
    std::size_t pathBegin = 0;
    std::size_t pathEnd = 0;
    std::size_t queryEnd = 0;
    std::size_t end = 0;

    unsigned short port = 0; // the number, of a present port

    /// By `Part`. `Form::raw` or `Form::iri`: nothing is given in the Uri form.
    Form forms[5] = {};

    /// False for a default-constructed value alone, whose path cannot be asked for.
    bool hasPath = false;
    /// Whether the path counts as absolute. It does not where its "/" is a decoded escape (`x:%2Fa`).
    bool pathIsAbsolute = false;
    /// Whether a resolution made the path: dot segments that it left are not removed by the next one.
    bool dotSegmentsStay = false;
    /// Whether the query is form-encoded, so that nothing in it is decoded.
    bool queryIsFormEncoded = false;

    [[nodiscard]] constexpr bool hasScheme() const noexcept { return schemeEnd != 0; }
    [[nodiscard]] constexpr bool hasHost() const noexcept { return hostBegin != authorityBegin(); }
    [[nodiscard]] constexpr bool hasUserInfo() const noexcept { return hostBegin > authorityBegin() + 2; }
    [[nodiscard]] constexpr bool hasPort() const noexcept { return pathBegin != hostEnd; }
    [[nodiscard]] constexpr bool hasQuery() const noexcept { return queryEnd != pathEnd; }
    [[nodiscard]] constexpr bool hasFragment() const noexcept { return end != queryEnd; }
    [[nodiscard]] constexpr bool pathIsEmpty() const noexcept { return pathEnd == pathBegin; }

    /// Where the "//" of the authority stands, or would stand.
    [[nodiscard]] constexpr std::size_t authorityBegin() const noexcept {
        return schemeEnd == 0 ? 0 : schemeEnd + 1;
    }

    [[nodiscard]] constexpr bool has(Part part) const noexcept {
        switch (part) {
        case Part::userInfo:
            return hasUserInfo();
        case Part::host:
            return hasHost();
        case Part::path:
            return hasPath;
        case Part::query:
            return hasQuery();
        default:
            return hasFragment();
        }
    }

    /// Where a present component stands, without its delimiters.
    [[nodiscard]] constexpr Slice slice(Part part) const noexcept {
        switch (part) {
        case Part::userInfo:
            return between(authorityBegin() + 2, hostBegin - 1);
        case Part::host:
            return between(hostBegin, hostEnd);
        case Part::path:
            return between(pathBegin, pathEnd);
        case Part::query:
            return between(pathEnd + 1, queryEnd);
        default:
            return between(queryEnd + 1, end);
        }
    }
    /// Where the port stands, without its ":"; for an absent port an empty slice.
    [[nodiscard]] constexpr Slice portSlice() const noexcept {
        return between(hasPort() ? hostEnd + 1 : hostEnd, pathBegin);
    }

    [[nodiscard]] constexpr Form form(Part part) const noexcept {
        return forms[static_cast<std::size_t>(part)];
    }
    constexpr void setForm(Part part, Form form) noexcept { forms[static_cast<std::size_t>(part)] = form; }

    /// What the conversions of a component depend on besides its text.
    [[nodiscard]] constexpr PartContext context() const noexcept {
        return {hasScheme(), hasUserInfo(), hasHost(), queryIsFormEncoded};
    }

    /// Whether scheme and authority stand at the same places in the same forms.
    [[nodiscard]] constexpr bool hasSchemeAndAuthorityLike(Components const& other) const noexcept {
        return schemeEnd == other.schemeEnd && hostBegin == other.hostBegin && hostEnd == other.hostEnd &&
               pathBegin == other.pathBegin && form(Part::userInfo) == other.form(Part::userInfo) &&
               form(Part::host) == other.form(Part::host);
    }
    /// Whether all components stand at the same places in the same forms. If the texts are the same as
    /// well, every form of both is the same.
    [[nodiscard]] constexpr bool isLike(Components const& other) const noexcept {
        return hasSchemeAndAuthorityLike(other) && pathEnd == other.pathEnd && queryEnd == other.queryEnd &&
               end == other.end && form(Part::path) == other.form(Part::path) &&
               form(Part::query) == other.form(Part::query) &&
               form(Part::fragment) == other.form(Part::fragment) &&
               queryIsFormEncoded == other.queryIsFormEncoded;
    }

private:
    [[nodiscard]] static constexpr Slice between(std::size_t from, std::size_t to) noexcept {
        return {from, to - from};
    }
};

// The example above, and what is told by places that are equal.
namespace example {

constexpr Components all = {4, 10, 11, 14, 16, 18, 20}; // http://jo@h:80/p?q#f
static_assert(all.hasScheme() && all.hasUserInfo() && all.hasHost() && all.hasPort());
static_assert(all.slice(Part::userInfo).begin == 7 && all.slice(Part::userInfo).length == 2);
static_assert(all.slice(Part::host).begin == 10 && all.slice(Part::host).length == 1);
static_assert(all.portSlice().begin == 12 && all.portSlice().length == 2);
static_assert(all.slice(Part::path).begin == 14 && all.slice(Part::path).length == 2);
static_assert(all.slice(Part::query).begin == 17 && all.slice(Part::query).length == 1);
static_assert(all.slice(Part::fragment).begin == 19 && all.slice(Part::fragment).length == 1);

constexpr Components noHost = {1, 2, 2, 2, 4, 4, 4};     // x:/p
constexpr Components emptyHost = {1, 4, 4, 4, 6, 6, 6};  // x:///p
constexpr Components emptyQuery = {1, 2, 2, 2, 4, 5, 5}; // x:/p?
static_assert(!noHost.hasHost() && !noHost.hasQuery() && !noHost.hasFragment());
static_assert(emptyHost.hasHost() && !emptyHost.hasUserInfo() && emptyHost.slice(Part::host).length == 0);
static_assert(emptyQuery.hasQuery() && emptyQuery.slice(Part::query).length == 0);
static_assert(!Components().hasHost() && !Components().hasScheme());

} // namespace example

} // namespace foundation::network::iri::detail
