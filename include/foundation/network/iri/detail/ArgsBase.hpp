#pragma once

#include <foundation/core/Export.hpp>

#include <string>
#include <tuple>

namespace foundation::network::iri::detail {

template <class String>
class TemplateIRI;
template <class String>
class ArgsBase;

/// The components that an IRI is built from, in `Encoding::Raw` and in UTF-32. Callers use `IRIArgs`, which
/// is documented there.
///
/// Nothing is checked against anything else here: the constructor of the IRI does that.
///
/// Throws: each operation that takes UTF-16, the internal `std::out_of_range`, "Misplaced UTF-16 surrogate
/// U+... encountered while trying to encode UTF-32 sequence", for what is none; `std::bad_alloc`.
/// Exception safety: an operation that throws changes nothing.
template <>
class ZVFLNETWORK_EXPORT ArgsBase<std::u32string> {
    using String = std::u32string;

public:
    ArgsBase();
    ArgsBase(ArgsBase const& other);
    ArgsBase& operator=(ArgsBase const& other);
    virtual ~ArgsBase();

    void setScheme(std::u16string const& text);
    void setScheme(String text) noexcept;
    void clearScheme() noexcept;

    void setUserInfo(std::u16string const& text);
    void setUserInfo(String text) noexcept;
    void clearUserInfo() noexcept;

    void setHost(std::u16string const& text);
    void setHost(String text) noexcept;
    /// Clears the host alone, not the port.
    void clearHost() noexcept;

    void setPort(unsigned short number) noexcept;
    /// Throws: the internal `std::logic_error`, "Port must be numeric", for what is no number from 0 to
    /// 65535.
    void setPort(std::u16string const& text);
    void setPort(String const& text);
    void clearPort() noexcept;

    void setPath(std::u16string const& text);
    void setPath(String text) noexcept;
    void clearPath() noexcept;

    void setQuery(std::u16string const& text);
    void setQuery(String text) noexcept;
    void clearQuery() noexcept;

    void setFragment(std::u16string const& text);
    void setFragment(String text) noexcept;
    void clearFragment() noexcept;

    /// As `IRIArgs::appendQueryKeyValuePair`.
    void appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value, bool encodeQuery,
                                 bool useSemicolon);

protected:
    /// The text with the reserved characters of a form-encoded query as escapes ("=", "+", and "&", or ";"
    /// with `useSemicolon`) and its spaces as "+"; and whether there was a reserved character.
    std::tuple<std::u16string, bool> percentEncodeFormEncodedReservedChars(std::u16string const& text,
                                                                           bool useSemicolon) const;

private:
    friend class TemplateIRI<String>;

    struct Content {
        String scheme;
        String userInfo;
        String host;
        unsigned short port = 0;
        String path;
        String query;
        String fragment;
        bool hasQuery = false;
        bool hasFragment = false;
        bool hasScheme = false;
        bool hasHost = false;
        bool hasUserInfo = false;
        bool hasPort = false;
        bool hasPath = false;
        bool schemeTrusted = false;    // it came from an IRI and was not changed since: not matched again
        bool queryFormEncoded = false; // the query is to be encoded when the IRI is built
        bool queryFormEscaped = false; // a reserved character of the query was escaped
    };

    Content content;
};

} // namespace foundation::network::iri::detail
