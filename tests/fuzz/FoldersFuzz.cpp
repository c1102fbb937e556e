#include "Fuzz.h"
#include "core/Base64.h"
#include "core/Json.h"
#include "platform/system/PosixFolderAccess.h"

using namespace orvalen;
using fuzz::require;

namespace {

void checkToken(std::string_view token) {
    const auto bookmark = fromBase64(token);
    if (!bookmark)
        return;
    require(base64(*bookmark) == token, "only what we would write is read");
    PosixFolderAccess access;
    const auto location = access.resolveBookmark(*bookmark);
    if (!location)
        return;
    require(location->path.starts_with('/'), "a bookmark leads to an absolute path");
    require(access.makeBookmark(*location) == *bookmark, "a location makes the bookmark that it came from");
}

} // namespace

void fuzz::tryInput(std::string_view bytes) {
    checkToken(bytes);
    checkToken(base64(bytes));
    require(fromBase64(base64(bytes)) == bytes, "any bytes come back");
    const auto texts = decodeTexts(bytes);
    if (!texts)
        return;
    for (const std::string& token : *texts)
        checkToken(token);
    const auto again = decodeTexts(encodeTexts(*texts));
    require(again.has_value() && *again == *texts, "what was written reads back equal");
}
