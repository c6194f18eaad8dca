// Names come out in ASCII, as ICU itself has them, and what came out clean stays as it is.

#include "Input.hpp"

#include <foundation/network/IdnConverter.hpp>

using foundation::network::IdnConverter;
using foundation::network::IdnConverterException;

int fuzz::holds(std::string_view input) {
    static IdnConverter const converter;
    std::string const bytes(input);
    fuzz::Text const name = fuzz::units(bytes);
    auto const ascii = fuzz::unlessRefused<IdnConverterException>([&] { return converter.toAscii(name); });
    if (ascii) {
        for (char const c : *ascii) {
            require(static_cast<unsigned char>(c) < 0x80, "not ASCII", name);
        }
        require(IdnConverter(converter).convert(name) == *ascii, "a copy converts differently", name);
        fuzz::Text const unicode = converter.toUnicode(*ascii);
        // Of an invalid name there is no way back: ICU marks it, or it decodes to what looks encoded still.
        // Nor is there one of the deviation characters of UTS #46, which are mapped where they are not
        // encoded yet.
        bool const clean = ascii->find('\x1A') == ascii->npos &&
                           unicode.find_first_of(u"\uFFFD\u00DF\u03C2\u200C\u200D") == unicode.npos &&
                           unicode.find(u"xn--") == unicode.npos;
        require(!clean || converter.toAscii(unicode) == *ascii, "there and back is another name", name,
                unicode);
    }
    (void)fuzz::unlessRefused<IdnConverterException>([&] { return converter.toUnicode(bytes); });
    return 0;
}
