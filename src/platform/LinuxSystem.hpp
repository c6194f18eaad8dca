#pragma once

/// Linux behind the seam: the adapters by rtnetlink, the name by `gethostname`.

#include "platform/LinuxCalls.hpp"
#include "platform/OperatingSystem.hpp"

#include <cstddef>

namespace foundation::network::platform {

class LinuxSystem : public OperatingSystem {
public:
    explicit LinuxSystem(LinuxCalls const& systemCalls) : calls(systemCalls) {}

    int readComputerName(std::size_t capacity, std::u16string& name) const override;

    /// Friendly name: the interface's name. Description: the alias that the administrator gave it, else the
    /// name. Up: `IFF_UP` and `IFF_RUNNING`. Point to point: `IFF_POINTOPOINT`. MTU: `IFLA_MTU`. In the order
    /// of the index.
    AdapterReading readAdapters() const override;

private:
    LinuxCalls const& calls;
};

} // namespace foundation::network::platform
