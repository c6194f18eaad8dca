#pragma once

namespace foundation::network::iri {

/// The form in which a component of an IRI, or a whole IRI, is given or asked for.
///
/// For the path written `/a b/é/100%` each form reads:
///
/// | Form      | Text                     | For                                                        |
/// |-----------|--------------------------|------------------------------------------------------------|
/// | Raw       | `/a b/é/100%`            | showing, comparing with names of files, building           |
/// | Iri       | `/a%20b/é/100%`          | keeping and printing; what a parsed text holds             |
/// | IriStrict | `/a%20b/é/100%25`        | software that takes no stray "%" and no brackets in a path |
/// | Uri       | `/a%20b/%C3%A9/100%`     | protocols in ASCII                                         |
/// | UriStrict | `/a%20b/%C3%A9/100%25`   | protocols in ASCII, to software as for `IriStrict`         |
///
/// The strict forms mend these two alone. What else the grammar takes beyond RFC 3987, such as letters of
/// any script in a scheme, stays in them (docs/differences.md).
enum class Encoding : unsigned char {
    /// Escapes are decoded, and each character stands as itself.
    Raw,
    /// Characters that an IRI may hold stand as themselves, the others are percent-encoded; a stray "%"
    /// stays as it is.
    Iri,
    /// `Iri`, with a stray "%" as "%25", and, in path, query and fragment, "[" and "]" as "%5B" and "%5D".
    IriStrict,
    /// ASCII: of the UTF-8 bytes of `Iri`, those outside 33 to 126 are percent-encoded.
    Uri,
    /// `Uri` with the additional step of `IriStrict`.
    UriStrict,
};

} // namespace foundation::network::iri
