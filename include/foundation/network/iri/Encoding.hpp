#pragma once

namespace foundation::network::iri {

/// The form in which a part of an IRI, or a whole IRI, is given or asked for.
///
/// For the path written `/a b/é/100%` each form reads:
///
/// | Form      | Text                     | For                                                      |
/// |-----------|--------------------------|----------------------------------------------------------|
/// | Raw       | `/a b/é/100%`            | showing, comparing with names of files, building         |
/// | Iri       | `/a%20b/é/100%`          | keeping and printing; what a parsed text holds           |
/// | IriStrict | `/a%20b/é/100%25`        | giving to software that checks RFC 3987 to the letter    |
/// | Uri       | `/a%20b/%C3%A9/100%`     | protocols in ASCII                                       |
/// | UriStrict | `/a%20b/%C3%A9/100%25`   | protocols in ASCII that check RFC 3986 to the letter     |
enum class Encoding : unsigned char {
    /// Percent escapes resolved, each character as itself.
    Raw,
    /// Characters that an IRI may hold as themselves, the others percent-encoded; stray "%" as they stand.
    Iri,
    /// `Iri`, with a stray "%" as "%25", and "[" and "]" outside the host as "%5B" and "%5D".
    IriStrict,
    /// ASCII: of the UTF-8 bytes of `Iri`, those outside 33 to 126 percent-encoded.
    Uri,
    /// `Uri`, with the additional step of `IriStrict`.
    UriStrict,
};

} // namespace foundation::network::iri
