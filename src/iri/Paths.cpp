#include "iri/Paths.hpp"

#include "iri/grammar/PathSplitter.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <utility>

namespace foundation::network::iri {

namespace {

bool isDot(std::u32string_view segment) {
    return segment == U".";
}
bool isDotDot(std::u32string_view segment) {
    return segment == U"..";
}

bool beginsWithSlash(std::u32string_view path) {
    return !path.empty() && path.front() == U'/';
}

/// The length of a dot segment at the start of a text; 0 if there is none.
std::size_t lengthOfDotSegment(std::u32string_view text) {
    std::size_t const dots = text.substr(0, 2) == U".." ? 2 : text.substr(0, 1) == U"." ? 1 : 0;
    return dots == text.size() || text[dots] == U'/' ? dots : 0;
}

} // namespace

// RFC 3986, section 5.2.4, with its steps 2A to 2E. The text only gets shorter, so both buffers of the RFC
// are stretches of it. Step 2E moves all segments up to the next dot segment at once.
std::size_t removeDotSegments(char32_t* text, std::size_t size) {
    std::u32string_view const path(text, size);
    std::size_t written = 0; // the output buffer is [0, written), the input buffer [at, size)
    std::size_t at = 0;
    while (std::size_t const dots = lengthOfDotSegment(path.substr(at))) { // 2A, 2D
        at = std::min(at + dots + 1, size);
    }
    for (std::size_t from = at;;) {
        std::size_t const slash = text::findPair(path, U'/', U'.', from);
        bool const found = slash != size;
        std::size_t const dots = found ? lengthOfDotSegment(path.substr(slash + 1)) : 0;
        if (found && dots == 0) { // a segment like ".profile"
            from = slash + 1;
            continue;
        }
        std::copy(text + at, text + slash, text + written); // 2E
        written += slash - at;
        if (!found) {
            return written;
        }
        while (dots == 2 && written != 0 && text[--written] != U'/') { // 2C
        }
        from = at =
            slash + 1 + dots; // 2B, 2C: the next segment brings its own "/"; the last one leaves a "/"
        if (at == size) {
            text[written++] = U'/';
        }
    }
}

void removeDotSegments(std::u32string& path) {
    path.resize(removeDotSegments(path.data(), path.size()));
}

namespace {

// RFC 3986, section 5.2.4, with its steps 2A to 2E, on segments.
void removeDotSegmentsOf(PathSegments input, PathSegments& output) {
    for (std::size_t front = 0; front != input.size();) {
        auto& segment = input[front];
        bool const dot = isDot(segment.text);
        bool const last = front + 1 == input.size();
        if (!dot && !isDotDot(segment.text)) { // 2E
            output.push_back(segment);
            ++front;
        } else if (!segment.hasSlash) { // 2A, 2D
            ++front;
            if (!last) {
                input[front].hasSlash = false;
            }
        } else { // 2B, 2C
            if (last) {
                segment.text = {};
            } else {
                ++front;
            }
            if (!dot && !output.empty()) {
                output.pop_back();
            }
        }
    }
}

} // namespace

PathShape shapeOf(std::u32string_view path) noexcept {
    if (path.empty()) {
        return {};
    }
    // Hardly any path holds "%", "//" or "/.", so nearly all are answered by one scan for all three. The
    // lowest bit makes "/" of ".", so that one comparison finds both pairs.
    static_assert((U'.' | 1) == U'/');
    bool const special = path.front() == U'%' || text::isAnySigned(path.size() - 1, [path](std::size_t i) {
                             return text::allOnesIfSame(path[i], U'/', path[i + 1] | 1, U'/') |
                                    text::allOnesIfSame(path[i + 1], U'%');
                         });
    if (!special) {
        return {path.front() == U'.' && hasRelativePathSegments(path), false, true};
    }
    return {hasRelativePathSegments(path), text::containsPair(path, U'/', U'/'), !text::contains(path, U'%')};
}

bool hasRelativePathSegments(std::u32string_view path) noexcept {
    if (path.empty()) {
        return false;
    }
    if (path.front() != U'.' && !text::containsPair(path, U'/', U'.')) {
        return false;
    }
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == U'.') {
            std::size_t end = at + 1;
            if (end < path.size() && path[end] == U'.') {
                ++end;
            }
            if (end == path.size() || path[end] == U'/') {
                return true;
            }
        }
        at = path.find(U'/', at);
        if (at == std::u32string_view::npos) {
            return false;
        }
        ++at;
    }
    return false;
}

PathSegments segmentsOf(std::u32string_view path) {
    std::vector<std::u32string_view> elements;
    grammar::splitPath(path, elements);
    PathSegments segments;
    segments.reserve(elements.size() + 1); // callers append one more
    for (auto const& element : elements) {
        bool const slash = beginsWithSlash(element);
        segments.push_back({slash, element.substr(slash ? 1 : 0)});
    }
    return segments;
}

