// The laws of parsing; what is no UTF-16 is refused as such; no answer depends on what was asked before.

#include "Input.hpp"

#include "support/ReferenceMatcher.hpp"

using support::IRI;

int fuzz::holds(std::string_view input) {
    Text const text = units(input);
    std::u32string const native = codePoints(input);
    if (!support::toUtf16(native)) {
        require(support::thrown<std::out_of_range>([&] { IRI iri(text); }) != "nothing thrown", "read", text);
    } else if (support::parsingHolds(text, native)) {
        IRI const iri(text);
        std::string const before = answers(iri);
        require(answers(iri) == before, "depends on what was asked before", text);
    }
    return 0;
}
