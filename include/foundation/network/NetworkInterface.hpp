#pragma once

/// The network adapters of this machine.
///
///     for (NetworkInterface const& adapter : NetworkInterface::list()) {
///         for (InterfaceAddress const& address : adapter.getInterfaceAddresses()) {
///             std::cout << adapter.getIdentifier() << ' ' << address.toString() << '\n';
///         }
///     }

#include <foundation/core/Export.hpp>
#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <memory>
#include <string>

namespace foundation::network {

class NetworkInterfaceImpl;

/// One adapter, as it was when it was listed.
///
/// Copies share the content; it stays as it is when the machine's adapters change. A value that was moved
/// from holds nothing: it may be assigned to or destroyed, and nothing else. Each listing asks the system
/// again.
///
/// Throws: besides what each operation names, `std::bad_alloc`, unless the operation is `noexcept`.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may read one value, and list at once.
class ZVFLNETWORK_EXPORT NetworkInterface {
public:
    /// Which adapters a listing gives.
    enum class FilterType {
        All,   ///< every adapter
        Active ///< those that are up and have an address
    };

    /// The adapters that are up and have an address, the loopback adapter among them, in the order of their
    /// index.
    ///
    /// A list that changes while it is read is read again, at most 16 times; then the listing fails.
    ///
    /// Throws: the internal `std::system_error`, "Call to GetAdaptersAddresses failed.: " and the system's
    /// text; `std::out_of_range`, "prefix length too large", if the system tells a prefix that cannot be,
    /// which is no exception of the internal family.
    static detail::ImmutableIterableRange<NetworkInterface> list();

    /// Every adapter, in the order of their index.
    ///
    /// Throws: as `list`.
    static detail::ImmutableIterableRange<NetworkInterface> listAll();

    NetworkInterface(NetworkInterface const& other);
    NetworkInterface(NetworkInterface&& other) noexcept;
    NetworkInterface& operator=(NetworkInterface const& other);
    NetworkInterface& operator=(NetworkInterface&& other) noexcept;
    ~NetworkInterface();

    /// The system's index of the adapter, in decimal.
    std::string getIdentifier() const;

    /// The user's name for the adapter, on Linux the interface's name; its identifier if it has none.
    std::u16string getFriendlyName() const;

    /// A description, on Linux the alias that the administrator gave it, else the interface's name.
    std::u16string getDescription() const;

    /// The link-layer address in its full length. Empty for a loopback adapter.
    HardwareAddress getHardwareAddress() const;

    /// The unicast addresses with their prefixes, in the system's order. IPv6 addresses have no scope id.
    detail::ImmutableIterableRange<InterfaceAddress> getInterfaceAddresses() const;

    /// The unicast addresses alone, in the same order, under no name.
    detail::ImmutableIterableRange<InetAddress> getInetAddresses() const;

    /// True if it is in operation; on Linux, if the administrator set it up and its link runs.
    bool isUp() const noexcept;

    /// True if it is a software loopback adapter.
    bool isLoopback() const noexcept;

    /// True if it can send to many at once.
    bool supportsMulticast() const noexcept;

    /// The size in bytes of the largest packet that it carries whole (the MTU), without the link's own frame:
    /// 1500 on most Ethernets. 0 if the system tells none.
    ///
    /// Complexity: constant; allocates nothing.
    unsigned int getMtu() const noexcept;

    /// True if its link has two ends and no more, as that of a tunnel.
    ///
    /// Complexity: constant; allocates nothing.
    bool isPointToPoint() const noexcept;

private:
    friend class InetAddress;

    explicit NetworkInterface(std::shared_ptr<NetworkInterfaceImpl> adapter) noexcept;
    static detail::ImmutableIterableRange<NetworkInterface> getAdapters(FilterType filter);

    std::shared_ptr<NetworkInterfaceImpl> impl;
};

} // namespace foundation::network
