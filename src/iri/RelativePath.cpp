#include "iri/RelativePath.hpp"

#include "iri/grammar/PathSplitter.hpp"
#include "text/Scans.hpp"

#include <algorithm>
#include <utility>

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

} // namespace

// RFC 3986, section 5.2.4, on a text, which only gets shorter.
void removeDotSegments(std::u32string& path) {
    std::size_t written = 0; // the output buffer is path[0, written), the input buffer path[at, size)
    std::size_t const size = path.size();
    auto const dropLastSegment = [&path, &written] {
        while (written != 0 && path[--written] != U'/') {
        }
    };
    for (std::size_t at = 0; at != size;) {
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

namespace {

// RFC 3986, section 5.2.4, on components; the rest is appended to `output`.
void removeDotSegmentsOf(PathComponents input, PathComponents& output) {
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

} // namespace

PathShape shapeOf(std::u32string_view path) noexcept {
    if (path.empty()) {
        return {};
    }
    // Hardly any path holds "%", "//" or "/.": one look for all three tells of nearly every one.
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
    removeDotSegmentsOf(std::move(input), components);
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
    if (text::containsPair(path, U'/', U'/')) {
        return mergeAsTexts({}, path, absolute);
    }
    PathComponents components;
    appendPathComponents(path, components, absolute, true);
    return joined(components);
}

std::u32string mergeAsTexts(std::u32string_view base, std::u32string_view reference, bool absolute) {
    std::u32string_view const front = base.substr(0, base.rfind(U'/') + 1); // nothing where there is no slash
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

void goUp(std::u32string_view& directory, std::u32string_view& reference) {
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

Way wayBetween(std::u32string_view from, std::u32string_view to, bool absolute) noexcept {
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
    // The slash behind the last component that both begin with. The last component of the shorter path has
    // none behind it: a reference to it must name it. Components are counted with their leading slash, so one
    // at the start is none between two.
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

std::u32string textOf(Way const& way) {
    std::u32string text;
    text.reserve(3 * way.up + way.rest.size());
    for (std::size_t i = 0; i != way.up; ++i) {
        text.append(U"../");
    }
    return text.append(way.rest);
}

} // namespace foundation::network::iri
