#pragma once

/// A copy of an IRI with one component replaced, and every other one left as it is written.
///
///     #include <foundation/network/With.hpp>
///
///     IRI const iri(u"http://jo@[::1]/a%2Fb?x=1%26y#top");
///     withoutFragment(iri);                             // http://jo@[::1]/a%2Fb?x=1%26y
///     withHost(iri, u"bücher.example", Encoding::Iri);  // http://jo@bücher.example/a%2Fb?x=1%26y#top
///     withQuery(iri, "50% off", Encoding::Raw);         // http://jo@[::1]/a%2Fb?50%%20off#top
///
/// What holds for all operations here:
///
/// Text in `Encoding::Raw` is escaped, so that the getter gives it back, but for a guard: "[::1]" is a name
/// then. Text in any other encoding is taken as it stands: "[::1]" is an address. A text is UTF-16, or, as
/// a `std::string_view`, UTF-8. Components that are not named keep their text. A path that would read as a
/// host or a scheme gets a guard, "/." or "./", in front. The result is as its text parsed again, unless a
/// component that was not replaced is of a built value and cannot be read again: a stray "%" in user
/// information, brackets in a query, a "#" or brackets in a fragment.
///
/// Throws: the internal `std::logic_error`, "IRI parsing failed", for text in an encoding other than Raw
/// that is none of its component by the grammar, and with the words of building: "Malformed scheme"; "User
/// Info requires a host"; "Port requires a host"; "Path cannot be relative if authority present" for a path
/// beside a host that is neither empty nor begins with "/". The internal `std::out_of_range`, as `fromUtf8`
/// and `toUtf8`, for what is no UTF-8 or UTF-16. `std::bad_alloc`.
/// Complexity: linear in the length of the IRI and of the text.
/// Thread safety: any number of threads may call them at once.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/Utf8.hpp>

#include <string>
#include <string_view>

namespace foundation::network {

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withScheme(IRI const& iri, std::u16string_view scheme);
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutScheme(IRI const& iri);

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withUserInfo(IRI const& iri, std::u16string_view text,
                                                  Encoding encoding);
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutUserInfo(IRI const& iri);

/// User information and port stay.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withHost(IRI const& iri, std::u16string_view text, Encoding encoding);
/// User information and port go as well: they stand beside a host only.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutHost(IRI const& iri);

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withPort(IRI const& iri, unsigned short port);
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutPort(IRI const& iri);

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withPath(IRI const& iri, std::u16string_view text, Encoding encoding);

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withQuery(IRI const& iri, std::u16string_view text, Encoding encoding);
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutQuery(IRI const& iri);

[[nodiscard]] ZVFLNETWORK_EXPORT IRI withFragment(IRI const& iri, std::u16string_view text,
                                                  Encoding encoding);
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withoutFragment(IRI const& iri);

// In UTF-8.
[[nodiscard]] inline IRI withScheme(IRI const& iri, std::string_view scheme) {
    return withScheme(iri, std::u16string_view(fromUtf8(scheme)));
}
[[nodiscard]] inline IRI withUserInfo(IRI const& iri, std::string_view text, Encoding encoding) {
    return withUserInfo(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withHost(IRI const& iri, std::string_view text, Encoding encoding) {
    return withHost(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withPath(IRI const& iri, std::string_view text, Encoding encoding) {
    return withPath(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withQuery(IRI const& iri, std::string_view text, Encoding encoding) {
    return withQuery(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withFragment(IRI const& iri, std::string_view text, Encoding encoding) {
    return withFragment(iri, std::u16string_view(fromUtf8(text)), encoding);
}

#ifdef __cpp_char8_t
[[nodiscard]] inline IRI withScheme(IRI const& iri, std::u8string_view scheme) {
    return withScheme(iri, std::u16string_view(fromUtf8(scheme)));
}
[[nodiscard]] inline IRI withUserInfo(IRI const& iri, std::u8string_view text, Encoding encoding) {
    return withUserInfo(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withHost(IRI const& iri, std::u8string_view text, Encoding encoding) {
    return withHost(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withPath(IRI const& iri, std::u8string_view text, Encoding encoding) {
    return withPath(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withQuery(IRI const& iri, std::u8string_view text, Encoding encoding) {
    return withQuery(iri, std::u16string_view(fromUtf8(text)), encoding);
}
[[nodiscard]] inline IRI withFragment(IRI const& iri, std::u8string_view text, Encoding encoding) {
    return withFragment(iri, std::u16string_view(fromUtf8(text)), encoding);
}
#endif

} // namespace foundation::network
