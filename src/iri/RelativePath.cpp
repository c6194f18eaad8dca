#include "iri/RelativePath.hpp"

#include "iri/encoding/Conversions.hpp"
#include "iri/grammar/PathSplitter.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace foundation::network::iri {

namespace {

bool isDot(std::u32string_view name) {
    return name == U".";
}
bool isDotDot(std::u32string_view name) {
    return name == U"..";
}

bool beginsWithSlash(std::u32string_view path) {
    return !path.empty() && path.front() == U'/';
}

// Has the sign bit exactly where the code points are the same.
constexpr std::uint32_t signOfSame(char32_t left, char32_t right) {
    return (left ^ right) - 1;
}
constexpr std::uint32_t signOfSame(char32_t left, char32_t right, char32_t left2, char32_t right2) {
    return ((left ^ right) | (left2 ^ right2)) - 1;
}
constexpr bool isSigned(std::uint32_t bits) {
    return bits >> 31 != 0;
}

// How many leading characters two texts have in common.
std::size_t commonLength(std::u32string_view left, std::u32string_view right) {
    constexpr std::size_t block = 4; // a register of the simplest vector unit
    std::size_t const most = std::min(left.size(), right.size());
    std::size_t length = 0;
    while (most - length >= block &&
           std::memcmp(&left[length], &right[length], block * sizeof(char32_t)) == 0) {
        length += block;
    }
    while (length != most && left[length] == right[length]) {
        ++length;
    }
    return length;
}

// RFC 3986, section 5.2.4, on path[begin, size), which only gets shorter. What stands before `at` is done
// already.
void removeDotSegmentsOfText(std::u32string& path, std::size_t begin, std::size_t at) {
    std::size_t written = at; // the output buffer is path[begin, written), the input buffer path[at, size)
    std::size_t const size = path.size();
    auto const dropLastSegment = [&path, &written, begin] {
        while (written != begin && path[--written] != U'/') {
        }
    };
    while (at != size) {
        std::u32string_view const input = std::u32string_view(path).substr(at);
        bool const slash = input[0] == U'/';
        std::u32string_view const segment = input.substr(slash, input.find(U'/', 1) - slash);
        bool const last = slash + segment.size() == input.size();
        if (!isDot(segment) && !isDotDot(segment)) { // E
            std::size_t const length = slash + segment.size();
            std::copy_n(path.begin() + static_cast<std::ptrdiff_t>(at), length,
                        path.begin() + static_cast<std::ptrdiff_t>(written));
            written += length;
            at += length;
            continue;
        }
        if (!slash) { // A, D
            at += segment.size() + (last ? 0 : 1);
            continue;
        }
        if (isDotDot(segment)) { // C
            dropLastSegment();
        }
        at += 1 + segment.size(); // B, C: what follows begins with "/", or a last "/" takes its place
        if (last) {
            path[written++] = U'/';
        }
    }
    path.resize(written);
}

} // namespace

PathShape shapeOf(std::u32string_view path) noexcept {
    if (path.empty()) {
        return {};
    }
    // Hardly any path holds "%", "//", "/." or what might be a surrogate. One sign bit tells of all of them,
    // and the loop has no way out before its end, so it becomes vector code.
    static_assert((U'.' | 1) == U'/');
    constexpr char32_t lastBeforeSurrogates = 0xD7FF;
    char32_t const* const at = path.data();
    std::uint32_t special = signOfSame(at[0], U'%') | (lastBeforeSurrogates - at[0]);
    for (std::size_t i = 1; i < path.size(); ++i) {
        special |= signOfSame(at[i - 1], U'/', at[i] | 1, U'/') | signOfSame(at[i], U'%') |
                   (lastBeforeSurrogates - at[i]);
    }
    if (!isSigned(special)) {
        return {at[0] == U'.' && hasRelativePathSegments(path), false, true};
    }
    return {hasRelativePathSegments(path), path.find(U"//") != std::u32string_view::npos,
            encoding::isRawAlready(path)};
}

