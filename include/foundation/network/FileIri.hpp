#pragma once

/// IRIs of the files of this machine, and back.
///
///     #include <foundation/network/FileIri.hpp>
///
///     iriFromFile("/tmp/50% of é");                    // file:///tmp/50%25%20of%20é
///     fileFromIri(IRI(u"file:///tmp/50%25%20of%20é")); // "/tmp/50% of é"
///
/// A path is bytes, as the system has it; characters are its UTF-8. `fileFromIri(iriFromFile(path))` is
/// `path` again, byte by byte, for every absolute path without a zero byte. Neither looks at the file system.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>

#include <filesystem>

namespace foundation::network {

/// The `file:` IRI of an absolute path, with an empty host: "file://" and the path.
///
/// Characters whose bytes are UTF-8 stand as themselves. Escaped, with upper-case digits, are "%",
/// characters that a path of an IRI may not hold, controls of direction, and each byte that is no UTF-8.
/// Dot segments stay.
///
/// Throws: the internal `std::logic_error`, "Path must be absolute"; `std::bad_alloc`.
/// Complexity: linear in the length of the path.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 8089, section 2.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI iriFromFile(std::filesystem::path const& path);

/// The path that a `file:` IRI names on this machine.
///
/// The scheme may be in any case. No host, an empty one and "localhost", in any case and without escapes,
/// are this machine. Escapes become their bytes, also those of dot segments ("%2e%2e"). All else stays: dot
/// segments, and a "%" without two hexadecimal digits behind it.
///
/// Throws: the internal `std::logic_error`, "Not the IRI of a local file", for any other scheme or host,
/// for user information, a port, a query or a fragment, for a path that does not begin with "/", and for
/// the escape of a zero or of a slash; `std::bad_alloc`.
/// Complexity: linear in the length of the IRI.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 8089, section 2.
[[nodiscard]] ZVFLNETWORK_EXPORT std::filesystem::path fileFromIri(IRI const& iri);

} // namespace foundation::network
