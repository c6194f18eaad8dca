// Equality, order and hash: exact code points of the texts, and nothing else.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "text/Scans.hpp"

namespace foundation::network::iri::detail {

using Value = TemplateIRI<std::u32string>;

namespace {

constexpr std::uint64_t FNV_OFFSET = 0xcbf29ce484222325;
constexpr std::uint64_t FNV_PRIME = 0x100000001b3;
constexpr std::uint64_t FNV_PRIME_2 = FNV_PRIME * FNV_PRIME;
constexpr std::uint64_t FNV_PRIME_3 = FNV_PRIME_2 * FNV_PRIME;
constexpr std::uint64_t FNV_PRIME_4 = FNV_PRIME_3 * FNV_PRIME;

// 64-bit FNV-1a over four bytes a code point, the least significant first. Bytes of zero only multiply, so
// most code points take one multiplication.
std::uint64_t fnv1a(std::u32string_view text) {
    std::uint64_t hash = FNV_OFFSET;
    for (char32_t const c : text) {
        if (c < 0x100) {
            hash = (hash ^ c) * FNV_PRIME_4;
        } else if (c < 0x10000) {
            hash = ((hash ^ (c & 0xFF)) * FNV_PRIME ^ c >> 8) * FNV_PRIME_3;
        } else {
            hash = ((hash ^ (c & 0xFF)) * FNV_PRIME ^ (c >> 8 & 0xFF)) * FNV_PRIME;
            hash = ((hash ^ (c >> 16 & 0xFF)) * FNV_PRIME ^ c >> 24) * FNV_PRIME;
        }
    }
    return hash;
}

} // namespace

bool Value::operator==(TemplateIRI const& other) const {
    bool const sameText = text::isSame(stored.text, other.stored.text);
    if (stored.parsed && other.stored.parsed) {
        return sameText;
    }
    if (isEmpty() || other.isEmpty()) {
        return isEmpty() && other.isEmpty();
    }
    Components const& components = stored.components;
    if (sameText && !stored.parsed && !other.stored.parsed && components.isLike(other.stored.components)) {
        return true; // the same components in the same forms: no need to make the Iri form
    }
    if (stored.scheme() != other.stored.scheme() || hasPort() != other.hasPort() ||
        components.port != other.stored.components.port) {
        return false;
    }
    if (hash.isReady() && other.hash.isReady() && hash.get() != other.hash.get()) {
        return false;
    }
    return text::isSame(kept(Form::iri), other.kept(Form::iri));
}

// A strict weak order over parsed values and over others, but not over both mixed: see `IRITextLess`.
bool Value::operator<(TemplateIRI const& other) const {
    Form const form = stored.parsed || other.stored.parsed ? Form::iri : Form::raw;
    return kept(form) < other.kept(form);
}

bool Value::isTextLess(TemplateIRI const& other) const {
    return kept(Form::iri) < other.kept(Form::iri);
}

std::uint64_t Value::hashValue() const {
    if (!hash.isReady()) {
        hash.publish(isEmpty() ? 0 : fnv1a(kept(Form::iri)));
    }
    return hash.get();
}

} // namespace foundation::network::iri::detail
