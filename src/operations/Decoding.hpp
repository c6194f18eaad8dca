#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network::operations {

enum class Plus : bool { asItStands, isSpace };

/// Reads the code point at `at`, escaped or not, and moves `at` behind it. Escapes are decoded as UTF-8; each
/// maximal subpart of an ill-formed sequence (Unicode, section 3.9) gives U+FFFD. A "%" without two
/// hexadecimal digits and an unpaired surrogate stand for themselves.
char32_t decodeNext(std::u16string_view text, std::size_t& at, Plus plus);

/// Decodes a whole text as `decodeNext` does. Linear.
std::u16string decoded(std::u16string_view text, Plus plus);

} // namespace foundation::network::operations
