#include <foundation/network/FileIri.hpp>

#include "except/Refuse.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/CharacterClasses.hpp"
#include "operations/IriFormText.hpp"
#include "text/AsciiCase.hpp"
#include "text/CodePoints.hpp"
#include "text/Escapes.hpp"

#include <string>
#include <string_view>

namespace foundation::network {

using iri::detail::Draft;
using iri::detail::Form;
using iri::detail::Part;
using iri::detail::StoredText;
using iri::detail::ValueAccess;

namespace {

bool standsAsItself(char32_t c) {
    return c != U'%' && iri::grammar::is<iri::grammar::PATH>(c) && !iri::encoding::isIriForbidden(c);
}

bool isLocal(StoredText const& stored) {
    auto const& components = stored.components;
    if (components.hasHost()) {
        std::u32string_view const host = stored.given(Part::host);
        if (!host.empty() && !text::isWord(host, U"localhost")) {
            return false;
        }
    }
    return text::isWord(stored.scheme(), U"file") && components.pathIsAbsolute && !components.hasUserInfo() &&
           !components.hasPort() && !components.hasQuery() && !components.hasFragment();
}

} // namespace

IRI iriFromFile(std::filesystem::path const& path) {
    std::string const& bytes = path.native();
    if (!path.is_absolute()) {
        core::except::refuse("Path must be absolute");
    }
    std::u32string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at != bytes.size();) {
        auto const byteAt = [&bytes, at](unsigned i) {
            return at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : -1;
        };
        auto const sequence = text::decodeUtf8(static_cast<unsigned char>(bytes[at]), byteAt);
        std::size_t const end = at + sequence.length;
        if (sequence.wellFormed && standsAsItself(sequence.codePoint)) {
            text.push_back(sequence.codePoint);
            at = end;
        }
        for (; at != end; ++at) {
            text::percentByte(text, static_cast<unsigned char>(bytes[at]));
        }
    }
    IRI result;
    Draft draft(ValueAccess::stored(result), Draft::Guarantee::asParsed);
    draft.setScheme(U"file");
    draft.setHost({}, Form::iri);
    draft.setPath(text, Form::iri);
    draft.finish();
    return result;
}

std::filesystem::path fileFromIri(IRI const& iri) {
    constexpr auto* words = "Not the IRI of a local file";
    operations::IriFormText const form(iri);
    if (!isLocal(form.stored())) {
        core::except::refuse(words);
    }
    std::u32string_view const path = form.path();
    std::string bytes;
    bytes.reserve(path.size());
    for (std::size_t at = 0; at != path.size();) {
        int const byte = text::escapedByte(path, at);
        if (byte == 0 || byte == '/') {
            core::except::refuse(words);
        }
        if (byte > 0) {
            bytes.push_back(static_cast<char>(byte));
            at += 3;
        } else {
            text::encodeUtf8(path[at++], [&bytes](unsigned char each) { bytes += static_cast<char>(each); });
        }
    }
    return bytes;
}

} // namespace foundation::network
