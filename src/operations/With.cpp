#include <foundation/network/With.hpp>

#include "except/Refuse.hpp"
#include "iri/grammar/IriGrammar.hpp"
#include "operations/ComponentText.hpp"
#include "operations/ComponentViews.hpp"
#include "text/Transcoding.hpp"

#include <optional>
#include <string>

namespace foundation::network {

using iri::detail::Part;
using iri::detail::PartContext;
using iri::detail::StoredText;
using iri::detail::ValueAccess;
using operations::ComponentViews;
using operations::IriFormText;
using View = std::u32string_view;

namespace {

// A copy of the value, after `change` was applied to its components.
template <class Change>
IRI changed(IRI const& iri, Change change) {
    IriFormText const form(iri);
    ComponentViews views(form.stored());
    change(views);
    return views.recomposed();
}

using Component = std::optional<View> ComponentViews::*;

IRI with(IRI const& iri, Part part, Component component, std::u16string_view text, Encoding encoding) {
    std::u32string own;
    operations::appendComponent(own, part, text, encoding, PartContext());
    return changed(iri, [&](ComponentViews& views) { views.*component = own; });
}

IRI without(IRI const& iri, Component component) {
    return changed(iri, [&](ComponentViews& views) { views.*component = std::nullopt; });
}

using Text = std::optional<std::u16string_view>;

// A copy of a value as parsed that has another query or fragment, or none. No other component depends on
// these, so the rest is copied as it stands.
IRI withTail(StoredText const& from, Part part, Text text, Encoding encoding) {
    bool const isQuery = part == Part::query;
    auto const& old = from.components;
    IRI result;
    StoredText& made = ValueAccess::stored(result);
    made.text.reserve(from.text.size() + (text ? text->size() + 1 : 0));
    made.text.append(from.text, 0, isQuery ? old.pathEnd : old.queryEnd);
    if (text) {
        made.text.push_back(isQuery ? U'?' : U'#');
        operations::appendComponent(made.text, part, *text, encoding, PartContext());
    }
    made.components = old;
    if (isQuery) {
        made.components.queryEnd = made.text.size();
        made.text.append(from.text, old.queryEnd);
    }
    made.components.end = made.text.size();
    made.parsed = true;
    return result;
}

IRI withTail(IRI const& iri, Part part, Component component, Text text, Encoding encoding) {
    StoredText const& stored = ValueAccess::stored(iri);
    if (stored.parsed) {
        return withTail(stored, part, text, encoding);
    }
    return text ? with(iri, part, component, *text, encoding) : without(iri, component);
}

} // namespace

IRI withScheme(IRI const& iri, std::u16string_view scheme) {
    std::u32string const own = text::toUtf32(scheme);
    if (!iri::grammar::matchScheme(own)) {
        core::except::refuse("Malformed scheme");
    }
    return changed(iri, [&](ComponentViews& views) { views.scheme = own; });
}
IRI withoutScheme(IRI const& iri) {
    return without(iri, &ComponentViews::scheme);
}

IRI withUserInfo(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::userInfo, &ComponentViews::userInfo, text, encoding);
}
IRI withoutUserInfo(IRI const& iri) {
    return without(iri, &ComponentViews::userInfo);
}

IRI withHost(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return with(iri, Part::host, &ComponentViews::host, text, encoding);
}
IRI withoutHost(IRI const& iri) {
    return changed(iri,
                   [](ComponentViews& views) { views.userInfo = views.host = views.port = std::nullopt; });
}

IRI withPort(IRI const& iri, unsigned short port) {
    std::string const digits = std::to_string(port);
    std::u32string const own(digits.begin(), digits.end());
    return changed(iri, [&](ComponentViews& views) {
        views.port = own;
        views.portNumber = port;
    });
}
IRI withoutPort(IRI const& iri) {
    return changed(iri, [](ComponentViews& views) {
        views.port = std::nullopt;
        views.portNumber = 0;
    });
}

IRI withPath(IRI const& iri, std::u16string_view text, Encoding encoding) {
    // Whether a ":" in the first segment is escaped depends on the components in front of it.
    PartContext const context{iri.hasScheme(), iri.hasUserInfo(), iri.hasHost(), false};
    std::u32string own;
    operations::appendComponent(own, Part::path, text, encoding, context);
    return changed(iri, [&](ComponentViews& views) { views.path = own; });
}

IRI withQuery(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return withTail(iri, Part::query, &ComponentViews::query, text, encoding);
}
IRI withoutQuery(IRI const& iri) {
    return withTail(iri, Part::query, &ComponentViews::query, std::nullopt, Encoding::Iri);
}

IRI withFragment(IRI const& iri, std::u16string_view text, Encoding encoding) {
    return withTail(iri, Part::fragment, &ComponentViews::fragment, text, encoding);
}
IRI withoutFragment(IRI const& iri) {
    return withTail(iri, Part::fragment, &ComponentViews::fragment, std::nullopt, Encoding::Iri);
}

} // namespace foundation::network
