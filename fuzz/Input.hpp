#pragma once

/// What the bytes of a fuzzer mean: UTF-8 text of one or more lines, so that seeds and findings can be read.

#include "support/Laws.hpp"

#include <unicode/utf8.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

using support::answers;
using support::require;
using Text = std::u16string;

/// The code points of UTF-8. A byte that is no UTF-8 becomes a surrogate that never makes a pair, so that
/// some texts are no UTF-16.
inline std::u32string codePoints(std::string_view bytes) {
    std::u32string text;
    while (!bytes.empty()) {
        bool const behindLead = !text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF;
        auto const* const front = reinterpret_cast<unsigned char const*>(bytes.data());
        std::size_t length = 0;
        UChar32 c = 0;
        U8_NEXT(front, length, bytes.size(), c);
        text +=
            c >= 0 ? static_cast<char32_t>(c) : (behindLead || *front % 2 != 0 ? 0xD800u : 0xDC00u) + *front;
        bytes.remove_prefix(c >= 0 ? length : 1);
    }
    return text;
}

/// The same as units of UTF-16.
inline Text units(std::string_view bytes) {
    Text text;
    for (char32_t const c : codePoints(bytes)) {
        text += support::toUtf16({c}).value_or(Text(1, static_cast<char16_t>(c)));
    }
    return text;
}

/// The pieces between separators, eight at the most.
inline std::vector<std::string_view> split(std::string_view rest, char separator) {
    std::vector<std::string_view> found;
    while (found.size() != 8 && !rest.empty()) {
        std::size_t const end = rest.find(separator);
        found.push_back(rest.substr(0, end));
        rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    }
    return found;
}

/// What an operation gives, or nothing where it refuses with `Refusal`.
template <class Refusal, class Operation>
auto unlessRefused(Operation operation) -> std::optional<decltype(operation())> {
    try {
        return operation();
    } catch (Refusal const&) {
        return std::nullopt;
    }
}

/// What a target does with one input: a law that doesn't hold ends the program with its words and its texts.
int holds(std::string_view input);

} // namespace fuzz

// The engine asks for it by name alone.
extern "C" [[gnu::used]] inline int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    return fuzz::holds({reinterpret_cast<char const*>(data), size});
}