bool hasRelativePathSegments(std::u32string_view path) noexcept {
    if (path.empty()) {
        return false;
    }
    if (path.front() != U'.') {
        std::uint32_t dot = 0;
        for (std::size_t i = 1; i < path.size(); ++i) {
            dot |= signOfSame(path[i - 1], U'/', path[i], U'.');
        }
        if (!isSigned(dot)) {
            return false;
        }
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

PathComponents componentsOf(std::u32string_view path) {
    std::vector<std::u32string_view> elements;
    grammar::splitPath(path, elements);
    PathComponents components;
    components.reserve(elements.size() + 1); // room for what is appended behind them
    for (auto const& element : elements) {
        bool const slash = beginsWithSlash(element);
        components.push_back({slash, element.substr(slash ? 1 : 0)});
    }
    return components;
}

std::u32string joined(PathComponents const& components) {
    std::size_t length = 0;
    for (auto const& component : components) {
        length += component.name.size() + 1;
    }
    std::u32string path;
    path.reserve(length);
    for (auto const& component : components) {
        path.append(component.slash ? 1 : 0, U'/').append(component.name);
    }
    return path;
}

void removeDotSegments(PathComponents input, PathComponents& output) {
    for (std::size_t front = 0; front != input.size();) {
        auto& component = input[front];
        bool const dot = isDot(component.name);
        bool const last = front + 1 == input.size();
        if (!dot && !isDotDot(component.name)) { // E
            output.push_back(component);
            ++front;
        } else if (!component.slash) { // A, D
            ++front;
            if (!last) {
                input[front].slash = false;
            }
        } else { // B, C
            if (last) {
                component.name = {};
            } else {
                ++front;
            }
            if (!dot && !output.empty()) {
                output.pop_back();
            }
        }
    }
}

void appendPathComponents(std::u32string_view path, PathComponents& components, bool absolute,
                          bool removeDots) {
    PathComponent const slash{true, {}};
    if (!removeDots) {
        bool const rootless = !path.empty() && !beginsWithSlash(path);
        if (rootless && !components.empty() && !components.back().isSlash()) {
            components.push_back(slash);
        }
        components.push_back({false, path});
        return;
    }
    bool const dot = path == U"." || path == U"./";
    bool const dotDot = path == U".." || path == U"../";
    if (dot || dotDot) {
        bool const onlyRoot = components.size() == 1 && components.front().isSlash();
        if (components.empty() || onlyRoot) {
            return;
        }
        if (components.back().isSlash()) {
            components.pop_back();
        }
        if (dotDot && !components.empty()) {
            components.pop_back();
        }
        components.push_back(slash);
        return;
    }
    bool const relativeStart = components.empty() || !components.front().slash;
    PathComponents input = std::move(components);
    PathComponents appended = componentsOf(path);
    if (!input.empty() && !appended.empty() && !appended.front().slash) {
        // One slash stands between the two: a final one of the list, or one put in.
        appended.front().slash = true;
        if (input.back().isSlash()) {
            input.pop_back();
        }
    }
    input.insert(input.end(), appended.begin(), appended.end());
    components.clear();
    removeDotSegments(std::move(input), components);
    if (absolute) {
        if (components.empty()) {
            components.push_back(slash);
        }
        components.front().slash = true;
    } else if (relativeStart && !components.empty()) {
        components.front().slash = false;
    }
}

std::u32string removeRelativePathSegments(std::u32string_view path, bool absolute) {
    if (!hasRelativePathSegments(path)) {
        return std::u32string(path);
    }
    if (path.find(U"//") != std::u32string_view::npos) {
        std::u32string clean;
        mergeAsTexts({}, path, absolute, false, clean);
        return clean;
    }
    PathComponents components;
    appendPathComponents(path, components, absolute, true);
    return joined(components);
}

void mergeAsTexts(std::u32string_view base, std::u32string_view reference, bool absolute, bool cleanBase,
                  std::u32string& out) {
    std::u32string_view front = base.substr(0, base.rfind(U'/') + 1); // nothing where there is no slash
    std::size_t const begin = out.size();
    if (cleanBase) {
        // Most dot segments lead a reference: they go before anything is copied.
        for (; reference.substr(0, 3) == U"../"; reference.remove_prefix(3)) {
            front.remove_suffix(1);
            front = base.substr(0, std::max<std::size_t>(front.rfind(U'/') + 1, 1));
        }
        out.append(front).append(reference);
        if (hasRelativePathSegments(reference)) {
            removeDotSegmentsOfText(out, begin, out.size() - reference.size() - 1); // from its slash on
        }
        return;
    }
    out.append(front).append(reference);
    removeDotSegmentsOfText(out, begin, begin);
    bool const slash = out.size() != begin && out[begin] == U'/';
    if (absolute && !slash) {
        out.insert(begin, 1, U'/');
    } else if (!absolute && slash && !beginsWithSlash(base) && !beginsWithSlash(reference)) {
        out.erase(begin, 1);
    }
}

void appendParents(std::size_t count, std::u32string& out) {
    for (; count != 0; --count) {
        out.append(U"../");
    }
}

void appendWay(std::u32string_view from, std::u32string_view to, bool absolute, std::u32string& out) {
    if (from.empty()) {
        out.append(to);
        return;
    }
    auto const slashesBehind = [from](std::size_t at) {
        std::size_t count = 0;
        while ((at = from.find(U'/', at + 1)) != std::u32string_view::npos) {
            ++count;
        }
        return count;
    };
    // Components are counted with their leading slash, so a slash at the start is none between two.
    if (from.front() == U'/' && beginsWithSlash(to) && from.find(U'/', 1) == std::u32string_view::npos) {
        out.append(to.size() == 1 ? std::u32string_view(U".") : to.substr(1));
        return;
    }
    // The slash behind the last component that both begin with. The last component of the shorter path has
    // none behind it: a reference to it must name it.
    std::size_t const common = commonLength(from, to);
    std::size_t const behind = common < 2 ? 0 : from.rfind(U'/', common - 1);
    if (behind == 0 || behind == std::u32string_view::npos) {
        appendParents(std::max<std::size_t>(slashesBehind(0), 1), out);
        out.append(to.substr(absolute && !to.empty() ? 1 : 0));
        return;
    }
    std::size_t const up = slashesBehind(behind);
    std::u32string_view const rest = to.substr(behind + 1);
    appendParents(up, out);
    out.append(up == 0 && rest.empty() ? std::u32string_view(U"./") : rest);
}

} // namespace foundation::network::iri
