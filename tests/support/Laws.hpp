#pragma once

// The laws that values keep however they were made. Tests hold them over generated values, fuzz targets over
// whatever comes; each throws `Broken` where one does not hold.

#include "support/Iris.hpp"

#include <array>
#include <bitset>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace support {

struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <class... Texts>
void require(bool holds, char const* law, Texts const&... about) {
    if (!holds) {
        throw Broken((std::string(law) + ... + (" | " + show(about))));
    }
}

// What a law found: whether one of the named reasons applied, and which of them made a difference.
struct Named {
    bool known = false;
    std::bitset<8> different;
};

template <class Reasons, class... Arguments>
Named named(bool isDifferent, Reasons const& reasons, Arguments const&... arguments) {
    Named found;
    for (std::size_t i = 0; i != std::size(reasons); ++i) {
        bool const applies = reasons[i].applies(arguments...);
        found.known = found.known || applies;
        found.different[i] = applies && isDifferent;
    }
    return found;
}

// How often a law held, and how often each of its reasons made a difference.
struct Tally {
    int held = 0;
    std::array<int, 8> different{};

    void add(Named const& found) {
        held += !found.known;
        for (std::size_t i = 0; i != different.size(); ++i) {
            different[i] += found.different[i];
        }
    }
};

// What the grammar takes by Unicode's classes and ASCII has no way to write: full-width digits in an escape
// of an authority, and what is not ASCII between the brackets of a host.
inline bool hasAuthorityBeyondAscii(IRI const& iri) {
    if (!iri.hasHost()) {
        return false;
    }
    std::u16string const host = iri.getHost(Encoding::Iri);
    bool const bracketed = host.rfind(u"[", 0) == 0 && iri.getHost(Encoding::Uri) != host;
    return bracketed || iri.getAuthority(Encoding::IriStrict) != iri.getAuthority(Encoding::Iri);
}

// Each form of the whole can be read again and is a fixed point; the ASCII forms are ASCII behind the scheme;
// no answer depends on what was asked before. Returns whether there was anything to hold.
inline bool formsHold(IRI const& iri) {
    if (hasAuthorityBeyondAscii(iri)) {
        return false;
    }
    std::u16string const text = iri.toString(false);
    for (bool const strict : {false, true}) {
        std::u16string const ascii = iri.toAsciiString(strict);
        for (std::size_t i = iri.hasScheme() ? iri.getScheme().size() : 0; i != ascii.size(); ++i) {
            require(ascii[i] > 32 && ascii[i] < 127, "not ASCII", text, ascii);
        }
        IRI const again(ascii);
        require(again.toAsciiString(strict) == ascii && again.toString(strict) == ascii,
                "the ASCII form is no fixed point", text, ascii);
    }
    std::u16string const strictly = iri.toString(true);
    require(IRI(strictly).toString(true) == strictly, "the strict form is no fixed point", text);
    require(iri.toString(false) == text, "depends on what was asked before", text);
    return true;
}

// Equality, hash and order are those of the Iri texts. Returns whether the values are the same.
inline bool equalityHolds(IRI const& a, IRI const& b) {
    std::u16string const left = a.toString(false), right = b.toString(false);
    bool const same = a.isEmpty() == b.isEmpty() && left == right;
    require((a == b) == same && (b == a) == same && (a != b) == !same, "equality", left, right);
    require((IRI(a) == b) == same, "equality of a copy", left, right); // texts and hashes on one side alone
    require(!same || a.hashValue() == b.hashValue(), "equal values, other hashes", left, right);
    foundation::network::IRITextLess const less;
    require(less(a, b) + less(b, a) == !same, "less, greater, or the same text", left, right);
    return same;
}

// Copies, assignments, swaps and moves carry everything, also to oneself.
inline void valuesTravel(IRI const& one, IRI const& two) {
    std::string const first = answers(one), second = answers(two);
    std::u16string const text = one.toString(false);
    IRI a(one);
    a = two;
    require(answers(a) == second, "an assignment", text);
    IRI b(one);
    swap(a, b);
    require(answers(a) == first && answers(b) == second, "a swap", text);
    a.swap(b);
    require(answers(a) == second && answers(b) == first, "a swap as a member", text);
    b = std::move(a);
    require(answers(b) == second && answers(a) == answers(IRI()), "a move", text);
    IRI& self = b;
    b = std::as_const(self);
    b = std::move(self);
    b.swap(self);
    require(answers(b) == second, "a value and itself", text);
    require(answers(one) == first && answers(two) == second, "an operand has changed", text);
}

// What a text cannot carry of built parts.
struct BuildLoss {
    char const* reason;
    bool (*applies)(IRI const& built);
};
inline bool holds(std::u16string const& text, char16_t const* characters) {
    return text.find_first_of(characters) != std::u16string::npos;
}
inline constexpr BuildLoss buildLosses[] = {
    {"a path that begins with two slashes, and no host: read as a host",
     [](IRI const& iri) { return !iri.hasHost() && iri.getPath(Encoding::Iri).rfind(u"//", 0) == 0; }},
    {"a bracket in a query, which the text may hold nowhere",
     [](IRI const& iri) { return iri.hasQuery() && holds(iri.getQuery(Encoding::Iri), u"[]"); }},
    {"a bracket or a second # in a fragment",
     [](IRI const& iri) { return iri.hasFragment() && holds(iri.getFragment(Encoding::Iri), u"#[]"); }},
    {"a stray % in a user info",
     [](IRI const& iri) {
         return iri.hasUserInfo() && iri.getAuthority(Encoding::IriStrict) != iri.getAuthority(Encoding::Iri);
     }},
};

inline bool canBeReadAgain(IRI const& iri) {
    return !named(true, buildLosses, iri).known;
}

// What was built, printed and parsed again is the same but for the named losses.
inline Named buildHolds(IRI const& built) {
    constexpr auto Iri = Encoding::Iri;
    std::u16string const text = built.toString(false);
    Named const found = named(true, buildLosses, built);
    if (!found.known) {
        IRI const again(text);
        require(again == built && again.hashValue() == built.hashValue(), "another value", text);
        require(again.toAsciiString(true) == built.toAsciiString(true), "another ASCII form", text);
        require(again.getPath(Iri) == built.getPath(Iri), "another path", text);
        require(again.getSchemeSpecificPart(Iri) == built.getSchemeSpecificPart(Iri), "other parts", text);
        require((again.hasHost() ? again.getAuthority(Iri) : u"-") ==
                    (built.hasHost() ? built.getAuthority(Iri) : u"-"),
                "another authority", text);
        require(again.isOpaque() == built.isOpaque(), "another shape", text);
    }
    return found;
}

} // namespace support
