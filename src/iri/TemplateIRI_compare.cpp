// Equality, order and hash: exact code points of the texts, and nothing else.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/SameText.hpp"

namespace foundation::network::iri::detail {

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

template <class String>
bool TemplateIRI<String>::operator==(TemplateIRI const& other) const {
    if (flags.textCurrent && other.flags.textCurrent) {
        return isSame(sourceText(), other.sourceText()); // which holds scheme, port and parts
    }
    if (flags.empty || other.flags.empty) {
        return flags.empty && other.flags.empty;
    }
    if (flags.hasScheme != other.flags.hasScheme || schemeView() != other.schemeView() ||
        flags.hasPort != other.flags.hasPort || port != other.port) {
        return false;
    }
    if (!flags.textCurrent && !other.flags.textCurrent && parts.isSlicedLike(other.parts)) {
        return true; // the same pieces in the same forms, so the same text without the need to assemble it
    }
    if (hash.isReady() && other.hash.isReady() && hash.get() != other.hash.get()) {
        return false;
    }
    return isSame(toNativeStringFromParts(Encoding::Iri), other.toNativeStringFromParts(Encoding::Iri));
}

template <class String>
bool TemplateIRI<String>::operator<(TemplateIRI const& other) const {
    if (flags.textCurrent && other.flags.textCurrent) {
        return sourceText() < other.sourceText();
    }
    Encoding const form = flags.textCurrent || other.flags.textCurrent ? Encoding::Iri : Encoding::Raw;
    return toNativeStringFromParts(form) < other.toNativeStringFromParts(form);
}

template <class String>
bool TemplateIRI<String>::isTextLess(TemplateIRI const& other) const {
    return toNativeStringFromParts(Encoding::Iri) < other.toNativeStringFromParts(Encoding::Iri);
}

template <class String>
std::uint64_t TemplateIRI<String>::hashValue() const {
    if (!hash.isReady()) {
        generateHash();
    }
    return hash.get();
}

template <class String>
void TemplateIRI<String>::generateHash() const {
    hash.publish(flags.empty ? 0 : fnv1a(toNativeStringFromParts(Encoding::Iri)));
}

template bool TemplateIRI<std::u32string>::operator==(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::operator<(TemplateIRI const&) const;
template bool TemplateIRI<std::u32string>::isTextLess(TemplateIRI const&) const;
template std::uint64_t TemplateIRI<std::u32string>::hashValue() const;
template void TemplateIRI<std::u32string>::generateHash() const;

} // namespace foundation::network::iri::detail
