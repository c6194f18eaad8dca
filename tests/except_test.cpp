#include <foundation/core/except/InternalException.hpp>

#include "support/Threads.hpp"

#include <boost/exception/info.hpp>
#include <boost/exception_ptr.hpp>
#include <gtest/gtest.h>

#include <exception>
#include <memory>

namespace {

namespace except = foundation::core::except;
using except::detail::AnonymousInternalException;
using except::detail::makeInternalException;

template <class Std>
Std sample() {
    if constexpr (std::is_same_v<Std, std::system_error>) {
        return Std(ENOENT, std::system_category(), "message of the throw");
    } else {
        return Std("message of the throw");
    }
}

template <class Std>
struct Family : testing::Test {};
using Members = testing::Types<std::logic_error, std::invalid_argument, std::out_of_range, std::runtime_error,
                               std::system_error>;
TYPED_TEST_SUITE(Family, Members);

// Caught as Caught, with the message of the standard exception.
template <class Caught, class Std>
bool isCaughtAs(Std const& standard) {
    try {
        throw makeInternalException(standard);
    } catch (Caught const& e) {
        EXPECT_STREQ(e.what(), standard.what());
        return true;
    } catch (...) {
        return false;
    }
}

TYPED_TEST(Family, IsCaughtThroughEveryBase) {
    auto const standard = sample<TypeParam>();
    EXPECT_TRUE(isCaughtAs<AnonymousInternalException<TypeParam>>(standard));
    EXPECT_TRUE((isCaughtAs<except::Exception<except::IInternalException, TypeParam, void>>(standard)));
    EXPECT_TRUE(isCaughtAs<except::IInternalException>(standard));
    EXPECT_TRUE(isCaughtAs<except::IException>(standard));
    EXPECT_TRUE(isCaughtAs<TypeParam>(standard));
    EXPECT_TRUE(isCaughtAs<std::exception>(standard));
    constexpr bool logic = std::is_base_of_v<std::logic_error, TypeParam>;
    EXPECT_EQ(isCaughtAs<std::logic_error>(standard), logic);
    EXPECT_EQ(isCaughtAs<std::runtime_error>(standard), !logic);
}

TYPED_TEST(Family, CloneAndRethrowKeepTypeAndText) {
    auto const original = makeInternalException(sample<TypeParam>());
    std::unique_ptr<boost::exception_detail::clone_base const> const copy(original.clone());
    auto const* same = dynamic_cast<AnonymousInternalException<TypeParam> const*>(copy.get());
    ASSERT_NE(same, nullptr);
    EXPECT_STREQ(same->what(), original.what());
    EXPECT_THROW(copy->rethrow(), AnonymousInternalException<TypeParam>);

    boost::exception_ptr carried;
    try {
        throw original;
    } catch (...) {
        carried = boost::current_exception();
    }
    EXPECT_THROW(boost::rethrow_exception(carried), AnonymousInternalException<TypeParam>);
}

TEST(FamilyText, WideTextDecodesTheMessage) {
    EXPECT_EQ(makeInternalException(std::logic_error("na\xC3\xAFve")).getMessageText(), u"na\u00EFve");
    EXPECT_EQ(makeInternalException(std::logic_error("bad \xFF")).getMessageText(), u"bad \uFFFD");
    EXPECT_EQ(makeInternalException(std::logic_error("")).getMessageText(), u"");
}

TEST(FamilyText, SystemErrorComposesItsText) {
    auto const described = std::system_category().message(EACCES);
    EXPECT_EQ(makeInternalException(std::system_error(EACCES, std::system_category())).what(), described);
    auto const e = makeInternalException(std::system_error(EACCES, std::system_category(), "Call failed."));
    EXPECT_EQ(e.what(), "Call failed.: " + described);
    EXPECT_EQ(e.code(), std::error_code(EACCES, std::system_category()));
}

struct Probe : except::IException {
    using IException::convert_str;
    clone_base const* clone() const override { return new Probe(*this); }
    void rethrow() const override { throw *this; }
};

TEST(FamilyText, IsUnknownWithoutAStandardBaseAndNarrowsUnpairedSurrogates) {
    EXPECT_STREQ(Probe().what(), "Unknown exception");
    EXPECT_EQ(Probe().convert_str(u"\u00E9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(Probe().convert_str(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

TEST(FamilyThreads, OneExceptionIsRethrownByMany) {
    using Note = boost::error_info<struct NoteTag, int>;
    auto const shared = makeInternalException(std::out_of_range("shared")) << Note(7);
    support::onThreads(8, [&shared](std::size_t) {
        for (int round = 0; round < 200; ++round) {
            try {
                shared.rethrow();
            } catch (except::IException const& e) {
                EXPECT_STREQ(e.what(), "shared");
                EXPECT_EQ(*boost::get_error_info<Note>(e), 7);
            }
        }
    });
}

} // namespace
