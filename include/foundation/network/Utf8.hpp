#pragma once

/// IRIs for programs whose text is UTF-8.
///
///     #include <foundation/network/Utf8.hpp>
///
///     IRI const iri = iriFromUtf8("http://bücher.example/a%20b");
///     utf8(iri).getHost(Encoding::Iri);   // "bücher.example"
///     std::cout << utf8(iri) << '\n';     // http://bücher.example/a%20b
///
/// `IRIArgs`, `withPathSegments` and `IdnConverter` take UTF-16: give them `fromUtf8(text)`.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/core/LifetimeBound.hpp>
#include <foundation/network/IRI.hpp>

#include <iosfwd>
#include <string>
#include <string_view>

namespace foundation::network {

/// Parses all of `text`, which is UTF-8: the value that `IRI` makes of the same text in UTF-16.
///
/// Throws: the internal `std::logic_error`, "IRI parsing failed", for a text that is no IRI reference; the
/// internal `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode UTF-32
/// character", for a text that is no UTF-8.
/// Complexity: linear in the length of `text`, which is read without a detour over UTF-16.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI iriFromUtf8(std::string_view text);

/// UTF-16 in UTF-8.
///
/// Throws: the internal `std::out_of_range`, "Misplaced UTF-16 surrogate U+0xdc00 encountered while trying
/// to encode UTF-32 sequence" with the unit that it met, for an unpaired surrogate.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::string toUtf8(std::u16string_view text);

/// UTF-8 in UTF-16.
///
/// Throws: the internal `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode
/// UTF-32 character", for stray and missing continuation bytes, overlong forms, surrogates and values above
/// U+10FFFF.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::u16string fromUtf8(std::string_view text);

/// The getters of an IRI, in UTF-8. `utf8` makes it. It refers to its IRI, which must outlive it.
///
/// Each getter means what that of `IRI` means, throws the same, and makes its text from that of the value
/// without a detour over UTF-16.
///
/// Thread safety: any number of threads may call the getters at once.
class ZVFLNETWORK_EXPORT Utf8View {
public:
    Utf8View(Utf8View const&) = delete;
    Utf8View& operator=(Utf8View const&) = delete;
    ~Utf8View() = default;

    [[nodiscard]] std::string getScheme() const;
    [[nodiscard]] std::string getPort() const;
    [[nodiscard]] std::string getUserInfo(Encoding encoding) const;
    [[nodiscard]] std::string getHost(Encoding encoding) const;
    [[nodiscard]] std::string getPath(Encoding encoding) const;
    [[nodiscard]] std::string getQuery(Encoding encoding) const;
    [[nodiscard]] std::string getFragment(Encoding encoding) const;
    [[nodiscard]] std::string getAuthority(Encoding encoding) const;
    [[nodiscard]] std::string getSchemeSpecificPart(Encoding encoding) const;
    [[nodiscard]] std::string toString(bool strict) const;
    [[nodiscard]] std::string toAsciiString(bool strict) const;

private:
    friend Utf8View utf8(IRI const& iri);
    explicit Utf8View(IRI const& of) noexcept : iri(of) {}

    IRI const& iri;
};

/// A look at `iri` in UTF-8.
[[nodiscard]] inline Utf8View utf8(IRI const& iri ZVFLNETWORK_LIFETIMEBOUND) {
    return Utf8View(iri);
}

/// Writes `toString(false)`, the text in `Encoding::Iri`, as UTF-8 with the stream's formatting.
ZVFLNETWORK_EXPORT std::ostream& operator<<(std::ostream& stream, Utf8View const& view);

#ifdef __cpp_char8_t
[[nodiscard]] inline IRI iriFromUtf8(std::u8string_view text) {
    return iriFromUtf8(std::string_view(reinterpret_cast<char const*>(text.data()), text.size()));
}
[[nodiscard]] inline std::u16string fromUtf8(std::u8string_view text) {
    return fromUtf8(std::string_view(reinterpret_cast<char const*>(text.data()), text.size()));
}
#endif

} // namespace foundation::network
