#include <foundation/network/QueryParameters.hpp>

#include <foundation/network/With.hpp>

#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/CharacterClasses.hpp"
#include "operations/Decoding.hpp"
#include "operations/IriFormText.hpp"
#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>
#include <array>
#include <ostream>

namespace foundation::network {

using operations::decoded;
using operations::decodeNext;
using operations::Plus;

namespace {

// What form-encoding writes for each ASCII character: itself, "+" for a space, or 0 if it is escaped.
constexpr std::array<char16_t, 128> formEncoded = [] {
    std::array<char16_t, 128> written{};
    for (char16_t c = 0; c != written.size(); ++c) {
        bool const isHeld = (iri::grammar::detail::asciiClasses[c] & iri::grammar::IQUERY) != 0;
        written[c] = isHeld ? c : u'\0';
    }
    for (char const special : {'%', '&', '+', '=', ';', '#'}) {
        written[static_cast<unsigned char>(special)] = 0;
    }
    written[U' '] = u'+';
    return written;
}();

void appendEncoded(std::u16string& out, char32_t c) {
    if (c < formEncoded.size() && formEncoded[c] != 0) {
        out.push_back(formEncoded[c]);
    } else if (c < formEncoded.size() || iri::encoding::isIriForbidden(c) ||
               !iri::grammar::is<iri::grammar::IQUERY>(c)) {
        text::encodeUtf8(c, [&out](unsigned char byte) { text::percentByte(out, byte); });
    } else {
        char16_t units[2];
        out.append(units, static_cast<std::size_t>(text::put(c, units) - units));
    }
}

// Appends a name or a value, form-encoded. What is ASCII in front, mostly all, needs no conversion.
void appendEncoded(std::u16string& out, std::u16string_view text) {
    std::size_t at = 0;
    for (; at != text.size() && text[at] < formEncoded.size(); ++at) {
        appendEncoded(out, char32_t{text[at]});
    }
    if (at != text.size()) {
        for (char32_t const c : text::toUtf32(text.substr(at))) {
            appendEncoded(out, c);
        }
    }
}

} // namespace

std::u16string QueryParameter::getName() const {
    std::u16string_view const name = text.substr(0, nameLength);
    return isEncoded ? decoded(name, Plus::isSpace) : std::u16string(name);
}

std::u16string QueryParameter::getValue() const {
    std::u16string_view const value = text.substr(std::min(nameLength + 1, text.size()));
    return isEncoded ? decoded(value, Plus::isSpace) : std::u16string(value);
}

QueryParameters::QueryParameters(IRI const& iri, QuerySeparator separator) : separators(separator) {
    operations::IriFormText const form(iri);
    if (iri.hasQuery()) {
        text = text::toUtf16(form.stored().given(iri::detail::Part::query));
        present = true;
    }
    split();
}

QueryParameters::QueryParameters(std::u16string_view query, QuerySeparator separator)
    : text(query), separators(separator), present(!query.empty()) {
    split();
}

void QueryParameters::split() {
    constexpr std::size_t usual = 8; // nearly all queries have no more
    pieces.clear();
    pieces.reserve(text.empty() ? 0 : usual);
    bool const semicolonSeparates = separators == QuerySeparator::AmpersandOrSemicolon;
    Piece piece{0, 0, std::u16string::npos, false};
    auto const endPiece = [this, &piece](std::size_t end) {
        piece.length = end - piece.begin;
        piece.nameLength = std::min(piece.nameLength, piece.length);
        if (piece.length != 0) {
            pieces.push_back(piece);
        }
        piece = {end + 1, 0, std::u16string::npos, false};
    };
    text::forEachOf<u'&', u';', u'=', u'+', u'%'>(text, [&](std::size_t at) {
        char16_t const unit = text[at];
        if (unit == u'&' || (unit == u';' && semicolonSeparates)) {
            endPiece(at);
        } else if (unit == u'=') {
            piece.nameLength = std::min(piece.nameLength, at - piece.begin);
        } else if (unit != u';') {
            piece.isEncoded = true;
        }
    });
    endPiece(text.size());
}

// Compares while decoding, so that nothing is allocated.
bool QueryParameters::isNamed(Piece const& piece, std::u16string_view name) const {
    std::u16string_view const written = std::u16string_view(text).substr(piece.begin, piece.nameLength);
    std::size_t compared = 0;
    for (std::size_t at = 0; at != written.size();) {
        char16_t units[2];
        char16_t const* const end = text::put(decodeNext(written, at, Plus::isSpace), units);
        for (char16_t const* unit = units; unit != end; ++unit) {
            if (compared == name.size() || name[compared++] != *unit) {
                return false;
            }
        }
    }
    return compared == name.size();
}

std::optional<std::u16string> QueryParameters::find(std::u16string_view name) const {
    auto const found =
        std::find_if(pieces.begin(), pieces.end(), [&](Piece const& piece) { return isNamed(piece, name); });
    if (found == pieces.end()) {
        return std::nullopt;
    }
    return (*this)[static_cast<std::size_t>(found - pieces.begin())].getValue();
}

std::vector<std::u16string> QueryParameters::getAll(std::u16string_view name) const {
    std::vector<std::u16string> values;
    for (std::size_t i = 0; i != pieces.size(); ++i) {
        if (isNamed(pieces[i], name)) {
            values.push_back((*this)[i].getValue());
        }
    }
    return values;
}

bool QueryParameters::contains(std::u16string_view name) const {
    return std::any_of(pieces.begin(), pieces.end(),
                       [&](Piece const& piece) { return isNamed(piece, name); });
}

void QueryParameters::append(std::u16string_view name, std::u16string_view value) {
    std::size_t const before = text.size();
    try {
        if (before != 0) {
            text.push_back(u'&');
        }
        std::size_t const begin = text.size();
        appendEncoded(text, name);
        std::size_t const nameLength = text.size() - begin;
        text.push_back(u'=');
        appendEncoded(text, value);
        pieces.push_back({begin, text.size() - begin, nameLength, true});
    } catch (...) {
        text.resize(before);
        throw;
    }
    present = true;
}

void QueryParameters::set(std::u16string_view name, std::u16string_view value) {
    auto const first =
        std::find_if(pieces.begin(), pieces.end(), [&](Piece const& piece) { return isNamed(piece, name); });
    if (first == pieces.end()) {
        return append(name, value);
    }
    std::u16string replacement(text, first->begin, first->nameLength);
    replacement.push_back(u'=');
    appendEncoded(replacement, value);
    QueryParameters result(*this);
    result.text.replace(first->begin, first->length, replacement);
    result.split();
    // The first one stays; all others of that name are removed.
    std::size_t const kept = static_cast<std::size_t>(first - pieces.begin());
    result.removeNamed(name, kept + 1);
    *this = std::move(result);
}

std::size_t QueryParameters::remove(std::u16string_view name) {
    QueryParameters result(*this);
    std::size_t const removed = result.removeNamed(name, 0);
    if (removed != 0) {
        *this = std::move(result);
    }
    return removed;
}

// Each is removed with the separator behind it, or, at the end of the query, with the one in front of it.
std::size_t QueryParameters::removeNamed(std::u16string_view name, std::size_t from) {
    std::u16string rest;
    rest.reserve(text.size());
    std::size_t copied = 0;
    std::size_t removed = 0;
    for (std::size_t i = from; i != pieces.size(); ++i) {
        Piece const& piece = pieces[i];
        if (isNamed(piece, name)) {
            rest.append(text, copied, piece.begin - copied);
            std::size_t const end = piece.begin + piece.length;
            copied = std::min(end + 1, text.size());
            if (end == text.size() && !rest.empty()) {
                rest.pop_back();
            }
            ++removed;
        }
    }
    if (removed == 0) {
        return 0;
    }
    rest.append(text, copied, text.size() - copied);
    bool const none = removed == pieces.size();
    text = none ? std::u16string() : std::move(rest);
    present = !none;
    split();
    return removed;
}

IRI withQuery(IRI const& iri, QueryParameters const& parameters) {
    return parameters.present ? withQuery(iri, std::u16string_view(parameters.text), Encoding::Iri)
                              : withoutQuery(iri);
}

std::ostream& operator<<(std::ostream& stream, QueryParameters const& parameters) {
    return stream << toUtf8(parameters.toQuery());
}

} // namespace foundation::network
