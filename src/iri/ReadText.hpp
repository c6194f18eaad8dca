#pragma once

#include <foundation/network/iri/detail/StoredText.hpp>

#include "except/Refuse.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "text/Transcoding.hpp"

#include <cstddef>
#include <string_view>

namespace foundation::network::iri {

/// Whether a text was parsed and, if it is not well-formed, where.
struct ReadOutcome {
    bool isIri;
    std::size_t malformedAt; // where the first ill-formed sequence begins; `text::noFault` if there is none
};

/// Parses UTF-16 or UTF-8 into `stored`, which must be new. If the grammar refuses the text, `stored` holds
/// its code points and the places up to which the grammar matched.
template <class Unit>
ReadOutcome readText(std::basic_string_view<Unit> text, detail::StoredText& stored) {
    std::size_t const malformedAt = text::toUtf32(text, stored.text);
    stored.parsed = true;
    return {malformedAt == text::noFault && grammar::matchIriReference(stored.text, stored.components),
            malformedAt};
}

[[noreturn]] inline void throwParsingFailed() {
    core::except::refuse("IRI parsing failed");
}

} // namespace foundation::network::iri
