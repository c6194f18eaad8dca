#pragma once

#include <foundation/core/Export.hpp>

#include <boost/optional/optional.hpp>
#include <boost/range/iterator_range_core.hpp>

#include <string>

namespace foundation::network::iri::detail {

/// Where the components of `ihier-part` and `irelative-part` (RFC 3987, section 2.2) stand in a text.
///
/// An absent field was not met by the grammar; a present, empty one was met with no characters in it. The
/// iterators belong to the text that was matched, and are valid as long as that is.
template <class Iterator>
struct ZVFLNETWORK_EXPORT HierarchicalPart {
    using Range = boost::iterator_range<Iterator>;

    HierarchicalPart() = default;

    /// Gives each absent field an empty range at the place where the component would have stood. `path`
    /// must be present.
    ///
    /// Complexity: constant.
    void update();

    boost::optional<Range> userInfo;
    boost::optional<Range> host;
    boost::optional<Range> port;
    boost::optional<Range> path;
};

/// Where the components of an `IRI-reference` (RFC 3987, section 2.2) stand in a text.
template <class Iterator>
struct ZVFLNETWORK_EXPORT Parts {
    using Range = boost::iterator_range<Iterator>;

    Parts() = default;

    /// As `HierarchicalPart::update`, for every field but `scheme`.
    void update();

    boost::optional<Range> scheme;
    boost::optional<Range> userInfo;
    boost::optional<Range> host;
    boost::optional<Range> port;
    boost::optional<Range> path;
    boost::optional<Range> query;
    boost::optional<Range> fragment;
};

extern template struct HierarchicalPart<std::u32string::const_iterator>;
extern template struct Parts<std::u32string::const_iterator>;

/// Reads a port: one or more ASCII digits with a value of at most 65535, leading zeros allowed. `value` is
/// set only where all of `text` is such a number; the result tells whether it is.
///
/// Throws: nothing.
/// Complexity: linear in the length of `text`.
/// Thread safety: any number of threads may call it at once.
template <class String>
ZVFLNETWORK_EXPORT bool portStringToNumeric(String const& text, unsigned short& value);

extern template bool portStringToNumeric<std::u32string>(std::u32string const&, unsigned short&);

} // namespace foundation::network::iri::detail
