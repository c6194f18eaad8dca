// From arguments to a value, and back.

#include <foundation/core/except/InternalException.hpp>
#include <foundation/network/iri/detail/ArgsBase.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/RelativePath.hpp"
#include "iri/encoding/PercentEncoding.hpp"
#include "iri/encoding/Transcoding.hpp"
#include "iri/grammar/IriGrammar.hpp"

namespace foundation::network::iri::detail {

using core::except::detail::makeInternalException;

template <class String>
TemplateIRI<String>::TemplateIRI(ArgsBase<String> const& args) {
    flags.hasScheme = args.content.hasScheme;
    flags.hasQuery = args.content.hasQuery;
    flags.hasFragment = args.content.hasFragment;
    flags.hasPort = args.content.hasPort;
    flags.hasHost = args.content.hasHost;
    flags.hasUserInfo = args.content.hasUserInfo;
    buildFromArgs(args);
}

// The order is the one in which failures are found.
template <class String>
void TemplateIRI<String>::buildFromArgs(ArgsBase<String> const& args) {
    if (flags.hasScheme) {
        buildScheme(args);
    }
    if (flags.hasUserInfo) {
        buildUserInfo(args);
    }
    if (flags.hasHost) {
        buildHost(args);
    }
    if (flags.hasPort) {
        buildPort(args);
    }
    if (args.content.hasPath) {
        buildPath(args);
        parts.setSchemePresent(flags.hasScheme);
    } else {
        parts.setPath(String(), Encoding::Raw);
    }
    if (flags.hasQuery) {
        buildQuery(args);
    }
    if (flags.hasFragment) {
        buildFragment(args);
    }
    close();
}

template <class String>
void TemplateIRI<String>::close() {
    flags.empty = parts.isEmpty() && !flags.hasScheme && !flags.hasPort;
    flags.hasAuthority = flags.hasHost;
    if (flags.hasScheme) {
        flags.isAbsolute = true;
        flags.isOpaque = !flags.hasHost && !flags.hasAbsolutePath;
    }
}

template <class String>
void TemplateIRI<String>::buildScheme(ArgsBase<String> const& args) {
    if (!args.content.schemeTrusted && !grammar::matchScheme(args.content.scheme)) {
        throw makeInternalException(std::logic_error("Malformed scheme"));
    }
    scheme = encoding::toUtf16(args.content.scheme);
}

template <class String>
void TemplateIRI<String>::buildUserInfo(ArgsBase<String> const& args) {
    if (!flags.hasHost) {
        throw makeInternalException(std::logic_error("User Info requires a host"));
    }
    parts.setUserInfo(args.content.userInfo, Encoding::Raw);
}

template <class String>
void TemplateIRI<String>::buildHost(ArgsBase<String> const& args) {
    parts.setHost(args.content.host, Encoding::Raw);
}

template <class String>
void TemplateIRI<String>::buildPort(ArgsBase<String> const& args) {
    if (!flags.hasHost) {
        throw makeInternalException(std::logic_error("Port requires a host"));
    }
    port = args.content.port;
    std::string const digits = std::to_string(port);
    portString.assign(digits.begin(), digits.end());
}

template <class String>
void TemplateIRI<String>::buildPath(ArgsBase<String> const& args) {
    String const& path = args.content.path;
    flags.pathIsEmpty = path.empty();
    flags.hasAbsolutePath = !flags.pathIsEmpty && path.front() == FORWARD_SLASH;
    if (flags.hasHost && !flags.pathIsEmpty && !flags.hasAbsolutePath) {
        throw makeInternalException(std::logic_error("Path cannot be relative if authority present"));
    }
    parts.setPath(path, Encoding::Raw);
    flags.pathHasDotSegments = hasRelativePathSegments(path);
}

template <class String>
void TemplateIRI<String>::buildQuery(ArgsBase<String> const& args) {
    auto const& content = args.content;
    flags.queryIsFormEncoded = content.queryFormEncoded || content.queryFormEscaped;
    parts.setQuery(content.queryFormEncoded ? encoding::toUriForm(content.query) : content.query,
                   Encoding::Raw, flags.queryIsFormEncoded);
}

template <class String>
void TemplateIRI<String>::buildFragment(ArgsBase<String> const& args) {
    parts.setFragment(args.content.fragment, Encoding::Raw);
}

template <class String>
void TemplateIRI<String>::toArgs(ArgsBase<String>& args) const {
    // A part that cannot be decoded must leave the arguments as they were.
    ArgsBase<String> result(args);
    auto& content = result.content;
    if (flags.hasScheme) {
        content.scheme = nativeScheme();
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
template void TemplateIRI<std::u32string>::close();
template void TemplateIRI<std::u32string>::buildFromArgs(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildScheme(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildUserInfo(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildHost(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildPort(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildPath(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildQuery(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::buildFragment(ArgsBase<std::u32string> const&);
template void TemplateIRI<std::u32string>::setArgsAuthority(ArgsBase<std::u32string>&) const;
template void TemplateIRI<std::u32string>::setArgsQuery(ArgsBase<std::u32string>&) const;
template void TemplateIRI<std::u32string>::setArgsFragment(ArgsBase<std::u32string>&) const;

} // namespace foundation::network::iri::detail
