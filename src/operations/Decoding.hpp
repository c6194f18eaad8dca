#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network::operations {

enum class Plus : bool { asItStands, isSpace };

/// The code point that stands at `at` in a text in which escapes are UTF-8, and moves `at` behind it. Of
/// bytes that are no UTF-8, each maximal part (Unicode, section 3.9) is U+FFFD. A "%" without two hexadecimal
/// digits, and an unpaired surrogate, stand for themselves.
char32_t decodeNext(std::u16string_view text, std::size_t& at, Plus plus);

/// The whole text so. Linear.
std::u16string decoded(std::u16string_view text, Plus plus);

} // namespace foundation::network::operations
