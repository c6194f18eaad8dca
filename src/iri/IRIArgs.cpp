#include <foundation/network/IRIArgs.hpp>

#include <foundation/network/IRI.hpp>

namespace foundation::network {

IRIArgs::IRIArgs() = default;
IRIArgs::IRIArgs(IRIArgs const& other) = default;
IRIArgs& IRIArgs::operator=(IRIArgs const& other) = default;
IRIArgs::~IRIArgs() = default;

IRIArgs::IRIArgs(IRI const& iri) {
    iri.toArgs(*this);
}

IRIArgs& IRIArgs::setScheme(std::u16string const& text) {
    ArgsBase::setScheme(text);
    return *this;
}

IRIArgs& IRIArgs::clearScheme() noexcept {
    ArgsBase::clearScheme();
    return *this;
}

IRIArgs& IRIArgs::setUserInfo(std::u16string const& text) {
    ArgsBase::setUserInfo(text);
    return *this;
}

IRIArgs& IRIArgs::clearUserInfo() noexcept {
    ArgsBase::clearUserInfo();
    return *this;
}

IRIArgs& IRIArgs::setHost(std::u16string const& text) {
    ArgsBase::setHost(text);
    return *this;
}

IRIArgs& IRIArgs::clearHost() noexcept {
    ArgsBase::clearHost();
    ArgsBase::clearPort();
    return *this;
}

IRIArgs& IRIArgs::setPort(unsigned short number) noexcept {
    ArgsBase::setPort(number);
    return *this;
}

IRIArgs& IRIArgs::setPort(std::u16string const& text) {
    ArgsBase::setPort(text);
    return *this;
}

IRIArgs& IRIArgs::clearPort() noexcept {
    ArgsBase::clearPort();
    return *this;
}

IRIArgs& IRIArgs::setPath(std::u16string const& text) {
    ArgsBase::setPath(text);
    return *this;
}

IRIArgs& IRIArgs::clearPath() noexcept {
    ArgsBase::clearPath();
    return *this;
}

IRIArgs& IRIArgs::setQuery(std::u16string const& text) {
    ArgsBase::setQuery(text);
    return *this;
}

IRIArgs& IRIArgs::clearQuery() noexcept {
    ArgsBase::clearQuery();
    return *this;
}

IRIArgs& IRIArgs::setFragment(std::u16string const& text) {
    ArgsBase::setFragment(text);
    return *this;
}

IRIArgs& IRIArgs::clearFragment() noexcept {
    ArgsBase::clearFragment();
    return *this;
}

IRIArgs& IRIArgs::appendQueryKeyValuePair(std::u16string const& key, std::u16string const& value,
                                          bool encodeQuery, bool useSemicolon) {
    ArgsBase::appendQueryKeyValuePair(key, value, encodeQuery, useSemicolon);
    return *this;
}

} // namespace foundation::network
