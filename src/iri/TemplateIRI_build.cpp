// Makes a value of arguments, and arguments of a value.

#include <foundation/network/iri/detail/ArgsBase.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "except/Refuse.hpp"
#include "iri/Draft.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/IriGrammar.hpp"

#include <stdexcept>

namespace foundation::network::iri::detail {

using Value = TemplateIRI<std::u32string>;
using Args = ArgsBase<std::u32string>;

void requireHost(bool hasUserInfo, bool hasHost, bool hasPort, std::u32string_view path) {
    if (hasUserInfo && !hasHost) {
        core::except::refuse("User Info requires a host");
    }
    if (hasPort && !hasHost) {
        core::except::refuse("Port requires a host");
    }
    if (hasHost && !path.empty() && path.front() != U'/') {
        core::except::refuse("Path cannot be relative if authority present");
    }
}

Value::TemplateIRI(Args const& args) {
    auto const& content = args.content;
    std::u32string encodedQuery; // the draft reads it until it is finished
    Draft draft(stored, Draft::Guarantee::none);
    // Where several of these checks fail, the first one decides what is thrown.
    if (content.hasScheme) {
        if (!content.schemeTrusted && !grammar::matchScheme(content.scheme)) {
            core::except::refuse("Malformed scheme");
        }
        draft.setScheme(content.scheme);
    }
    std::u32string_view const path =
        content.hasPath ? std::u32string_view(content.path) : std::u32string_view();
    requireHost(content.hasUserInfo, content.hasHost, content.hasPort, path);
    if (content.hasUserInfo) {
        draft.setUserInfo(content.userInfo, Form::raw);
    }
    if (content.hasHost) {
        draft.setHost(content.host, Form::raw);
    }
    if (content.hasPort) {
        draft.setPort(content.port);
    }
    draft.setPath(path, Form::raw);
    if (content.hasQuery) {
        if (content.queryFormEncoded) {
            encodedQuery = encoding::toUriForm(content.query);
        }
        draft.setQuery(content.queryFormEncoded ? encodedQuery : content.query, Form::raw,
                       content.queryFormEncoded || content.queryFormEscaped);
    }
    if (content.hasFragment) {
        draft.setFragment(content.fragment, Form::raw);
    }
    draft.finish();
}

// A scheme, user information, host or port that the value lacks stays in the arguments as it was; a query or
// fragment that it lacks is cleared.
void Value::toArgs(Args& args) const {
    if (!stored.components.hasPath) {
        throw std::runtime_error("Item not set: Path");
    }
    auto const raw = [this](Part part) {
        std::u32string own;
        return std::u32string(stored.inForm(part, Form::raw, own));
    };
    Args result(args); // a copy: if decoding throws, the arguments stay as they were
    auto& content = result.content;
    if (hasScheme()) {
        result.setScheme(std::u32string(stored.scheme()));
        content.schemeTrusted = true;
    }
    if (hasUserInfo()) {
        result.setUserInfo(raw(Part::userInfo));
    }
    if (hasHost()) {
        result.setHost(raw(Part::host));
    }
    if (hasPort()) {
        result.setPort(stored.components.port);
    }
    result.setPath(raw(Part::path));
    result.clearQuery();
    if (hasQuery()) {
        result.setQuery(raw(Part::query));
    }
    content.queryFormEncoded = stored.components.queryIsFormEncoded;
    content.queryFormEscaped = false;
    result.clearFragment();
    if (hasFragment()) {
        result.setFragment(raw(Part::fragment));
    }
    args.content = std::move(content);
}

} // namespace foundation::network::iri::detail
