#pragma once

#include <optional>
#include <string_view>

namespace foundation::network::iri::grammar {

/// The number that `text` stands for, if it is one or more ASCII digits with a value of at most 65535.
/// Leading zeros are allowed. Linear. Any number of threads may call it.
std::optional<unsigned short> readPort(std::u32string_view text) noexcept;

} // namespace foundation::network::iri::grammar
