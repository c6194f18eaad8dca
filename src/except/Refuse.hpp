#pragma once

namespace foundation::core::except {

/// Throws the `std::logic_error` of the family with these words.
[[noreturn]] void refuse(char const* words);

} // namespace foundation::core::except
