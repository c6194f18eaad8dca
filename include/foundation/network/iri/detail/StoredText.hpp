#pragma once

#include <foundation/network/iri/detail/Components.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// What a value is made of: one text, and the record of where its components stand in it. Of a parsed value
/// that is the text that was parsed; of a built one it holds each component in the form in which it was
/// given. All operations on IRIs read it. `Draft` writes that of a new value;
/// normalisation and the replacement of a query or fragment write that of a copy.
///
/// Thread safety: only its owner changes it, so any number of threads may read it.
struct StoredText {
    using View = std::u32string_view;

    std::u32string text;
    Components components;
    bool parsed = false; // `text` was parsed: it is the Iri form of the whole

    [[nodiscard]] bool isEmpty() const noexcept { return text.empty(); }

    [[nodiscard]] View stretch(std::size_t begin, std::size_t end) const noexcept {
        return {text.data() + begin, end - begin};
    }
    [[nodiscard]] View scheme() const noexcept { return stretch(0, components.schemeEnd); }
    /// As it is written; for an absent port an empty text.
    [[nodiscard]] View port() const noexcept { return at(components.portSlice()); }
    /// A present component as it was given.
    [[nodiscard]] View given(Part part) const noexcept { return at(components.slice(part)); }
    /// A present component in another form; where that is another text, `own` holds it.
    ///
    /// Throws: what the conversions throw.
    [[nodiscard]] View inForm(Part part, Form form, std::u32string& own) const {
        return components.form(part) == form ? given(part) : converted(part, form, own);
    }

private:
    [[nodiscard]] View converted(Part part, Form form, std::u32string& own) const;
    [[nodiscard]] View at(Slice const& slice) const noexcept {
        return {text.data() + slice.begin, slice.length};
    }
};

} // namespace foundation::network::iri::detail
