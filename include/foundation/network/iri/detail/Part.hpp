#pragma once

#include <foundation/network/iri/Encoding.hpp>

#include <cstdint>

namespace foundation::network::iri::detail {

/// The components of an IRI that have encoded forms, in the order in which they stand in it.
enum class Part : std::uint8_t { userInfo, host, path, query, fragment };

/// The forms in which a component is kept. The strict encodings have none of their own: their texts are
/// made from those of `iri` and `uri` when they are asked for.
enum class Form : std::uint8_t { raw, iri, uri };

/// The form that an encoding reads and writes.
constexpr Form formOf(Encoding const& encoding) noexcept {
    return encoding == Encoding::Raw                                      ? Form::raw
           : encoding == Encoding::Iri || encoding == Encoding::IriStrict ? Form::iri
                                                                          : Form::uri;
}

/// The encoding that a text in this form is set with.
constexpr Encoding encodingOf(Form form) noexcept {
    return form == Form::raw ? Encoding::Raw : form == Form::iri ? Encoding::Iri : Encoding::Uri;
}

/// What the conversions of a component depend on besides its text. Those of the path look at the first
/// three, those of the query at the last.
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
