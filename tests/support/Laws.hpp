#pragma once

// The laws that values keep however they were made. Tests hold them over generated values, fuzz targets over
// whatever comes; each throws `Broken` where one does not hold.

#include "support/Iris.hpp"

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

// Whether a "%" and two hexadecimal digits of ASCII stand at a place.
inline bool isEscape(std::u16string const& text, std::size_t at) {
    constexpr char16_t digits[] = u"0123456789ABCDEFabcdef";
    return text[at] == u'%' && at + 2 < text.size() && text.find_first_not_of(digits, at + 1) > at + 2;
}

// Whether a parsed value has no ASCII form that can be read: the grammar takes, by Unicode's classes,
// full-width digits in the escapes of an authority, and more than ASCII between the brackets of a host.
inline bool hasAuthorityBeyondAscii(IRI const& iri) {
    std::u16string const authority = iri.hasHost() ? iri.getAuthority(Encoding::Iri) : u"";
    bool inBrackets = false;
    for (std::size_t i = 0; i != authority.size(); ++i) {
        inBrackets = authority[i] == u'[' || (inBrackets && authority[i] != u']');
        bool const inEscape = authority.substr(i < 2 ? 0 : i - 2, 2).find(u'%') != authority.npos;
        if (authority[i] > 0x7F && (inBrackets || inEscape)) {
            return true;
        }
    }
    return false;
}

// Each form of the whole can be read again and is a fixed point, but for ASCII forms that no text has; the
// ASCII forms are ASCII behind the scheme; no answer depends on what was asked before.
inline void formsHold(IRI const& iri) {
    std::u16string const text = iri.toString(false);
    for (bool const strict : {false, true}) {
        std::u16string const ascii = iri.toAsciiString(strict);
        for (std::size_t i = iri.hasScheme() ? iri.getScheme().size() : 0; i != ascii.size(); ++i) {
            require(ascii[i] > 32 && ascii[i] < 127, "not ASCII", text, ascii);
        }
        auto const again = parsed(ascii);
        require(again || hasAuthorityBeyondAscii(iri), "the ASCII form cannot be read", text, ascii);
        require(!again || (again->toAsciiString(strict) == ascii && again->toString(strict) == ascii),
                "the ASCII form is no fixed point", text, ascii);
    }
    std::u16string strictly = text; // with each "%" that begins no escape written as one
    for (std::size_t at = text.size(); at-- != 0;) {
        strictly.insert(at + 1, text[at] == u'%' && !isEscape(text, at) ? u"25" : u"");
    }
    require(iri.toString(true) == strictly, "another strict form", text, iri.toString(true));
    require(IRI(strictly).toString(true) == strictly, "the strict form is no fixed point", text);
    require(iri.toString(false) == text, "depends on what was asked before", text);
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

// Copies, assignments, swaps and moves of any class carry everything, also to oneself; what was moved from
// can be assigned to and destroyed. `say` tells all of a value.
template <class T, class Say>
void valuesTravel(T const& one, T const& two, Say say) {
    // A copy is asked: what is asked itself makes and keeps forms, which would travel along.
    auto const tell = [&say](T const& value) { return say(T(value)); };
    auto const first = tell(one), second = tell(two);
    T a(one);
    T& self = a;
    a = std::as_const(self);
    a = std::move(self);
    using std::swap;
    swap(a, self);
    require(tell(a) == first, "a value and itself", first);
    T b(std::move(a));
    require(tell(b) == first, "a move", first);
    a = two;
    require(tell(a) == second, "an assignment to what was moved from", second);
    // What is replaced may keep something of its own, and what replaces it may bring something along.
    constexpr void (*ways[])(T&, T&) = {[](T& to, T& from) { to = std::as_const(from); },
                                        [](T& to, T& from) { to = std::move(from); },
                                        [](T& to, T& from) { swap(to, from); }};
    for (auto const way : ways) {
        for (bool const targetIsAsked : {false, true}) {
            T target(one), source(two);
            (void)say(targetIsAsked ? target : source);
            way(target, source);
            require(say(target) == second, "an assignment or a swap", first, second);
            require(way != ways[2] || say(source) == first, "the other one of a swap", first, second);
        }
    }
    T const gone(std::move(b));
    require(say(gone) == first, "a move to the end", first);
    require(tell(one) == first && tell(two) == second, "an operand has changed", first, second);
}

// Whether a text can carry all that was built: not a path that would be read as a host, nor brackets in a
// query or a fragment, a second "#", or a stray "%" in user information.
inline bool canBeReadAgain(IRI const& built) {
    constexpr auto Iri = Encoding::Iri;
    auto const holds = [](std::u16string const& text, char16_t const* characters) {
        return text.find_first_of(characters) != text.npos;
    };
    bool const asHost = !built.hasHost() && built.getPath(Iri).rfind(u"//", 0) == 0;
    bool const inQuery = built.hasQuery() && holds(built.getQuery(Iri), u"[]");
    bool const inFragment = built.hasFragment() && holds(built.getFragment(Iri), u"#[]");
    std::u16string const userInfo = built.hasUserInfo() ? built.getUserInfo(Iri) : u"";
    bool inUserInfo = false;
    for (std::size_t at = 0; at != userInfo.size(); ++at) {
        inUserInfo |= userInfo[at] == u'%' && !isEscape(userInfo, at);
    }
    return !asHost && !inQuery && !inFragment && !inUserInfo;
}

// Whether a component of two values is absent, reads the same, or is no UTF-8 and written the same.
using Getter = std::u16string (IRI::*)(Encoding const&) const;
inline bool readsAlike(IRI const& one, IRI const& other, Getter get) {
    auto const reading = [get](IRI const& iri) {
        try {
            return (iri.*get)(Encoding::Raw);
        } catch (std::out_of_range const&) {
            return u"! " + (iri.*get)(Encoding::Iri);
        } catch (std::runtime_error const&) {
            return std::u16string(u"! absent");
        }
    };
    return reading(one) == reading(other);
}

// What was built, printed and parsed again is the same. Returns whether there was anything to hold.
inline bool buildHolds(IRI const& built) {
    constexpr auto Iri = Encoding::Iri;
    std::u16string const text = built.toString(false);
    if (built.isEmpty() || !canBeReadAgain(built)) {
        return false;
    }
    IRI const again(text);
    require(again == built && again.hashValue() == built.hashValue(), "another value", text);
    require(again.toAsciiString(true) == built.toAsciiString(true), "another ASCII form", text);
    require(again.getPath(Iri) == built.getPath(Iri), "another path", text);
    for (Getter const get : {&IRI::getUserInfo, &IRI::getPath, &IRI::getFragment}) { // a host reads otherwise
        require(readsAlike(again, built, get), "another reading", text);
    }
    require(again.getSchemeSpecificPart(Iri) == built.getSchemeSpecificPart(Iri), "other parts", text);
    require(traits(again) == traits(built), "another shape", text);
    return true;
}

} // namespace support
