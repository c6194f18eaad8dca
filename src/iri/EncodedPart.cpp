#include <foundation/network/iri/detail/EncodedPart.hpp>

#include "iri/encoding/Conversions.hpp"

namespace foundation::network::iri::detail {

template <class String>
EncodedPart<String>::EncodedPart(EncodedPart const& other)
    : begin(other.begin),
      length(other.length),
      source(other.source),
      present(other.present),
      context(other.context) {
    constexpr std::array forms{Form::raw, Form::iri, Form::uri};
    for (Form const form : forms) {
        State const there = other.state(form);
        if (there == own) {
            texts[index(form)] = other.texts[index(form)];
        }
        states[index(form)].store(there, std::memory_order_relaxed);
    }
    // Others may be filling forms meanwhile: an alias can have been seen whose target had not been yet.
    for (Form const form : forms) {
        Form const at = holder(form);
        if (at != form && state(at) == absent) {
            states[index(form)].store(absent, std::memory_order_relaxed);
        }
    }
}

template <class String>
EncodedPart<String>::EncodedPart(EncodedPart&& other) noexcept {
    swap(other);
}

template <class String>
void EncodedPart<String>::swap(EncodedPart& other) noexcept {
    std::swap(begin, other.begin);
    std::swap(length, other.length);
    for (std::size_t i = 0; i != states.size(); ++i) {
        texts[i].swap(other.texts[i]);
        State const mine = states[i].load(std::memory_order_relaxed);
        states[i].store(other.states[i].load(std::memory_order_relaxed), std::memory_order_relaxed);
        other.states[i].store(mine, std::memory_order_relaxed);
    }
    std::swap(source, other.source);
    std::swap(present, other.present);
    std::swap(context, other.context);
}

template <class String>
void EncodedPart<String>::clear() noexcept {
    EncodedPart().swap(*this);
}

template <class String>
void EncodedPart<String>::set(String text, Form form) {
    EncodedPart fresh;
    fresh.texts[index(form)].publish(std::move(text));
    fresh.states[index(form)].store(own, std::memory_order_relaxed);
    fresh.source = form;
    fresh.present = true;
    swap(fresh);
}

template <class String>
void EncodedPart<String>::setSlice(std::size_t at, std::size_t size, Form form) noexcept {
    begin = at;
    length = size;
    states[index(form)].store(slice, std::memory_order_relaxed);
    source = form;
    present = true;
}

template <class String>
void EncodedPart<String>::setContext(PartContext const& changed) noexcept {
    context = changed;
    dropDerived();
}

template <class String>
void EncodedPart<String>::dropDerived() noexcept {
    for (Form const form : {Form::raw, Form::iri, Form::uri}) {
        if (form != source && state(form) != absent) {
            states[index(form)].store(absent, std::memory_order_relaxed);
            texts[index(form)].reset();
        }
    }
}

template <class String>
Form EncodedPart<String>::holder(Form form) const noexcept {
    State const there = state(form);
    return there >= sameAsRaw ? target(there) : form;
}

template <class String>
Form EncodedPart<String>::fill(Form form, Part part, String const& whole) const {
    // Raw and Uri are made from each other by way of Iri, so that what a form reads never depends on which
    // others were asked for before.
    Form const from = form == Form::iri ? source : Form::iri;
    View const text = view(from, part, whole);
    auto converted = encoding::convert(part, from, form, text, context);
    if (!converted || *converted == text) {
        Form const same = holder(from);
        states[index(form)].store(sameAs(same), std::memory_order_release);
        return same;
    }
    texts[index(form)].publish(std::move(*converted));
    states[index(form)].store(own, std::memory_order_release);
    return form;
}

template <class String>
typename EncodedPart<String>::View EncodedPart<String>::held(Form form, String const& whole) const noexcept {
    if (state(form) == slice) {
        return View(whole).substr(begin, length);
    }
    return *texts[index(form)].get();
}

template <class String>
typename EncodedPart<String>::View EncodedPart<String>::view(Form form, Part part,
                                                             String const& whole) const {
    return held(state(form) == absent ? fill(form, part, whole) : holder(form), whole);
}

template <class String>
String const& EncodedPart<String>::text(Form form, Part part, String const& whole) const {
    Form const at = state(form) == absent ? fill(form, part, whole) : holder(form);
    auto const& place = texts[index(at)];
    auto const* const there = place.get();
    return there != nullptr ? *there : place.publish(String(held(at, whole)));
}

template <class String>
std::size_t EncodedPart<String>::lengthHint() const noexcept {
    for (Form const form : {Form::uri, Form::iri, Form::raw}) {
        if (state(form) == slice) {
            return length;
        }
        if (auto const* const there = texts[index(form)].get()) {
            return there->size();
        }
    }
    return 0;
}

template class EncodedPart<std::u32string>;

} // namespace foundation::network::iri::detail
