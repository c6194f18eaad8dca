#pragma once

/// Where and why a text is no IRI.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>

namespace foundation::network {

/// A component of an IRI reference (RFC 3986, section 3). `Text` is the whole, where it is no UTF-16 or
/// UTF-8.
enum class IRIComponent : unsigned char { Text, Scheme, UserInfo, Host, Port, Path, Query, Fragment };

/// What is wrong with a component.
enum class ParseReason : unsigned char {
    NotUtf16,       ///< an unpaired surrogate
    NotUtf8,        ///< a byte that begins no well-formed sequence
    EmptyScheme,    ///< nothing in front of the ":" of a scheme
    NotInScheme,    ///< a character that a scheme cannot hold there
    NotInUserInfo,  ///< a character that user information cannot hold
    NotInHost,      ///< a character that a host cannot hold, or that stands behind its "]"
    NotAnAddress,   ///< a "[" that begins no IPv6 address and no IPvFuture up to a "]"
    EmptyPort,      ///< nothing behind the ":" of a port
    NotInPort,      ///< a port that is no number
    PortTooLarge,   ///< a port above 65535
    NotInPath,      ///< a character that a path cannot hold
    NotInQuery,     ///< a character that a query cannot hold
    NotInFragment,  ///< a character that a fragment cannot hold
    EscapeNotWhole, ///< a "%" without two hexadecimal digits, in user information or a host
};

/// Why a text is no IRI, and where: a plain value that refers to nothing.
///
/// The text is cut into components as its delimiters have it. A scheme ends at the first ":", if no "/",
/// "?" or "#" stands before that. An authority stands behind "//" up to the next "/", "?" or "#"; in it,
/// user information ends at the first "@", and a port begins behind the last ":". The fault is the first
/// unit of the first component that this component cannot hold. The fault of an address in brackets stands
/// at its "[", that of a port at its first unit.
struct ParseFault {
    /// In units of the text that was given, bytes or UTF-16 units. It is the length of the text where a
    /// port is missing at its end.
    std::size_t offset = 0;
    IRIComponent component = IRIComponent::Text;
    ParseReason reason = ParseReason::NotUtf16;
    /// The code point at `offset`, 0 at the end of the text. In a text that is no UTF-16 or UTF-8 it is the
    /// unit there.
    char32_t character = 0;

    /// One sentence in English: "U+0020 cannot stand in a host, at offset 8".
    ///
    /// Throws: `std::bad_alloc` alone.
    [[nodiscard]] ZVFLNETWORK_EXPORT std::string describe() const;

    friend bool operator==(ParseFault const& left, ParseFault const& right) noexcept {
        return left.offset == right.offset && left.component == right.component &&
               left.reason == right.reason && left.character == right.character;
    }
    friend bool operator!=(ParseFault const& left, ParseFault const& right) noexcept {
        return !(left == right);
    }
};

/// Writes `describe()` with the stream's formatting.
ZVFLNETWORK_EXPORT std::ostream& operator<<(std::ostream& stream, ParseFault const& fault);

} // namespace foundation::network

namespace std {

template <>
struct hash<foundation::network::ParseFault> {
    std::size_t operator()(foundation::network::ParseFault const& fault) const noexcept {
        auto const what = static_cast<std::size_t>(fault.component) << 8U |
                          static_cast<std::size_t>(fault.reason) | std::size_t{fault.character} << 16U;
        return fault.offset * 31 + what;
    }
};

} // namespace std
