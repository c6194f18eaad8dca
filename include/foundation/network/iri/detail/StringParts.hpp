#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/detail/Part.hpp>
#include <foundation/network/iri/detail/PublishedOnce.hpp>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace foundation::network::iri::detail {

/// A stretch of a text.
struct Slice {
    std::size_t begin = 0;
    std::size_t length = 0;

    friend constexpr bool operator==(Slice const& left, Slice const& right) noexcept {
        return left.begin == right.begin && left.length == right.length;
    }
};

/// The five parts of an IRI that have encoded forms. Each is set once in one form; its other forms come into
/// being when somebody asks for them, and stay.
///
/// A part is a slice of one text that all parts share, or, set by itself, has a text of its own. A form that
/// comes out like the one that it was made from shares its text. Nothing points into another object, so
/// values are copied, moved and swapped as they are.
///
/// `const` operations may run at the same time on any number of threads. Setters, `reset`, assignment and
/// `swap` need exclusive use of the object; a copy may be taken while others read. Moving leaves the source
/// as a new object is. What is written by whom, and when:
///
/// - `source`, `headers`, `context`, `empty`: by setters, assignment and `swap`, under exclusive use; anybody
///   reads them freely.
/// - `states`, how each form of each part is to be had: also by the first fill of a form, with release, after
///   its text is complete. Readers load them with acquire. Between changes of the object bits are only added.
/// - `own`, the texts of forms that are no slice: published once each (`PublishedOnce`), before `states` says
///   so.
///
/// There is no lock: two threads that fill one form at once work out the same text, and one of them throws
/// its own away. A fill that fails leaves the form absent, and the next one tries again.
///
/// Each getter throws `std::runtime_error` with "Item not set: UserInfo" (": Host", ": Path", ": Query",
/// ": Fragment") for an absent part, and what the conversion throws for a text that has no such form: a
/// `std::out_of_range` with "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"
/// where escapes decode to bytes that are no UTF-8. The part is unchanged then, and its other forms remain.
template <class String>
class ZVFLNETWORK_EXPORT StringParts {
public:
    using View = std::basic_string_view<typename String::value_type>;

    StringParts() noexcept = default;
    StringParts(StringParts&& other) noexcept;
    StringParts(StringParts const& other);
    ~StringParts() = default;
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

    /// The text of a part; forms that are alike give the same object. The reference is valid until the object
    /// is assigned to, changed or destroyed.
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

    // For the IRI value, whose parts are slices of its text.

    /// The text that parts can be slices of; empty where there is none.
    String const& getSource() const noexcept { return source; }
    /// The same, to be written while no part is a slice of it, or so that all slices are true of it.
    String& writableSource() noexcept { return source; }
    /// Makes an absent part a slice of the text. `setContext`, called behind the last of them,
    /// completes it.
    void setSlice(Part part, Slice const& slice, Form form) noexcept {
        empty = empty && part == Part::path && slice.length == 0;
        header(part) = {slice, form, true};
    }
    /// Tells all parts what their conversions depend on. No form may have been asked for yet.
    void setContext(bool schemePresent, bool formEncoded) noexcept {
        context = {schemePresent, has(Part::userInfo), has(Part::host), formEncoded};
    }
    /// As the getter of `part`, without the need for a string.
    View view(Part part, Encoding const& encoding) const;
    /// Where a part that `setSlice` made stands in the text, and its form; an empty slice for an absent part.
    Slice const& slice(Part part) const noexcept { return header(part).slice; }
    Form storedForm(Part part) const noexcept { return header(part).form; }
    /// The text of a part that was set in the Iri form, where `form` has not been worked out from it yet:
    /// whoever wants it once can make it from this, without keeping it.
    std::optional<View> unconvertedIri(Part part, Form form) const noexcept {
        bool const is = header(part).present && header(part).form == Form::iri && form != Form::iri &&
                        state(part, form) == State::absentOrSlice;
        return is ? std::optional<View>(held(part, Form::iri)) : std::nullopt;
    }
    PartContext const& getContext() const noexcept { return context; }
    bool has(Part part) const noexcept { return header(part).present; }
    /// Whether each part is a slice in this form, so that the text has them all. May fill the form.
    bool isSourceIn(Form form) const;
    /// Whether both hold the same slices of the same text, set in the same forms with the same marks: all
    /// their forms are the same then.
    bool isSlicedLike(StringParts const& other) const noexcept;
    /// An estimate of the length of all parts' texts, which fills no form.
    std::size_t lengthHint() const noexcept;

private:
    struct Header {
        Slice slice;
        Form form = Form::raw; // the one that was set
        bool present = false;

        friend constexpr bool operator==(Header const& left, Header const& right) noexcept {
            return left.slice == right.slice && left.form == right.form && left.present == right.present;
        }
    };

    /// How the text of a form is to be had: not yet, or as a slice of `source` if it is the one that was set;
    /// as a text of its own; or as that of another form.
    enum class State : std::uint8_t { absentOrSlice, own, sameAsRaw, sameAsIri, sameAsUri };
    static constexpr unsigned STATE_BITS = 3;
    static constexpr unsigned STATES = 15; // three forms of five parts

    /// A part's own texts, made with the first of them.
    using OwnTexts = std::array<PublishedOnce<String>, STATES>;

    static constexpr std::size_t index(Part part, Form form) noexcept {
        return static_cast<std::size_t>(part) * 3 + static_cast<std::size_t>(form);
    }
    static constexpr std::uint64_t bits(Part part, Form form, State state) noexcept {
        return static_cast<std::uint64_t>(state) << (STATE_BITS * index(part, form));
    }
    State state(Part part, Form form) const noexcept {
        std::uint64_t const all = states.load(std::memory_order_acquire);
        return static_cast<State>(all >> (STATE_BITS * index(part, form)) & ((1U << STATE_BITS) - 1));
    }
    Header& header(Part part) noexcept { return headers[static_cast<std::size_t>(part)]; }
    Header const& header(Part part) const noexcept { return headers[static_cast<std::size_t>(part)]; }

    void forget() noexcept;
    void set(Part part, String text, Encoding const& encoding);
    void dropDerived(Part part) noexcept;
    PublishedOnce<String> const& ownText(Part part, Form form) const;
    Form holder(Part part, Form form) const;
    Form fill(Part part, Form form) const;
    /// Whether the text of a form stands in `source`.
    bool isSlice(Part part, Form form) const noexcept {
        return header(part).present && header(part).form == form && state(part, form) == State::absentOrSlice;
    }
    View held(Part part, Form form) const noexcept {
        return isSlice(part, form) ? View(source.data() + header(part).slice.begin, header(part).slice.length)
                                   : View(*(*own.get())[index(part, form)].get());
    }
    String const& text(Part part, Form form) const;
    String const& get(Part part, Encoding const& encoding) const;
    std::pair<String const&, Encoding> stored(Part part) const;

    String source;
    std::array<Header, 5> headers;
    mutable std::atomic<std::uint64_t> states{0};
    PublishedOnce<OwnTexts> own;
    PartContext context;
    bool empty = true;
};

extern template class StringParts<std::u32string>;

} // namespace foundation::network::iri::detail
