#pragma once

// NOLINTBEGIN(modernize-macro-to-enum): `#if` cannot read an enumerator.

/// The version of these headers. It stands here and nowhere else: CMake reads it, and the soname, the
/// packages and the documentation follow it.
#define ZVFLNETWORK_VERSION_MAJOR 0
#define ZVFLNETWORK_VERSION_MINOR 1 ///< The second number of the version.
#define ZVFLNETWORK_VERSION_PATCH 0 ///< The third number of the version.

// NOLINTEND(modernize-macro-to-enum)

/// The version as one number to compare, also in `#if`: 1000 is 0.1.0, and 2003004 is 2.3.4.
#define ZVFLNETWORK_VERSION                                                                                  \
    (ZVFLNETWORK_VERSION_MAJOR * 1000000 + ZVFLNETWORK_VERSION_MINOR * 1000 + ZVFLNETWORK_VERSION_PATCH)
