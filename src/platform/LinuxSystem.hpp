#pragma once

/// Linux behind the seam: the adapters by rtnetlink, the name by `gethostname`.

#include "platform/OperatingSystem.hpp"

#include <cstddef>
#include <cstdint>

namespace foundation::network::platform {

/// The system calls themselves, so that a test can play each failure. Each gives -1 and sets `errno` where
/// the call fails.
class LinuxCalls {
public:
    LinuxCalls() = default;
    LinuxCalls(LinuxCalls const&) = delete;
    LinuxCalls& operator=(LinuxCalls const&) = delete;
    virtual ~LinuxCalls() = default;

    /// A socket that talks to the kernel's routing tables, and to nobody else.
    virtual int openRouteSocket() const;
    virtual std::ptrdiff_t send(int socket, void const* data, std::size_t size) const;
    /// The size of the datagram that comes next, which stays.
    virtual std::ptrdiff_t nextSize(int socket) const;
    virtual std::ptrdiff_t receive(int socket, void* data, std::size_t size) const;
    virtual void close(int socket) const;
    virtual int hostName(char* name, std::size_t size) const;
};

class LinuxSystem : public OperatingSystem {
public:
    explicit LinuxSystem(LinuxCalls const& systemCalls) : calls(systemCalls) {}

    int readComputerName(std::size_t capacity, std::u16string& name) const override;

    /// Friendly name: the interface's name. Description: the alias that the administrator gave it, else the
    /// name. Up: `IFF_UP` and `IFF_RUNNING`. In the order of the index.
    AdapterReading readAdapters() const override;

private:
    LinuxCalls const& calls;
};

} // namespace foundation::network::platform
