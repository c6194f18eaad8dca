#pragma once

/// Internationalised domain names between Unicode and ASCII, by UTS #46.
///
///     idn_to_ascii(u"bücher.example");               // "xn--bcher-kva.example"
///     ascii_to_idn("xn--bcher-kva.example");         // u"bücher.example"
///
/// Processing is transitional and has no further checks on: "ß" becomes "ss", STD3 rules, Bidi and ContextJ
/// rules are not applied. A name that UTS #46 calls invalid (an empty label, one of more than 63 bytes, a
/// code point that is not allowed) is no failure: it gives the text that ICU gives for it, which may mark the
/// place with U+FFFD.

#include <foundation/core/Export.hpp>

#include <exception>
#include <memory>
#include <string>

namespace foundation::network {

class IdnConverterImpl;

/// A conversion that ICU could not carry out. It is no member of the internal exception family.
class ZVFLNETWORK_EXPORT IdnConverterException : public std::exception {
public:
    /// `name` is what `what` gives.
    explicit IdnConverterException(std::string name);
    IdnConverterException(IdnConverterException const& other);
    IdnConverterException(IdnConverterException&& other) noexcept;
    IdnConverterException& operator=(IdnConverterException const& other);
    IdnConverterException& operator=(IdnConverterException&& other) noexcept;
    ~IdnConverterException() noexcept override;

    /// The name of ICU's error code: "U_INPUT_TOO_LONG_ERROR".
    char const* what() const noexcept override;

private:
    std::string message;
};

/// Converts whole domain names. Making one is much dearer than a conversion: keep it, or copy it, where names
/// are many.
///
/// A handle that shares its immutable content with its copies. One that was moved from holds nothing: it may
/// be assigned to or destroyed, and nothing else. Any number of threads may convert with one converter.
class ZVFLNETWORK_EXPORT IdnConverter {
public:
    /// Throws `IdnConverterException` with the name of ICU's error if ICU's data can't be loaded.
    IdnConverter();

    IdnConverter(IdnConverter const& other);
    IdnConverter(IdnConverter&& other) noexcept;
    IdnConverter& operator=(IdnConverter const& other);
    IdnConverter& operator=(IdnConverter&& other) noexcept;
    ~IdnConverter();

    /// The ASCII form of a name. Each unit that ICU leaves outside ASCII, which it does in an invalid label,
    /// becomes U+001A, the substitute character: no character turns into one that looks like another.
    /// Throws `IdnConverterException` with the name of ICU's error, as for a label of some thousand units.
    std::string toAscii(std::u16string const& name) const;

    /// The Unicode form of a name. Each byte of `name` outside ASCII counts as U+FFFD.
    /// Throws as `toAscii`.
    std::u16string toUnicode(std::string const& name) const;

    /// The same as `toAscii`.
    std::string convert(std::u16string const& name) const;

    /// The same as `toUnicode`.
    std::u16string convert(std::string const& name) const;

private:
    std::shared_ptr<IdnConverterImpl const> impl;
};

/// The ASCII form of a name, by a converter made for this call. Throws as `IdnConverter()` and `toAscii`.
ZVFLNETWORK_EXPORT std::string idn_to_ascii(std::u16string const& name);

/// The Unicode form of a name, by a converter made for this call. Throws as `IdnConverter()` and `toUnicode`.
ZVFLNETWORK_EXPORT std::u16string ascii_to_idn(std::string const& name);

} // namespace foundation::network
