#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/detail/EncodedPart.hpp>

#include <array>
#include <string>
#include <utility>

namespace foundation::network::iri::detail {

/// The five parts of an IRI that have encoded forms. Each is set once in one form; its other forms come into
/// being when somebody asks for them, and stay.
///
/// `const` operations may run at the same time on any number of threads. Setters, `reset`, assignment and
/// `swap` need exclusive use of the object; a copy may be taken while others read. Moving leaves the source
/// as a new object is.
///
/// Each getter throws `std::runtime_error` with "Item not set: UserInfo" (": Host", ": Path", ": Query",
/// ": Fragment") for an absent part, and what the conversion throws for a text that has no such form: a
/// `std::out_of_range` with "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"
/// where escapes decode to bytes that are no UTF-8. The part is unchanged then, and its other forms remain.
template <class String>
class ZVFLNETWORK_EXPORT StringParts {
public:
    using View = std::basic_string_view<typename String::value_type>;

    StringParts() noexcept;
    StringParts(StringParts&& other) noexcept;
    StringParts(StringParts const& other);
    ~StringParts();
    StringParts& operator=(StringParts&& other) noexcept;
    StringParts& operator=(StringParts const& other);
    void swap(StringParts& other) noexcept;

    /// Whether no part was set but, possibly, a path with an empty text.
    bool isEmpty() const noexcept { return empty; }

    /// Tells the path whether a scheme stands before it; it does nothing where there is no path.
    void setSchemePresent(bool schemePresent);

    /// Each setter replaces the part: its text is `text` in the form of `encoding`. Strong guarantee.
    void setUserInfo(String text, Encoding const& encoding);
    void setHost(String text, Encoding const& encoding);
    void setPath(String text, Encoding const& encoding);
    void setFragment(String text, Encoding const& encoding);
    /// `formEncoded`: the text is form-encoded, and is not decoded for any form.
    void setQuery(String text, Encoding const& encoding, bool formEncoded);

    /// The text of a part. The reference is valid until the object is assigned to, changed or destroyed.
    String const& getUserInfo(Encoding const& encoding) const;
    String const& getHost(Encoding const& encoding) const;
    String const& getPath(Encoding const& encoding) const;
    String const& getQuery(Encoding const& encoding) const;
    String const& getFragment(Encoding const& encoding) const;

    /// `[ userInfo "@" ] host`. Throws `std::runtime_error` with "Item not set: Host: Host (in getAuthority)"
    /// where there is no host.
    String getAuthority(Encoding const& encoding) const;

    /// A part's text as it was set, and the encoding to set it with elsewhere: carries a part over without a
    /// conversion. Each throws `std::runtime_error` with "Item not set" for an absent part.
    std::pair<String const&, Encoding> storedUserInfo() const;
    std::pair<String const&, Encoding> storedHost() const;
    std::pair<String const&, Encoding> storedPath() const;
    std::pair<String const&, Encoding> storedQuery() const;
    std::pair<String const&, Encoding> storedFragment() const;

    /// Whether both hold the same parts with the same texts, each compared in the form in which the left one
    /// was set. Throws what the conversions of the right one throw.
    bool operator==(StringParts const& other) const;
    bool operator!=(StringParts const& other) const { return !(*this == other); }

    /// Makes all parts absent.
    void reset() noexcept;

    // For the IRI value, which owns a source text and parts that are slices of it.

    /// Takes a text of which parts can then be slices. All parts must be absent.
    void adoptSource(String text) noexcept;
    /// The adopted text, empty where there is none.
    String const& getSource() const noexcept { return owner; }
    /// Makes an absent part a slice of the adopted text. `setSchemePresent`, called behind the last of them,
    /// tells the path what stands before it.
    void setSlice(Part part, std::size_t at, std::size_t size, Encoding const& encoding) noexcept;
    /// Marks the query, if there is one, as form-encoded or not.
    void setFormEncoded(bool formEncoded) noexcept;
    /// As the getter of `part`, without the need for a string.
    View view(Part part, Encoding const& encoding) const;
    /// As the `stored...` accessor of `part`, without the need for a string.
    std::pair<View, Encoding> storedView(Part part) const;
    bool has(Part part) const noexcept { return at(part).isPresent(); }
    bool isFormEncoded() const noexcept { return at(Part::query).getContext().formEncoded; }
    /// Whether both hold the same parts, set to the same texts in the same forms with the same marks: all
    /// their forms are the same then.
    bool isStoredLike(StringParts const& other) const noexcept;
    /// An estimate of the length of all parts' texts, which fills no form.
    std::size_t lengthHint() const noexcept;

private:
    using Slot = EncodedPart<String>;

    Slot& at(Part part) noexcept { return parts[static_cast<std::size_t>(part)]; }
    Slot const& at(Part part) const noexcept { return parts[static_cast<std::size_t>(part)]; }
    void set(Part part, String text, Encoding const& encoding);
    void adjustPathContext(bool schemePresent) noexcept;
    String const& text(Part part, Encoding const& encoding) const;
    std::pair<String const&, Encoding> stored(Part part) const;

    String owner;
    std::array<Slot, 5> parts;
    bool empty = true;
};

extern template class StringParts<std::u32string>;

} // namespace foundation::network::iri::detail
