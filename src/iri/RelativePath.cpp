#include "iri/RelativePath.hpp"

#include "iri/grammar/PathSplitter.hpp"

#include <algorithm>
#include <cstdint>

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

// Whether two characters stand side by side somewhere. The sign bit is set where they do; no way out of the
// loop before its end, so it becomes vector code.
bool holdsPair(std::u32string_view path, char32_t first, char32_t second) {
    std::uint32_t found = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        found |= ((path[i - 1] ^ first) | (path[i] ^ second)) - 1;
    }
    return found >> 31 != 0;
}

// RFC 3986, section 5.2.4, on a text, which only gets shorter.
void removeDotSegmentsOfText(std::u32string& path) {
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

} // namespace

bool hasRelativePathSegments(std::u32string_view path) noexcept {
    // Hardly any path has a dot behind a slash or at its start: only those are looked at more closely.
    if (!holdsPair(path, U'/', U'.') && (path.empty() || path.front() != U'.')) {
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

bool canBeSplit(std::u32string_view path) noexcept {
    return !holdsPair(path, U'/', U'/');
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
    if (!canBeSplit(path)) {
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
    merged.append(front);
    merged.append(reference);
    removeDotSegmentsOfText(merged);
    if (absolute) {
        if (!beginsWithSlash(merged)) {
            merged.insert(merged.begin(), U'/');
        }
    } else if (!beginsWithSlash(base) && !beginsWithSlash(reference) && beginsWithSlash(merged)) {
        merged.erase(merged.begin());
    }
    return merged;
}

} // namespace foundation::network::iri
