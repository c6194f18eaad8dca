// From arguments to a value, and back.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/ArgsBase.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Draft.hpp"
#include "iri/RelativePath.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/grammar/IriGrammar.hpp"

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

template <class String>
TemplateIRI<String>::TemplateIRI(ArgsBase<String> const& args) {
    buildFromArgs(args);
}

// The order is the one in which failures are found.
template <class String>
void TemplateIRI<String>::buildFromArgs(ArgsBase<String> const& args) {
    auto const& content = args.content;
    String encodedQuery;
    Draft draft(*this, Draft::Kind::built);
    if (content.hasScheme) {
        buildScheme(args, draft);
    }
    if (content.hasUserInfo) {
        buildUserInfo(args, draft);
    }
    if (content.hasHost) {
        buildHost(args, draft);
    }
    if (content.hasPort) {
        buildPort(args, draft);
    }
    if (content.hasPath) {
        buildPath(args, draft);
    } else {
        draft.setPath(View());
    }
    if (content.hasQuery) {
        buildQuery(args, draft, encodedQuery);
    }
    if (content.hasFragment) {
        buildFragment(args, draft);
    }
    draft.finish();
}

template <class String>
void TemplateIRI<String>::buildScheme(ArgsBase<String> const& args, Draft& draft) {
    if (!args.content.schemeTrusted && !grammar::matchScheme(args.content.scheme)) {
        throw makeInternalException(std::logic_error("Malformed scheme"));
    }
    draft.setScheme(args.content.scheme);
}

template <class String>
void TemplateIRI<String>::buildUserInfo(ArgsBase<String> const& args, Draft& draft) {
    if (!args.content.hasHost) {
        throw makeInternalException(std::logic_error("User Info requires a host"));
    }
    draft.setUserInfo(args.content.userInfo);
}

template <class String>
void TemplateIRI<String>::buildHost(ArgsBase<String> const& args, Draft& draft) {
    draft.setHost(args.content.host);
}

template <class String>
void TemplateIRI<String>::buildPort(ArgsBase<String> const& args, Draft& draft) {
    if (!args.content.hasHost) {
        throw makeInternalException(std::logic_error("Port requires a host"));
    }
    draft.setPort(args.content.port);
}

template <class String>
void TemplateIRI<String>::buildPath(ArgsBase<String> const& args, Draft& draft) {
    View const path = args.content.path;
    bool const absolute = !path.empty() && path.front() == FORWARD_SLASH;
    if (args.content.hasHost && !path.empty() && !absolute) {
        throw makeInternalException(std::logic_error("Path cannot be relative if authority present"));
    }
    draft.setPath(path);
    draft.setPathHasDotSegments(hasRelativePathSegments(path));
}

// `encoded` keeps what the draft is told of a form-encoded query.
template <class String>
void TemplateIRI<String>::buildQuery(ArgsBase<String> const& args, Draft& draft, String& encoded) {
    auto const& content = args.content;
    if (content.queryFormEncoded) {
        encoded = encoding::toUriForm(content.query);
    }
    draft.setQuery(content.queryFormEncoded ? encoded : content.query,
                   content.queryFormEncoded || content.queryFormEscaped);
}

template <class String>
void TemplateIRI<String>::buildFragment(ArgsBase<String> const& args, Draft& draft) {
    draft.setFragment(args.content.fragment);
}

template <class String>
void TemplateIRI<String>::toArgs(ArgsBase<String>& args) const {
    // A part that cannot be decoded must leave the arguments as they were.
    ArgsBase<String> result(args);
    auto& content = result.content;
    if (flags.hasScheme) {
        content.scheme = schemeView();
        content.hasScheme = true;
        content.schemeTrusted = true;
    }
    setArgsAuthority(result);
    content.userInfoTrusted = content.userInfoTrusted || flags.hasUserInfo;
    content.hostTrusted = content.hostTrusted || flags.hasHost;
    content.path = parts.view(Part::path, Encoding::Raw);
    content.hasPath = true;
    content.pathTrusted = true;
    setArgsQuery(result);
    content.queryTrusted = true;
    content.queryFormEncoded = flags.queryIsFormEncoded;
    content.queryFormEscaped = false;
    setArgsFragment(result);
    content.fragmentTrusted = true;
    args.content = std::move(content);
}

// What the value does not have of an authority stays in the arguments as it was; query and fragment do not.
template <class String>
void TemplateIRI<String>::setArgsAuthority(ArgsBase<String>& args) const {
    if (flags.hasUserInfo) {
        args.setUserInfo(String(parts.view(Part::userInfo, Encoding::Raw)));
    }
    if (flags.hasHost) {
        args.setHost(String(parts.view(Part::host, Encoding::Raw)));
    }
    if (flags.hasPort) {
        args.setPort(port);
    }
}

template <class String>
void TemplateIRI<String>::setArgsQuery(ArgsBase<String>& args) const {
    args.clearQuery();
    if (flags.hasQuery) {
        args.setQuery(String(parts.view(Part::query, Encoding::Raw)));
    }
}

template <class String>
void TemplateIRI<String>::setArgsFragment(ArgsBase<String>& args) const {
    args.clearFragment();
    if (flags.hasFragment) {
        args.setFragment(String(parts.view(Part::fragment, Encoding::Raw)));
    }
}

template TemplateIRI<std::u32string>::TemplateIRI(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::toArgs(ArgsBase<std::u32string>&) const;
template void TemplateIRI<std::u32string>::buildFromArgs(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildScheme(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::buildUserInfo(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::buildHost(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::buildPort(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::buildPath(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::buildQuery(ArgsBase<std::u32string> const&, Draft&,
                                                      std::u32string&);
template void TemplateIRI<std::u32string>::buildFragment(ArgsBase<std::u32string> const&, Draft&);
template void TemplateIRI<std::u32string>::setArgsAuthority(ArgsBase<std::u32string>&) const;
template void TemplateIRI<std::u32string>::setArgsQuery(ArgsBase<std::u32string>&) const;
template void TemplateIRI<std::u32string>::setArgsFragment(ArgsBase<std::u32string>&) const;

} // namespace foundation::network::iri::detail
