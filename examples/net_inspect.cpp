// The network as the library sees it: the adapters of this machine, this host, names looked up in each
// direction, domain names in both forms.

#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

using namespace foundation::network;
using boost::locale::conv::utf_to_utf;

constexpr std::string_view usage = R"(Usage: net_inspect [--json] [--domain NAME]... [HOST]...

Shows the adapters of this machine and this host. Looks each HOST up forward, then its first address in reverse
and in canonical form. Shows each domain NAME in its ASCII and its Unicode form, without a lookup.

  --json         one object a line
  --domain NAME  a domain name to convert; may be repeated
  --help         this text

Colours go to terminals only, and not where NO_COLOR is set. The exit status is 0 if all went well, 1 if
something could not be listed, looked up or converted, 2 for a mistake in the arguments.
)";

struct Arguments {
    bool json = false;
    std::vector<std::string> hosts;
    std::vector<std::string> domains;
};

// What one part of the report says, in order: a name and its values. The same goes to both outputs.
struct Field {
    std::string name;
    std::vector<std::string> values;
    bool list = false; // a list in JSON, whatever its length
};
using Fields = std::vector<Field>;

std::string utf8(std::u16string const& text) {
    return utf_to_utf<char>(text);
}

std::string asciiName(std::string const& host) {
    return idn_to_ascii(utf_to_utf<char16_t>(host, boost::locale::conv::stop)); // no name with holes
}

template <class Range>
std::vector<std::string> textsOf(Range const& range) {
    std::vector<std::string> texts;
    for (auto const& value : range) {
        texts.push_back(value.toString());
    }
    return texts;
}

Fields describe(NetworkInterface const& adapter) {
    std::string state = adapter.isUp() ? "up" : "down";
    state += adapter.isLoopback() ? " loopback" : "";
    state += adapter.supportsMulticast() ? " multicast" : "";
    return {{"name", {utf8(adapter.getFriendlyName())}},
            {"index", {adapter.getIdentifier()}},
            {"state", {state}},
            {"hardware", {adapter.getHardwareAddress().toString()}},
            {"description", {utf8(adapter.getDescription())}},
            {"addresses", textsOf(adapter.getInterfaceAddresses()), true}};
}

Fields describeThisHost() {
    auto const host = InetAddress::getLocalHost();
    return {{"name", {host.getHostName()}}, {"address", {host.toString()}}};
}

Fields lookUp(std::string const& host) {
    auto const addresses = InetAddress::getAllByName(asciiName(host));
    InetAddress const first(addresses.begin()->toString()); // without the name: it has to ask for it
    return {{"forward", textsOf(addresses), true},
            {"reverse", {first.getHostName()}},
            {"canonical", {first.getCanonicalHostName()}}};
}

Fields convert(std::string const& domain) {
    auto const ascii = asciiName(domain);
    return {{"ascii", {ascii}}, {"unicode", {utf8(ascii_to_idn(ascii))}}};
}

// A text as a terminal shows it, and its columns there. Control characters, which an alias may hold, are not
// sent to it.
struct Shown {
    explicit Shown(std::string const& utf8Text) {
        std::wstring wide = utf_to_utf<wchar_t>(utf8Text);
        for (wchar_t& c : wide) {
            int columns = ::wcwidth(c);
            if (columns < 0) {
                c = L'?';
                columns = 1;
            }
            width += static_cast<std::size_t>(columns);
        }
        text = utf_to_utf<char>(wide);
    }
    std::string paddedTo(std::size_t columns) const {
        return text + std::string(columns > width ? columns - width : 0, ' ');
    }
    std::string text;
    std::size_t width = 0;
};

std::string quoted(std::string const& text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string json = "\"";
    for (char const c : utf_to_utf<char>(text)) { // leaves out what is no UTF-8
        auto const byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            json += {'\\', c};
        } else if (byte < 0x20 || byte == 0x7F) {
            json += {'\\', 'u', '0', '0', digits[byte >> 4U], digits[byte & 0xFU]};
        } else {
            json += c;
        }
    }
    return json + '"';
}

