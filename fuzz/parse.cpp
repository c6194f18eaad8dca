// The laws of parsing; a refusal tells where and why; what is no UTF-16 or UTF-8 is refused as such; no
// answer depends on what was asked before.

#include "Input.hpp"

#include "support/Faults.hpp"
#include "support/ReferenceMatcher.hpp"

using support::IRI;

int fuzz::holds(std::string_view input) {
    Text const text = units(input);
    std::u32string const native = codePoints(input);
    if (!support::toUtf16(native)) {
        require(support::thrown<std::out_of_range>([&] { IRI iri(text); }) != "nothing thrown", "read", text);
        require(!support::tryParse(input) && !support::tryParse(text), "taken, and no text", text);
    } else if (support::parsingHolds(text, native)) {
        require(support::faultHolds(native), "refused", text);
        IRI const iri(text);
        std::string const before = answers(iri);
        require(answers(iri) == before, "depends on what was asked before", text);
    } else {
        require(!support::faultHolds(native), "taken", text);
    }
    return 0;
}
