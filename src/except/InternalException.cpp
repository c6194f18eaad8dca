#include <foundation/core/except/InternalException.hpp>

#include <unicode/unistr.h>

#include <new>

namespace foundation::core::except {

namespace {

// ICU marks a text as bogus if it had no memory for it.
void failIfBogus(icu::UnicodeString const& text) {
    if (text.isBogus()) {
        throw std::bad_alloc();
    }
}

} // namespace

IException::IException() = default;
// NOLINTNEXTLINE(bugprone-copy-constructor-init, readability-redundant-member-init): the reason stands inside
IException::IException(IException const& other) : clone_base(other), boost::exception() {
    // Copies what is attached. boost::exception's own copy shares it, with a reference count that is not
    // atomic.
    boost::exception_detail::copy_boost_exception(this, &other);
}
IException& IException::operator=(IException const& other) {
    if (this != &other) {
        boost::exception_detail::copy_boost_exception(this, &other);
    }
    return *this;
}
IException::~IException() noexcept = default;

char const* IException::what() const noexcept {
    // The standard base of the complete object holds the text. The call is qualified, since a virtual one
    // would come back here.
    if (auto const* logic = dynamic_cast<std::logic_error const*>(this)) {
        return logic->std::logic_error::what();
    }
    if (auto const* runtime = dynamic_cast<std::runtime_error const*>(this)) {
        return runtime->std::runtime_error::what();
    }
    return "Unknown exception";
}

std::u16string IException::convert_str(std::string const& text) const {
    icu::UnicodeString const wide = icu::UnicodeString::fromUTF8(text);
    failIfBogus(wide);
    return std::u16string(wide.getBuffer(), static_cast<std::size_t>(wide.length()));
}

std::string IException::convert_str(std::u16string const& text) const {
    icu::UnicodeString const wide(false, text.data(), static_cast<int32_t>(text.size())); // no copy
    std::string narrow;
    return wide.toUTF8String(narrow);
}

IInternalException::IInternalException() = default;
IInternalException::IInternalException(IInternalException const&) = default;
IInternalException& IInternalException::operator=(IInternalException const&) = default;
IInternalException::~IInternalException() noexcept = default;

template class Exception<IInternalException, std::logic_error, void>;
template class Exception<IInternalException, std::invalid_argument, void>;
template class Exception<IInternalException, std::out_of_range, void>;
template class Exception<IInternalException, std::runtime_error, void>;
template class Exception<IInternalException, std::system_error, void>;

namespace detail {

template class AnonymousInternalException<std::logic_error>;
template class AnonymousInternalException<std::invalid_argument>;
template class AnonymousInternalException<std::out_of_range>;
template class AnonymousInternalException<std::runtime_error>;
template class AnonymousInternalException<std::system_error>;

} // namespace detail

} // namespace foundation::core::except
