// Text goes from UTF-8 to UTF-16 and UTF-32 and back; parts of every kind keep the laws of their conversions;
// the strict step is taken once.

#include "Input.hpp"

#include "iri/encoding/PercentEncoding.hpp"
#include "support/StoredParts.hpp"
#include "text/Transcoding.hpp"

namespace encoding = foundation::network::iri::encoding;
namespace text = foundation::network::text;

int fuzz::holds(std::string_view input) {
    std::u32string const native = codePoints(input);
    Text const text = units(input);
    auto const refused = [](auto read) { return unlessRefused<std::out_of_range>(read); };
    auto const sound = support::toUtf16(native);
    require(refused([&] { return text::toUtf32(input); }) == (sound ? std::optional(native) : std::nullopt),
            "UTF-8 read differently", text);
    require(refused([&] { return text::toUtf32(text); }) == (sound ? std::optional(native) : std::nullopt),
            "UTF-16 read differently", text);
    require(refused([&] { return text::toUtf16(native); }) == sound, "UTF-16 written differently", text);
    support::conversionsHold(native, input.size() % 40); // stored parts may hold surrogates
    for (bool const brackets : {false, true}) {
        auto const once = encoding::escapeStrayPercent(native, brackets);
        require(encoding::escapeStrayPercent(once, brackets) == once, "a strict form is no fixed point",
                text);
    }
    return 0;
}
