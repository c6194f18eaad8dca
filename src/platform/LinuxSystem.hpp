#pragma once

/// `OperatingSystem` for Linux: reads the adapters by rtnetlink and the name by `gethostname`.

#include "platform/LinuxCalls.hpp"
#include "platform/OperatingSystem.hpp"

#include <cstddef>

namespace foundation::network::platform {

class LinuxSystem : public OperatingSystem {
public:
    explicit LinuxSystem(LinuxCalls const& systemCalls) : calls(systemCalls) {}

    int readComputerName(std::size_t capacity, std::u16string& name) const override;

    /// The friendly name is `IFLA_IFNAME`; the description is `IFLA_IFALIAS`, or the name if there is none.
    /// An adapter is up if `IFF_UP` and `IFF_RUNNING` are set. Adapters are in the order of their index.
    AdapterReading readAdapters() const override;

private:
    LinuxCalls const& calls;
};

} // namespace foundation::network::platform
