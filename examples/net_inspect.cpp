// The network as the library sees it: the adapters of this machine, this host, names looked up in each
// direction, domain names in both forms.

#include "console.hpp"

#include <foundation/network/AddressClass.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/Utf8.hpp>

#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace foundation::network;

constexpr char const* help =
#include "net_inspect.help" // of which the man page and the completions are made, too
    ;

struct Arguments {
    bool json = false;
    std::vector<std::string> hosts;
    std::vector<std::string> domains;
};

// What one section of the report says, in order. More than one value is a list in JSON, too.
struct Field {
    std::string name;
    std::vector<std::string> values;
    bool list = false;
};
using Fields = std::vector<Field>;

std::string asciiName(std::string const& host) {
    return idn_to_ascii(fromUtf8(host));
}

template <class Range>
std::vector<std::string> textsOf(Range const& range) {
    std::vector<std::string> texts;
    for (auto const& value : range) {
        texts.push_back(value.toString());
    }
    return texts;
}

char const* className(InetAddress const& address) {
    switch (classify(address)) {
    case AddressClass::Global:
        return "global";
    case AddressClass::Unspecified:
        return "unspecified";
    case AddressClass::ThisNetwork:
        return "thisNetwork";
    case AddressClass::PrivateUse:
        return "privateUse";
    case AddressClass::UniqueLocal:
        return "uniqueLocal";
    case AddressClass::Shared:
        return "shared";
    case AddressClass::Loopback:
        return "loopback";
    case AddressClass::LinkLocal:
        return "linkLocal";
    case AddressClass::ProtocolAssignment:
        return "protocolAssignment";
    case AddressClass::Documentation:
        return "documentation";
    case AddressClass::Benchmarking:
        return "benchmarking";
    case AddressClass::Multicast:
        return "multicast";
    case AddressClass::Reserved:
        return "reserved";
    case AddressClass::Broadcast:
        return "broadcast";
    case AddressClass::Mapped:
        return "mapped";
    case AddressClass::Translated:
        return "translated";
    case AddressClass::Discard:
        return "discard";
    }
    return "";
}

// What each address of a range is for.
template <class Range>
std::vector<std::string> classesOf(Range const& addresses) {
    std::vector<std::string> names;
    for (InetAddress const& address : addresses) {
        names.emplace_back(className(address));
    }
    return names;
}

std::vector<std::string> networksOf(NetworkInterface const& adapter) {
    std::vector<std::string> texts;
    for (auto const& address : adapter.getInterfaceAddresses()) {
        texts.push_back(getNetwork(address).toString());
    }
    return texts;
}

Fields describeThisHost() {
    auto const host = InetAddress::getLocalHost();
    return {{"name", {host.getHostName()}}, {"address", {host.toString()}}, {"class", {className(host)}}};
}

Fields lookUp(std::string const& host) {
    auto const addresses = InetAddress::getAllByName(asciiName(host));
    InetAddress const first(addresses.begin()->toString()); // without the name: it has to ask for it
    return {{"forward", textsOf(addresses), true},
            {"classes", classesOf(addresses), true},
            {"reverse", {first.getHostName()}},
            {"canonical", {first.getCanonicalHostName()}}};
}

Fields convert(std::string const& domain) {
    auto const ascii = asciiName(domain);
    return {{"ascii", {ascii}}, {"unicode", {toUtf8(ascii_to_idn(ascii))}}};
}

class Report {
public:
    explicit Report(bool asJson) : json(asJson) {}

    // The fields that `work` finds, or what went wrong.
    void section(char const* type, std::string const& title, std::function<Fields()> const& work) {
        Fields fields;
        try {
            fields = work();
        } catch (std::exception const& e) {
            fields = {{"error", {e.what()}}};
            anyFailed = true;
        }
        if (json) {
            console::Json object;
            object.add("type", type).add("subject", title);
            for (auto const& field : fields) {
                field.list ? object.add(field.name, field.values)
                           : object.add(field.name, field.values.front());
            }
            std::cout << object.text() << '\n';
            return;
        }
        std::cout << '\n' << style.title(console::abridged(title)) << '\n';
        for (auto const& field : fields) {
            std::cout << "  " << style.label(console::padded(field.name, 9));
            for (auto const& value : field.values) {
                std::cout << "  " << console::shown(value);
            }
            std::cout << '\n';
        }
    }

