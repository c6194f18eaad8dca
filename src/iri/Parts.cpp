#include <foundation/network/iri/detail/Parts.hpp>

namespace foundation::network::iri::detail {

namespace {

// Each step uses what the one before has set.
template <class Record>
void closeAuthority(Record& parts) {
    using Range = typename Record::Range;
    if (!parts.userInfo) {
        auto const place = (parts.host ? parts.host : parts.path)->begin();
        parts.userInfo = Range(place, place);
    }
    if (!parts.host) {
        parts.host = Range(parts.path->begin(), parts.path->begin());
    }
    if (!parts.port) {
        parts.port = Range(parts.host->end(), parts.host->end());
    }
}

} // namespace

template <class Iterator>
void HierarchicalPart<Iterator>::update() {
    closeAuthority(*this);
}

template <class Iterator>
void Parts<Iterator>::update() {
    closeAuthority(*this);
    if (!query) {
        query = Range(path->end(), path->end());
    }
    if (!fragment) {
        fragment = Range(query->end(), query->end());
    }
}

template struct HierarchicalPart<std::u32string::const_iterator>;
template struct Parts<std::u32string::const_iterator>;

} // namespace foundation::network::iri::detail
