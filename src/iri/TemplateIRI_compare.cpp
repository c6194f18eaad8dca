// Equality, order and hash. Texts are compared code point by code point; nothing is normalised.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "text/Scans.hpp"

namespace foundation::network::iri::detail {

using Value = TemplateIRI<std::u32string>;

namespace {

constexpr std::uint64_t fnvOffset = 0xcbf29ce484222325;
constexpr std::uint64_t fnvPrime = 0x100000001b3;
constexpr std::uint64_t fnvPrime2 = fnvPrime * fnvPrime;
constexpr std::uint64_t fnvPrime3 = fnvPrime2 * fnvPrime;
constexpr std::uint64_t fnvPrime4 = fnvPrime3 * fnvPrime;

// 64-bit FNV-1a over the four bytes of each code point, the least significant first. A zero byte only
// multiplies, so the multiplications for several of them are done as one.
std::uint64_t fnv1a(std::u32string_view text) {
    std::uint64_t hash = fnvOffset;
    for (char32_t const c : text) {
        if (c < 0x100) {
            hash = (hash ^ c) * fnvPrime4;
        } else if (c < 0x10000) {
            hash = ((hash ^ (c & 0xFF)) * fnvPrime ^ c >> 8) * fnvPrime3;
        } else {
            hash = ((hash ^ (c & 0xFF)) * fnvPrime ^ (c >> 8 & 0xFF)) * fnvPrime;
            hash = ((hash ^ (c >> 16 & 0xFF)) * fnvPrime ^ c >> 24) * fnvPrime;
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
        return true; // the Iri forms need not be made to be compared
    }
    if (stored.scheme() != other.stored.scheme() || hasPort() != other.hasPort() ||
        components.port != other.stored.components.port) {
        return false;
    }
    if (hash.get() != 0 && other.hash.get() != 0 && hash.get() != other.hash.get()) {
        return false;
    }
    return text::isSame(kept(Form::iri), other.kept(Form::iri));
}

// A strict weak order over parsed values, and over values that were not parsed, but not over both mixed;
// `IRITextLess` is one over all.
bool Value::operator<(TemplateIRI const& other) const {
    Form const form = stored.parsed || other.stored.parsed ? Form::iri : Form::raw;
    return kept(form) < other.kept(form);
}

bool Value::isTextLess(TemplateIRI const& other) const {
    return kept(Form::iri) < other.kept(Form::iri);
}

std::uint64_t Value::hashValue() const {
    std::uint64_t value = hash.get();
    if (value == 0 && !isEmpty()) {
        value = fnv1a(kept(Form::iri));
        hash.store(value);
    }
    return value;
}

} // namespace foundation::network::iri::detail