    void adapters() {
        try {
            auto const all = NetworkInterface::listAll();
            json ? printObjects(all) : printTable(all);
        } catch (std::exception const&) {
            section("adapters", "adapters", []() -> Fields { throw; });
        }
    }

    [[nodiscard]] bool failed() const { return anyFailed; }

private:
    using Adapters = detail::ImmutableIterableRange<NetworkInterface>;

    static void printObjects(Adapters const& adapters) {
        for (auto const& adapter : adapters) {
            std::cout << console::Json()
                             .add("type", "adapter")
                             .add("index", adapter.getIdentifier())
                             .add("name", toUtf8(adapter.getFriendlyName()))
                             .add("description", toUtf8(adapter.getDescription()))
                             .add("up", adapter.isUp())
                             .add("loopback", adapter.isLoopback())
                             .add("multicast", adapter.supportsMulticast())
                             .add("hardware", adapter.getHardwareAddress().toString())
                             .add("addresses", textsOf(adapter.getInterfaceAddresses()))
                             .add("networks", networksOf(adapter))
                             .add("classes", classesOf(adapter.getInetAddresses()))
                             .add("mtu", std::size_t{adapter.getMtu()})
                             .add("pointToPoint", adapter.isPointToPoint())
                             .text()
                      << '\n';
        }
    }

    // A row an adapter; further addresses go below the first.
    void printTable(Adapters const& adapters) const {
        std::vector<console::Row> rows{
            {"name", "index", "state", "mtu", "hardware", "description", "addresses", "networks", "classes"}};
        for (auto const& adapter : adapters) {
            std::string state = adapter.isUp() ? "up" : "down";
            state += adapter.isLoopback() ? " loopback" : "";
            state += adapter.supportsMulticast() ? " multicast" : "";
            state += adapter.isPointToPoint() ? " point-to-point" : "";
            rows.push_back({console::shown(toUtf8(adapter.getFriendlyName())), adapter.getIdentifier(), state,
                            std::to_string(adapter.getMtu()), adapter.getHardwareAddress().toString(),
                            console::shown(toUtf8(adapter.getDescription())), "", "", ""});
            auto const addresses = textsOf(adapter.getInterfaceAddresses());
            auto const networks = networksOf(adapter);
            auto const classes = classesOf(adapter.getInetAddresses());
            for (std::size_t i = 0; i < addresses.size(); ++i) {
                if (i > 0) {
                    rows.emplace_back(9);
                }
                rows.back()[6] = addresses[i];
                rows.back()[7] = networks[i];
                rows.back()[8] = classes[i];
            }
        }
        auto const widths = console::widths(rows);
        for (auto const& row : rows) {
            std::string line;
            for (std::size_t i = 0; i < row.size(); ++i) {
                line += console::padded(row[i], widths[i]) + "  ";
            }
            line.erase(line.find_last_not_of(' ') + 1);
            std::cout << (&row == &rows.front() ? style.label(line) : line) << '\n';
        }
    }

    bool json;
    console::Style style;
    bool anyFailed = false;
};

// Returns -1 to go on, or the exit status.
int readOptions(console::Words words, Arguments& arguments) {
    std::string value;
    while (words.next()) {
        if (words.answered("net_inspect", help)) {
            return 0;
        }
        if (words.is("--json")) {
            arguments.json = true;
        } else if (words.is("-d", value) || words.is("--domain", value)) {
            arguments.domains.push_back(value);
        } else if (words.isOption()) {
            std::cerr << "net_inspect: unknown or incomplete option " << console::abridged(words.word())
                      << "\nTry net_inspect --help\n";
            return 2;
        } else {
            arguments.hosts.push_back(words.word());
        }
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    console::start();
    Arguments arguments;
    if (int const status = readOptions({argc, argv}, arguments); status >= 0) {
        return console::finish("net_inspect", status);
    }
    Report report(arguments.json);
    report.adapters();
    report.section("host", "this host", describeThisHost);
    for (auto const& host : arguments.hosts) {
        report.section("lookup", host, [&host] { return lookUp(host); });
    }
    for (auto const& domain : arguments.domains) {
        report.section("domain", domain, [&domain] { return convert(domain); });
    }
    return console::finish("net_inspect", report.failed() ? 1 : 0);
}
