#pragma once

/// Values out of lines: a text to parse, or behind a "!" parts to build from, with a "|" between two.

#include "Input.hpp"

#include <foundation/network/IRIArgs.hpp>

#include <algorithm>

namespace fuzz {

using foundation::network::IRIArgs;
using support::IRI;

/// Each piece is a part behind the letter of its setter, or a key and a value. What a setter refuses is left
/// out.
inline IRIArgs argsOf(std::string_view pieces) {
    static constexpr std::pair<char, IRIArgs& (IRIArgs::*)(Text const&)> setters[] = {
        {'s', &IRIArgs::setScheme},  {'u', &IRIArgs::setUserInfo}, {'h', &IRIArgs::setHost},
        {'o', &IRIArgs::setPort},    {'p', &IRIArgs::setPath},     {'q', &IRIArgs::setQuery},
        {'f', &IRIArgs::setFragment}};
    IRIArgs args;
    for (std::string_view const piece : split(pieces, '|')) {
        auto const* const setter =
            std::find_if(std::begin(setters), std::end(setters),
                         [&](auto const& each) { return !piece.empty() && each.first == piece.front(); });
        (void)unlessRefused<std::logic_error>([&] {
            if (setter != std::end(setters)) {
                return &(args.*setter->second)(units(piece.substr(1)));
            }
            auto const pair = split(piece, '='); // its length tells the two flags
            return &args.appendQueryKeyValuePair(pair.empty() ? u"" : units(pair[0]),
                                                 pair.size() < 2 ? u"" : units(pair[1]),
                                                 piece.size() % 2 != 0, piece.size() % 4 > 1);
        });
    }
    return args;
}

inline std::optional<IRI> valueOf(std::string_view line) {
    return unlessRefused<std::logic_error>([&] {
        return !line.empty() && line.front() == '!' ? IRI(argsOf(line.substr(1))) : IRI(units(line));
    });
}

} // namespace fuzz
