#include "iri/grammar/CharacterClasses.hpp"

#define BOOST_SPIRIT_UNICODE
#include <boost/spirit/home/support/char_encoding/unicode.hpp>

namespace foundation::network::iri::grammar::detail {

namespace {

using Unicode = boost::spirit::char_encoding::unicode;

constexpr char32_t lastCodePoint = 0x10FFFF;

bool within(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

// RFC 3987's ucschar: seventeen ranges.
bool isUcschar(char32_t c) {
    if (c < 0x10000) {
        return within(c, 0xA0, 0xD7FF) || within(c, 0xF900, 0xFDCF) || within(c, 0xFDF0, 0xFFEF);
    }
    // In planes 1 to 13 all but the two noncharacters at the end; of plane 14 what follows the private
    // stretch.
    return (c < 0xE0000 && (c & 0xFFFF) <= 0xFFFD) || within(c, 0xE1000, 0xEFFFD);
}

// RFC 3987's iprivate, and the stretch of plane 14 that its ucschar leaves out.
bool isIprivate(char32_t c) {
    return within(c, 0xE000, 0xF8FF) || within(c, 0xE0000, 0xE0FFF) || within(c, 0xF0000, 0xFFFFD) ||
           within(c, 0x100000, 0x10FFFD);
}

bool isFullWidthHexDigit(char32_t c) {
    return within(c, 0xFF10, 0xFF19) || within(c, 0xFF21, 0xFF26) || within(c, 0xFF41, 0xFF46);
}

} // namespace

bool isBeyondAscii(char32_t c, ClassMask mask) noexcept {
    // The tables of Unicode's properties have no bounds check of their own.
    if (c > lastCodePoint) {
        return false;
    }
    return ((mask & UCSCHAR) != 0 && isUcschar(c)) || ((mask & IPRIVATE) != 0 && isIprivate(c)) ||
           ((mask & XDIGIT) != 0 && isFullWidthHexDigit(c)) ||
           ((mask & ALPHA) != 0 && Unicode::isalpha(c) != 0) ||
           ((mask & DIGIT) != 0 && Unicode::isdigit(c) != 0);
}

} // namespace foundation::network::iri::grammar::detail
