#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Part.hpp>
#include <foundation/network/iri/detail/PublishedOnce.hpp>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace foundation::network::iri::detail {

template <class String>
class StringParts;

/// The five components of an IRI that have encoded forms. Each is set by itself in one form, and getters
/// give references to its texts in other forms. (An `IRI` keeps its components in one text instead: see
/// `Components`.)
///
/// A form is made when somebody first asks for it, and is kept. A form that comes out like the one that it
/// was made from shares its text. Nothing points into another object; a copy has only the texts that were
/// set.
///
/// Throws: each getter, `std::runtime_error`, "Item not set: UserInfo" (": Host", ": Path", ": Query", ":
/// Fragment"), for an absent component, which is no exception of the internal family; the internal
/// `std::out_of_range`, "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character", where
/// escapes decode to an overlong form, a surrogate or a value above U+10FFFF.
/// Exception safety: an operation that throws changes no component, and the forms that were made stay.
/// Thread safety: `const` operations may run at the same time on any number of threads, and a copy may be
/// taken meanwhile; nobody waits. Two threads that make one form at once make the same text, and one of
/// them throws its own away. Setters, `reset`, assignment and `swap` need exclusive use.
template <>
class ZVFLNETWORK_EXPORT StringParts<std::u32string> {
    using String = std::u32string;

public:
    StringParts() noexcept;
    StringParts(StringParts&& other) noexcept;
    StringParts(StringParts const& other);
    ~StringParts();
    StringParts& operator=(StringParts&& other) noexcept;
    StringParts& operator=(StringParts const& other);
    void swap(StringParts& other) noexcept;

    /// Whether no component was set but, possibly, a path with an empty text.
    bool isEmpty() const noexcept { return empty; }

    /// Tells the path whether a scheme stands before it; it does nothing where there is no path.
    void setSchemePresent(bool schemePresent);

    /// Each setter replaces the component: its text is `text` in the form of `encoding`.
    void setUserInfo(String text, Encoding const& encoding);
    void setHost(String text, Encoding const& encoding);
    void setPath(String text, Encoding const& encoding);
    void setFragment(String text, Encoding const& encoding);
    /// `formEncoded`: the text is form-encoded, and is not decoded for any form.
    void setQuery(String text, Encoding const& encoding, bool formEncoded);

    /// The text of a component. Forms that are alike give the same object. The reference is valid until the
    /// object is assigned to, changed or destroyed.
    String const& getUserInfo(Encoding const& encoding) const;
    String const& getHost(Encoding const& encoding) const;
    String const& getPath(Encoding const& encoding) const;
    String const& getQuery(Encoding const& encoding) const;
    String const& getFragment(Encoding const& encoding) const;

    /// `[ userInfo "@" ] host`.
    ///
    /// Throws: `std::runtime_error`, "Item not set: Host: Host (in getAuthority)", where there is no host.
    String getAuthority(Encoding const& encoding) const;

    /// The text of a component as it was set, and the encoding to set it with elsewhere.
    ///
    /// Throws: `std::runtime_error`, "Item not set", for an absent component.
    std::pair<String const&, Encoding> storedUserInfo() const;
    std::pair<String const&, Encoding> storedHost() const;
    std::pair<String const&, Encoding> storedPath() const;
    std::pair<String const&, Encoding> storedQuery() const;
    std::pair<String const&, Encoding> storedFragment() const;

    /// Whether both hold the same components with the same texts, each compared in the form in which the
    /// left one was set.
    ///
    /// Throws: what the conversions of the right one throw.
    bool operator==(StringParts const& other) const;
    bool operator!=(StringParts const& other) const { return !(*this == other); }

    /// Makes all components absent.
    void reset() noexcept;

private:
    /// A component in one form: a text of its own, or the form whose text it shares.
    struct FormText {
        std::optional<String> own;
        Form sharedWith;
    };
    struct Component {
        Component() noexcept = default;
        Component(Component const& other); // of the form that was set alone
        Component& operator=(Component&& other) noexcept = default;

        std::array<PublishedOnce<FormText>, 3> forms; // by `Form`; none of an absent component
        Form form = Form::raw;                        // the one that was set
    };

    Component& at(Part part) noexcept { return components[static_cast<std::size_t>(part)]; }
    Component const& at(Part part) const noexcept { return components[static_cast<std::size_t>(part)]; }
    bool has(Part part) const noexcept;
    void set(Part part, String text, Encoding const& encoding);
    void dropDerived(Part part) noexcept;
    String const& text(Part part, Form form) const;
    String const& get(Part part, Encoding const& encoding) const;
    std::pair<String const&, Encoding> stored(Part part) const;

    std::array<Component, 5> components;
    PartContext context;
    bool empty = true;
};

} // namespace foundation::network::iri::detail
