#include "except/Refuse.hpp"

#include <foundation/core/except/InternalException.hpp>

#include <stdexcept>

namespace foundation::core::except {

void refuse(char const* words) {
    throw detail::makeInternalException(std::logic_error(words));
}

} // namespace foundation::core::except
