#pragma once

/// Marks a parameter that the result refers to, so that Clang warns where a result outlives what it was
/// made of. It is nothing where the compiler has no such attribute.
#if defined(__clang__) && defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::lifetimebound)
#define ZVFLNETWORK_LIFETIMEBOUND [[clang::lifetimebound]]
#endif
#endif
#ifndef ZVFLNETWORK_LIFETIMEBOUND
#define ZVFLNETWORK_LIFETIMEBOUND
#endif
