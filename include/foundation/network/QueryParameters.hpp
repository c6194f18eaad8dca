#pragma once

/// The parameters of a query: `application/x-www-form-urlencoded`, as forms and most programs write it.
///
///     #include <foundation/network/QueryParameters.hpp>
///
///     IRI const iri(u"http://h/?name=J+%26+J&page=2&flag");
///     QueryParameters parameters(iri);
///     parameters.find(u"name");                  // u"J & J"
///     parameters.set(u"page", u"3");
///     withQuery(iri, parameters);                // http://h/?name=J+%26+J&page=3&flag
///
/// Stability: this header may still change while the library's first number is 0.

#include <foundation/core/Export.hpp>
#include <foundation/core/LifetimeBound.hpp>
#include <foundation/core/StandardLibrary.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/Utf8.hpp>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace foundation::network {

/// What stands between two parameters.
enum class QuerySeparator : unsigned char { Ampersand, AmpersandOrSemicolon };

/// One parameter: a look at the text of its `QueryParameters`, valid until that is changed or destroyed.
///
/// Names and values are decoded: "+" is a space, escapes are UTF-8, and where their bytes are none, each
/// maximal subpart (Unicode, section 3.9) is U+FFFD.
///
/// Throws: `std::bad_alloc` alone.
/// Complexity: linear in the length of the parameter.
class ZVFLNETWORK_EXPORT QueryParameter {
public:
    [[nodiscard]] std::u16string getName() const;
    /// The value; "" where there is no "=".
    [[nodiscard]] std::u16string getValue() const;
    /// Whether there is a "=".
    ///
    /// Complexity: constant.
    [[nodiscard]] bool hasValue() const noexcept { return nameLength != text.size(); }

private:
    friend class QueryParameters;
    QueryParameter(std::u16string_view of, std::size_t length, bool encoded) noexcept
        : text(of), nameLength(length), isEncoded(encoded) {}

    std::u16string_view text;
    std::size_t nameLength;
    bool isEncoded; // holds a "+" or a "%"
};

/// The parameters of a query, in their order: a random-access range of `QueryParameter`.
///
/// It owns its text. What is not changed keeps its text to the character; so do empty pieces ("a&&b"),
/// which are no parameters. A change ends the iterators and `QueryParameter`s that were taken before. Names
/// are compared decoded. What was moved from has no parameters.
///
/// Throws: `append` and `set`, the internal `std::out_of_range`, as `toUtf8`, for what is no UTF-16; every
/// operation that takes UTF-8, the same as `fromUtf8` for what is none; `std::bad_alloc`.
/// Complexity: linear in the length of the text, where nothing else is said.
/// Exception safety: an operation that throws changes nothing.
/// Thread safety: any number of threads may call `const` operations on one object at the same time.
class ZVFLNETWORK_EXPORT QueryParameters {
public:
    class const_iterator;
    using iterator = const_iterator;
    using value_type = QueryParameter;

    /// Those of the query of `iri`.
    explicit QueryParameters(IRI const& iri, QuerySeparator separator = QuerySeparator::Ampersand);
    /// Those of a query in `Encoding::Iri`, without its "?". A text "" is no query.
    explicit QueryParameters(std::u16string_view query, QuerySeparator separator = QuerySeparator::Ampersand);
    explicit QueryParameters(std::string_view query, QuerySeparator separator = QuerySeparator::Ampersand)
        : QueryParameters(std::u16string_view(fromUtf8(query)), separator) {}

    QueryParameters(QueryParameters const& other) = default;
    QueryParameters(QueryParameters&& other) noexcept : separators(other.separators) { swap(other); }
    QueryParameters& operator=(QueryParameters const& other) = default;
    QueryParameters& operator=(QueryParameters&& other) noexcept {
        QueryParameters(std::move(other)).swap(*this);
        return *this;
    }
    ~QueryParameters() = default;

    void swap(QueryParameters& other) noexcept {
        text.swap(other.text);
        pieces.swap(other.pieces);
        std::swap(separators, other.separators);
        std::swap(present, other.present);
    }

