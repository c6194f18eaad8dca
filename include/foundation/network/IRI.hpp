#pragma once

/// Internationalized Resource Identifiers (RFC 3987).
///
///       userInfo   host  port
///         ┌┴┐ ┌─────┴────┐ ┌┴┐
///     http://jo@bücher.example:8080/a%20b/é?q=%C3%A9#top
///     └─┬┘   └──────────┬─────────┘└───┬──┘ └───┬──┘ └┬┘
///     scheme        authority         path    query fragment
///
/// An `IRI` is such a text taken apart. Each part is had in the form that is asked for, here of the path:
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
/// Nothing is normalised: texts come back as they went in, letters keep their case and escapes their digits.
/// What is not asked for is not worked out.
///
/// Any number of threads may call `const` operations on one value, and copy it, at the same time. Assignment
/// and `swap` need exclusive use of the value. A value that was moved from is as `IRI()`.
class ZVFLNETWORK_EXPORT IRI {
public:
    /// An IRI with nothing in it. It has no path either: `getPath` throws.
    IRI() noexcept;

    /// Parses all of `text`; an empty text gives an empty IRI with an empty path.
    ///
    /// Throws the `std::logic_error` of the family with "IRI parsing failed" for a text that is no IRI
    /// reference, also for a port that is empty or above 65535; the `std::out_of_range` of the family with
    /// "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying to encode UTF-32 sequence", and the
    /// value that it met, for a text that is no UTF-16; `std::bad_alloc`. Linear in the length of the text,
    /// constant stack, any length. RFC 3987, section 2.2, with these differences: a "%" without two
    /// hexadecimal digits behind it is taken in paths, queries and fragments; a scheme takes letters and
    /// digits of any script; "v" in an IP literal is lower-case; U+E0000 to U+E0FFF are private-use
    /// characters.
    explicit IRI(std::u16string const& text);

    /// Builds an IRI from parts. Its text is assembled when asked for.
    ///
    /// Throws the `std::logic_error` of the family, in this order: "Malformed scheme" for a scheme that is
    /// none; "User Info requires a host"; "Port requires a host"; "Path cannot be relative if authority
    /// present" for a path beside a host that is neither empty nor begins with "/". `std::bad_alloc`. Linear.
    explicit IRI(IRIArgs const& args);

    /// A copy shares nothing with its source. Linear.
    IRI(IRI const& other);
    IRI(IRI&& other) noexcept;
    IRI& operator=(IRI const& other);
    IRI& operator=(IRI&& other) noexcept;
    ~IRI();

    void swap(IRI& other) noexcept { value.swap(other.value); }

    /// Whether nothing is in it: no part but, possibly, an empty path.
    bool isEmpty() const noexcept { return value.isEmpty(); }
    bool hasScheme() const noexcept { return value.hasScheme(); }
    /// The same as `hasHost`: user information and port stand beside a host only.
    bool hasAuthority() const noexcept { return value.hasAuthority(); }
    bool hasQuery() const noexcept { return value.hasQuery(); }
    bool hasFragment() const noexcept { return value.hasFragment(); }
    /// Whether the path begins with "/".
    bool hasAbsolutePath() const noexcept { return value.hasAbsolutePath(); }
    /// The same as `hasScheme`.
    bool isAbsolute() const noexcept { return value.isAbsolute(); }
    /// Whether it has a scheme, and neither an authority nor an absolute path: `mailto:jo@example.org`.
    bool isOpaque() const noexcept { return value.isOpaque(); }
    bool hasPort() const noexcept { return value.hasPort(); }
    bool hasHost() const noexcept { return value.hasHost(); }
    bool hasUserInfo() const noexcept { return value.hasUserInfo(); }

    /// The scheme as written, without the ":". Throws the `std::runtime_error` of the family with "No scheme"
    /// where there is none.
    std::u16string getScheme() const { return value.getScheme(); }

    /// The port as written, with its leading zeros. Throws the `std::runtime_error` of the family with "No
    /// port" where there is none.
    std::u16string getPort() const { return value.getPort(); }

    /// The port's number. Throws as `getPort`.
    unsigned short getPortNumber() const { return value.getPortNumber(); }

    /// The text of a part in a form, without the delimiters around it.
    ///
    /// Each throws the `std::runtime_error` of the family with "Item not set: UserInfo" (": Host", ": Path",
    /// ": Query", ": Fragment") where there is none, and, for `Encoding::Raw`, the `std::out_of_range` of the
    /// family with "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character" where escapes
    /// decode to an overlong form, a surrogate or a value above U+10FFFF. Other bytes that are no UTF-8
    /// become the characters of their values: `%FF` reads "ÿ". Linear in the length of the part; nothing is
    /// kept. `getUserInfo` gives the same for the strict encodings as for the
    /// others.
    std::u16string getUserInfo(Encoding const& encoding) const { return value.getUserInfo(encoding); }
    std::u16string getHost(Encoding const& encoding) const { return value.getHost(encoding); }
    std::u16string getPath(Encoding const& encoding) const { return value.getPath(encoding); }
    std::u16string getQuery(Encoding const& encoding) const { return value.getQuery(encoding); }
    std::u16string getFragment(Encoding const& encoding) const { return value.getFragment(encoding); }

