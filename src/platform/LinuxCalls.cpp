#include "platform/LinuxCalls.hpp"

#include <linux/netlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace foundation::network::platform {

int LinuxCalls::openRouteSocket() const {
    int const socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    if (socket >= 0 && ::connect(socket, reinterpret_cast<sockaddr const*>(&kernel), sizeof(kernel)) < 0) {
        int const error = errno;
        ::close(socket);
        errno = error;
        return -1;
    }
    return socket;
}

std::ptrdiff_t LinuxCalls::send(int socket, void const* data, std::size_t size) const {
    return ::send(socket, data, size, 0);
}

std::ptrdiff_t LinuxCalls::nextSize(int socket) const {
    return ::recv(socket, nullptr, 0, MSG_PEEK | MSG_TRUNC);
}

std::ptrdiff_t LinuxCalls::receive(int socket, void* data, std::size_t size) const {
    return ::recv(socket, data, size, 0);
}

void LinuxCalls::close(int socket) const {
    ::close(socket);
}

int LinuxCalls::hostName(char* name, std::size_t size) const {
    return ::gethostname(name, size);
}

} // namespace foundation::network::platform