std::u32string joined(PathSegments const& segments) {
    std::size_t length = 0;
    for (auto const& segment : segments) {
        length += segment.text.size() + 1;
    }
    std::u32string path;
    path.reserve(length);
    for (auto const& segment : segments) {
        path.append(segment.hasSlash ? 1 : 0, U'/').append(segment.text);
    }
    return path;
}

void appendPathSegments(std::u32string_view path, PathSegments& segments, bool absolute, bool removeDots) {
    PathSegment const slash{true, {}};
    if (!removeDots) {
        bool const rootless = !path.empty() && !beginsWithSlash(path);
        if (rootless && !segments.empty() && !segments.back().isBareSlash()) {
            segments.push_back(slash);
        }
        segments.push_back({false, path});
        return;
    }
    bool const dot = path == U"." || path == U"./";
    bool const dotDot = path == U".." || path == U"../";
    if (dot || dotDot) {
        bool const onlyRoot = segments.size() == 1 && segments.front().isBareSlash();
        if (segments.empty() || onlyRoot) {
            return;
        }
        if (segments.back().isBareSlash()) {
            segments.pop_back();
        }
        if (dotDot && !segments.empty()) {
            segments.pop_back();
        }
        segments.push_back(slash);
        return;
    }
    bool const relativeStart = segments.empty() || !segments.front().hasSlash;
    PathSegments input = std::move(segments);
    PathSegments appended = segmentsOf(path);
    if (!input.empty() && !appended.empty() && !appended.front().hasSlash) {
        // The reference gets a "/" in front, which replaces a final one of the list.
        appended.front().hasSlash = true;
        if (input.back().isBareSlash()) {
            input.pop_back();
        }
    }
    input.insert(input.end(), appended.begin(), appended.end());
    segments.clear();
    removeDotSegmentsOf(std::move(input), segments);
    if (absolute) {
        if (segments.empty()) {
            segments.push_back(slash);
        }
        segments.front().hasSlash = true;
    } else if (relativeStart && !segments.empty()) {
        segments.front().hasSlash = false;
    }
}

std::u32string removeRelativePathSegments(std::u32string_view path, bool absolute) {
    if (!hasRelativePathSegments(path)) {
        return std::u32string(path);
    }
    if (text::containsPair(path, U'/', U'/')) {
        return mergeAndRemoveDotSegments({}, path, absolute);
    }
    PathSegments segments;
    appendPathSegments(path, segments, absolute, true);
    return joined(segments);
}

std::u32string mergeAndRemoveDotSegments(std::u32string_view base, std::u32string_view reference,
                                         bool absolute) {
    std::u32string_view const front = base.substr(0, base.rfind(U'/') + 1); // empty without a slash
    std::u32string merged;
    merged.reserve(front.size() + reference.size() + 1);
    merged.append(front).append(reference);
    removeDotSegments(merged);
    if (absolute) {
        if (!beginsWithSlash(merged)) {
            merged.insert(merged.begin(), U'/');
        }
    } else if (!beginsWithSlash(base) && !beginsWithSlash(reference) && beginsWithSlash(merged)) {
        merged.erase(merged.begin());
    }
    return merged;
}

void resolveLeadingDotDots(std::u32string_view& directory, std::u32string_view& reference) {
    while (reference.size() > 2 && reference[0] == U'.' && reference[1] == U'.' && reference[2] == U'/') {
        reference.remove_prefix(3);
        while (directory.size() > 1) {
            directory.remove_suffix(1);
            if (directory.back() == U'/') {
                break;
            }
        }
    }
}

RelativePath relativePathBetween(std::u32string_view from, std::u32string_view to, bool absolute) noexcept {
    if (from.empty()) {
        return {0, to};
    }
    auto const slashesBehind = [from](std::size_t at) {
        std::size_t count = 0;
        while (++at < from.size()) {
            count += from[at] == U'/' ? 1U : 0U;
        }
        return count;
    };
    // The last "/" in what both begin with ends the directory that they share; one at the start ends none. A
    // segment behind it belongs to no directory, so the reference must name it even where both have it.
    std::size_t const common = text::commonLength(from, to);
    std::size_t const behind = common < 2 ? 0 : from.rfind(U'/', common - 1);
    if (behind != 0 && behind != std::u32string_view::npos) {
        std::size_t const up = slashesBehind(behind);
        std::u32string_view const rest = to.substr(behind + 1);
        return {up, up == 0 && rest.empty() ? U"./" : rest};
    }
    std::size_t const up = slashesBehind(0);
    if (up == 0 && from.front() == U'/' && beginsWithSlash(to)) {
        return {0, to.size() == 1 ? U"." : to.substr(1)};
    }
    return {std::max<std::size_t>(up, 1), to.substr(absolute && !to.empty() ? 1 : 0)};
}

std::u32string toText(RelativePath const& relative) {
    std::u32string text;
    text.reserve(3 * relative.dotDots + relative.rest.size());
    for (std::size_t i = 0; i != relative.dotDots; ++i) {
        text.append(U"../");
    }
    return text.append(relative.rest);
}

} // namespace foundation::network::iri
