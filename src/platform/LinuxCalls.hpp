#pragma once

#include <cstddef>

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

} // namespace foundation::network::platform
