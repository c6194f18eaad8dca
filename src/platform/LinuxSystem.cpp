#include "platform/LinuxSystem.hpp"

#include "base/NeverDestroyed.hpp"
#include "platform/RouteSocket.hpp"
#include "platform/TextConverters.hpp"

#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <unicode/utf8.h>

#include <cerrno>
#include <map>
#include <string_view>

namespace foundation::network::platform {

namespace {

// Reads names as UTF-8, which is what administrators write; the kernel does not check it. Ill-formed bytes
// become U+FFFD.
std::wstring wideText(std::string_view bytes) {
    std::wstring wide;
    wide.reserve(bytes.size());
    auto const* const text = reinterpret_cast<std::uint8_t const*>(bytes.data());
    for (std::size_t at = 0, end = bytes.size(); at < end;) {
        UChar32 point = 0;
        U8_NEXT_OR_FFFD(text, at, end, point);
        wide.push_back(static_cast<wchar_t>(point));
    }
    return wide;
}

// An attribute's text, without its closing zero.
std::wstring wideText(Bytes value) {
    std::string_view const text(reinterpret_cast<char const*>(value.data()), value.size());
    return wideText(text.substr(0, text.find('\0')));
}

Adapter adapterOf(ifinfomsg const& head, Bytes attributes) {
    Adapter adapter;
    adapter.index = static_cast<unsigned int>(head.ifi_index);
    adapter.loopback = (head.ifi_flags & IFF_LOOPBACK) != 0;
    adapter.up = (head.ifi_flags & IFF_UP) != 0 && (head.ifi_flags & IFF_RUNNING) != 0;
    adapter.multicast = (head.ifi_flags & IFF_MULTICAST) != 0;
    adapter.pointToPoint = (head.ifi_flags & IFF_POINTOPOINT) != 0;
    forEachAttribute(attributes, [&adapter](unsigned int type, Bytes value) {
        if (type == IFLA_IFNAME) {
            adapter.friendlyName = wideText(value);
        } else if (type == IFLA_IFALIAS) {
            adapter.description = wideText(value);
        } else if (type == IFLA_MTU) {
            readRecord(value, adapter.mtu);
        } else if (type == IFLA_ADDRESS) {
            auto const* const bytes = reinterpret_cast<unsigned char const*>(value.data());
            adapter.physicalAddress.assign(bytes, bytes + value.size());
        }
    });
    if (adapter.description.empty()) {
        adapter.description = adapter.friendlyName;
    }
    return adapter;
}

UnicastAddress addressOf(ifaddrmsg const& head, Bytes attributes) {
    // On a point-to-point link IFA_ADDRESS is the address of the other end, and IFA_LOCAL that of this one.
    Bytes local;
    forEachAttribute(attributes, [&local](unsigned int type, Bytes value) {
        if (type == IFA_LOCAL || (type == IFA_ADDRESS && local.empty())) {
            local = value;
        }
    });
    UnicastAddress address;
    address.prefixLength = head.ifa_prefixlen;
    if (head.ifa_family == AF_INET && local.size() == sizeof(in_addr)) {
        address.family = UnicastAddress::Family::Ipv4;
    } else if (head.ifa_family == AF_INET6 && local.size() == sizeof(in6_addr)) {
        address.family = UnicastAddress::Family::Ipv6;
    } else {
        return address;
    }
    std::memcpy(address.bytes.data(), local.data(), local.size());
    return address;
}

} // namespace

int LinuxSystem::readComputerName(std::size_t capacity, std::u16string& name) const {
    std::string bytes(capacity, 'x'); // no zero: `gethostname` need not end a name that it cuts short
    if (calls.hostName(bytes.data(), bytes.size()) != 0) {
        return errno;
    }
    auto const end = bytes.find('\0');
    if (end == std::string::npos) {
        return ENAMETOOLONG;
    }
    name =
        fl::i18n::codecvt_wstring_to_ustring(false).convert(wideText(std::string_view(bytes).substr(0, end)));
    return 0;
}

AdapterReading LinuxSystem::readAdapters() const {
    RouteSocket socket(calls);
    AdapterReading reading;
    std::map<unsigned int, Adapter> adapters; // by index; of two messages about a link the last one counts
    auto outcome = socket.dump(RTM_GETLINK, RTM_NEWLINK, [&adapters](Bytes link) {
        ifinfomsg head{};
        if (!readRecord(link, head)) {
            return false;
        }
        adapters.insert_or_assign(static_cast<unsigned int>(head.ifi_index),
                                  adapterOf(head, link.subspan(sizeof(head))));
        return true;
    });
    if (outcome.complete()) {
        bool linkIsUnknown = false;
        outcome = socket.dump(RTM_GETADDR, RTM_NEWADDR, [&](Bytes entry) {
            ifaddrmsg head{};
            if (!readRecord(entry, head)) {
                return false;
            }
            auto const owner = adapters.find(head.ifa_index);
            if (owner == adapters.end()) {
                linkIsUnknown = true;
            } else {
                owner->second.addresses.push_back(addressOf(head, entry.subspan(sizeof(head))));
            }
            return true;
        });
        // An address of an unknown link means that the link was added between the two dumps.
        outcome.changed = outcome.changed || linkIsUnknown;
    }
    for (auto& [index, adapter] : adapters) {
        reading.adapters.push_back(std::move(adapter));
    }
    reading.error = outcome.error;
    reading.changed = outcome.changed;
    return reading;
}

OperatingSystem const& nativeOperatingSystem() {
    static base::NeverDestroyed<LinuxCalls> const calls;
    static base::NeverDestroyed<LinuxSystem> const system(*calls);
    return *system;
}

} // namespace foundation::network::platform
