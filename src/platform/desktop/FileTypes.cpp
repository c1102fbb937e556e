#include "platform/desktop/FileTypes.h"

#include "core/Text.h"

#include <algorithm>

namespace orvalen {
namespace {

std::string toAsciiUpper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::vector<std::string> extensionsOf(TypeFamily family) {
    switch (family) {
    case TypeFamily::mp3Audio:
        return {"mp3"};
    case TypeFamily::mpeg4Audio:
        return {"m4a", "m4b", "mp4"};
    case TypeFamily::wavAudio:
        return {"wav", "wave"};
    case TypeFamily::movie:
        return {"mp4", "m4v", "mov", "avi", "mpg", "mpeg", "3gp", "mkv", "webm"};
    case TypeFamily::commaSeparatedText:
        return {"csv"};
    }
    return {};
}

std::string label(const AllowedTypes& types) {
    const auto has = [&](TypeFamily family) {
        return std::find(types.families.begin(), types.families.end(), family) != types.families.end();
    };
    if (has(TypeFamily::movie))
        return "Audio and movie files";
    const std::vector<std::string> extensions = extensionsOf(types);
    if (extensions.size() == 1)
        return toAsciiUpper(extensions.front()) + " files";
    return "Audio files";
}

} // namespace

std::vector<std::string> extensionsOf(const AllowedTypes& types) {
    std::vector<std::string> result;
    const auto add = [&](const std::string& extension) {
        if (std::find(result.begin(), result.end(), extension) == result.end())
            result.push_back(extension);
    };
    for (const TypeFamily family : types.families)
        for (const std::string& extension : extensionsOf(family))
            add(extension);
    for (const std::string& extension : types.extensions)
        add(extension);
    return result;
}

bool mayBeChosen(std::string_view name, const AllowedTypes& types) {
    if (types.anything())
        return true;
    const std::vector<std::string> extensions = extensionsOf(types);
    const std::string extension = toAsciiLower(pathExtension(name));
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::string nameFilter(const AllowedTypes& types) {
    if (types.anything())
        return {};
    std::string patterns;
    for (const std::string& extension : extensionsOf(types)) {
        if (!patterns.empty())
            patterns += ' ';
        patterns += "*." + extension + " *." + toAsciiUpper(extension);
    }
    return label(types) + " (" + patterns + ")";
}

} // namespace orvalen
