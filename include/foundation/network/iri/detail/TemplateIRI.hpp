#pragma once

#include <foundation/core/Export.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Parts.hpp>
#include <foundation/network/iri/detail/PublishedOnce.hpp>
#include <foundation/network/iri/detail/StringParts.hpp>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace foundation::network::iri::detail {

template <class String>
class ArgsBase;

/// A hash that is worked out on demand. Threads that do so at once find the same number, so the second store
/// changes nothing; the number is stored before `ready`.
class CachedHash {
public:
    CachedHash() noexcept = default;
    CachedHash(CachedHash const& other) noexcept { *this = other; }
    CachedHash& operator=(CachedHash const& other) noexcept {
        bool const known = other.isReady();
        number.store(known ? other.get() : 0, std::memory_order_relaxed);
        ready.store(known, std::memory_order_relaxed);
        return *this;
    }
    ~CachedHash() = default;

    [[nodiscard]] bool isReady() const noexcept { return ready.load(std::memory_order_acquire); }
    [[nodiscard]] std::uint64_t get() const noexcept { return number.load(std::memory_order_relaxed); }
    void publish(std::uint64_t value) const noexcept {
        number.store(value, std::memory_order_relaxed);
        ready.store(true, std::memory_order_release);
    }

private:
    mutable std::atomic<std::uint64_t> number{0};
    mutable std::atomic<bool> ready{false};
};

/// The value behind `IRI`, over UTF-32 text. Its public operations are those of `IRI`, documented there.
///
/// A parsed value keeps its text, and its parts are slices of it; a built value keeps the parts, and
/// assembles a text when asked for one. What a `const` operation works out (forms of parts, forms of the
/// whole) is published once and then only read, so any number of threads may call `const` operations on one
/// value, and copy it, at the same time. All other members are written under exclusive use alone.
template <class String>
class ZVFLNETWORK_EXPORT TemplateIRI {
public:
    using Iterator = typename String::const_iterator;
    using Range = boost::iterator_range<Iterator>;

    TemplateIRI() noexcept = default;
    explicit TemplateIRI(std::u16string const& text);
    explicit TemplateIRI(ArgsBase<String> const& args);
    TemplateIRI(TemplateIRI const& other);
    TemplateIRI(TemplateIRI&& other) noexcept;
    TemplateIRI& operator=(TemplateIRI const& other);
    TemplateIRI& operator=(TemplateIRI&& other) noexcept;
    virtual ~TemplateIRI();

    void swap(TemplateIRI& other) noexcept;

    bool isEmpty() const noexcept { return flags.empty; }
    bool hasScheme() const noexcept { return flags.hasScheme; }
    bool hasAuthority() const noexcept { return flags.hasAuthority; }
    bool hasQuery() const noexcept { return flags.hasQuery; }
    bool hasFragment() const noexcept { return flags.hasFragment; }
    bool hasAbsolutePath() const noexcept { return flags.hasAbsolutePath; }
    bool isAbsolute() const noexcept { return flags.isAbsolute; }
    bool isOpaque() const noexcept { return flags.isOpaque; }
    bool hasPort() const noexcept { return flags.hasPort; }
    bool hasHost() const noexcept { return flags.hasHost; }
    bool hasUserInfo() const noexcept { return flags.hasUserInfo; }

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

    void toArgs(ArgsBase<String>& args) const;

    TemplateIRI doResolve(TemplateIRI const& base) const;
    TemplateIRI doRelativise(TemplateIRI const& base) const;

    bool operator==(TemplateIRI const& other) const;
    bool operator!=(TemplateIRI const& other) const { return !(*this == other); }
    bool operator<(TemplateIRI const& other) const;
    /// The order of the Iri texts, whichever way the values were made.
    bool isTextLess(TemplateIRI const& other) const;
    std::uint64_t hashValue() const;

private:
    using View = std::basic_string_view<typename String::value_type>;

    static constexpr char32_t FULL_STOP = 46;
    static constexpr char32_t COLON = 58;
    static constexpr char32_t HASH_SIGN = 35;
    static constexpr char32_t FORWARD_SLASH = 47;
    static constexpr char32_t COMMERCIAL_AT = 64;
    static constexpr char32_t QUESTION_MARK = 63;

    /// The forms of the whole, by encoding; made with the first of them.
    using WholeTexts = std::array<PublishedOnce<String>, 5>;

