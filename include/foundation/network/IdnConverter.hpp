#pragma once

/// Internationalised domain names between Unicode and ASCII, by UTS #46.
///
///     idn_to_ascii(u"bücher.example");               // "xn--bcher-kva.example"
///     ascii_to_idn("xn--bcher-kva.example");         // u"bücher.example"
///
/// Processing is transitional and has no further checks on: "ß" becomes "ss", and the rules of STD3, Bidi
/// and ContextJ are not applied. A name that UTS #46 calls invalid (an empty label, one of more than 63
/// bytes, a code point that is not allowed) is no failure: the result is the text that ICU gives for it,
/// which may mark the place with U+FFFD.

#include <foundation/core/Export.hpp>

#include <exception>
#include <memory>
#include <string>

namespace foundation::network {

class IdnConverterImpl;

/// A conversion that ICU could not carry out. It is no member of the internal family.
class ZVFLNETWORK_EXPORT IdnConverterException : public std::exception {
public:
    /// An exception whose `what()` is `name`.
    explicit IdnConverterException(std::string name);
    IdnConverterException(IdnConverterException const& other);
    IdnConverterException(IdnConverterException&& other) noexcept;
    IdnConverterException& operator=(IdnConverterException const& other);
    IdnConverterException& operator=(IdnConverterException&& other) noexcept;
    ~IdnConverterException() noexcept override;

    /// The name of ICU's error code: "U_INPUT_TOO_LONG_ERROR". Where ICU has no memory, that is
    /// "U_MEMORY_ALLOCATION_ERROR".
    char const* what() const noexcept override;

private:
    std::string message;
};

/// Converts whole domain names.
///
/// The first converter of a process loads ICU's data, which takes as long as thousands of conversions. Any
/// other one is made in less time than it takes to convert a name beyond ASCII. Copies share their content,
/// which never changes. A converter that was moved from holds nothing: it may be assigned to or destroyed,
/// and nothing else.
///
/// Throws: besides what each operation names, `std::bad_alloc` where the library has no memory; ICU has its
/// own word for that.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may convert with one converter at once.
class ZVFLNETWORK_EXPORT IdnConverter {
public:
    /// Throws: `IdnConverterException` with the name of ICU's error, where ICU's data cannot be loaded.
    IdnConverter();

    IdnConverter(IdnConverter const& other);
    IdnConverter(IdnConverter&& other) noexcept;
    IdnConverter& operator=(IdnConverter const& other);
    IdnConverter& operator=(IdnConverter&& other) noexcept;
    ~IdnConverter();

    /// The ASCII form of a name. Each unit that ICU leaves outside ASCII, which it does in an invalid
    /// label, becomes U+001A, the substitute character: no character turns into one that looks like
    /// another.
    ///
    /// Throws: `IdnConverterException` with the name of ICU's error, as for a label that has characters
    /// beyond ASCII and, once mapped, more than 1,000 UTF-16 units (ICU 72).
    /// Complexity: linear in the length of `name` if it is ASCII and has no "xn--"; else quadratic in the
    /// number of labels.
    std::string toAscii(std::u16string const& name) const;

    /// The Unicode form of a name. Each byte of `name` outside ASCII counts as U+FFFD.
    ///
    /// Throws: `IdnConverterException` with the name of ICU's error.
    /// Complexity: as `toAscii`.
    std::u16string toUnicode(std::string const& name) const;

    /// The same as `toAscii`.
    std::string convert(std::u16string const& name) const;

    /// The same as `toUnicode`.
    std::u16string convert(std::string const& name) const;

private:
    std::shared_ptr<IdnConverterImpl const> impl;
};

/// The ASCII form of a name, by a converter made for this call.
///
/// Throws: as `IdnConverter()` and `IdnConverter::toAscii`.
/// Complexity: as `IdnConverter::toAscii`.
/// Thread safety: any number of threads may call it at once.
ZVFLNETWORK_EXPORT std::string idn_to_ascii(std::u16string const& name);

/// The Unicode form of a name, by a converter made for this call.
///
/// Throws: as `IdnConverter()` and `IdnConverter::toUnicode`.
/// Complexity: as `IdnConverter::toUnicode`.
/// Thread safety: any number of threads may call it at once.
ZVFLNETWORK_EXPORT std::u16string ascii_to_idn(std::string const& name);

} // namespace foundation::network
