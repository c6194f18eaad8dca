#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/PublishedOnce.hpp>
#include <foundation/network/iri/detail/StoredText.hpp>

#include <atomic>
#include <cstdint>
#include <string>

namespace foundation::network::iri::detail {

template <class String>
class ArgsBase;
struct ValueAccess;

/// A hash that is worked out on demand. Threads that do so at once store the same number.
class CachedHash {
public:
    CachedHash() noexcept = default;
    CachedHash(CachedHash const& other) noexcept : number(other.get()) {}
    CachedHash& operator=(CachedHash const& other) noexcept {
        store(other.get());
        return *this;
    }
    ~CachedHash() = default;

    /// 0 as long as the hash is not known; one that is 0 is worked out each time.
    [[nodiscard]] std::uint64_t get() const noexcept { return number.load(std::memory_order_relaxed); }
    void store(std::uint64_t value) const noexcept { number.store(value, std::memory_order_relaxed); }

private:
    mutable std::atomic<std::uint64_t> number{0};
};

template <class String>
class TemplateIRI;

/// The value behind `IRI`: a stored text, and what is kept of what was worked out from it. Its public
/// operations are those of `IRI`, documented there.
///
/// `const` operations keep the hash and, for a value that was not parsed, its whole text in the Iri and in
/// the Raw form where that differs from the stored text. Everything else is made for the caller and not
/// kept.
///
/// Thread safety: what is kept is published once and then only read, so any number of threads may call
/// `const` operations on one value, and copy it, at the same time. All other members are written under
/// exclusive use alone.
template <>
class ZVFLNETWORK_EXPORT TemplateIRI<std::u32string> {
public:
    TemplateIRI() noexcept = default;
    explicit TemplateIRI(std::u16string const& source);
    explicit TemplateIRI(ArgsBase<std::u32string> const& args);
    TemplateIRI(TemplateIRI const& other);
    TemplateIRI(TemplateIRI&& other) noexcept;
    TemplateIRI& operator=(TemplateIRI const& other);
    TemplateIRI& operator=(TemplateIRI&& other) noexcept;
    virtual ~TemplateIRI();

    void swap(TemplateIRI& other) noexcept;

    bool isEmpty() const noexcept { return stored.isEmpty(); }
    bool hasScheme() const noexcept { return stored.components.hasScheme(); }
    bool hasAuthority() const noexcept { return hasHost(); }
    bool hasQuery() const noexcept { return stored.components.hasQuery(); }
    bool hasFragment() const noexcept { return stored.components.hasFragment(); }
    bool hasAbsolutePath() const noexcept { return stored.components.pathIsAbsolute; }
    bool isAbsolute() const noexcept { return hasScheme(); }
    bool isOpaque() const noexcept { return hasScheme() && !hasHost() && !hasAbsolutePath(); }
    bool hasPort() const noexcept { return stored.components.hasPort(); }
    bool hasHost() const noexcept { return stored.components.hasHost(); }
    bool hasUserInfo() const noexcept { return stored.components.hasUserInfo(); }

    std::u16string getScheme() const;
    std::u16string getPort() const;
    unsigned short getPortNumber() const;

    std::u16string getUserInfo(Encoding const& encoding) const;
    std::u16string getHost(Encoding const& encoding) const;
    std::u16string getPath(Encoding const& encoding) const;
    std::u16string getQuery(Encoding const& encoding) const;
    std::u16string getFragment(Encoding const& encoding) const;
    std::u16string getAuthority(Encoding const& encoding) const;
    std::u16string getSchemeSpecificPart(Encoding const& encoding) const;

    std::u16string toString(bool strict) const;
    std::u16string toAsciiString(bool strict) const;

    void toArgs(ArgsBase<std::u32string>& args) const;

    TemplateIRI doResolve(TemplateIRI const& base) const;
    TemplateIRI doRelativise(TemplateIRI const& base) const;

    bool operator==(TemplateIRI const& other) const;
    bool operator!=(TemplateIRI const& other) const { return !(*this == other); }
    bool operator<(TemplateIRI const& other) const;
    /// The order of the Iri texts, of parsed and of built values.
    bool isTextLess(TemplateIRI const& other) const;
    std::uint64_t hashValue() const;

private:
    friend struct ValueAccess;

    void forget() noexcept;
    std::u32string const& kept(Form form) const;

    StoredText stored;
    /// A bit for each form that the stored text was found to be the whole of. Bits are only added. What
    /// they tell does not change, and no other memory is read because of them, so relaxed order suffices.
    mutable std::atomic<unsigned char> storedIsIn{0};
    CachedHash hash;
    PublishedOnce<std::u32string> iriText;
    PublishedOnce<std::u32string> rawText;
};

} // namespace foundation::network::iri::detail