    /// The value of the first parameter of this name: "" where it has no "=", nothing if there is no such
    /// parameter.
    [[nodiscard]] std::optional<std::u16string> find(std::u16string_view name) const;
    /// The values of all parameters of this name.
    [[nodiscard]] std::vector<std::u16string> getAll(std::u16string_view name) const;
    [[nodiscard]] bool contains(std::u16string_view name) const;
    [[nodiscard]] std::size_t size() const noexcept { return pieces.size(); }
    [[nodiscard]] bool empty() const noexcept { return pieces.empty(); }

    /// Appends a parameter, behind a "&" where there is text already. Escapes "%", "&", "+", "=", ";", "#",
    /// characters that turn the direction of writing (RFC 3987, section 4.1) and what a query cannot hold;
    /// a space becomes "+".
    ///
    /// Complexity: linear in the length of the parameter, over all appended ones.
    void append(std::u16string_view name, std::u16string_view value);
    /// Gives the first parameter of this name this value, and removes the others; appends one where there
    /// is none.
    void set(std::u16string_view name, std::u16string_view value);
    /// Removes all parameters of this name, each with a separator, and returns how many. Where none is
    /// left, there is no query.
    std::size_t remove(std::u16string_view name);

    /// The query in `Encoding::Iri`; "" where there is none.
    [[nodiscard]] std::u16string toQuery() const { return text; }

    // In UTF-8.
    [[nodiscard]] std::optional<std::u16string> find(std::string_view name) const {
        return find(std::u16string_view(fromUtf8(name)));
    }
    [[nodiscard]] std::vector<std::u16string> getAll(std::string_view name) const {
        return getAll(std::u16string_view(fromUtf8(name)));
    }
    [[nodiscard]] bool contains(std::string_view name) const {
        return contains(std::u16string_view(fromUtf8(name)));
    }
    void append(std::string_view name, std::string_view value) {
        append(std::u16string_view(fromUtf8(name)), std::u16string_view(fromUtf8(value)));
    }
    void set(std::string_view name, std::string_view value) {
        set(std::u16string_view(fromUtf8(name)), std::u16string_view(fromUtf8(value)));
    }
    std::size_t remove(std::string_view name) { return remove(std::u16string_view(fromUtf8(name))); }

    [[nodiscard]] const_iterator begin() const noexcept ZVFLNETWORK_LIFETIMEBOUND;
    [[nodiscard]] const_iterator end() const noexcept ZVFLNETWORK_LIFETIMEBOUND;
    /// `index` is below `size()`.
    ///
    /// Complexity: constant.
    [[nodiscard]] QueryParameter operator[](std::size_t index) const noexcept ZVFLNETWORK_LIFETIMEBOUND {
        Piece const& piece = pieces[index];
        return {std::u16string_view(text).substr(piece.begin, piece.length), piece.nameLength,
                piece.isEncoded};
    }

    /// Whether both have the same text and take it apart alike. An empty query differs from none.
    friend bool operator==(QueryParameters const& left, QueryParameters const& right) noexcept {
        return left.present == right.present && left.separators == right.separators &&
               left.text == right.text;
    }
    friend bool operator!=(QueryParameters const& left, QueryParameters const& right) noexcept {
        return !(left == right);
    }

private:
    friend ZVFLNETWORK_EXPORT IRI withQuery(IRI const& iri, QueryParameters const& parameters);
    friend struct std::hash<QueryParameters>;

    struct Piece {
        std::size_t begin;
        std::size_t length;
        std::size_t nameLength;
        bool isEncoded;
    };

    void split();
    std::size_t removeNamed(std::u16string_view name, std::size_t from);
    [[nodiscard]] bool isNamed(Piece const& piece, std::u16string_view name) const;

    std::u16string text;
    std::vector<Piece> pieces; // of the text, without the empty ones
    QuerySeparator separators = QuerySeparator::Ampersand;
    bool present = false; // an empty query can be there or not
};

