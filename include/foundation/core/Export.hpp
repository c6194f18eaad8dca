#pragma once

/// Marks what the shared library shows to its users; all else in it is hidden. It stands at a class or at a
/// class template whose instantiations live in the library, so that they are caught, compared by type and
/// called across its boundary.
#if defined(__GNUC__)
#define ZVFLNETWORK_EXPORT __attribute__((visibility("default")))
#else
#define ZVFLNETWORK_EXPORT
#endif
