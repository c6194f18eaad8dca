#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace foundation::network::iri::grammar {

/// A selective percent decoder: escapes ("%" and two ASCII hexadecimal digits) become the value that they
/// stand for, but those whose value is in a set stay as they were written, and so does everything else.
///
/// It decodes one escape at a time and knows nothing of UTF-8. Making one builds a small grammar; one whose
/// set never changes is made once and shared: decoding is `const`, and any number of threads may do it at
/// once.
class percentDecodeGrammar {
public:
    /// `excluded`: the values, from 0 to 255, whose escapes stay; others in it have no meaning.
    explicit percentDecodeGrammar(std::u32string const& excluded);
    percentDecodeGrammar(percentDecodeGrammar const&) = delete;
    percentDecodeGrammar& operator=(percentDecodeGrammar const&) = delete;
    ~percentDecodeGrammar();

    /// Sets `decoded` to the code points of `text`, each decoded escape as the one of its value (0 to 255).
    /// Returns false for an empty text, and leaves `decoded` alone. Linear.
    bool decode(std::u32string_view text, std::u32string& decoded) const;

    /// The same in bytes: what is no decoded escape as UTF-8. Throws "Invalid UTF-32 code point U+..." for a
    /// value above U+10FFFF.
    bool decode(std::u32string_view text, std::string& decoded) const;

private:
    struct Grammars;
    std::unique_ptr<Grammars const> grammars;
};

} // namespace foundation::network::iri::grammar
