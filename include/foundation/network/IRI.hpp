#pragma once

/// Internationalized Resource Identifiers (RFC 3987).
///
///       userInfo   host  port
///         ┌┴┐ ┌─────┴────┐ ┌┴┐
///     http://jo@bücher.example:8080/a%20b/é?q=%C3%A9#top
///     └─┬┘   └──────────┬─────────┘└───┬──┘ └───┬──┘ └┬┘
///     scheme        authority         path    query fragment
///
/// An `IRI` is such a text taken apart into its components. A getter gives a component in the form that it
/// is asked for; here are the forms of the path:
///
///     iri.getPath(Encoding::Raw)   /a b/é           as a person reads it
///     iri.getPath(Encoding::Iri)   /a%20b/é         as the text has it
///     iri.getPath(Encoding::Uri)   /a%20b/%C3%A9    in ASCII
///
///     #include <foundation/network/IRI.hpp>
///
///     foundation::network::IRI const iri(u"http://jo@bücher.example:8080/a%20b/é?q=%C3%A9#top");
///     iri.getHost(Encoding::Iri);     // u"bücher.example"
///     iri.getPortNumber();            // 8080
///     iri.toAsciiString(false);       // u"http://jo@b%C3%BCcher.example:8080/a%20b/%C3%A9?q=%C3%A9#top"

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>

namespace foundation::network {

class IRIArgs;
using iri::Encoding;

/// An IRI reference: absolute, relative or empty.
///
/// Nothing is normalised: a parsed text comes back as it went in, letters keep their case and escapes their
/// digits. A value was *parsed* if it comes from a text, or from an operation of another header that says
/// that its result is as its text parsed. It was *built* if it comes from `IRIArgs`, `resolveAgainst` or
/// `makeRelativeTo`; its components may be stored decoded then. A value that was moved from is as `IRI()`.
///
/// Throws: besides what each operation names, `std::bad_alloc`, unless the operation is `noexcept`.
/// Exception safety: an operation that throws leaves the value and its arguments as they were.
/// Thread safety: any number of threads may call `const` operations on one value, and copy it, at the same
/// time. Assignment, moving from it and `swap` need exclusive use of the value.
class ZVFLNETWORK_EXPORT IRI {
public:
    /// An IRI with nothing in it. It has no path either: `getPath` throws.
    IRI() noexcept;

    /// Parses all of `text`; an empty text gives an empty IRI with an empty path.
    ///
    /// The grammar is that of RFC 3987, but: a "%" without two hexadecimal digits behind it is taken in
    /// paths, queries and fragments; a scheme takes letters and digits of any script; hexadecimal digits
    /// may be full-width ones; an IP literal of a later version begins with a lower-case "v", and holds
    /// what a registered name may hold; a query takes U+E0000 to U+E0FFF as private-use characters; a port
    /// that is there is a number up to 65535. The page docs/differences.md gives the reasons.
    ///
    /// Throws: the internal `std::logic_error`, "IRI parsing failed", for a text that is no IRI reference;
    /// the internal `std::out_of_range`, "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying to
    /// encode UTF-32 sequence" with the unit that it met, for a text that is no UTF-16.
    /// Complexity: linear in the length of `text`; the stack that it takes does not grow with it.
    /// Source: RFC 3987, section 2.2.
    explicit IRI(std::u16string const& text);

    /// Builds an IRI from components that are given as a person reads them.
    ///
    /// What a component cannot hold is escaped. `IRIArgs` tells what is not, so that some values have a
    /// text that reads as something else or as no IRI.
    ///
    /// Throws: the internal `std::logic_error` with the first of these words that applies: "Malformed
    /// scheme" for a scheme that is none; "User Info requires a host"; "Port requires a host"; "Path cannot
    /// be relative if authority present" for a path beside a host that is neither empty nor begins with
    /// "/".
    /// Complexity: linear in the length of the components.
    explicit IRI(IRIArgs const& args);

