#pragma once

#include <foundation/network/iri/Encoding.hpp>

#include <cstdint>

namespace foundation::network::iri::detail {

/// The parts of an IRI that have encoded forms, in the order in which they are compared.
enum class Part : std::uint8_t { userInfo, host, path, query, fragment };

/// The forms in which a part is kept. The strict encodings have none of their own: they are made from the
/// text of `iri` and `uri` when asked for.
enum class Form : std::uint8_t { raw, iri, uri };

/// The form that an encoding reads and writes.
constexpr Form formOf(Encoding const& encoding) noexcept {
    return encoding == Encoding::Raw                                      ? Form::raw
           : encoding == Encoding::Iri || encoding == Encoding::IriStrict ? Form::iri
                                                                          : Form::uri;
}

/// The encoding to set a text with that was read in a form.
constexpr Encoding encodingOf(Form form) noexcept {
    return form == Form::raw ? Encoding::Raw : form == Form::iri ? Encoding::Iri : Encoding::Uri;
}

/// What the conversions of a part depend on besides its text. The path sees the first three, the query the
/// last.
struct PartContext {
    bool schemePresent = false;
    bool hasUserInfo = false;
    bool hasHost = false;
    bool formEncoded = false;

    friend constexpr bool operator==(PartContext const& left, PartContext const& right) noexcept {
        return left.schemePresent == right.schemePresent && left.hasUserInfo == right.hasUserInfo &&
               left.hasHost == right.hasHost && left.formEncoded == right.formEncoded;
    }
};

} // namespace foundation::network::iri::detail
