#pragma once

#include <foundation/network/iri/detail/StoredText.hpp>

#include "except/Refuse.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "text/Transcoding.hpp"

#include <cstddef>
#include <string_view>

namespace foundation::network::iri {

/// What became of a text.
struct ReadOutcome {
    bool taken;
    std::size_t notText; // the place where it is no UTF-16 or UTF-8; `text::NO_FAULT` where it is
};

/// Reads a text, UTF-16 or UTF-8, into `stored`, which must be new. Of a text that is no IRI it holds the
/// code points, and the places up to which the grammar went.
template <class Unit>
ReadOutcome readText(std::basic_string_view<Unit> text, detail::StoredText& stored) {
    std::size_t const notText = text::toUtf32(text, stored.text);
    stored.parsed = true;
    return {notText == text::NO_FAULT && grammar::matchIriReference(stored.text, stored.components), notText};
}

[[noreturn]] inline void throwNoIri() {
    core::except::refuse("IRI parsing failed");
}

} // namespace foundation::network::iri