    /// Presence and shape of the parts, copied and swapped as one.
    struct Flags {
        bool empty = true;        // nothing in it at all
        bool textCurrent = false; // the source of `parts` is the Iri form of the value
        bool hasScheme = false;
        bool hasQuery = false;
        bool hasFragment = false;
        bool hasAuthority = false;
        bool hasAbsolutePath = false;
        bool isAbsolute = false;
        bool isOpaque = false;
        bool hasPort = false;
        bool hasHost = false;
        bool hasUserInfo = false;
        bool pathHasDotSegments = false; // a parsed value's path tells by itself
        bool pathIsEmpty = true;
        bool queryIsFormEncoded = false;
    };

    void parse();
    void setPartFlags(Parts<Iterator> const& found);
    void setStringParts(Parts<Iterator> const& found);
    Slice sliceOf(Range const& range) const noexcept {
        return {static_cast<std::size_t>(range.begin() - sourceText().begin()), range.size()};
    }
    Range schemeRange(Parts<Iterator> const& found) const { return found.scheme.value_or(Range()); }
    Range userInfoRange(Parts<Iterator> const& found) const { return found.userInfo.value_or(Range()); }
    Range hostRange(Parts<Iterator> const& found) const { return found.host.value_or(Range()); }
    Range portRange(Parts<Iterator> const& found) const { return found.port.value_or(Range()); }
    Range pathRange(Parts<Iterator> const& found) const { return found.path.value_or(Range()); }
    Range queryRange(Parts<Iterator> const& found) const { return found.query.value_or(Range()); }
    Range fragmentRange(Parts<Iterator> const& found) const { return found.fragment.value_or(Range()); }

    class Draft;
    void buildFromArgs(ArgsBase<String> const& args);
    static void buildScheme(ArgsBase<String> const& args, Draft& draft);
    static void buildUserInfo(ArgsBase<String> const& args, Draft& draft);
    static void buildHost(ArgsBase<String> const& args, Draft& draft);
    static void buildPort(ArgsBase<String> const& args, Draft& draft);
    static void buildPath(ArgsBase<String> const& args, Draft& draft);
    static void buildQuery(ArgsBase<String> const& args, Draft& draft, String& encoded);
    static void buildFragment(ArgsBase<String> const& args, Draft& draft);
    void setArgsAuthority(ArgsBase<String>& args) const;
    void setArgsQuery(ArgsBase<String>& args) const;
    void setArgsFragment(ArgsBase<String>& args) const;

    struct PathIn;
    PathIn storedPath() const;
    PathIn pathIn(Form form) const;
    void setCleanPath(TemplateIRI const& base, Draft& draft) const;
    void setMergedPath(TemplateIRI const& base, Draft& draft) const;
    static String merged(PathIn const& base, PathIn const& reference, bool absolute);
    void relativiseInto(Draft& draft, TemplateIRI const& base) const;
    void takeWhole(Draft& draft, bool withScheme) const;
    void relativisePath(Draft& draft, TemplateIRI const& base) const;
    bool isFrontLike(TemplateIRI const& base) const;
    bool hasSameAuthority(TemplateIRI const& base) const;
    bool hasSameRaw(Part part, TemplateIRI const& base) const;
    bool setRelativePath(PathIn own, PathIn from, Draft& draft, TemplateIRI const& base) const;
    String getMinimalRelativePath() const;

    void generateHash() const;

    String const& sourceText() const noexcept { return parts.getSource(); }
    View schemeView() const noexcept { return View(sourceText()).substr(scheme.begin, scheme.length); }
    View stretch(std::size_t begin, std::size_t end) const noexcept {
        return {sourceText().data() + begin, end - begin};
    }
    /// A part as it was stored; every part of a value is a slice.
    View storedView(Part part) const noexcept {
        Slice const& slice = parts.slice(part);
        return stretch(slice.begin, slice.begin + slice.length);
    }
    View portView() const noexcept { return View(sourceText()).substr(portText.begin, portText.length); }

    std::u16string getPart(Part part, Encoding const& encoding) const;
    void appendPart(String& text, Part part, Encoding const& encoding) const;
    void appendSsp(String& text, Encoding const& encoding) const;
    String getNativeAuthority(Encoding const& encoding) const;
    String getNativeSsp(Encoding const& encoding) const;
    String const& toNativeStringFromParts(Encoding const& encoding) const;
    std::u16string toStringFromParts(Encoding const& encoding) const;

    // In the order in which a comparison or a copy meets them.
    Flags flags;
    unsigned short port = 0;   // meaningful with `hasPort`
    StringParts<String> parts; // and the text
    Slice scheme;              // of the text, as written
    Slice portText;            // of the text, as written
    CachedHash hash;
    PublishedOnce<WholeTexts> wholeTexts;
};

extern template class TemplateIRI<std::u32string>;

} // namespace foundation::network::iri::detail