    /// A copy shares nothing with its source.
    ///
    /// Complexity: linear in the length of the text.
    IRI(IRI const& other);
    IRI(IRI&& other) noexcept;
    IRI& operator=(IRI const& other);
    IRI& operator=(IRI&& other) noexcept;
    ~IRI();

    void swap(IRI& other) noexcept { value.swap(other.value); }

    /// Whether it has no component but, possibly, an empty path.
    bool isEmpty() const noexcept { return value.isEmpty(); }
    bool hasScheme() const noexcept { return value.hasScheme(); }
    /// The same as `hasHost`: user information and port stand beside a host only.
    bool hasAuthority() const noexcept { return value.hasAuthority(); }
    bool hasQuery() const noexcept { return value.hasQuery(); }
    bool hasFragment() const noexcept { return value.hasFragment(); }
    /// Whether the path begins with "/". A "/" in front that an operation made out of "%2F" does not count:
    /// `IRI(u"x:%2Fa").resolveAgainst(IRI())` has the text "x:/a" and no absolute path.
    bool hasAbsolutePath() const noexcept { return value.hasAbsolutePath(); }
    /// The same as `hasScheme`.
    bool isAbsolute() const noexcept { return value.isAbsolute(); }
    /// Whether it has a scheme, and neither an authority nor an absolute path: `mailto:jo@example.org`.
    bool isOpaque() const noexcept { return value.isOpaque(); }
    bool hasPort() const noexcept { return value.hasPort(); }
    bool hasHost() const noexcept { return value.hasHost(); }
    bool hasUserInfo() const noexcept { return value.hasUserInfo(); }

    /// The scheme as written, without the ":".
    ///
    /// Throws: the internal `std::runtime_error`, "No scheme", where there is none.
    std::u16string getScheme() const { return value.getScheme(); }

    /// The port as written, with its leading zeros. A port that was built from a number has none.
    ///
    /// Throws: the internal `std::runtime_error`, "No port", where there is none.
    std::u16string getPort() const { return value.getPort(); }

    /// The number of the port.
    ///
    /// Throws: as `getPort`.
    unsigned short getPortNumber() const { return value.getPortNumber(); }

    /// The text of a component in a form, without the delimiters around it.
    ///
    /// Each call makes the text for its caller; nothing of it is kept. In `Encoding::Raw` escapes are
    /// decoded as UTF-8, and a byte that is no UTF-8 becomes the character of its value: `%FF` reads "ÿ". A
    /// query that was built form-encoded (see `IRIArgs::appendQueryKeyValuePair`) is not decoded.
    /// `getUserInfo` leaves a stray "%" as it is in the strict encodings, too; `getAuthority` and the texts
    /// of the whole write "%25" there.
    ///
    /// Throws: the internal `std::runtime_error`, "Item not set: UserInfo" (": Host", ": Path", ": Query",
    /// ": Fragment"), where the component is not there; in `Encoding::Raw` the internal
    /// `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character",
    /// where escapes decode to an overlong form, a surrogate or a value above U+10FFFF.
    /// Complexity: linear in the length of the component.
    std::u16string getUserInfo(Encoding const& encoding) const { return value.getUserInfo(encoding); }
    std::u16string getHost(Encoding const& encoding) const { return value.getHost(encoding); }
    std::u16string getPath(Encoding const& encoding) const { return value.getPath(encoding); }
    std::u16string getQuery(Encoding const& encoding) const { return value.getQuery(encoding); }
    std::u16string getFragment(Encoding const& encoding) const { return value.getFragment(encoding); }

    /// User information, host and port with their delimiters: "jo@bücher.example:8080".
    ///
    /// Throws: as the getters above; the internal `std::runtime_error`, "Item not set: Host: Host (in
    /// getAuthority)", where there is no host.
    /// Complexity: linear in the length of the authority.
    std::u16string getAuthority(Encoding const& encoding) const { return value.getAuthority(encoding); }

