#include "Fuzz.h"
#include "core/Text.h"
#include "matching/WantedList.h"

using namespace orvalen;
using fuzz::require;

namespace {

void checkRequest(std::string_view line, std::string_view format) {
    const auto request = parseWantedLine(line, format);
    if (!request)
        return;
    for (const std::string& text : {request->artist, request->title}) {
        require(text.find_first_of("\n\r\v\f") == std::string::npos, "a request has no line break");
        require(line.size() >= text.size(), "a request is no longer than its line");
    }
}

} // namespace

void fuzz::tryInput(std::string_view bytes) {
    const std::string list = toValidUtf8(bytes);
    for (const std::string& line : wantedLines(list)) {
        require(!line.empty(), "no wanted line is empty");
        require(trimmed(line).size() == line.size(), "a wanted line has no outer blank");
        checkRequest(line, "artist-title");
        checkRequest(line, "title-artist");
        const auto forth = parseWantedLine(line, "artist-title");
        const auto back = parseWantedLine(line, "title-artist");
        require(forth.has_value() == back.has_value(), "both formats take the same lines");
        require(!forth || (forth->artist == back->title && forth->title == back->artist),
                "the formats differ in the order alone");
    }
}
