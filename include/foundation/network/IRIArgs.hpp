#pragma once

/// The parts of an IRI, to build one from.
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

/// The parts of an IRI as a reader sees them (`Encoding::Raw`): nothing in them needs to be escaped, and what
/// looks like an escape stands for itself.
///
/// A part that was set is present, also with an empty text. Parts are checked when an `IRI` is built, not
/// here: a port without a host, say, can be stored. All operations but the constructors give the object
/// itself, so that calls can be chained, and have the strong guarantee.
///
/// Text is UTF-16; each setter throws the `std::out_of_range` of the family with "Misplaced UTF-16 surrogate
/// U+0xdc00 encountered while trying to encode UTF-32 sequence", and the value that it met, for what is none.
///
/// A plain value: not for several threads at once while one of them changes it. Moving copies.
class ZVFLNETWORK_EXPORT IRIArgs : public iri::detail::ArgsBase<std::u32string> {
public:
    IRIArgs();
    /// The parts of `iri`, decoded. Throws `std::runtime_error` with "Item not set: Path" for `IRI()`, which
    /// has no path, and what the getters of `iri` throw for a part that cannot be decoded.
    ///
    /// A host in brackets does not survive the way back into an IRI: its brackets and colons are escaped
    /// there.
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
    /// Throws the `std::logic_error` of the family with "Port must be numeric" for what is no number from 0
    /// to 65535 in ASCII digits; the port stays as it was then.
    IRIArgs& setPort(std::u16string const& text);
    IRIArgs& clearPort() noexcept;
    IRIArgs& setPath(std::u16string const& text);
    IRIArgs& clearPath() noexcept;
    /// Without the "?". How the query is encoded stays as the last `appendQueryKeyValuePair` said.
    IRIArgs& setQuery(std::u16string const& text);
    IRIArgs& clearQuery() noexcept;
    /// Without the "#".
    IRIArgs& setFragment(std::u16string const& text);
    IRIArgs& clearFragment() noexcept;

    /// Appends `key=value` to the query, behind a "&", or a ";" with `useSemicolon`, where the query is not
    /// empty.
    ///
    /// Of key and value, "=" and "+" become escapes, so does the separator of this call, and a space becomes
    /// "+"; all else stays. With `encodeQuery` the whole query is written in ASCII when the IRI is built; the
    /// last call decides.
    ///
    /// Throws the `std::logic_error` of the family with "Key must not be empty". Linear in the length of the
    /// pair, amortised.
    IRIArgs& appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value, bool encodeQuery,
                                     bool useSemicolon);
};

} // namespace foundation::network