    /// All between the scheme's ":" and the fragment's "#": "//jo@bücher.example:8080/a%20b/é?q=%C3%A9".
    ///
    /// Throws: as the getters above.
    /// Complexity: linear in its length.
    std::u16string getSchemeSpecificPart(Encoding const& encoding) const {
        return value.getSchemeSpecificPart(encoding);
    }

    /// The whole in `Encoding::Iri`, or in `Encoding::IriStrict` if `strict`.
    ///
    /// Of a parsed value the former is the text that went in. A built value makes it at the first call and
    /// keeps it; that text may read as other components than were set, or as no IRI (see `IRIArgs`).
    ///
    /// Complexity: linear in the length of the text.
    std::u16string toString(bool strict) const { return value.toString(strict); }

    /// The whole in `Encoding::Uri`, or in `Encoding::UriStrict` if `strict`: ASCII, but for a scheme that
    /// is not.
    ///
    /// The host is percent-encoded like any other component; `IdnConverter` gives the form for a name
    /// server. The text of a parsed value can be parsed again, but where it had characters beyond ASCII in
    /// brackets (`//[v1.é]`), or full-width digits in an escape of its authority (`//h%４１/`).
    ///
    /// Complexity: linear in the length of the text.
    std::u16string toAsciiString(bool strict) const { return value.toAsciiString(strict); }

    /// Writes the components, decoded, into `args`.
    ///
    /// Path, query and fragment of `args` are replaced or cleared. Of scheme, user information, host and
    /// port, what this value does not have stays in `args` as it was. `IRI(IRIArgs const&)` builds an IRI
    /// from them that is not always this one: see `IRIArgs(IRI const&)`.
    ///
    /// Throws: `std::runtime_error`, "Item not set: Path", for `IRI()`, which is no exception of the
    /// internal family; as the getters for a component that cannot be decoded.
    /// Complexity: linear in the length of the text.
    void toArgs(IRIArgs& args) const;

    /// Whether both have the same scheme, the same port, and the same text in `Encoding::Iri`, code point
    /// by code point.
    ///
    /// Nothing is folded or decoded: `http://a` differs from `HTTP://a` and from `http://a:80`, `%7E` from
    /// `~`. A built value whose text reads as other components than were set can equal the parsed one of
    /// that text; it does not where one has a port and the other has not, as
    /// `IRIArgs().setPath(u"//h:80/p")` and `IRI(u"//h:80/p")`. Equal values have equal hashes.
    ///
    /// Complexity: linear in the length of the texts; a built value may make its text, and keeps it.
    bool operator==(IRI const& other) const { return value == other.value; }
    bool operator!=(IRI const& other) const { return value != other.value; }

    /// Orders by text, code point by code point: two parsed values by the texts that they were parsed from,
    /// two built ones by their texts in `Encoding::Raw`, a parsed and a built one by their texts in
    /// `Encoding::Iri`.
    ///
    /// Use `IRITextLess` for a container. This order is a strict weak one over parsed values and over built
    /// ones, and none over both mixed. Two built values that differ may also be equivalent in it, such as
    /// the path "/a?b" and the path "/a" with the query "b", so a `std::set` loses one of them.
    ///
    /// Throws: as the getters for `Encoding::Raw`, where neither value was parsed and a component of one
    /// cannot be decoded.
    /// Complexity: linear in the length of the texts; a built value may make its text, and keeps it.
    bool operator<(IRI const& other) const { return value < other.value; }

    /// 64-bit FNV-1a of the text in `Encoding::Iri`, four bytes a code point, the least significant first;
    /// 0 for an empty value. It is the same number on every machine.
    ///
    /// Complexity: linear in the length of the text at the first call, constant at all others.
    std::uint64_t hashValue() const { return value.hashValue(); }

