#include "operations/FindFault.hpp"

#include "iri/grammar/CharacterClasses.hpp"
#include "iri/grammar/PortReader.hpp"
#include "iri/grammar/Runs.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

namespace foundation::network::operations {

namespace {

using namespace iri::grammar;
using iri::detail::Components;

/// A text that was refused, cut into components from its start. Each step gives the fault of its component.
class Cutter {
public:
    explicit Cutter(iri::detail::StoredText const& refused)
        : text(refused.text), matched(refused.components) {}

    [[nodiscard]] ParseFault find() const {
        if (!matched.hasScheme()) {
            if (auto const fault = inScheme()) {
                return *fault;
            }
        }
        if (matched.hasHost()) {
            if (auto const fault = inAuthority()) {
                return *fault;
            }
        }
        // The grammar has gone as far as the component that cannot hold what stands there.
        if (matched.hasFragment()) {
            return at(matched.end, IRIComponent::Fragment, ParseReason::NotInFragment);
        }
        if (matched.hasQuery()) {
            return at(matched.end, IRIComponent::Query, ParseReason::NotInQuery);
        }
        return at(matched.end, IRIComponent::Path, ParseReason::NotInPath);
    }

private:
    using Fault = std::optional<ParseFault>;

    [[nodiscard]] ParseFault at(std::size_t place, IRIComponent component, ParseReason reason) const {
        return {place, component, reason, place < text.size() ? text[place] : U'\0'};
    }
    [[nodiscard]] std::size_t placeOf(char32_t const* character) const {
        return static_cast<std::size_t>(character - text.data());
    }

    static bool isBehindAuthority(char32_t c) { return c == U'/' || c == U'?' || c == U'#'; }

    // A text without a scheme that a reader would take for one with a scheme.
    [[nodiscard]] Fault inScheme() const {
        auto const stop = std::find_if(text.begin(), text.end(),
                                       [](char32_t c) { return c == U':' || isBehindAuthority(c); });
        if (stop == text.end() || *stop != U':') {
            return std::nullopt;
        }
        auto const colon = static_cast<std::size_t>(stop - text.begin());
        if (colon == 0) {
            return at(0, IRIComponent::Scheme, ParseReason::EmptyScheme);
        }
        std::size_t const end =
            is<ALPHA>(text[0]) ? placeOf(endOfRun<SCHEME>(text.data(), text.data() + colon)) : 0;
        return at(end, IRIComponent::Scheme, ParseReason::NotInScheme);
    }

    [[nodiscard]] Fault inAuthority() const {
        if (matched.pathBegin == text.size() || isBehindAuthority(text[matched.pathBegin])) {
            return matched.hasPort() ? inPort(matched.hostEnd + 1, matched.pathBegin) : std::nullopt;
        }
        std::size_t const begin = matched.authorityBegin() + 2;
        auto const end = static_cast<std::size_t>(
            std::find_if(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), isBehindAuthority) -
            text.begin());
        std::size_t host = begin;
        std::size_t const atSign = text.substr(begin, end - begin).find(U'@');
        if (atSign != std::u32string_view::npos) {
            host = begin + atSign + 1;
            if (auto const fault =
                    inRun<IUSERINFO>(begin, host - 1, IRIComponent::UserInfo, ParseReason::NotInUserInfo)) {
                return fault;
            }
        }
        std::size_t behindBracket = host;
        if (host != end && text[host] == U'[') {
            if (matched.hostEnd == matched.hostBegin) {
                return at(host, IRIComponent::Host, ParseReason::NotAnAddress);
            }
            behindBracket = matched.hostEnd;
        }
        std::size_t const colon = text.substr(behindBracket, end - behindBracket).rfind(U':');
        std::size_t const hostEnd = colon == std::u32string_view::npos ? end : behindBracket + colon;
        if (behindBracket != host) {
            if (hostEnd != behindBracket) {
                return at(behindBracket, IRIComponent::Host, ParseReason::NotInHost);
            }
        } else if (auto const fault =
                       inRun<IREG_NAME>(host, hostEnd, IRIComponent::Host, ParseReason::NotInHost)) {
            return fault;
        }
        return colon == std::u32string_view::npos ? std::nullopt : inPort(hostEnd + 1, end);
    }

    // Of a component that holds characters of `mask` and whole escapes.
    template <ClassMask mask>
    [[nodiscard]] Fault inRun(std::size_t begin, std::size_t end, IRIComponent component,
                              ParseReason reason) const {
        std::size_t const stop =
            placeOf(endOfRun<mask, Escapes::percent>(text.data() + begin, text.data() + end));
        if (stop == end) {
            return std::nullopt;
        }
        return at(stop, component, text[stop] == U'%' ? ParseReason::EscapeNotWhole : reason);
    }

    [[nodiscard]] Fault inPort(std::size_t begin, std::size_t end) const {
        if (begin == end) {
            return at(begin, IRIComponent::Port, ParseReason::EmptyPort);
        }
        std::u32string_view const port = text.substr(begin, end - begin);
        if (readPort(port)) {
            return std::nullopt;
        }
        bool const isNumber =
            std::all_of(port.begin(), port.end(), [](char32_t c) { return c >= U'0' && c <= U'9'; });
        return at(begin, IRIComponent::Port, isNumber ? ParseReason::PortTooLarge : ParseReason::NotInPort);
    }

    std::u32string_view text;
    Components const& matched;
};

} // namespace

ParseFault findFault(iri::detail::StoredText const& refused) {
    return Cutter(refused).find();
}

} // namespace foundation::network::operations
