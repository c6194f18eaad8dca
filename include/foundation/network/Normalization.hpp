#pragma once

/// The same resource, the same text: what RFC 3986, section 6.2, and RFC 3987, section 5.3, let one
/// rewrite.
///
///     #include <foundation/network/Normalization.hpp>
///
///     normalize(IRI(u"HTTP://EXAMPLE.org/%7ejo/./a/../b"));    // http://example.org/~jo/b
///     normalize(IRI(u"http://h:80"), Normalization::Scheme);   // http://h/
///     areEquivalent(IRI(u"x://H/%c3%a9"), IRI(u"x://h/é"));    // true
///     isSameOrigin(IRI(u"http://h/a"), IRI(u"HTTP://H:80/b")); // true
///
/// Two IRIs that are equivalent here lead to the same resource if their server follows the rules of the
/// steps that were chosen. Two that are not may do so all the same.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>

#include <optional>

namespace foundation::network {

/// Steps, as a set: `Normalization::Case | Normalization::Segments`. They are applied in the order given
/// here. `Normalization{}` is no step.
enum class Normalization : unsigned {
    /// Decodes the escapes of ASCII letters, digits, "-", ".", "_" and "~", and of other characters that an
    /// IRI may hold anywhere (`ucschar`), where they are whole UTF-8. All other escapes stay: those of
    /// reserved characters, of private-use characters and noncharacters, and of controls of direction,
    /// those of RFC 3987, section 4.1, and the ones that Unicode has added since. An escape stays as well
    /// where, all decoded, its character would be part of another escape: "%%34%31" does not become "%41".
    ///
    /// Source: RFC 3986, section 6.2.2.2; RFC 3987, section 5.3.2.3.
    Escapes = 1,
    /// A host with characters beyond ASCII becomes what `IdnConverter` makes of it, if each label of that
    /// is 1 to 63 ASCII letters, digits, "-" and "_"; else it stays, also where it ends in a dot. The
    /// processing is transitional: "ß" becomes "ss", which may be another host than the one that browsers
    /// ask for; and full-width digits become ASCII ones, which may make an address of a name.
    ///
    /// Source: RFC 3987, section 5.3.3.
    AsciiHost = 2,
    /// ASCII letters of scheme and host in lower case, digits of escapes in upper case.
    ///
    /// Source: RFC 3986, section 6.2.2.1.
    Case = 4,
    /// Dot segments are removed where there is a scheme or an authority: the path of `resolveExactly`, with
    /// its guards.
    ///
    /// Source: RFC 3986, section 6.2.2.3.
    Segments = 8,
    /// For http, https, ws, wss and ftp: the port of the scheme goes, however many zeros it has in front,
    /// and an empty path beside a host becomes "/".
    ///
    /// Source: RFC 3986, section 6.2.3.
    Scheme = 16,
    /// What holds for every scheme: `Escapes | Case | Segments`.
    Syntax = Escapes | Case | Segments
};

[[nodiscard]] constexpr Normalization operator|(Normalization left, Normalization right) noexcept {
    return static_cast<Normalization>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}
[[nodiscard]] constexpr Normalization operator&(Normalization left, Normalization right) noexcept {
    return static_cast<Normalization>(static_cast<unsigned>(left) & static_cast<unsigned>(right));
}
/// All other steps.
[[nodiscard]] constexpr Normalization operator~(Normalization steps) noexcept {
    return static_cast<Normalization>(~static_cast<unsigned>(steps) & 31U);
}

/// The IRI with the steps applied.
///
/// `normalize(normalize(iri, steps), steps) == normalize(iri, steps)`. The result is as its text parsed. It
/// has a scheme, user information, a host, a query and a fragment exactly where `iri` has them. What a
/// built value holds and no text can carry is escaped: brackets in a query or a fragment, a "#" in a
/// fragment, a stray "%" in user information.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of the text; `AsciiHost` as `IdnConverter`. A parsed value that is
/// normal already is looked at and copied, and nothing else is made.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI normalize(IRI const& iri, Normalization steps = Normalization::Syntax);

/// Whether both are equal with the steps applied.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: as `normalize`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT bool areEquivalent(IRI const& a, IRI const& b,
                                                    Normalization steps = Normalization::Syntax);

/// The number of the port; where there is none, that of the scheme, in any case: 80 for http and ws, 443
/// for https and wss, 21 for ftp. Nothing for another scheme, and for none.
///
/// Complexity: constant.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::optional<unsigned short> getEffectivePort(IRI const& iri) noexcept;

/// Whether scheme, host and effective port are the same after `Case` and `Escapes`.
///
/// User information plays no part. False where one of the two has no scheme or no host; an empty host is
/// one, so all of `file:///` is one origin here. Names in Unicode and in ASCII ("bücher.example",
/// "xn--bcher-kva.example") are two hosts; apply `AsciiHost` to both before if they should be one.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of schemes and hosts; for a built value, of the whole.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 6454, sections 4 and 5, but for names beyond ASCII, which it converts.
[[nodiscard]] ZVFLNETWORK_EXPORT bool isSameOrigin(IRI const& a, IRI const& b);

} // namespace foundation::network