    /// The target of this reference, seen from `base`.
    ///
    /// Neither needs to be absolute. An empty reference gives the base without its fragment.
    ///
    ///     IRI(u"../c?d").resolveAgainst(IRI(u"http://h/a/b#f"))   // http://h/c?d
    ///
    /// It does this otherwise than the RFC (docs/resolving.md has examples; `resolveExactly` follows the
    /// RFC):
    /// - Paths are merged decoded and escaped again, so "%2F" becomes "/".
    /// - Against a base with an authority and an empty path, a reference keeps its dot segments.
    /// - The dot segments of the base are removed before its last segment is dropped.
    /// - A rootless path stays rootless when its dot segments are removed, `x:a/../b` gives `x:b`; if the
    ///   path of the base is absolute, it becomes absolute, and `p:a/./b` against `x:/y` gives `p:/a/b`.
    /// - A path that begins with "//" beside no host gets "/." in front, and a ":" that would end a scheme is
    ///   escaped.
    ///
    /// If reference and base were parsed, the text of the target parses to a value that equals it and has
    /// the same components. Only `hasAbsolutePath` and `isOpaque` may answer otherwise, where the path
    /// begins with a "/" that was "%2F".
    ///
    /// Throws: the internal `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode
    /// UTF-32 character", for a path that it needs and that cannot be decoded.
    /// Complexity: linear in the length of both.
    /// Source: RFC 3986, section 5.2.
    IRI resolveAgainst(IRI const& base) const;

    /// A reference that `resolveAgainst` leads from `base` back to this IRI, but for the losses named here.
    ///
    ///     IRI(u"http://h/a/c#f").makeRelativeTo(IRI(u"http://h/a/b"))   // c#f
    ///
    /// It leaves out what both share. Where nothing is shared it is this IRI whole; for the same IRI it is
    /// empty but for the fragment. Resolved again, it can give another IRI than this one where
    /// (docs/resolving.md has an example of each)
    /// - a path has an escaped "/" or escaped dots, be it this one's or that of the base;
    /// - this path has dot segments, or escapes that an IRI does not need;
    /// - authority, path or query reads like that of the base and is spelled another way, as `?a%26b` and
    ///   `?a&b`;
    /// - the path of the base has dot segments and reads like this path without them, or it has dot
    ///   segments and one of the two paths has an empty segment.
    ///
    /// If both paths are written alike and cannot be decoded, `resolveAgainst` may refuse the reference.
    ///
    /// Throws: the internal `std::logic_error` with the first of these words that applies: "Cannot make
    /// relative to base. Already relative" for a path that is not absolute while that of the base is;
    /// "Cannot make relative. Base is relative" the other way round; "Cannot make relative to base as base
    /// has scheme but this does not"; the same with "authority", "path" and "query". As `resolveAgainst`
    /// for a path that it needs and that cannot be decoded; it needs none of two that are written alike,
    /// unless the base alone has a query.
    /// Complexity: linear in the length of both.
    IRI makeRelativeTo(IRI const& base) const;

private:
    friend struct IRITextLess;
    friend struct iri::detail::ValueAccess; // for the operations that stand beside the class

    /// Holds what `make` gives, made in place.
    template <class Make>
    IRI(std::in_place_t, Make make) : value(make()) {}

    iri::detail::TemplateIRI<std::u32string> value;
};

/// A strict weak order over all IRIs, parsed and built: that of their texts in `Encoding::Iri`. Values are
/// equivalent in it if these texts are the same.
///
///     std::map<IRI, Page, IRITextLess> pages;
struct IRITextLess {
    bool operator()(IRI const& left, IRI const& right) const { return left.value.isTextLess(right.value); }
};

inline void swap(IRI& left, IRI& right) noexcept {
    left.swap(right);
}

/// Writes `toAsciiString(false)` with the stream's formatting. What is not ASCII in a scheme is written as
/// the substitute character U+001A, one for each UTF-16 unit.
ZVFLNETWORK_EXPORT std::ostream& operator<<(std::ostream& stream, IRI const& iri);

} // namespace foundation::network

namespace std {

/// `IRI` as a key of `std::unordered_map`.
template <>
struct hash<foundation::network::IRI> {
    std::size_t operator()(foundation::network::IRI const& iri) const {
        return static_cast<std::size_t>(iri.hashValue());
    }
};

} // namespace std
