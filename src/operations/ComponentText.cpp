#include "operations/ComponentText.hpp"

#include "iri/ReadText.hpp"
#include "iri/encoding/Conversions.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "iri/grammar/Runs.hpp"
#include "text/Escapes.hpp"
#include "text/Scans.hpp"
#include "text/Transcoding.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace foundation::network::operations {

using iri::detail::Part;
using iri::detail::PartContext;

namespace {

using namespace iri::grammar;

template <ClassMask mask, Escapes escapes = Escapes::none>
bool isRun(std::u32string_view text) {
    char32_t const* const end = text.data() + text.size();
    return endOfRun<mask, escapes>(text.data(), end) == end;
}

bool isHost(std::u32string_view text) {
    std::u32string reference(U"//");
    reference += text;
    iri::detail::Components found;
    return matchIriReference(reference, found) && found.hostBegin == 2 && found.hostEnd == reference.size();
}

bool isComponent(Part part, std::u32string_view text) {
    switch (part) {
    case Part::userInfo:
        return isRun<IUSERINFO, Escapes::percent>(text);
    case Part::host:
        return isHost(text);
    case Part::path:
        return isRun<PATH>(text);
    case Part::query:
        return isRun<IQUERY>(text);
    default:
        return isRun<IFRAGMENT>(text);
    }
}

// `iriFromRaw` escapes a "%" of a host twice if two digits follow, and that does not decode to the text
// again. So it converts only what stands between them here.
std::optional<std::u32string> hostFromRaw(std::u32string_view text, PartContext const& context) {
    std::size_t end = text.find(U'%');
    if (end == std::u32string_view::npos) {
        return iri::encoding::iriFromRaw(Part::host, text, context);
    }
    std::u32string result;
    for (std::size_t at = 0;; end = text.find(U'%', at)) {
        std::u32string_view const piece = text.substr(at, end - at);
        result.append(iri::encoding::iriFromRaw(Part::host, piece, context).value_or(std::u32string(piece)));
        if (end == std::u32string_view::npos) {
            return result;
        }
        result.append(U"%25");
        at = end + 1;
    }
}

} // namespace

std::u32string escaped(Part part, std::u32string text, PartContext const& context) {
    if (auto converted = part == Part::host ? hostFromRaw(text, context)
                                            : iri::encoding::iriFromRaw(part, text, context)) {
        text = std::move(*converted);
    }
    auto const isKept = [part, &text](std::size_t at) {
        char32_t const c = text[at];
        if (c == U'%') {
            return part != Part::userInfo || text::escapedByte(std::u32string_view(text), at) >= 0;
        }
        return c != U'[' && c != U']' && (c != U'#' || part != Part::fragment);
    };
    std::size_t at = 0;
    while (at != text.size() && isKept(at)) {
        ++at;
    }
    if (at == text.size()) {
        return text;
    }
    std::u32string result(text, 0, at);
    for (; at != text.size(); ++at) {
        if (isKept(at)) {
            result.push_back(text[at]);
        } else {
            text::percentByte(result, static_cast<unsigned char>(text[at]));
        }
    }
    return result;
}

void appendComponent(std::u32string& out, Part part, std::u16string_view text, iri::Encoding encoding,
                     PartContext const& context) {
    if (encoding == iri::Encoding::Raw) {
        out.append(escaped(part, text::toUtf32(text), context));
        return;
    }
    std::size_t const begin = out.size();
    if (text::hasSurrogate(text)) {
        out.append(text::toUtf32(text));
    } else {
        out.resize(begin + text.size());
        std::copy(text.begin(), text.end(), out.data() + begin);
    }
    if (!isComponent(part, std::u32string_view(out).substr(begin))) {
        iri::throwParsingFailed();
    }
}

} // namespace foundation::network::operations
