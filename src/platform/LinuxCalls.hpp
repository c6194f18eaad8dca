#pragma once

#include <cstddef>

namespace foundation::network::platform {

/// The system calls that `LinuxSystem` makes. A test overrides them to make each one fail. Each returns -1
/// and sets `errno` if it fails.
class LinuxCalls {
public:
    LinuxCalls() = default;
    LinuxCalls(LinuxCalls const&) = delete;
    LinuxCalls& operator=(LinuxCalls const&) = delete;
    virtual ~LinuxCalls() = default;

    /// Opens an rtnetlink socket that is connected to the kernel, so that nobody else's messages are
    /// received.
    virtual int openRouteSocket() const;
    virtual std::ptrdiff_t send(int socket, void const* data, std::size_t size) const;
    /// The size of the next datagram, which is not removed from the socket.
    virtual std::ptrdiff_t nextSize(int socket) const;
    virtual std::ptrdiff_t receive(int socket, void* data, std::size_t size) const;
    virtual void close(int socket) const;
    virtual int hostName(char* name, std::size_t size) const;
};

} // namespace foundation::network::platform
