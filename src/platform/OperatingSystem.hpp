#pragma once

/// The seam to the operating system: all that the library asks of it beside its resolver.
///
/// Another system is one more source that derives from `OperatingSystem`; a test puts a played one in place
/// with `replaceOperatingSystem`. Nothing outside this folder includes a system header.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace foundation::network::platform {

/// One unicast address of an adapter, as the system has it.
struct UnicastAddress {
    enum class Family { Ipv4, Ipv6, Other };

    Family family = Family::Other;
    std::array<unsigned char, 16> bytes{}; ///< network order; the first four for IPv4
    unsigned short prefixLength = 0;       ///< on the link, in bits
};

/// One adapter, as the system has it.
struct Adapter {
    unsigned int index = 0;     ///< 0: none, `ipv6Index` counts
    unsigned int ipv6Index = 0; ///< only for systems that number the two families apart
    std::wstring friendlyName;
    std::wstring description;
    std::vector<unsigned char> physicalAddress;
    bool loopback = false;
    bool up = false;
    bool multicast = false;
    std::vector<UnicastAddress> addresses; ///< in the system's order
    unsigned int mtu = 0;                  ///< in bytes; 0 where the system tells none
    bool pointToPoint = false;
};

/// What one reading of the adapters came to: the adapters in a stable order if neither of the first two is
/// set.
struct AdapterReading {
    int error = 0;        ///< the system's number for what went wrong
    bool changed = false; ///< the list changed while it was read, and has to be read again
    std::vector<Adapter> adapters;
};

class OperatingSystem {
public:
    OperatingSystem() = default;
    OperatingSystem(OperatingSystem const&) = delete;
    OperatingSystem& operator=(OperatingSystem const&) = delete;
    virtual ~OperatingSystem() = default;

    /// Reads the computer's own name into `name` and gives 0, or gives the system's error number, as for a
    /// name that doesn't fit into `capacity` units together with its end.
    virtual int readComputerName(std::size_t capacity, std::u16string& name) const = 0;

    /// Reads the adapters once.
    virtual AdapterReading readAdapters() const = 0;
};

/// The system that this machine runs. Each system's source defines it.
OperatingSystem const& nativeOperatingSystem();

/// The system in use: the native one, if it wasn't replaced. Any number of threads may ask and use it at
/// once.
OperatingSystem const& operatingSystem();

/// Puts another system in place, or the native one for a null pointer. The caller keeps it alive until it is
/// replaced and no call uses it any more.
void replaceOperatingSystem(OperatingSystem const* replacement) noexcept;

} // namespace foundation::network::platform
