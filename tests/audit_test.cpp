// What holds for every public class alike: self-assignment, moves, swaps, values that were moved from, and
// texts too short to be looked at elsewhere.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include "support/Laws.hpp"
#include "support/ReferenceMatcher.hpp"
#include "support/StoredParts.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using namespace foundation::network;
using support::plain::outcome;
using Addresses = foundation::network::detail::ImmutableIterableRange<InetAddress>;
using Parts = foundation::network::iri::detail::StringParts<std::u32string>;
using Failure = foundation::core::except::detail::AnonymousInternalException<std::logic_error>;

// Moving and swapping never fail; copying is not said to, where it allocates.
template <class T>
constexpr bool movesForSure = std::is_nothrow_move_constructible_v<T>&& std::is_nothrow_move_assignable_v<T>&&
    std::is_nothrow_swappable_v<T>&& std::is_nothrow_destructible_v<T>;
static_assert(movesForSure<IRI> && !std::is_nothrow_copy_constructible_v<IRI>);
static_assert(movesForSure<Parts> && !std::is_nothrow_copy_constructible_v<Parts>);
static_assert(movesForSure<InetAddress> && movesForSure<InterfaceAddress> && movesForSure<NetworkInterface>);
static_assert(movesForSure<HardwareAddress> && movesForSure<Addresses> && movesForSure<IdnConverter>);
static_assert(movesForSure<IdnConverterException>);
static_assert(std::is_nothrow_default_constructible_v<IRI> && std::is_nothrow_destructible_v<Failure>);
static_assert(!std::is_nothrow_move_constructible_v<IRIArgs>, "moving copies");
static_assert(!std::is_nothrow_default_constructible_v<InetAddress> && !noexcept(IRI().hashValue()));

int audited = 0;

template <class T, class Say>
void audit(T const& one, T const& two, Say say) {
    ++audited;
    T a(one);
    T& self = a;
    a = std::as_const(self);
    EXPECT_EQ(say(a), say(one));
    a = std::move(self);
    EXPECT_EQ(say(a), say(one)) << "moved to itself";
    std::swap(a, self);
    EXPECT_EQ(say(a), say(one)) << "swapped with itself";
    T b(std::move(a));
    EXPECT_EQ(say(b), say(one));
    a = two; // what was moved from can be assigned to,
    EXPECT_EQ(say(a), say(two));
    std::swap(a, b);
    EXPECT_EQ(say(a) + say(b), say(one) + say(two));
    b = std::move(a);
    EXPECT_EQ(say(b), say(one));
    T const copy(b);
    T const gone(std::move(b)); // and destroyed
    EXPECT_EQ(say(copy), say(gone));
}

TEST(Audit, EveryClassSurvivesItselfAndBeingMovedFrom) {
    auto const text = [](auto const& value) { return value.toString(); };
    IRI const iri(u"http://u%41@h:8/\u00E9?q#f");
    audit(iri, IRI(u"x:y"), &support::answers);
    audit(IRIArgs(iri), IRIArgs(), [](IRIArgs const& args) { return support::answers(IRI(args)); });
    audit(InetAddress::getByName("127.0.0.1"), InetAddress::getByName("::1"),
          [](InetAddress const& address) { return address.toString() + address.getHostName(); });
    audit(InterfaceAddress(InetAddress("::1"), 128), InterfaceAddress(), text);
    audit(HardwareAddress({0, 1, 255}), HardwareAddress(), text);
    audit(Addresses({InetAddress("255.255.255.255"), InetAddress("::1")}), Addresses({InetAddress()}),
          [](Addresses const& all) { return all.begin()->toString() + std::to_string(all.size()); });
    auto const adapters = NetworkInterface::listAll();
    ASSERT_FALSE(adapters.empty());
    audit(*adapters.begin(), *(adapters.end() - 1),
          [](NetworkInterface const& adapter) { return adapter.getIdentifier(); });
    audit(IdnConverter(), IdnConverter(), [](IdnConverter const& idn) { return idn.toAscii(u"\u00FC"); });
    auto const what = [](std::exception const& e) { return std::string(e.what()); };
    audit(IdnConverterException("a name of more than fifteen bytes"), IdnConverterException("one"), what);
    audit(Failure(std::logic_error("one")), Failure(std::logic_error("")), what);
    Parts parts;
    parts.setHost(U"h%20", Encoding::Iri);
    parts.setPath(U"/a b", Encoding::Raw);
    (void)parts.getPath(Encoding::Uri);
    auto const forms = [](Parts const& p) {
        std::u32string all;
        for (auto const encoding : support::encodings) {
            all +=
                outcome([&] { return p.getHost(encoding); }) + outcome([&] { return p.getPath(encoding); });
        }
        return support::show(all) + std::to_string(p.isEmpty());
    };
    audit(parts, Parts(), forms);
    Parts const moved(std::move(parts));
    EXPECT_EQ(forms(parts), forms(Parts()));
    EXPECT_EQ(audited, 11);
}

// Every text of up to four characters that means something.
TEST(Audit, ShortTextsAreTakenAsThePlainMatcherTakesThem) {
    constexpr char16_t alphabet[] = u"a1:/?#[]@%.\\ \u00E9\uE000";
    constexpr std::size_t letters = std::size(alphabet) - 1;
    int taken = 0, rows = 0;
    for (std::size_t length = 0, count = 1; length <= 4; ++length, count *= letters) {
        for (std::size_t number = 0; number != count; ++number, ++rows) {
            std::u16string text;
            for (std::size_t rest = number; text.size() != length; rest /= letters) {
                text += alphabet[rest % letters];
            }
            auto const expected = support::ReferenceMatcher::match(std::u32string(text.begin(), text.end()));
            bool const refused = !expected || expected->port == U""; // one or two digits are in range
            auto const iri = support::parsed(text);
            ASSERT_EQ(iri.has_value(), !refused) << support::show(text);
            taken += iri && support::formsHold(*iri);
        }
    }
    EXPECT_EQ(rows, 1 + 15 + 15 * 15 + 15 * 15 * 15 + 15 * 15 * 15 * 15);
    EXPECT_GT(taken, 9000);
}

} // namespace
