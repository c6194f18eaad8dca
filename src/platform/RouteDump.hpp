#pragma once

/// Reading of the kernel's tables by rtnetlink (RFC 3549): one request, an answer of many messages.

#include "platform/LinuxCalls.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <vector>

namespace foundation::network::platform {

using Bytes = std::span<std::byte const>;

/// Copies a record from the front of `bytes`, which is not aligned for it. False where it doesn't fit.
template <class Record>
bool peel(Bytes bytes, Record& record) {
    if (bytes.size() < sizeof(Record)) {
        return false;
    }
    std::memcpy(&record, bytes.data(), sizeof(Record));
    return true;
}

/// Calls `visit(type, value)` for each attribute in `attributes`; stops at one that runs over the end.
void forEachAttribute(Bytes attributes, std::function<void(unsigned int, Bytes)> const& visit);

/// A dialogue with the kernel, for the dumps of one listing.
class RouteDump {
public:
    struct Outcome {
        int error = 0;
        bool changed = false;
        bool complete() const { return error == 0 && !changed; }
    };

    explicit RouteDump(LinuxCalls const& systemCalls);
    RouteDump(RouteDump const&) = delete;
    RouteDump& operator=(RouteDump const&) = delete;
    ~RouteDump();

    /// Asks for all entries of a table, `RTM_GETLINK` or `RTM_GETADDR`, and calls `visit` with the payload of
    /// each message of the type `answer`. A `visit` that gives false ends it with `EBADMSG`.
    Outcome ask(std::uint16_t table, std::uint16_t answer, std::function<bool(Bytes)> const& visit);

private:
    enum class Step { More, Done };
    Step readDatagram(std::uint16_t answer, std::function<bool(Bytes)> const& visit, Outcome& outcome);
    std::ptrdiff_t receive();

    LinuxCalls const& calls;
    std::vector<std::byte> buffer; // made before the socket, which nothing would close if this failed
    int socket;
    int openError;
    std::uint32_t sequence = 0;
};

} // namespace foundation::network::platform
