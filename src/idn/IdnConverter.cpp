#include <foundation/network/IdnConverter.hpp>

#include "platform/TextConverters.hpp"

#include <unicode/errorcode.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

namespace foundation::network {

IdnConverterException::IdnConverterException(std::string name) : message(std::move(name)) {}
IdnConverterException::IdnConverterException(IdnConverterException const&) = default;
IdnConverterException::IdnConverterException(IdnConverterException&&) noexcept = default;
IdnConverterException& IdnConverterException::operator=(IdnConverterException const&) = default;
IdnConverterException& IdnConverterException::operator=(IdnConverterException&& other) noexcept {
    message.swap(other.message); // a self-move must not empty the text
    return *this;
}
IdnConverterException::~IdnConverterException() noexcept = default;

char const* IdnConverterException::what() const noexcept {
    return message.c_str();
}

class IdnConverterImpl {
public:
    IdnConverterImpl() : narrow(false), widen(false) {
        icu::ErrorCode status;
        // No options: transitional processing, and none of the optional checks. `UIDNA_DEFAULT` is not used,
        // since ICU 76 changed what it stands for.
        constexpr std::uint32_t options = 0;
        idna.reset(icu::IDNA::createUTS46Instance(options, status));
        failOn(status);
    }

    std::string toAscii(std::u16string_view name) const {
        auto const result = process(&icu::IDNA::nameToASCII, name);
        return narrow.convert(view(result));
    }

    std::u16string toUnicode(std::string_view name) const {
        auto const result = process(&icu::IDNA::nameToUnicode, widen.convert(name));
        return std::u16string(view(result));
    }

private:
    using Operation = icu::UnicodeString& (icu::IDNA::*)(icu::UnicodeString const&, icu::UnicodeString&,
                                                         icu::IDNAInfo&, UErrorCode&) const;

    static void failOn(icu::ErrorCode const& status) {
        if (status.isFailure()) {
            throw IdnConverterException(status.errorName());
        }
    }

    static std::u16string_view view(icu::UnicodeString const& text) {
        return {text.getBuffer(), static_cast<std::size_t>(text.length())};
    }

    icu::UnicodeString process(Operation operation, std::u16string_view name) const {
        icu::ErrorCode status;
        if (name.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
            status.set(U_ILLEGAL_ARGUMENT_ERROR); // ICU's lengths have 32 bits
        }
        failOn(status);
        icu::UnicodeString const input(false, name.data(), static_cast<std::int32_t>(name.size())); // no copy
        icu::UnicodeString result;
        icu::IDNAInfo info; // faults of the name that UTS #46 finds; they are ignored
        (idna.get()->*operation)(input, result, info, status);
        failOn(status);
        return result;
    }

    std::unique_ptr<icu::IDNA> idna;
    fl::i18n::codecvt_ustring_to_ascii narrow;
    fl::i18n::codecvt_ascii_to_ustring widen;
};

IdnConverter::IdnConverter() : impl(std::make_shared<IdnConverterImpl const>()) {}
IdnConverter::IdnConverter(IdnConverter const&) = default;
IdnConverter::IdnConverter(IdnConverter&&) noexcept = default;
IdnConverter& IdnConverter::operator=(IdnConverter const&) = default;
IdnConverter& IdnConverter::operator=(IdnConverter&&) noexcept = default;
IdnConverter::~IdnConverter() = default;

std::string IdnConverter::toAscii(std::u16string const& name) const {
    return impl->toAscii(name);
}
std::u16string IdnConverter::toUnicode(std::string const& name) const {
    return impl->toUnicode(name);
}
std::string IdnConverter::convert(std::u16string const& name) const {
    return toAscii(name);
}
std::u16string IdnConverter::convert(std::string const& name) const {
    return toUnicode(name);
}

std::string idn_to_ascii(std::u16string const& name) {
    return IdnConverter().toAscii(name);
}
std::u16string ascii_to_idn(std::string const& name) {
    return IdnConverter().toUnicode(name);
}

} // namespace foundation::network