    /// User information, host and port with their delimiters: "jo@bücher.example:8080". Throws as the getters
    /// above; without a host with "Item not set: Host: Host (in getAuthority)".
    std::u16string getAuthority(Encoding const& encoding) const { return value.getAuthority(encoding); }

    /// All between the scheme's ":" and the fragment's "#": "//jo@bücher.example:8080/a%20b/é?q=%C3%A9".
    /// Throws as the getters above.
    std::u16string getSchemeSpecificPart(Encoding const& encoding) const {
        return value.getSchemeSpecificPart(encoding);
    }

    /// The whole in `Encoding::Iri`, or in `Encoding::IriStrict` if `strict`. Of a parsed value the former is
    /// the text that went in. Throws what the getters throw for a form that a part does not have.
    std::u16string toString(bool strict) const { return value.toString(strict); }

    /// The whole in `Encoding::Uri`, or in `Encoding::UriStrict` if `strict`: ASCII, but for a scheme that is
    /// not. The host is percent-encoded like any other part; `IdnConverter` gives the form for a name server.
    std::u16string toAsciiString(bool strict) const { return value.toAsciiString(strict); }

    /// Writes the parts, decoded, into `args`: what `IRI(IRIArgs const&)` builds this value from again.
    ///
    /// An authority that this value does not have leaves that of `args` as it was; path, query and fragment
    /// are replaced. Throws `std::runtime_error` with "Item not set: Path" for `IRI()`, and as the getters
    /// for a part that cannot be decoded; `args` is unchanged then.
    void toArgs(IRIArgs& args) const;

    /// Whether both have the same text in `Encoding::Iri`, code point by code point, however they were made.
    /// Nothing is folded or decoded: `http://a` differs from `HTTP://a` and from `http://a:80`, `%7E` from
    /// `~`. Equal values have equal hashes. Linear in the length of the texts; the first comparison of a
    /// built value may assemble its text.
    bool operator==(IRI const& other) const { return value == other.value; }
    bool operator!=(IRI const& other) const { return value != other.value; }

    /// Orders by text, code point by code point: two parsed values by the text that they were parsed from,
    /// two built ones by their `Encoding::Raw` texts, a parsed and a built one by their `Encoding::Iri`
    /// texts. That is a strict weak order over parsed values and over built ones, and none over both mixed:
    /// use `IRITextLess` for a container of such.
    bool operator<(IRI const& other) const { return value < other.value; }

    /// 64-bit FNV-1a of the text in `Encoding::Iri`, four bytes a code point, the least significant first; 0
    /// for an empty value. The first call is linear, later ones read it. The same on every machine.
    std::uint64_t hashValue() const { return value.hashValue(); }

    /// The target of this reference, seen from `base` (RFC 3986, section 5.2). Neither needs to be absolute;
    /// an empty reference gives the base without its fragment.
    ///
    ///     IRI(u"../c?d").resolveAgainst(IRI(u"http://h/a/b#f"))   // http://h/c?d
    ///
    /// What it gives, printed and parsed again, has the same parts; for that a path that begins with "//"
    /// beside no host gets "/." in front. Differences from the RFC: the path is merged decoded, so a "%2F" in
    /// it becomes "/"; a reference against a base with an authority and an empty path keeps its dot segments;
    /// the base's dot segments are removed before its last segment is dropped.
    ///
    /// Throws the `std::out_of_range` of the family with "Invalid UTF-8 sequence encountered while trying to
    /// encode UTF-32 character" for a path that it needs and that cannot be decoded. Linear.
    IRI resolveAgainst(IRI const& base) const;

    /// A reference that, resolved against `base`, gives this IRI again, with as little of it as the steps
    /// allow.
    ///
    ///     IRI(u"http://h/a/c#f").makeRelativeTo(IRI(u"http://h/a/b"))   // c#f
    ///
    /// Where nothing is shared it is this IRI whole; for the same IRI it is empty but for the fragment.
    ///
    /// Throws the `std::logic_error` of the family, in this order: "Cannot make relative to base. Already
    /// relative" for a path that is not absolute while the base's is; "Cannot make relative. Base is
    /// relative" the other way round; "Cannot make relative to base as base has scheme but this does not";
    /// the same with "authority", "path" and "query". Throws as `resolveAgainst` for a part that cannot be
    /// decoded, where the result depends on it. Linear.
    IRI makeRelativeTo(IRI const& base) const;

private:
    friend struct IRITextLess;
    friend struct iri::detail::ValueAccess; // for the operations that stand beside the class

    /// Holds what `make` gives, made in place.
    template <class Make>
    IRI(std::in_place_t, Make make) : value(make()) {}

    iri::detail::TemplateIRI<std::u32string> value;
};

/// A strict weak order over IRIs however they were made: that of their texts in `Encoding::Iri`. Equivalent
/// values are equal ones.
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
