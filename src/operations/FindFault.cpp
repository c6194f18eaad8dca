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

/// Looks at the components of a refused text from its start. Each step returns the fault of its component, or
/// nothing.
class FaultFinder {
public:
    explicit FaultFinder(iri::detail::StoredText const& refused)
        : text(refused.text), matched(refused.components) {}

    [[nodiscard]] ParseFault find() const {
        if (!matched.hasScheme()) {
            if (auto const fault = schemeFault()) {
                return *fault;
            }
        }
        if (matched.hasHost()) {
            if (auto const fault = authorityFault()) {
                return *fault;
            }
        }
        // The grammar has stopped in this component, which may not hold the character there.
        if (matched.hasFragment()) {
            return faultAt(matched.end, IRIComponent::Fragment, ParseReason::NotInFragment);
        }
        if (matched.hasQuery()) {
            return faultAt(matched.end, IRIComponent::Query, ParseReason::NotInQuery);
        }
        return faultAt(matched.end, IRIComponent::Path, ParseReason::NotInPath);
    }

private:
    using Fault = std::optional<ParseFault>;

    [[nodiscard]] ParseFault faultAt(std::size_t offset, IRIComponent component, ParseReason reason) const {
        return {offset, component, reason, offset < text.size() ? text[offset] : U'\0'};
    }
    [[nodiscard]] std::size_t offsetOf(char32_t const* character) const {
        return static_cast<std::size_t>(character - text.data());
    }

    static bool endsAuthority(char32_t c) { return c == U'/' || c == U'?' || c == U'#'; }

    // If a ":" comes before "/", "?" and "#", the text before it was meant as a scheme.
    [[nodiscard]] Fault schemeFault() const {
        auto const stop =
            std::find_if(text.begin(), text.end(), [](char32_t c) { return c == U':' || endsAuthority(c); });
        if (stop == text.end() || *stop != U':') {
            return std::nullopt;
        }
        auto const colon = static_cast<std::size_t>(stop - text.begin());
        if (colon == 0) {
            return faultAt(0, IRIComponent::Scheme, ParseReason::EmptyScheme);
        }
        std::size_t const end =
            is<ALPHA>(text[0]) ? offsetOf(endOfRun<SCHEME>(text.data(), text.data() + colon)) : 0;
        return faultAt(end, IRIComponent::Scheme, ParseReason::NotInScheme);
    }

    [[nodiscard]] Fault authorityFault() const {
        if (matched.pathBegin == text.size() || endsAuthority(text[matched.pathBegin])) {
            return matched.hasPort() ? portFault(matched.hostEnd + 1, matched.pathBegin) : std::nullopt;
        }
        std::size_t const begin = matched.authorityBegin() + 2;
        auto const end = static_cast<std::size_t>(
            std::find_if(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), endsAuthority) -
            text.begin());
        std::size_t host = begin;
        std::size_t const atSign = text.substr(begin, end - begin).find(U'@');
        if (atSign != std::u32string_view::npos) {
            host = begin + atSign + 1;
            if (auto const fault = componentFault<IUSERINFO>(begin, host - 1, IRIComponent::UserInfo,
                                                             ParseReason::NotInUserInfo)) {
                return fault;
            }
        }
        std::size_t behindBracket = host;
        if (host != end && text[host] == U'[') {
            if (matched.hostEnd == matched.hostBegin) {
                return faultAt(host, IRIComponent::Host, ParseReason::NotAnAddress);
            }
            behindBracket = matched.hostEnd;
        }
        std::size_t const colon = text.substr(behindBracket, end - behindBracket).rfind(U':');
        std::size_t const hostEnd = colon == std::u32string_view::npos ? end : behindBracket + colon;
        if (behindBracket != host) {
            if (hostEnd != behindBracket) {
                return faultAt(behindBracket, IRIComponent::Host, ParseReason::NotInHost);
            }
        } else if (auto const fault =
                       componentFault<IREG_NAME>(host, hostEnd, IRIComponent::Host, ParseReason::NotInHost)) {
            return fault;
        }
        return colon == std::u32string_view::npos ? std::nullopt : portFault(hostEnd + 1, end);
    }

    // Finds the fault of a component that may hold characters of `mask` and escapes.
    template <ClassMask mask>
    [[nodiscard]] Fault componentFault(std::size_t begin, std::size_t end, IRIComponent component,
                                       ParseReason reason) const {
        std::size_t const stop =
            offsetOf(endOfRun<mask, Escapes::percent>(text.data() + begin, text.data() + end));
        if (stop == end) {
            return std::nullopt;
        }
        return faultAt(stop, component, text[stop] == U'%' ? ParseReason::EscapeNotWhole : reason);
    }

    [[nodiscard]] Fault portFault(std::size_t begin, std::size_t end) const {
        if (begin == end) {
            return faultAt(begin, IRIComponent::Port, ParseReason::EmptyPort);
        }
        std::u32string_view const port = text.substr(begin, end - begin);
        if (readPort(port)) {
            return std::nullopt;
        }
        bool const isNumber =
            std::all_of(port.begin(), port.end(), [](char32_t c) { return c >= U'0' && c <= U'9'; });
        return faultAt(begin, IRIComponent::Port,
                       isNumber ? ParseReason::PortTooLarge : ParseReason::NotInPort);
    }

    std::u32string_view text;
    Components const& matched;
};

} // namespace

ParseFault findFault(iri::detail::StoredText const& refused) {
    return FaultFinder(refused).find();
}

} // namespace foundation::network::operations
