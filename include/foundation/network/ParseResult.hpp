#pragma once

/// Parsing without exceptions, and with a reason.
///
///     #include <foundation/network/ParseResult.hpp>
///
///     if (auto const result = tryParse(line)) {
///         use(*result);
///     } else {
///         std::cerr << result.error() << '\n';   // U+0020 cannot stand in a host, at offset 8
///     }
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/ParseFault.hpp>

#include <optional>
#include <string_view>
#include <utility>

namespace foundation::network {

/// An IRI, or the reason why there is none. It has the operations of `std::expected<IRI, ParseFault>` that
/// read, in C++17.
///
/// It refers to nothing.
///
/// Thread safety: any number of threads may call `const` operations on one result at the same time.
class ZVFLNETWORK_EXPORT ParseResult {
public:
    [[nodiscard]] bool has_value() const noexcept { return iri.has_value(); }
    explicit operator bool() const noexcept { return has_value(); }

    /// The IRI.
    ///
    /// Throws: where there is none, what `IRI(text)` or `iriFromUtf8(text)` throws for the text.
    [[nodiscard]] IRI& value() & { return checked(), *iri; }
    [[nodiscard]] IRI const& value() const& { return checked(), *iri; }
    [[nodiscard]] IRI&& value() && { return checked(), std::move(*iri); }

    /// The IRI, which must be there.
    [[nodiscard]] IRI& operator*() & noexcept { return *iri; }
    [[nodiscard]] IRI const& operator*() const& noexcept { return *iri; }
    [[nodiscard]] IRI&& operator*() && noexcept { return std::move(*iri); }
    [[nodiscard]] IRI* operator->() noexcept { return &*iri; }
    [[nodiscard]] IRI const* operator->() const noexcept { return &*iri; }

    /// The IRI, or what is given instead.
    template <class Other>
    [[nodiscard]] IRI value_or(Other&& other) const& {
        return iri.value_or(std::forward<Other>(other));
    }
    template <class Other>
    [[nodiscard]] IRI value_or(Other&& other) && {
        return std::move(iri).value_or(std::forward<Other>(other));
    }

    /// Why there is no IRI; there must be none.
    [[nodiscard]] ParseFault const& error() const& noexcept { return fault; }
    [[nodiscard]] ParseFault&& error() && noexcept { return static_cast<ParseFault&&>(fault); }
    [[nodiscard]] ParseFault& error() & noexcept { return fault; }

    /// Whether both hold equal IRIs, or equal reasons.
    friend bool operator==(ParseResult const& left, ParseResult const& right) {
        return left.iri == right.iri && (left.has_value() || left.fault == right.fault);
    }
    friend bool operator!=(ParseResult const& left, ParseResult const& right) { return !(left == right); }

private:
    friend ZVFLNETWORK_EXPORT ParseResult tryParse(std::u16string_view text);
    friend ZVFLNETWORK_EXPORT ParseResult tryParse(std::string_view utf8);

    template <class Unit>
    explicit ParseResult(std::basic_string_view<Unit> text);
    void checked() const {
        if (!iri) {
            refuse();
        }
    }
    [[noreturn]] void refuse() const;

    std::optional<IRI> iri;
    ParseFault fault;
    char16_t misplacedUnit = 0; // what the exception for a text that is no UTF-16 names
};

/// Parses all of `text`, and accepts exactly what `IRI(text)` accepts.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of `text`. A refusal takes about as long as a parse.
/// Thread safety: any number of threads may call it at once.
/// Source: RFC 3987, section 2.2, with the differences told at `IRI(std::u16string const&)`.
[[nodiscard]] ZVFLNETWORK_EXPORT ParseResult tryParse(std::u16string_view text);

/// The same for UTF-8: it accepts exactly what `iriFromUtf8` accepts.
[[nodiscard]] ZVFLNETWORK_EXPORT ParseResult tryParse(std::string_view utf8);
#ifdef __cpp_char8_t
[[nodiscard]] inline ParseResult tryParse(std::u8string_view text) {
    return tryParse(std::string_view(reinterpret_cast<char const*>(text.data()), text.size()));
}
#endif

} // namespace foundation::network
