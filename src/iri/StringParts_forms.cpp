// How the parts are stored, and how their forms come into being.

#include <foundation/network/iri/detail/StringParts.hpp>

#include "iri/SameText.hpp"
#include "iri/encoding/Conversions.hpp"

namespace foundation::network::iri::detail {

template <class String>
StringParts<String>::StringParts(StringParts const& other)
    : source(other.source),
      headers(other.headers),
      states(other.states.load(std::memory_order_acquire)),
      // Others may be filling forms meanwhile: of those that the states do not tell of, a text may come along
      // that is found when the form is asked for.
      own(other.own),
      context(other.context),
      empty(other.empty) {}

template <class String>
StringParts<String>::StringParts(StringParts&& other) noexcept
    : source(std::move(other.source)),
      headers(other.headers),
      states(other.states.load(std::memory_order_relaxed)),
      own(std::move(other.own)),
      context(other.context),
      empty(other.empty) {
    other.forget();
}

template <class String>
StringParts<String>& StringParts<String>::operator=(StringParts&& other) noexcept {
    if (this != &other) {
        source = std::move(other.source);
        headers = other.headers;
        states.store(other.states.load(std::memory_order_relaxed), std::memory_order_relaxed);
        own = std::move(other.own);
        context = other.context;
        empty = other.empty;
        other.forget();
    }
    return *this;
}

// What a move leaves behind is as a new object.
template <class String>
void StringParts<String>::forget() noexcept {
    String().swap(source); // which the move may have left with a text of the target's
    headers = {};
    states.store(0, std::memory_order_relaxed);
    context = PartContext();
    empty = true;
}

template <class String>
void StringParts<String>::swap(StringParts& other) noexcept {
    source.swap(other.source);
    headers.swap(other.headers);
    std::uint64_t const mine = states.load(std::memory_order_relaxed);
    states.store(other.states.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.states.store(mine, std::memory_order_relaxed);
    own.swap(other.own);
    std::swap(context, other.context);
    std::swap(empty, other.empty);
}

template <class String>
void StringParts<String>::set(Part part, String text, Encoding const& encoding) {
    Form const form = formOf(encoding);
    bool const stillEmpty = empty && part == Part::path && text.empty();
    PublishedOnce<String> fresh;
    fresh.publish(std::move(text));
    (void)ownText(part, form); // makes the place, the last step that can fail
    header(part) = {};
    header(part).form = form;
    dropDerived(part);
    own.writable()[index(part, form)].swap(fresh);
    states.fetch_or(bits(part, form, State::own), std::memory_order_relaxed);
    header(part).present = true;
    empty = stillEmpty;
}

// Forgets all forms of a part but the one that was set.
template <class String>
void StringParts<String>::dropDerived(Part part) noexcept {
    Form const kept = header(part).present ? header(part).form : Form(3); // none of an absent part
    for (Form const form : {Form::raw, Form::iri, Form::uri}) {
        if (form != kept) {
            constexpr auto all = static_cast<State>((1U << STATE_BITS) - 1);
            states.fetch_and(~bits(part, form, all), std::memory_order_relaxed);
            if (own.get() != nullptr) {
                own.writable()[index(part, form)].reset();
            }
        }
    }
}

template <class String>
PublishedOnce<String> const& StringParts<String>::ownText(Part part, Form form) const {
    auto const* texts = own.get();
    return (texts != nullptr ? *texts : own.publish(OwnTexts()))[index(part, form)];
}

// The form that holds the text of a form, filled if need be.
template <class String>
Form StringParts<String>::holder(Part part, Form form) const {
    switch (state(part, form)) {
    case State::absentOrSlice:
        return isSlice(part, form) ? form : fill(part, form);
    case State::sameAsRaw:
        return Form::raw;
    case State::sameAsIri:
        return Form::iri;
    case State::sameAsUri:
        return Form::uri;
    default:
        return form;
    }
}

template <class String>
Form StringParts<String>::fill(Part part, Form form) const {
    // Raw and Uri are made from each other by way of Iri, so that what a form reads never depends on which
    // others were asked for before.
    Form const from = form == Form::iri ? header(part).form : Form::iri;
    Form const at = holder(part, from);
    View const text = held(part, at);
    auto converted = encoding::convert(part, from, form, text, context);
    if (!converted || isSame(*converted, text)) {
        State const same = at == Form::raw   ? State::sameAsRaw
                           : at == Form::iri ? State::sameAsIri
                                             : State::sameAsUri;
        states.fetch_or(bits(part, form, same), std::memory_order_release);
        return at;
    }
    ownText(part, form).publish(std::move(*converted));
    states.fetch_or(bits(part, form, State::own), std::memory_order_release);
    return form;
}

template <class String>
String const& StringParts<String>::text(Part part, Form form) const {
    Form const at = holder(part, form);
    auto const& place = ownText(part, at);
    auto const* const there = place.get();
    return there != nullptr ? *there : place.publish(String(held(part, at)));
}

template <class String>
bool StringParts<String>::isSourceIn(Form form) const {
    for (Part const part : {Part::userInfo, Part::host, Part::path, Part::query, Part::fragment}) {
        if (has(part) && !isSlice(part, holder(part, form))) {
            return false;
        }
    }
    return true;
}

template <class String>
bool StringParts<String>::isSlicedLike(StringParts const& other) const noexcept {
    return headers == other.headers && context == other.context && isSame(source, other.source);
}

template <class String>
std::size_t StringParts<String>::lengthHint() const noexcept {
    std::size_t sum = 0;
    for (Part const part : {Part::userInfo, Part::host, Part::path, Part::query, Part::fragment}) {
        for (Form const form : {Form::uri, Form::iri, Form::raw}) {
            if (isSlice(part, form) || state(part, form) == State::own) {
                sum += held(part, form).size();
                break;
            }
        }
    }
    return sum;
}

template StringParts<std::u32string>::StringParts(StringParts const&);
template StringParts<std::u32string>::StringParts(StringParts&&) noexcept;
template StringParts<std::u32string>& StringParts<std::u32string>::operator=(StringParts&&) noexcept;
template void StringParts<std::u32string>::forget() noexcept;
template void StringParts<std::u32string>::swap(StringParts&) noexcept;
template void StringParts<std::u32string>::set(Part, std::u32string, Encoding const&);
template void StringParts<std::u32string>::dropDerived(Part) noexcept;
template PublishedOnce<std::u32string> const& StringParts<std::u32string>::ownText(Part, Form) const;
template Form StringParts<std::u32string>::holder(Part, Form) const;
template Form StringParts<std::u32string>::fill(Part, Form) const;
template std::u32string const& StringParts<std::u32string>::text(Part, Form) const;
template bool StringParts<std::u32string>::isSourceIn(Form) const;
template bool StringParts<std::u32string>::isSlicedLike(StringParts const&) const noexcept;
template std::size_t StringParts<std::u32string>::lengthHint() const noexcept;

} // namespace foundation::network::iri::detail
