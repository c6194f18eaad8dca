// What holds for every public class alike: self-assignment, moves, swaps, and values that were moved from.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetNetwork.hpp>
#include <foundation/network/NetworkInterface.hpp>
#include <foundation/network/ParseResult.hpp>
#include <foundation/network/QueryParameters.hpp>
#include <foundation/network/iri/detail/StringParts.hpp>

#include "support/Laws.hpp"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace foundation::network;
using support::valuesTravel;
using Addresses = foundation::network::detail::ImmutableIterableRange<InetAddress>;
using Parts = foundation::network::iri::detail::StringParts<std::u32string>;
using Failure = foundation::core::except::detail::AnonymousInternalException<std::logic_error>;

// Moving and swapping never fail; copying is not said to, where it allocates.
template <class T>
consteval bool movesForSure() {
    return std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T> &&
           std::is_nothrow_swappable_v<T> && std::is_nothrow_destructible_v<T>;
}
static_assert(movesForSure<IRI>() && !std::is_nothrow_copy_constructible_v<IRI>);
static_assert(movesForSure<Parts>() && !std::is_nothrow_copy_constructible_v<Parts>);
static_assert(movesForSure<InetAddress>() && movesForSure<InterfaceAddress>() &&
              movesForSure<NetworkInterface>() && movesForSure<InetNetwork>());
static_assert(movesForSure<HardwareAddress>() && movesForSure<Addresses>() && movesForSure<IdnConverter>());
static_assert(movesForSure<IdnConverterException>());
static_assert(movesForSure<QueryParameters>() && movesForSure<ParseResult>());
static_assert(std::is_nothrow_default_constructible_v<IRI> && std::is_nothrow_destructible_v<Failure>);
static_assert(!std::is_nothrow_move_constructible_v<IRIArgs>, "moving copies");
static_assert(!std::is_nothrow_default_constructible_v<InetAddress> && !noexcept(IRI().hashValue()));

TEST(Audit, EveryClassSurvivesItselfAndBeingMovedFrom) {
    auto const text = [](auto const& value) { return value.toString(); };
    IRI const iri(u"http://u%41@h:8/\u00E9?q#f");
    valuesTravel(iri, IRI(u"x:y"), &support::answers);
    valuesTravel(IRIArgs(iri), IRIArgs(), [](IRIArgs const& args) { return support::answers(IRI(args)); });
    valuesTravel(InetAddress::getByName("127.0.0.1"), InetAddress::getByName("::1"),
                 [](InetAddress const& address) { return address.toString() + address.getHostName(); });
    InetAddress renamed = InetAddress::getByName("127.1"), copied = renamed;
    copied = InetAddress("127.0.0.1"); // which has no name of its own
    renamed = std::move(copied);
    EXPECT_NE(renamed.getHostName(), "127.1") << "a name has stayed";
    valuesTravel(InterfaceAddress(InetAddress("::1"), 128), InterfaceAddress(), text);
    valuesTravel(InetNetwork("10.0.0.0/8"), InetNetwork("2001:db8::/32"), text);
    valuesTravel(HardwareAddress({0, 1, 255}), HardwareAddress(), text);
    valuesTravel(Addresses({InetAddress("255.255.255.255"), InetAddress("::1")}), Addresses({InetAddress()}),
                 [](Addresses const& all) { return all.begin()->toString() + std::to_string(all.size()); });
    auto const adapters = NetworkInterface::listAll();
    ASSERT_FALSE(adapters.empty());
    valuesTravel(*adapters.begin(), *(adapters.end() - 1),
                 [](NetworkInterface const& adapter) { return adapter.getIdentifier(); });
    valuesTravel(IdnConverter(), IdnConverter(),
                 [](IdnConverter const& idn) { return idn.toAscii(u"\u00FC"); });
    auto const query = [](QueryParameters const& parameters) {
        std::u16string names = withQuery(IRI(u"x:?q"), parameters).toString(false);
        for (QueryParameter const parameter : parameters) {
            names += parameter.getName();
        }
        return names;
    };
    QueryParameters moved(u"a=1&b");
    EXPECT_EQ(query(QueryParameters(std::move(moved))), u"x:?a=1&bab");
    EXPECT_EQ(query(moved), u"x:"); // NOLINT(bugprone-use-after-move): that is what is asked
    valuesTravel(QueryParameters(u"a=1&b"), QueryParameters(IRI(u"x:?")), query);
    valuesTravel(tryParse(u"http://h/?q"), tryParse(u"<"), [](ParseResult const& result) {
        return result ? support::show(result->toString(false)) : result.error().describe();
    });
    auto const what = [](std::exception const& e) { return std::string(e.what()); };
    valuesTravel(IdnConverterException("a name of more than fifteen bytes"), IdnConverterException("one"),
                 what);
    valuesTravel(Failure(std::logic_error("one")), Failure(std::logic_error("")), what);
}

} // namespace
