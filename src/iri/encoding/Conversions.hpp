#pragma once

#include <foundation/network/iri/detail/Part.hpp>

#include <optional>
#include <string>
#include <string_view>

/// Conversions of a component's text from one form to another.
///
/// A conversion returns nothing if it sees, without making a text, that both forms are the same; what it
/// returns may still equal the text. Of the context, conversions of the path look at `schemePresent`,
/// `hasUserInfo` and `hasHost`, those of the query at `formEncoded`. Linear; any number of threads may
/// convert at once.
namespace foundation::network::iri::encoding {

using detail::Part;
using detail::PartContext;
using Converted = std::optional<std::u32string>;

/// Decodes all escapes; a form-encoded query is converted to the Uri form instead. Bytes that are no UTF-8
/// become the code points of their values.
///
/// Throws: the internal `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode
/// UTF-32 character", where escapes stand for an overlong form, a surrogate or a value above U+10FFFF.
Converted rawFromIri(Part part, std::u32string_view text, PartContext const& context);

/// Escapes what an IRI, or this component, may not hold, and writes the "%" of what looks like an escape as
/// "%25", but not in a form-encoded query.
Converted iriFromRaw(Part part, std::u32string_view text, PartContext const& context);

/// Decodes escapes, but not those of characters that are special to the component. A form-encoded query stays
/// as it is.
///
/// Throws: as `rawFromIri`.
Converted iriFromUri(Part part, std::u32string_view text, PartContext const& context);

/// Escapes what does not stand between U+0021 and U+007E.
Converted uriFromIri(Part part, std::u32string_view text, PartContext const& context);

/// Converts between any two forms, Raw and Uri by way of Iri.
Converted convert(Part part, detail::Form from, detail::Form to, std::u32string_view text,
                  PartContext const& context);

/// The Raw form, in UTF-16 or UTF-8, of a text in the Iri form, in one pass. The text must not be a
/// form-encoded query. Returns nothing if escapes are not UTF-8: then `rawFromIri` is needed.
template <class String>
std::optional<String> rawTextFromIri(std::u32string_view text);

} // namespace foundation::network::iri::encoding
