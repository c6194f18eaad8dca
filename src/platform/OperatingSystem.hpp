#pragma once

/// The seam to the operating system: what the library asks of it, except for name lookups.
///
/// A port to another system derives from `OperatingSystem`. A test puts a system of its own in place with
/// `replaceOperatingSystem`. No source outside this folder includes a system header itself.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace foundation::network::platform {

/// One unicast address of an adapter, as the system reports it.
struct UnicastAddress {
    enum class Family { Ipv4, Ipv6, Other };

    Family family = Family::Other;
    std::array<unsigned char, 16> bytes{}; ///< network order; the first four for IPv4
    unsigned short prefixLength = 0;       ///< on the link, in bits
};

/// One adapter, as the system reports it.
struct Adapter {
    unsigned int index = 0;     ///< 0 if there is none; then `ipv6Index` is used
    unsigned int ipv6Index = 0; ///< set by systems that number the adapters of each family apart
    std::wstring friendlyName;
    std::wstring description;
    std::vector<unsigned char> physicalAddress;
    bool loopback = false;
    bool up = false;
    bool multicast = false;
    std::vector<UnicastAddress> addresses; ///< in the system's order
    unsigned int mtu = 0;                  ///< in bytes; 0 if the system reports none
    bool pointToPoint = false;
};

/// The result of one reading of the adapters. If there was no error and no change, it is the adapters, in a
/// stable order.
struct AdapterReading {
    int error = 0;        ///< the system's error number, 0 if there was no error
    bool changed = false; ///< the adapters changed while they were read, and must be read again
    std::vector<Adapter> adapters;
};

class OperatingSystem {
public:
    OperatingSystem() = default;
    OperatingSystem(OperatingSystem const&) = delete;
    OperatingSystem& operator=(OperatingSystem const&) = delete;
    virtual ~OperatingSystem() = default;

    /// Reads the computer's own name into `name` and returns 0, or returns the system's error number. A name
    /// that does not fit into `capacity` units together with its terminating zero is an error.
    virtual int readComputerName(std::size_t capacity, std::u16string& name) const = 0;

    /// Reads the adapters once.
    virtual AdapterReading readAdapters() const = 0;
};

/// The system of this machine. The source of each system defines it.
OperatingSystem const& nativeOperatingSystem();

/// The system in use: the native one, unless a test has replaced it. Any number of threads may call this and
/// use the result at once.
OperatingSystem const& operatingSystem();

/// Puts another system in place, or the native one again for a null pointer. The caller must keep it alive
/// until it is replaced and no call uses it any more.
void replaceOperatingSystem(OperatingSystem const* replacement) noexcept;

} // namespace foundation::network::platform
