// The rows of addresses, adapters and domain names, beside what they are made of and beside other libraries.

#include "Bench.hpp"

#include <foundation/network/AddressClass.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <boost/asio/ip/address.hpp>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#ifdef BENCH_IDN2
#include <idn2.h>
#endif
#ifdef BENCH_QT_NETWORK
#include <QtCore/QUrl>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkInterface>
#endif
#ifdef BENCH_POCO_NET
#include <Poco/Net/IPAddress.h>
#endif

#include <arpa/inet.h>
#include <array>
#include <ifaddrs.h>
#include <memory>
#include <random>

namespace bench {

namespace {

using benchmark::DoNotOptimize;
using namespace foundation::network;
namespace ip = boost::asio::ip;

constexpr char const* library = "this library";
using Texts = std::vector<std::string>;

Texts addressTexts(int family) {
    std::mt19937 random(1);
    Texts texts;
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

// From text, and to text again, by two functions of a library.
template <class Parse, class Write>
void addAddressRows(char const* list, char const* name, Texts const& texts, Parse parse, Write write) {
    add(operation::addressFromText, list, name, texts.size(), [texts, parse] {
        return over(texts, [&](std::string const& text) { DoNotOptimize(parse(text)); })();
    });
    add(operation::addressToText, list, name, texts.size(), [values = makeAll(texts, parse), write] {
        return over(values, [&](auto const& value) { DoNotOptimize(write(value)); })();
    });
}

void addAddresses(char const* list, int family) {
    Texts const texts = addressTexts(family);
    addAddressRows(
        list, library, texts, [](std::string const& text) { return InetAddress(text); },
        [](InetAddress const& address) { return address.toString(); });
    addAddressRows(
        list, "Asio", texts, [](std::string const& text) { return ip::make_address(text); },
        [](ip::address const& address) { return address.to_string(); });
    addAddressRows(
        list, "inet_pton", texts,
        [family](std::string const& text) {
            std::array<unsigned char, 16> bytes{};
            inet_pton(family, text.c_str(), bytes.data());
            return bytes;
        },
        [family](std::array<unsigned char, 16> const& bytes) {
            std::array<char, INET6_ADDRSTRLEN> text{};
            return std::string(inet_ntop(family, bytes.data(), text.data(), text.size()));
        });
#ifdef BENCH_QT_NETWORK
    addAddressRows(
        list, "QHostAddress", texts,
        [](std::string const& text) { return QHostAddress(QString::fromStdString(text)); },
        [](QHostAddress const& address) { return address.toString(); });
#endif
#ifdef BENCH_POCO_NET
    addAddressRows(
        list, "POCO", texts, [](std::string const& text) { return Poco::Net::IPAddress(text); },
        [](Poco::Net::IPAddress const& address) { return address.toString(); });
#endif
}

// A question to each value of a list.
template <class Parse, class Question>
void addQuestion(char const* operation, char const* list, char const* name, Texts const& texts, Parse parse,
                 Question question) {
    add(operation, list, name, texts.size(), [values = makeAll(texts, parse), question] {
        return over(values, [&](auto const& value) { DoNotOptimize(question(value)); })();
    });
}

void addAddressQuestions(char const* list, int family) {
    Texts const texts = addressTexts(family);
    std::string const& another = texts.back();
    std::string const network = family == AF_INET ? "192.0.2.0/24" : "2001:db8::/32";
    auto const ours = [](std::string const& text) { return InetAddress(text); };
    add(operation::tryAddress, list, library, texts.size(), [texts] {
        return over(texts, [](std::string const& text) { DoNotOptimize(tryParseAddress(text)); })();
    });
    addQuestion(operation::addressEqual, list, library, texts, ours,
                [other = ours(another)](InetAddress const& address) { return address == other; });
    addQuestion(operation::addressHash, list, library, texts, ours, std::hash<InetAddress>());
    addQuestion(operation::networkContains, list, library, texts, ours,
                [held = InetNetwork(network)](InetAddress const& address) { return held.contains(address); });
    addQuestion(operation::addressIsGlobal, list, library, texts, ours,
                [](InetAddress const& address) { return isGlobal(address); });
    auto const asio = [](std::string const& text) { return ip::make_address(text); };
    addQuestion(operation::addressEqual, list, "Asio", texts, asio,
                [other = asio(another)](ip::address const& address) { return address == other; });
#ifdef BENCH_QT_NETWORK
    auto const qt = [](std::string const& text) { return QHostAddress(QString::fromStdString(text)); };
    addQuestion(operation::addressEqual, list, "QHostAddress", texts, qt,
                [other = qt(another)](QHostAddress const& address) { return address == other; });
    addQuestion(operation::addressHash, list, "QHostAddress", texts, qt,
                [](QHostAddress const& address) { return qHash(address); });
    addQuestion(operation::networkContains, list, "QHostAddress", texts, qt,
                [held = QHostAddress::parseSubnet(QString::fromStdString(network))](
                    QHostAddress const& address) { return address.isInSubnet(held); });
    addQuestion(operation::addressIsGlobal, list, "QHostAddress", texts, qt,
                [](QHostAddress const& address) { return address.isGlobal(); });
#endif
#ifdef BENCH_POCO_NET
    auto const poco = [](std::string const& text) { return Poco::Net::IPAddress(text); };
    addQuestion(operation::addressEqual, list, "POCO", texts, poco,
                [other = poco(another)](Poco::Net::IPAddress const& address) { return address == other; });
#endif
}

template <class Operation>
void addListing(char const* name, Operation operation) {
    static std::array<int, 20> const rounds{};
    add(operation::listAdapters, "this machine", name, rounds.size(),
        over(rounds, [operation](int) { DoNotOptimize(operation()); }));
}

void addAdapters() {
    addListing(library, [] { return NetworkInterface::listAll().size(); });
    addListing("getifaddrs", [] {
        ifaddrs* list = nullptr;
        int const result = getifaddrs(&list);
        freeifaddrs(list);
        return result;
    });
#ifdef BENCH_QT_NETWORK
    addListing("QNetworkInterface", [] { return QNetworkInterface::allInterfaces().size(); });
#endif
}

void addNames(Corpus const& names) {
    auto const row = [&names](char const* name, Pass pass) {
        add(operation::nameToAscii, names.name, name, names.utf16.size(), std::move(pass));
    };
    static IdnConverter const converter;
    row(library, over(names.utf16, [](auto const& name) { DoNotOptimize(converter.toAscii(name)); }));
    static UErrorCode status = U_ZERO_ERROR;
    static std::unique_ptr<icu::IDNA> const idna(icu::IDNA::createUTS46Instance(0, status));
    row("ICU", over(names.utf16, [](std::u16string const& name) { // without a text for the caller
            icu::UnicodeString result;
            icu::IDNAInfo info;
            UErrorCode error = U_ZERO_ERROR;
            idna->nameToASCII(icu::UnicodeString(false, name.data(), static_cast<int32_t>(name.size())),
                              result, info, error);
            DoNotOptimize(result);
        }));
#ifdef BENCH_IDN2
    row("libidn2", over(names.utf8, [](std::string const& name) {
            char* result = nullptr;
            DoNotOptimize(idn2_to_ascii_8z(name.c_str(), &result, IDN2_NFC_INPUT | IDN2_TRANSITIONAL));
            idn2_free(result);
        }));
#endif
#ifdef BENCH_QT_NETWORK
    row("QUrl", over(names.utf16, [](std::u16string const& name) {
            DoNotOptimize(QUrl::toAce(QString::fromUtf16(name.data(), static_cast<int>(name.size()))));
        }));
#endif
}

} // namespace

void addNetwork(Data const& data) {
    addAddresses("IPv4", AF_INET);
    addAddresses("IPv6", AF_INET6);
    addAddressQuestions("IPv4", AF_INET);
    addAddressQuestions("IPv6", AF_INET6);
    addAdapters();
    addNames(data.hosts);
}

} // namespace bench
