#include "import/DjepImport.h"

#include "app/state/ContentView.h"
#include "core/Files.h"
#include "core/Text.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <optional>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>

namespace orvalen {
namespace {

using Fields = std::array<std::string_view, 3>;

/// Returns the text before the separator and removes both from `rest`.
std::string_view cutOff(std::string_view& rest, char separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view piece = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return piece;
}

/// Returns the first three fields of a CSV row, or nullopt if it has fewer.
std::optional<Fields> firstFields(std::string_view row) {
    Fields fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i + 1 < fields.size() && row.find(',') == std::string_view::npos)
            return std::nullopt;
        fields[i] = cutOff(row, ',');
    }
    return fields;
}

/// Spaces inside quotation marks stay, because the marks are removed after trimming.
std::string cleaned(std::string_view field) {
    std::string result(trimmed(field));
    std::erase(result, '"');
    return result;
}

std::string caseFolded(const std::string& text) {
    std::string folded;
    icu::StringByteSink<std::string> sink(&folded);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8Fold(0, icu::StringPiece(text), sink, nullptr, status);
    return U_SUCCESS(status) ? folded : text;
}

bool isDoNotPlay(const std::string& kind) {
    return caseFolded(kind).find("do not play") != std::string::npos;
}

/// Returns the wanted line of a CSV row, or nullopt if the row is incomplete or excluded.
std::optional<std::string> wantedLine(std::string_view row, bool ignoreDoNotPlay) {
    const auto fields = firstFields(row);
    if (!fields)
        return std::nullopt;
    if (ignoreDoNotPlay && isDoNotPlay(cleaned((*fields)[0])))
        return std::nullopt;
    const std::string title = cleaned((*fields)[1]);
    const std::string artist = cleaned((*fields)[2]);
    if (artist.empty() || title.empty())
        return std::nullopt;
    return artist + " - " + title;
}

Expected<std::string> readText(const std::string& path) {
    auto bytes = readWholeFile(path);
    if (bytes && !isValidUtf8(*bytes))
        return failure("The file is not UTF-8 text.");
    return bytes;
}

Expected<std::string> readWantedText(const std::string& path, bool ignoreDoNotPlay) try {
    return readText(path).map([&](const std::string& csv) { return wantedTextOfDJEP(csv, ignoreDoNotPlay); });
} catch (const std::bad_alloc&) {
    return systemFailure(ENOMEM);
}

} // namespace

void importDJEPCSV(ContentView& view) {
    const OpenOptions options{.types = {.families = {TypeFamily::commaSeparatedText}},
                              .title = "Import DJEP CSV",
                              .kind = FileKind::eventList};
    view.platform.dialogs.chooseToOpenLater(options, [&view](const std::vector<Location>& chosen) {
        if (!chosen.empty())
            parseDJEPCSV(view, chosen.front());
    });
}

void parseDJEPCSV(ContentView& view, const Location& file) {
    auto text = readWantedText(file.path, view.ignoreDoNotPlay.get());
    if (!text) {
        view.platform.console.line("Failed to parse DJEP CSV: " + text.error().description);
        return;
    }
    view.matchInput.set(std::move(*text));
    view.inputMode.set(InputMode::textList);
}

std::string wantedTextOfDJEP(std::string_view csv, bool ignoreDoNotPlay) {
    cutOff(csv, '\n'); // removes the header line
    std::string text;
    while (!csv.empty()) {
        const auto line = wantedLine(cutOff(csv, '\n'), ignoreDoNotPlay);
        if (!line)
            continue;
        if (!text.empty())
            text += '\n';
        text += *line;
    }
    return text;
}

} // namespace orvalen
