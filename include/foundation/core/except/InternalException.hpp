#pragma once

/// The exceptions that the library's own checks throw: the internal family.
///
/// Each of them is caught as the standard exception that it stands for, as `IInternalException` ("a check
/// of this library failed") or as `IException` ("anything of this family"). Comments call one of them, say,
/// "the internal `std::logic_error`":
///
///     try {
///         IRI iri(u"http://a b/");
///     } catch (std::logic_error const& e) {       // or foundation::core::except::IInternalException
///         std::cerr << e.what() << '\n';          // IRI parsing failed
///     }
///
/// Not of the family are `std::bad_alloc`, `IdnConverterException`, the `std::out_of_range` "prefix length
/// too large", and the `std::runtime_error` "Item not set" of `IRI::toArgs`, `IRIArgs(IRI const&)` and
/// `iri::detail::StringParts`.
///
/// The tree, from the thrown type up, for X one of `logic_error`, `invalid_argument`, `out_of_range`,
/// `runtime_error`, `system_error`:
///
///     detail::AnonymousInternalException<std::X>
///       Exception<IInternalException, std::X, void>
///         IInternalException
///           IException
///             boost::exception_detail::clone_base, boost::exception
///         std::X and its standard bases
///
/// Exceptions are values. A copy shares the message text and has copies of attached `boost::error_info`, so
/// copying allocates only where some is attached, and may throw `std::bad_alloc` then.
/// `boost::exception_ptr` and `std::exception_ptr` carry them with their dynamic type.
///
/// Thread safety: any number of threads may read and copy one.

#include <foundation/core/Export.hpp>

#include <boost/exception/exception.hpp>

#include <stdexcept>
#include <string>
#include <system_error>

namespace foundation::core::except {

/// The root of the family.
class ZVFLNETWORK_EXPORT IException : public boost::exception_detail::clone_base, public boost::exception {
public:
    IException(IException const&);
    IException& operator=(IException const&);
    ~IException() noexcept override;

    /// The message: the text given at the throw; for a `std::system_error`, what that class makes of its
    /// code. It is "Unknown exception" for an object that is no standard exception. Valid as long as the
    /// object.
    virtual char const* what() const noexcept;

protected:
    IException();

    /// Narrow text (UTF-8) as UTF-16; what is no UTF-8 becomes U+FFFD.
    ///
    /// Throws: `std::bad_alloc` alone.
    virtual std::u16string convert_str(std::string const& text) const;

    /// UTF-16 as narrow text (UTF-8); an unpaired surrogate becomes U+FFFD.
    ///
    /// Throws: `std::bad_alloc` alone.
    virtual std::string convert_str(std::u16string const& text) const;
};

/// The branch of the family that a library's own checks throw.
class ZVFLNETWORK_EXPORT IInternalException : public IException {
public:
    IInternalException();
    IInternalException(IInternalException const&);
    IInternalException& operator=(IInternalException const&);
    ~IInternalException() noexcept override;
};

/// A member of the branch `Base` that is the standard exception `Std` as well. `Tag` tells apart exceptions
/// with the same two bases; the library's own have none.
template <class Base, class Std, class Tag>
class ZVFLNETWORK_EXPORT Exception : public Base, public Std {
public:
    char const* what() const noexcept override { return Base::what(); }

    /// The message as UTF-16, "Unknown exception" where the standard base gives no text.
    ///
    /// Throws: `std::bad_alloc` alone.
    virtual std::u16string getMessageText() const {
        char const* const text = Std::what();
        return this->convert_str(std::string(text != nullptr ? text : "Unknown exception"));
    }

protected:
    explicit Exception(Std const& standard) : Base(), Std(standard) {}
};

namespace detail {

/// What is thrown: the standard exception `Std` inside the family.
template <class Std>
class ZVFLNETWORK_EXPORT AnonymousInternalException : public Exception<IInternalException, Std, void> {
public:
    explicit AnonymousInternalException(Std const& standard)
        : Exception<IInternalException, Std, void>(standard) {}

    /// A copy on the heap, of this type, which the caller owns.
    boost::exception_detail::clone_base const* clone() const override {
        return new AnonymousInternalException(*this);
    }

    /// Throws a copy of this object, as this type.
    [[noreturn]] void rethrow() const override { throw AnonymousInternalException(*this); }
};

/// The exception to throw for a plain standard one:
/// `throw makeInternalException(std::logic_error("IRI parsing failed"));`
template <class Std>
AnonymousInternalException<Std> makeInternalException(Std const& standard) {
    return AnonymousInternalException<Std>(standard);
}

} // namespace detail

// The types that the library throws have their one home in it, so that a handler in any module knows them.
extern template class Exception<IInternalException, std::logic_error, void>;
extern template class Exception<IInternalException, std::invalid_argument, void>;
extern template class Exception<IInternalException, std::out_of_range, void>;
extern template class Exception<IInternalException, std::runtime_error, void>;
extern template class Exception<IInternalException, std::system_error, void>;

namespace detail {

extern template class AnonymousInternalException<std::logic_error>;
extern template class AnonymousInternalException<std::invalid_argument>;
extern template class AnonymousInternalException<std::out_of_range>;
extern template class AnonymousInternalException<std::runtime_error>;
extern template class AnonymousInternalException<std::system_error>;

} // namespace detail

} // namespace foundation::core::except