inline void swap(QueryParameters& left, QueryParameters& right) noexcept {
    left.swap(right);
}

/// Gives parameters by value.
class QueryParameters::const_iterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = QueryParameter;
    using difference_type = std::ptrdiff_t;
    using reference = QueryParameter;
    class pointer {
    public:
        explicit pointer(QueryParameter of) noexcept : parameter(of) {}
        QueryParameter const* operator->() const noexcept { return &parameter; }

    private:
        QueryParameter parameter;
    };

    const_iterator() noexcept = default;

    reference operator*() const noexcept { return (*parameters)[index]; }
    pointer operator->() const noexcept { return pointer(**this); }
    reference operator[](difference_type n) const noexcept { return *(*this + n); }

    const_iterator& operator++() noexcept { return *this += 1; }
    const_iterator& operator--() noexcept { return *this -= 1; }
    const_iterator operator++(int) noexcept {
        const_iterator const before = *this;
        ++*this;
        return before;
    }
    const_iterator operator--(int) noexcept {
        const_iterator const before = *this;
        --*this;
        return before;
    }
    const_iterator& operator+=(difference_type n) noexcept {
        index = static_cast<std::size_t>(static_cast<difference_type>(index) + n);
        return *this;
    }
    const_iterator& operator-=(difference_type n) noexcept { return *this += -n; }
    friend const_iterator operator+(const_iterator it, difference_type n) noexcept { return it += n; }
    friend const_iterator operator+(difference_type n, const_iterator it) noexcept { return it += n; }
    friend const_iterator operator-(const_iterator it, difference_type n) noexcept { return it -= n; }
    friend difference_type operator-(const_iterator const& a, const_iterator const& b) noexcept {
        return static_cast<difference_type>(a.index) - static_cast<difference_type>(b.index);
    }
    friend bool operator==(const_iterator const& a, const_iterator const& b) noexcept {
        return a.index == b.index;
    }
    friend bool operator!=(const_iterator const& a, const_iterator const& b) noexcept { return !(a == b); }
    friend bool operator<(const_iterator const& a, const_iterator const& b) noexcept {
        return a.index < b.index;
    }
    friend bool operator>(const_iterator const& a, const_iterator const& b) noexcept { return b < a; }
    friend bool operator<=(const_iterator const& a, const_iterator const& b) noexcept { return !(b < a); }
    friend bool operator>=(const_iterator const& a, const_iterator const& b) noexcept { return !(a < b); }

private:
    friend class QueryParameters;
    const_iterator(QueryParameters const& of, std::size_t at) noexcept : parameters(&of), index(at) {}

    QueryParameters const* parameters = nullptr;
    std::size_t index = 0;
};

inline QueryParameters::const_iterator QueryParameters::begin() const noexcept {
    return {*this, 0};
}
inline QueryParameters::const_iterator QueryParameters::end() const noexcept {
    return {*this, size()};
}

/// A copy of `iri` with these parameters as its query, and all else left as it is written. For a parsed
/// IRI, `withQuery(iri, QueryParameters(iri)) == iri`.
///
/// Throws: the internal `std::logic_error`, "IRI parsing failed", where the text that the parameters were
/// made of is no query; the internal `std::out_of_range`, as `toUtf8`, where it is no UTF-16.
/// Complexity: linear in the length of both.
/// Thread safety: any number of threads may call it at once.
[[nodiscard]] ZVFLNETWORK_EXPORT IRI withQuery(IRI const& iri, QueryParameters const& parameters);

/// Writes `toQuery()` in UTF-8 with the stream's formatting.
///
/// Throws: as `toUtf8`, where the text is no UTF-16.
ZVFLNETWORK_EXPORT std::ostream& operator<<(std::ostream& stream, QueryParameters const& parameters);

} // namespace foundation::network

namespace std {

template <>
struct hash<foundation::network::QueryParameters> {
    std::size_t operator()(foundation::network::QueryParameters const& parameters) const noexcept {
        return hash<u16string>()(parameters.text);
    }
};

} // namespace std
