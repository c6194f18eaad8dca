#pragma once

#include "iri/Draft.hpp"
#include "iri/ValueAccess.hpp"

#include <optional>
#include <string_view>

namespace foundation::network::operations {

/// A value as its text in the Iri form has it: the value itself where it was parsed, else a copy.
class InIriForm {
public:
    explicit InIriForm(IRI const& iri) : stored(iri::detail::ValueAccess::stored(iri)) {
        if (!stored.parsed) {
            convert(own.emplace());
        }
    }
    InIriForm(InIriForm const&) = delete;
    InIriForm& operator=(InIriForm const&) = delete;
    ~InIriForm() = default;

    [[nodiscard]] iri::detail::StoredText const& get() const { return own ? *own : stored; }
    [[nodiscard]] std::u32string_view path() const { return get().given(iri::detail::Part::path); }

private:
    void convert(iri::detail::StoredText& made) const;

    iri::detail::StoredText const& stored;
    std::optional<iri::detail::StoredText> own; // mostly none
};

} // namespace foundation::network::operations
