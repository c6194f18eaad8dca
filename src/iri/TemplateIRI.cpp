// The life cycle of a value, from the parse of its text on.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <foundation/core/except/InternalException.hpp>

#include "iri/encoding/Conversions.hpp"
#include "iri/encoding/Transcoding.hpp"
#include "iri/grammar/IriGrammar.hpp"

#include <type_traits>
#include <utility>

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;
using Value = TemplateIRI<std::u32string>;

static_assert(std::is_trivially_copyable_v<Components>);
static_assert(sizeof(Value) <= 160);

std::u32string_view StoredText::inForm(Part part, Form form, std::u32string& own) const {
    View const asGiven = given(part);
    auto converted = encoding::convert(part, components.form(part), form, asGiven, components.context());
    if (!converted) {
        return asGiven;
    }
    own = std::move(*converted);
    return own;
}

Value::TemplateIRI(std::u16string const& source) {
    stored.text = encoding::toUtf32(source);
    stored.parsed = true;
    if (!grammar::matchIriReference(stored.text, stored.components)) {
        throw makeInternalException(std::logic_error("IRI parsing failed"));
    }
}

Value::TemplateIRI(TemplateIRI const& other)
    : stored(other.stored),
      storedIsIn(other.storedIsIn.load(std::memory_order_relaxed)),
      hash(other.hash),
      iriText(other.iriText),
      rawText(other.rawText) {}

Value::TemplateIRI(TemplateIRI&& other) noexcept
    : stored(std::move(other.stored)),
      storedIsIn(other.storedIsIn.load(std::memory_order_relaxed)),
      hash(other.hash),
      iriText(std::move(other.iriText)),
      rawText(std::move(other.rawText)) {
    other.forget();
}

Value& Value::operator=(TemplateIRI const& other) {
    if (this != &other) {
        *this = TemplateIRI(other);
    }
    return *this;
}

Value& Value::operator=(TemplateIRI&& other) noexcept {
    if (this != &other) {
        stored = std::move(other.stored);
        storedIsIn.store(other.storedIsIn.load(std::memory_order_relaxed), std::memory_order_relaxed);
        hash = other.hash;
        iriText = std::move(other.iriText);
        rawText = std::move(other.rawText);
        other.forget();
    }
    return *this;
}

// What is left behind a move is as a new value. The move may have left it with the target's text.
void Value::forget() noexcept {
    stored = StoredText();
    storedIsIn.store(0, std::memory_order_relaxed);
    hash = CachedHash();
}

Value::~TemplateIRI() = default;

void Value::swap(TemplateIRI& other) noexcept {
    std::swap(stored, other.stored);
    unsigned char const mine = storedIsIn.load(std::memory_order_relaxed);
    storedIsIn.store(other.storedIsIn.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.storedIsIn.store(mine, std::memory_order_relaxed);
    std::swap(hash, other.hash);
    iriText.swap(other.iriText);
    rawText.swap(other.rawText);
}

} // namespace foundation::network::iri::detail
