#include <foundation/core/except/InternalException.hpp>

#include "support/Threads.hpp"

#include <boost/exception/info.hpp>
#include <boost/exception_ptr.hpp>
#include <gtest/gtest.h>
#include <unicode/uclean.h>

#include <cstdlib>
#include <memory>

namespace {

namespace except = foundation::core::except;
using except::detail::AnonymousInternalException;
using except::detail::makeInternalException;

// Whatever is caught by one of these types is caught by the family, and the other way round.
template <class Std>
void keepsTypeAndText(Std const& standard) {
    using Anonymous = AnonymousInternalException<Std>;
    using Named = except::Exception<except::IInternalException, Std, void>;
    static_assert(std::is_convertible_v<Anonymous*, Named*> && std::is_convertible_v<Named*, Std*> &&
                  std::is_convertible_v<Anonymous*, except::IInternalException*> &&
                  std::is_convertible_v<except::IInternalException*, except::IException*>);
    auto const original = makeInternalException(standard);
    std::unique_ptr<boost::exception_detail::clone_base const> const clone(original.clone());
    EXPECT_THROW(clone->rethrow(), Anonymous);
    try {
        throw original;
    } catch (except::IInternalException const& e) {
        EXPECT_STREQ(e.what(), standard.what());
        EXPECT_THROW(boost::rethrow_exception(boost::current_exception()), Anonymous);
    }
    EXPECT_STREQ(dynamic_cast<Anonymous const&>(*clone).what(), standard.what());
}

TEST(Family, KeepsTypeAndText) {
    keepsTypeAndText(std::logic_error("message"));
    keepsTypeAndText(std::invalid_argument("message"));
    keepsTypeAndText(std::out_of_range("message"));
    keepsTypeAndText(std::runtime_error("message"));
    keepsTypeAndText(std::system_error(ENOENT, std::system_category(), "message"));
}

struct Probe : except::IException {
    using IException::convert_str;
    clone_base const* clone() const override { return new Probe(*this); }
    void rethrow() const override { throw *this; }
};

TEST(Family, TellsItsTexts) {
    EXPECT_EQ(makeInternalException(std::logic_error("na\xC3\xAFve")).getMessageText(), u"na\u00EFve");
    EXPECT_EQ(makeInternalException(std::logic_error("bad \xFF")).getMessageText(), u"bad \uFFFD");
    auto const described = std::system_category().message(EACCES);
    EXPECT_EQ(makeInternalException(std::system_error(EACCES, std::system_category())).what(), described);
    auto const e = makeInternalException(std::system_error(EACCES, std::system_category(), "Call failed."));
    EXPECT_EQ(e.what(), "Call failed.: " + described);
    EXPECT_EQ(e.code(), std::error_code(EACCES, std::system_category()));
    EXPECT_STREQ(Probe().what(), "Unknown exception");
    EXPECT_EQ(Probe().convert_str(u"\u00E9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(Probe().convert_str(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

// ICU's memory; it must be told before its first use.
bool icuHasMemory = true;
UErrorCode const told = [] {
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(
        nullptr, [](void const*, std::size_t size) { return icuHasMemory ? std::malloc(size) : nullptr; },
        [](void const*, void* memory, std::size_t size) {
            return icuHasMemory ? std::realloc(memory, size) : nullptr;
        },
        [](void const*, void* memory) { std::free(memory); }, &status);
    return status;
}();

TEST(Family, ATextThatHasNoMemoryIsNoEmptyText) {
    ASSERT_EQ(told, U_ZERO_ERROR);
    auto const e = makeInternalException(std::logic_error(std::string(1000, 'a')));
    icuHasMemory = false;
    EXPECT_THROW((void)e.getMessageText(), std::bad_alloc);
    icuHasMemory = true;
    EXPECT_EQ(e.getMessageText(), std::u16string(1000, u'a'));
}

TEST(Family, OneExceptionIsCopiedByMany) {
    using Note = boost::error_info<struct NoteTag, int>;
    auto const shared = makeInternalException(std::out_of_range("shared")) << Note(7);
    support::onThreads(8, [&shared](std::size_t) {
        for (int round = 0; round < 200; ++round) {
            auto const copy = shared; // NOLINT(performance-unnecessary-copy-initialization): what is tested
            EXPECT_EQ(*boost::get_error_info<Note>(copy), 7);
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
