#pragma once

#include "iri/Draft.hpp"
#include "iri/ValueAccess.hpp"

#include <optional>
#include <string_view>

namespace foundation::network::operations {

/// The stored text of a value with every component in the Iri form: that of the value itself if it was
/// parsed, else a converted copy.
class IriFormText {
public:
    explicit IriFormText(IRI const& iri) : source(iri::detail::ValueAccess::stored(iri)) {
        if (!source.parsed) {
            convert(own.emplace());
        }
    }
    IriFormText(IriFormText const&) = delete;
    IriFormText& operator=(IriFormText const&) = delete;
    ~IriFormText() = default;

    [[nodiscard]] iri::detail::StoredText const& stored() const { return own ? *own : source; }
    [[nodiscard]] std::u32string_view path() const { return stored().given(iri::detail::Part::path); }

private:
    void convert(iri::detail::StoredText& made) const;

    iri::detail::StoredText const& source;
    std::optional<iri::detail::StoredText> own; // empty for a parsed value
};

} // namespace foundation::network::operations
