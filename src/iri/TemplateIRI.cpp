// Construction from text, copying, moving and swapping of values.

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/ReadText.hpp"
#include "iri/encoding/Conversions.hpp"

#include <type_traits>
#include <utility>

namespace foundation::network::iri::detail {

using Value = TemplateIRI<std::u32string>;

static_assert(std::is_trivially_copyable_v<Components>);
static_assert(sizeof(Value) <= 152);

std::u32string_view StoredText::converted(Part part, Form form, std::u32string& own) const {
    View const asGiven = given(part);
    auto made = encoding::convert(part, components.form(part), form, asGiven, components.context());
    if (!made) {
        return asGiven;
    }
    own = std::move(*made);
    return own;
}

namespace {

[[noreturn]] void refuse(ReadOutcome const& outcome, std::u16string_view source) {
    if (outcome.malformedAt != text::noFault) {
        text::throwNotUtf16(text::misplacedUnit(source, outcome.malformedAt));
    }
    throwParsingFailed();
}

} // namespace

Value::TemplateIRI(std::u16string const& source) {
    ReadOutcome const outcome = readText(std::u16string_view(source), stored);
    if (!outcome.isIri) {
        refuse(outcome, source);
    }
}

// Makes everything but the text as in a new value, after a move.
inline void Value::forget() noexcept {
    stored.components = Components();
    stored.parsed = false;
    storedIsIn.store(0, std::memory_order_relaxed);
    hash = CachedHash();
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
        std::u32string().swap(other.stored.text); // the move may have left this value's text there
        storedIsIn.store(other.storedIsIn.load(std::memory_order_relaxed), std::memory_order_relaxed);
        hash = other.hash;
        iriText = std::move(other.iriText);
        rawText = std::move(other.rawText);
        other.forget();
    }
    return *this;
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
