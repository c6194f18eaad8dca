#pragma once

namespace foundation::core::except {

/// Throws the internal `std::logic_error` with these words.
[[noreturn]] void refuse(char const* words);

} // namespace foundation::core::except
