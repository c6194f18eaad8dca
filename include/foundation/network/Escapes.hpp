#pragma once

/// Percent escapes of single texts.
///
///     #include <foundation/network/Escapes.hpp>
///
///     percentEncode(u"50% & é", IRIComponent::Query);   // u"50%%20&%20é"
///     percentDecode(u"a%2Fb%FF");                       // u"a/b\uFFFD"
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/ParseFault.hpp>
#include <foundation/network/Utf8.hpp>

#include <string>
#include <string_view>

namespace foundation::network {

/// A text as a component of an IRI holds it: from `Encoding::Raw` to `Encoding::Iri`, so that the component
/// can be read again, and `percentDecode` gives the text again.
///
/// `Scheme`, `Port` and `Text` hold no escapes: for these the text comes back as it stands. A path is
/// escaped as one behind a scheme, so ":" in its first segment stays.
///
/// Throws: for a component with escapes the internal `std::out_of_range`, "Misplaced UTF-16 surrogate
/// U+0xdc00 encountered while trying to encode UTF-32 sequence" with the unit that it met, for an unpaired
/// surrogate.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::u16string percentEncode(std::u16string_view text,
                                                              IRIComponent component);

/// A text with its escapes decoded as UTF-8.
///
/// Where their bytes are no UTF-8, each maximal subpart (Unicode, section 3.9) becomes U+FFFD. A "%"
/// without two ASCII hexadecimal digits behind it stands for itself.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT std::u16string percentDecode(std::u16string_view text);

/// The same in UTF-8.
///
/// Throws: besides, the internal `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to
/// encode UTF-32 character", for a text that is no UTF-8.
[[nodiscard]] inline std::string percentEncode(std::string_view text, IRIComponent component) {
    return toUtf8(percentEncode(std::u16string_view(fromUtf8(text)), component));
}
[[nodiscard]] inline std::string percentDecode(std::string_view text) {
    return toUtf8(percentDecode(std::u16string_view(fromUtf8(text))));
}

} // namespace foundation::network