void printObject(std::string const& type, Fields const& fields) {
    std::cout << "{\"type\":" << quoted(type);
    for (auto const& field : fields) {
        std::cout << ',' << quoted(field.name) << ':' << (field.list ? "[" : "");
        for (std::size_t i = 0; i < field.values.size(); ++i) {
            std::cout << (i > 0 ? "," : "") << quoted(field.values[i]);
        }
        std::cout << (field.list ? "]" : "");
    }
    std::cout << "}\n";
}

class Report {
public:
    explicit Report(bool asJson) : json(asJson) {
        char const* const noColor = std::getenv("NO_COLOR");
        colour = !json && (noColor == nullptr || *noColor == '\0') && isatty(STDOUT_FILENO) != 0;
    }

    // The fields that `work` finds, or what went wrong.
    void section(std::string const& type, std::string const& title, std::function<Fields()> const& work) {
        Fields fields;
        try {
            fields = work();
        } catch (std::exception const& e) {
            fields = {{"error", {e.what()}}};
            anyFailed = true;
        }
        if (json) {
            fields.insert(fields.begin(), Field{"subject", {title}});
            printObject(type, fields);
            return;
        }
        std::cout << '\n' << bold(Shown(title).text) << '\n';
        for (auto const& field : fields) {
            std::cout << "  " << Shown(field.name).paddedTo(9);
            for (auto const& value : field.values) {
                std::cout << "  " << Shown(value).text;
            }
            std::cout << '\n';
        }
    }

    void adapters() {
        std::vector<Fields> rows;
        try {
            for (auto const& adapter : NetworkInterface::listAll()) {
                rows.push_back(describe(adapter));
            }
        } catch (std::exception const&) {
            section("adapters", "adapters", []() -> Fields { throw; });
        }
        if (!json) {
            printTable(rows);
            return;
        }
        for (auto const& row : rows) {
            printObject("adapter", row);
        }
    }

    bool failed() const { return anyFailed; }

private:
    std::string bold(std::string const& text) const { return colour ? "\033[1m" + text + "\033[0m" : text; }

    // A column a field, each as wide as its widest value; further addresses go below the first.
    void printTable(std::vector<Fields> const& rows) const {
        std::vector<std::size_t> widths;
        for (auto const& row : rows) {
            widths.resize(row.size());
            for (std::size_t column = 0; column < row.size(); ++column) {
                widths[column] = std::max(widths[column], row[column].name.size());
                for (auto const& value : row[column].values) {
                    widths[column] = std::max(widths[column], Shown(value).width);
                }
            }
        }
        auto const line = [&widths](auto const& valueOf) {
            std::string text;
            for (std::size_t column = 0; column < widths.size(); ++column) {
                text += Shown(valueOf(column)).paddedTo(widths[column]) + "  ";
            }
            return text.erase(text.find_last_not_of(' ') + 1);
        };
        if (!rows.empty()) {
            std::cout << bold(line([&rows](std::size_t column) { return rows.front()[column].name; }))
                      << '\n';
        }
        for (auto const& row : rows) {
            for (std::size_t i = 0; i == 0 || i < row.back().values.size(); ++i) {
                std::cout << line([&row, i](std::size_t column) {
                    auto const& values = row[column].values;
                    return i < values.size() ? values[i] : std::string();
                }) << '\n';
            }
        }
    }

    bool json;
    bool colour = false;
    bool anyFailed = false;
};

// The exit status if there is nothing more to do, else -1.
int parse(std::vector<std::string> const& words, Arguments& arguments) {
    bool options = true;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string const& word = words[i];
        if (!options || word.empty() || word[0] != '-') {
            arguments.hosts.push_back(word);
        } else if (word == "--") {
            options = false;
        } else if (word == "--json") {
            arguments.json = true;
        } else if (word == "--domain" && i + 1 < words.size()) {
            arguments.domains.push_back(words[++i]);
        } else if (word == "--help") {
            std::cout << usage;
            return 0;
        } else {
            std::cerr << "net_inspect: "
                      << (word == "--domain" ? "--domain needs a name" : "unknown option " + word) << "\n\n"
                      << usage;
            return 2;
        }
    }
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "C.UTF-8"); // for the widths of characters
    Arguments arguments;
    if (int const status = parse({argv + 1, argv + argc}, arguments); status >= 0) {
        return status;
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
    std::cout.flush();
    return report.failed() || !std::cout ? 1 : 0;
}
