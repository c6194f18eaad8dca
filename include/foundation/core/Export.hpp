#pragma once

/// Marks what the shared library shows to its users; all else in it is hidden. The mark stands at a class,
/// a function, or a class template whose instantiations live in the library, so that they are called,
/// caught and compared by type across its boundary.
#if defined(__GNUC__)
#define ZVFLNETWORK_EXPORT __attribute__((visibility("default")))
#else
#define ZVFLNETWORK_EXPORT
#endif
