#include "Fuzz.h"
#include "core/Json.h"

using namespace orvalen;
using fuzz::require;

void fuzz::tryInput(std::string_view bytes) {
    const auto session = decodeSession(std::string(bytes));
    if (!session)
        return;
    const std::string written = encodeSession(*session);
    const auto again = decodeSession(written);
    require(again.has_value(), "what was written can be read");
    require(again->matchInput == session->matchInput, "the wanted text comes back");
    require(again->matchedTracks.size() == session->matchedTracks.size(), "every row comes back");
    require(encodeSession(*again) == written, "what was written reads back equal");
}
