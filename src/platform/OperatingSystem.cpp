#include "platform/OperatingSystem.hpp"

#include <atomic>

namespace foundation::network::platform {

namespace {
std::atomic<OperatingSystem const*> replacementSystem{nullptr};
}

OperatingSystem const& operatingSystem() {
    OperatingSystem const* const replacement = replacementSystem.load(std::memory_order_acquire);
    return replacement != nullptr ? *replacement : nativeOperatingSystem();
}

void replaceOperatingSystem(OperatingSystem const* replacement) noexcept {
    replacementSystem.store(replacement, std::memory_order_release);
}

} // namespace foundation::network::platform
