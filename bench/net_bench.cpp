// Addresses, adapters and domain names beside what they are made of and beside other libraries.
//
// Each group measures the same work on the same data: `ours` over the next one is the layer's price.
//
//     net_bench [--hosts=FILE]     FILE holds domain names in Unicode, one a line (UTF-8)

#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <benchmark/benchmark.h>
#include <boost/asio/ip/address.hpp>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <arpa/inet.h>
#include <array>
#include <fstream>
#include <ifaddrs.h>
#include <iostream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#ifdef HAVE_IDN2
#include <idn2.h>
#endif
#ifdef HAVE_QTNETWORK
#include <QHostAddress>
#include <QNetworkInterface>
#include <QString>
#include <QUrl>
#endif

namespace {

using namespace foundation::network;

template <class Item>
struct Sample {
    std::vector<Item> items;
    // One item after the other, once each iteration.
    template <class Work>
    void run(char const* name, Work work) const {
        benchmark::RegisterBenchmark(name, [this, work](benchmark::State& state) {
            std::size_t next = 0;
            for (auto _ : state) {
                benchmark::DoNotOptimize(work(items[next]));
                next = next + 1 < items.size() ? next + 1 : 0;
            }
        });
    }
};

std::vector<std::string> addressTexts(int family) {
    std::mt19937 random(1);
    std::vector<std::string> texts;
    for (int i = 0; i < 1000; ++i) {
        std::array<unsigned char, 16> bytes{};
        for (auto& byte : bytes) {
            byte = static_cast<unsigned char>(i % 4 == 0 && random() % 2 == 0 ? 0 : random());
        }
        std::array<char, INET6_ADDRSTRLEN> text{};
        texts.emplace_back(inet_ntop(family, bytes.data(), text.data(), text.size()));
    }
    return texts;
}

void registerAddresses(std::string const& version, int family) {
    static std::vector<std::unique_ptr<Sample<std::string>>> kept;
    auto const& texts = *kept.emplace_back(new Sample<std::string>{addressTexts(family)});
    std::string const from = version + "/from_text/";
    texts.run((from + "ours").c_str(), [](std::string const& text) { return InetAddress(text); });
    texts.run((from + "asio").c_str(),
              [](std::string const& text) { return boost::asio::ip::make_address(text); });
    texts.run((from + "inet_pton").c_str(), [family](std::string const& text) {
        std::array<unsigned char, 16> bytes{};
        return inet_pton(family, text.c_str(), bytes.data());
    });

    static std::vector<std::unique_ptr<Sample<InetAddress>>> keptOurs;
    static std::vector<std::unique_ptr<Sample<boost::asio::ip::address>>> keptAsio;
    static std::vector<std::unique_ptr<Sample<std::vector<unsigned char>>>> keptBytes;
    auto& ours = *keptOurs.emplace_back(new Sample<InetAddress>);
    auto& asio = *keptAsio.emplace_back(new Sample<boost::asio::ip::address>);
    auto& bytes = *keptBytes.emplace_back(new Sample<std::vector<unsigned char>>);
    for (auto const& text : texts.items) {
        ours.items.emplace_back(text);
        asio.items.push_back(boost::asio::ip::make_address(text));
        bytes.items.push_back(ours.items.back().bytes());
    }
    std::string const to = version + "/to_text/";
    ours.run((to + "ours").c_str(), [](InetAddress const& address) { return address.toString(); });
    asio.run((to + "asio").c_str(),
             [](boost::asio::ip::address const& address) { return address.to_string(); });
    bytes.run((to + "inet_ntop").c_str(), [family](std::vector<unsigned char> const& address) {
        std::array<char, INET6_ADDRSTRLEN> text{};
        return std::string(inet_ntop(family, address.data(), text.data(), text.size()));
    });
#ifdef HAVE_QTNETWORK
    static std::vector<std::unique_ptr<Sample<QString>>> keptWide;
    static std::vector<std::unique_ptr<Sample<QHostAddress>>> keptHosts;
    auto& wide = *keptWide.emplace_back(new Sample<QString>);
    auto& hosts = *keptHosts.emplace_back(new Sample<QHostAddress>);
    for (auto const& text : texts.items) {
        wide.items.push_back(QString::fromStdString(text));
        hosts.items.emplace_back(wide.items.back());
    }
    wide.run((from + "QHostAddress").c_str(), [](QString const& text) { return QHostAddress(text); });
    hosts.run((to + "QHostAddress").c_str(), [](QHostAddress const& address) { return address.toString(); });
#endif
}

void registerAdapters() {
    static Sample<int> const once{{0}};
    once.run("adapters/listAll/ours", [](int) { return NetworkInterface::listAll().size(); });
    once.run("adapters/listAll/getifaddrs", [](int) {
        ifaddrs* list = nullptr;
        int const result = getifaddrs(&list);
        freeifaddrs(list);
        return result;
    });
#ifdef HAVE_QTNETWORK
    once.run("adapters/listAll/QNetworkInterface", [](int) {
        auto const all = QNetworkInterface::allInterfaces();
        int entries = 0;
        for (auto const& adapter : all) {
            entries += adapter.addressEntries().size();
        }
        return entries;
    });
#endif
}

std::u16string units(icu::UnicodeString const& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

void registerNames(char const* file) {
    static Sample<std::u16string> unicode{
        {u"bücher.example", u"例え.テスト", u"почта.example", u"www.example.org", u"ελλάδα.example"}};
    if (file != nullptr) {
        std::ifstream stream(file);
        unicode.items.clear();
        for (std::string line; std::getline(stream, line);) {
            unicode.items.push_back(units(icu::UnicodeString::fromUTF8(line)));
        }
        if (unicode.items.empty()) {
            throw std::runtime_error(std::string("no names in ") + file);
        }
    }
    static IdnConverter const converter;
    static UErrorCode status = U_ZERO_ERROR;
    static std::unique_ptr<icu::IDNA> const idna(icu::IDNA::createUTS46Instance(0, status));
    static Sample<std::string> ascii;
    for (auto const& name : unicode.items) {
        ascii.items.push_back(converter.toAscii(name));
    }
    unicode.run("idn/to_ascii/ours", [](std::u16string const& name) { return converter.toAscii(name); });
    // What a user of ICU writes to come from and to the same types.
    unicode.run("idn/to_ascii/icu", [](std::u16string const& name) {
        icu::UnicodeString result;
        icu::IDNAInfo info;
        UErrorCode error = U_ZERO_ERROR;
        idna->nameToASCII(icu::UnicodeString(name.data(), static_cast<int32_t>(name.size())), result, info,
                          error);
        std::string narrow;
        return result.toUTF8String(narrow);
    });
    unicode.run("idn/to_ascii/icu_without_text", [](std::u16string const& name) {
        icu::UnicodeString result;
        icu::IDNAInfo info;
        UErrorCode error = U_ZERO_ERROR;
        idna->nameToASCII(icu::UnicodeString(false, name.data(), static_cast<int32_t>(name.size())), result,
                          info, error);
        return result;
    });
    unicode.run("idn/to_ascii/ours_free_function",
                [](std::u16string const& name) { return idn_to_ascii(name); });
    ascii.run("idn/to_unicode/ours", [](std::string const& name) { return converter.toUnicode(name); });
    ascii.run("idn/to_unicode/icu", [](std::string const& name) {
        icu::UnicodeString result;
        icu::IDNAInfo info;
        UErrorCode error = U_ZERO_ERROR;
        idna->nameToUnicode(icu::UnicodeString::fromUTF8(name), result, info, error);
        return units(result);
    });
#ifdef HAVE_IDN2
    static Sample<std::string> utf8;
    for (auto const& name : unicode.items) {
        std::string text;
        icu::UnicodeString(name.data(), static_cast<int32_t>(name.size())).toUTF8String(text);
        utf8.items.push_back(text);
    }
    utf8.run("idn/to_ascii/libidn2", [](std::string const& name) {
        char* result = nullptr;
        int const code = idn2_to_ascii_8z(name.c_str(), &result, IDN2_NFC_INPUT | IDN2_TRANSITIONAL);
        std::string text(code == IDN2_OK ? result : "");
        idn2_free(result);
        return text;
    });
#endif
#ifdef HAVE_QTNETWORK
    static Sample<QString> wide;
    for (auto const& name : unicode.items) {
        wide.items.push_back(QString::fromStdU16String(name));
    }
    wide.run("idn/to_ascii/QUrl", [](QString const& name) { return QUrl::toAce(name); });
#endif
}

} // namespace

int main(int argc, char** argv) try {
    benchmark::Initialize(&argc, argv);
    char const* file = nullptr;
    for (int i = 1; i < argc; ++i) {
        constexpr std::string_view option = "--hosts=";
        if (!std::string_view(argv[i]).starts_with(option)) {
            std::cerr << "net_bench: unknown argument " << argv[i] << '\n';
            return 2;
        }
        file = argv[i] + option.size();
    }
    registerAddresses("ipv4", AF_INET);
    registerAddresses("ipv6", AF_INET6);
    registerAdapters();
    registerNames(file);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (std::exception const& e) {
    std::cerr << "net_bench: " << e.what() << '\n';
    return 1;
}
