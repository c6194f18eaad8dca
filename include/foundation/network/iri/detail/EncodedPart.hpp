#pragma once

#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/PublishedOnce.hpp>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// The parts of an IRI that have encoded forms, in the order in which they are compared.
enum class Part : std::uint8_t { userInfo, host, path, query, fragment };

/// The forms in which a part is kept. The strict encodings have none of their own: they are made from the
/// text of `iri` and `uri` when asked for.
enum class Form : std::uint8_t { raw, iri, uri };

/// The form that an encoding reads and writes.
constexpr Form formOf(Encoding const& encoding) noexcept {
    return encoding == Encoding::Raw                                      ? Form::raw
           : encoding == Encoding::Iri || encoding == Encoding::IriStrict ? Form::iri
                                                                          : Form::uri;
}

/// What the conversions of a part depend on besides its text. The path sees the first three, the query the
/// last.
struct PartContext {
    bool schemePresent = false;
    bool hasUserInfo = false;
    bool hasHost = false;
    bool formEncoded = false;

    friend bool operator==(PartContext const& left, PartContext const& right) noexcept {
        return left.schemePresent == right.schemePresent && left.hasUserInfo == right.hasUserInfo &&
               left.hasHost == right.hasHost && left.formEncoded == right.formEncoded;
    }
};

/// One part of an IRI: the text as it was set, in one form, and the other forms as they are asked for.
///
/// The text as set is either the part's own or a slice of a text that the owner of the part keeps; the owner
/// passes that text to each operation, so that nothing points into another object and a part can be copied,
/// moved and swapped as it is. A form that comes out like the one that it was made from shares its text.
///
/// What is written by whom, and when:
///
/// | Member                       | Written by                              | Read by others |
/// |------------------------------|-----------------------------------------|-----------------------------------------|
/// | `begin`, `length`, `source`, | setters, assignment, `swap`: exclusive  | freely | | `present`, `context`
/// | use                                     |                                         | | `texts[f]` | the
/// first fill of form f, once          | after `states[f]` says `own`, or by     | | | | `PublishedOnce::get`
/// | | `states[f]`                  | a fill of form f, with release, after   | with acquire | | | its text
/// is complete                    |                                         |
///
/// There is no lock: two threads that fill one form at once work out the same text, and one of them throws
/// its own away. A fill that fails leaves the form absent, and the next one tries again.
template <class String>
class EncodedPart {
public:
    using View = std::basic_string_view<typename String::value_type>;

    EncodedPart() noexcept = default;
    EncodedPart(EncodedPart const& other);
    EncodedPart(EncodedPart&& other) noexcept;
    EncodedPart& operator=(EncodedPart const&) = delete;
    EncodedPart& operator=(EncodedPart&&) = delete;
    ~EncodedPart() = default;

    void swap(EncodedPart& other) noexcept;

    /// Forgets text and context.
    void clear() noexcept;

    /// Sets an own text. Strong guarantee.
    void set(String text, Form form);
    /// Sets a slice of the owner's text. The part must be absent.
    void setSlice(std::size_t at, std::size_t size, Form form) noexcept;

    /// Changes what the conversions depend on, and forgets all forms but the one that was set.
    void setContext(PartContext const& changed) noexcept;

    [[nodiscard]] bool isPresent() const noexcept { return present; }
    [[nodiscard]] Form sourceForm() const noexcept { return source; }
    [[nodiscard]] PartContext const& getContext() const noexcept { return context; }

    /// The text as it was set.
    [[nodiscard]] View sourceView(String const& owner) const noexcept { return held(source, owner); }

    /// The text in a form. The view is valid until the part or the owner's text is changed. Throws what the
    /// conversion to that form throws.
    [[nodiscard]] View view(Form form, Part part, String const& owner) const;

    /// The same as a string that the part keeps: forms that are alike give the same object.
    [[nodiscard]] String const& text(Form form, Part part, String const& owner) const;

    /// The length of the text in the most encoded of the forms that are there already.
    [[nodiscard]] std::size_t lengthHint() const noexcept;

private:
    // How a form's text is to be had: as a slice of the owner's text (the source only), as a text of its own,
    // or as that of another form.
    enum State : std::uint8_t { absent, slice, own, sameAsRaw, sameAsIri, sameAsUri };

    static constexpr std::size_t index(Form form) noexcept { return static_cast<std::size_t>(form); }
    static constexpr State sameAs(Form form) noexcept {
        return form == Form::raw ? sameAsRaw : form == Form::iri ? sameAsIri : sameAsUri;
    }
    static constexpr Form target(State state) noexcept {
        return state == sameAsRaw ? Form::raw : state == sameAsIri ? Form::iri : Form::uri;
    }

    State state(Form form) const noexcept { return states[index(form)].load(std::memory_order_acquire); }
    // The form that holds the text of a filled form, which may be that form itself.
    Form holder(Form form) const noexcept;
    Form fill(Form form, Part part, String const& owner) const;
    View held(Form form, String const& owner) const noexcept;
    void dropDerived() noexcept;

    std::size_t begin = 0;
    std::size_t length = 0;
    std::array<PublishedOnce<String>, 3> texts;
    mutable std::array<std::atomic<State>, 3> states{};
    Form source = Form::raw;
    bool present = false;
    PartContext context;
};

} // namespace foundation::network::iri::detail
