#pragma once

/// The components of an IRI, to build one from.
///
///     #include <foundation/network/IRI.hpp>
///     #include <foundation/network/IRIArgs.hpp>
///
///     foundation::network::IRIArgs args;
///     args.setScheme(u"http").setHost(u"example.org").setPath(u"/söker du?");
///     args.appendQueryKeyValuePair(u"q", u"a+b & c", false, false);
///     foundation::network::IRI const iri(args);
///     iri.toString(false);    // u"http://example.org/söker%20du%3F?q=a%2Bb+%26+c"

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/detail/ArgsBase.hpp>

#include <string>

namespace foundation::network {

class IRI;

/// The components of an IRI as a person reads them (`Encoding::Raw`).
///
/// What a component cannot hold is escaped in the texts of the IRI that is built, and what looks like an
/// escape stands for itself. That has gaps, so that some values have a text that reads as something else or
/// as no IRI: docs/anatomy.md lists what can be built and no text can carry.
///
/// A component that was set is present, also with an empty text. Components are checked when an `IRI` is
/// built, not here: a port without a host, say, can be stored. All operations but the constructors give the
/// object itself, so that calls can be chained. Texts are UTF-16. Moving copies.
///
/// Throws: each operation that takes a text, the internal `std::out_of_range`, "Misplaced UTF-16 surrogate
/// U+0xdc00 encountered while trying to encode UTF-32 sequence" with the unit that it met, for what is no
/// UTF-16; `std::bad_alloc`.
/// Complexity: of each operation, linear in the length of the text that it is given or copies.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may copy one object and build from it, while none changes it.
class ZVFLNETWORK_EXPORT IRIArgs : public iri::detail::ArgsBase<std::u32string> {
public:
    IRIArgs();
    /// The components of `iri`, decoded.
    ///
    /// An IRI that is built of them is not always `iri` again: docs/change-one-part.md has the table. Above
    /// all, the brackets and colons of an IP literal are escaped, and so is once more a "%" that stands
    /// before two hexadecimal digits in the decoded host.
    ///
    /// Throws: `std::runtime_error`, "Item not set: Path", for `IRI()`, which has no path; that is no
    /// exception of the internal family. As the getters of `iri` for a component that cannot be decoded.
    explicit IRIArgs(IRI const& iri);
    IRIArgs(IRIArgs const& other);
    IRIArgs& operator=(IRIArgs const& other);
    ~IRIArgs() override;

    /// Without the ":".
    IRIArgs& setScheme(std::u16string const& text);
    IRIArgs& clearScheme() noexcept;
    /// Without the "@".
    IRIArgs& setUserInfo(std::u16string const& text);
    IRIArgs& clearUserInfo() noexcept;
    IRIArgs& setHost(std::u16string const& text);
    /// Clears the port as well.
    IRIArgs& clearHost() noexcept;
    IRIArgs& setPort(unsigned short number) noexcept;
    /// Leading zeros are taken, and not kept.
    ///
    /// Throws: the internal `std::logic_error`, "Port must be numeric", for what is no number from 0 to
    /// 65535 in ASCII digits.
    IRIArgs& setPort(std::u16string const& text);
    IRIArgs& clearPort() noexcept;
    IRIArgs& setPath(std::u16string const& text);
    IRIArgs& clearPath() noexcept;
    /// Without the "?". Whether the query is form-encoded stays as the calls of `appendQueryKeyValuePair`
    /// have left it, also when the query was cleared in between.
    IRIArgs& setQuery(std::u16string const& text);
    IRIArgs& clearQuery() noexcept;
    /// Without the "#".
    IRIArgs& setFragment(std::u16string const& text);
    IRIArgs& clearFragment() noexcept;

    /// Appends `key=value` to the query, behind a "&", or a ";" with `useSemicolon`, where the query is not
    /// empty.
    ///
    /// Of key and value, "=" and "+" become escapes, so does the separator of this call, and a space
    /// becomes "+". If one of these characters became an escape in any call, or if the last call has
    /// `encodeQuery`, the query is *form-encoded* from then on: what looks like an escape in it is one when
    /// the IRI is built, and is not decoded in `Encoding::Raw`. With `encodeQuery` in the last call the
    /// whole query is written in ASCII, too. A text does not carry the mark: once printed and parsed, the
    /// query is decoded like any other.
    ///
    /// `QueryParameters` escapes whatever stands in a name or a value, and reads both again.
    ///
    /// Throws: the internal `std::logic_error`, "Key must not be empty".
    /// Complexity: linear in the length of the pair, over all pairs.
    IRIArgs& appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value, bool encodeQuery,
                                     bool useSemicolon);
};

} // namespace foundation::network
