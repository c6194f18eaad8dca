#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace foundation::network::iri::grammar {

/// A selective percent decoder. An escape ("%" and two ASCII hexadecimal digits) becomes the value that it
/// stands for, unless that value is in a set of excluded ones. Everything else stays as it is.
///
/// It decodes one escape at a time and knows nothing of UTF-8. Making one builds a small grammar, so decoders
/// are made once and shared: any number of threads may decode with one at once.
class percentDecodeGrammar {
public:
    /// `excluded`: the values whose escapes stay. Values above 255 are ignored.
    explicit percentDecodeGrammar(std::u32string const& excluded);
    percentDecodeGrammar(percentDecodeGrammar const&) = delete;
    percentDecodeGrammar& operator=(percentDecodeGrammar const&) = delete;
    ~percentDecodeGrammar();

    /// Sets `decoded` to `text` with each decoded escape as the code point of its value, 0 to 255. Returns
    /// false for an empty text and leaves `decoded` alone. Linear.
    bool decode(std::u32string_view text, std::u32string& decoded) const;

    /// The same in bytes: a decoded escape becomes one byte, everything else UTF-8.
    ///
    /// Throws: the internal `std::out_of_range`, "Invalid UTF-32 code point U+...", for a value above
    /// U+10FFFF.
    bool decode(std::u32string_view text, std::string& decoded) const;

private:
    struct Grammars;
    std::unique_ptr<Grammars const> grammars;
};

} // namespace foundation::network::iri::grammar
