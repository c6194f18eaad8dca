#pragma once

/// Dumps of the kernel's tables by rtnetlink (RFC 3549): one request, and many messages in answer.

#include "platform/LinuxCalls.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <vector>

namespace foundation::network::platform {

using Bytes = std::span<std::byte const>;

/// Copies the record that `bytes` begins with, since it may not be aligned. Returns false if `bytes` is
/// shorter.
template <class Record>
bool readRecord(Bytes bytes, Record& record) {
    if (bytes.size() < sizeof(Record)) {
        return false;
    }
    std::memcpy(&record, bytes.data(), sizeof(Record));
    return true;
}

/// Calls `visit(type, value)` for each attribute. Stops at one whose length cannot be true.
void forEachAttribute(Bytes attributes, std::function<void(unsigned int, Bytes)> const& visit);

/// An rtnetlink socket, for the dumps that one listing of the adapters takes.
class RouteSocket {
public:
    struct Outcome {
        int error = 0;
        bool changed = false;
        bool complete() const { return error == 0 && !changed; }
    };

    explicit RouteSocket(LinuxCalls const& systemCalls);
    RouteSocket(RouteSocket const&) = delete;
    RouteSocket& operator=(RouteSocket const&) = delete;
    ~RouteSocket();

    /// Requests a dump, by `RTM_GETLINK` or `RTM_GETADDR`, and calls `visit` with the payload of each message
    /// of the type `answer`. If `visit` returns false, the dump ends with `EBADMSG`.
    Outcome dump(std::uint16_t type, std::uint16_t answer, std::function<bool(Bytes)> const& visit);

private:
    enum class Step { More, Done };
    Step readDatagram(std::uint16_t answer, std::function<bool(Bytes)> const& visit, Outcome& outcome);
    std::ptrdiff_t receive();

    LinuxCalls const& calls;
    std::vector<std::byte> buffer; // before the socket: if this throws, there is none to close
    int socket;
    int openError;
    std::uint32_t sequence = 0;
};

} // namespace foundation::network::platform
