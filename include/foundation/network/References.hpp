#pragma once

/// References that keep every escape: RFC 3986, section 5, on the texts as they are written.
///
///     #include <foundation/network/References.hpp>
///
///     IRI const page(u"http://h/x/page");
///     resolveExactly(IRI(u"../a%2Bb"), page);                       // http://h/a%2Bb
///     makeRelativeExactly(IRI(u"http://h/x/a%2Fb?q"), page);        // a%2Fb?q
///
/// `IRI::resolveAgainst` and `IRI::makeRelativeTo` work on decoded paths instead.
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>

namespace foundation::network {

/// The target of `reference`, seen from `base`.
///
/// It is put together from the components' texts in `Encoding::Iri`; nothing is decoded or encoded. Any
/// base is taken, relative ones too; `IRI()` counts as an empty path. A target whose text would read as
/// something else gets a guard in front of its path: "/." where the path begins with "//" beside no
/// authority (section 3.3), "./" where its first segment holds ":" beside no scheme and no authority
/// (section 4.2). The result is as its text parsed again, unless an operand is a built value whose own text
/// cannot be read again (docs/anatomy.md lists these).
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of both.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 3986, sections 5.2.2 (strict), 5.2.3, 5.2.4.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI resolveExactly(IRI const& reference, IRI const& base);

/// The shortest reference that `resolveExactly` leads from `base` to `iri`, counted in UTF-16 units of its
/// text; of equally short ones the one without a scheme, then without an authority, then without a "/" in
/// front.
///
/// For every parsed `iri` with a scheme and without dot segments, and every parsed `base` with a scheme,
/// `resolveExactly(makeRelativeExactly(iri, base), base) == iri`. An `iri` with dot segments is led to
/// without them. Where one of the two has no scheme, the result is `iri` whole. Schemes and authorities are
/// the same if their texts are. The result is as its text parsed again. All this holds for built values,
/// too, if their own text can be read again (docs/anatomy.md lists those whose text cannot).
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of both.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI makeRelativeExactly(IRI const& iri, IRI const& base);

} // namespace foundation::network
