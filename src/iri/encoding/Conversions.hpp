#pragma once

#include <foundation/network/iri/detail/Part.hpp>

#include <optional>
#include <string>
#include <string_view>

/// What the text of a part becomes in another form.
///
/// Each conversion gives nothing where the text is the same in both forms and that could be told without
/// making it; a result may still equal the text. The path looks at `schemePresent`, `hasUserInfo` and
/// `hasHost` of the context, the query at `formEncoded`. Linear; any number of threads may convert at once.
namespace foundation::network::iri::encoding {

using detail::Part;
using detail::PartContext;
using Converted = std::optional<std::u32string>;

/// Decodes escapes. Throws "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character" where
/// they decode to an overlong form, a surrogate or a value above U+10FFFF; other bytes that are no UTF-8
/// become the code points of their values.
Converted rawFromIri(Part part, std::u32string_view text, PartContext const& context);

/// Escapes what an IRI, or this part of one, may not hold as itself, and protects what looks like an escape.
Converted iriFromRaw(Part part, std::u32string_view text, PartContext const& context);

/// Decodes escapes but those of characters that are special to the part. Throws as `rawFromIri`.
Converted iriFromUri(Part part, std::u32string_view text, PartContext const& context);

/// Escapes what is not ASCII.
Converted uriFromIri(Part part, std::u32string_view text, PartContext const& context);

/// The conversion between any two forms. Raw and Uri are converted into each other by way of Iri.
Converted convert(Part part, detail::Form from, detail::Form to, std::u32string_view text,
                  PartContext const& context);

/// The Raw form, in UTF-16 or UTF-8, of a text in the Iri form that is no form-encoded query, in one pass.
/// Gives nothing where only `rawFromIri` can tell: where escapes are not all UTF-8.
template <class String>
std::optional<String> rawTextFromIri(std::u32string_view text);

} // namespace foundation::network::iri::encoding
