#include "Fuzz.h"
#include "core/Keys.h"
#include "core/Text.h"

using namespace orvalen;
using fuzz::require;

void fuzz::tryInput(std::string_view bytes) {
    normalize(bytes);

    const std::string text = toValidUtf8(bytes);
    require(isValidUtf8(text), "what is made valid is valid");
    require(toValidUtf8(text) == text, "a valid text stays as it is");

    const std::string once = normalize(text);
    require(isValidUtf8(once), "a normalised text is valid UTF-8");
    require(normalize(once) == once, "normalising twice is normalising once");
    require(composed(once) == once, "a normalised text is in composed form");
    require(normalize(composed(text)) == once, "equal texts normalise alike");
    require(trimmed(once).size() == once.size(), "a normalised text has no outer blank");
    require(once.find("  ") == std::string::npos, "words are one blank apart");
    require(once.empty() || containsNormalized(once, once), "a text contains itself");

    const std::string_view artist = std::string_view(text).substr(0, text.find('\n'));
    const std::string key = libraryKey(artist, text);
    require(trimmed(key).size() == key.size(), "a key has no outer blank");
    require(canonicallyEqual(text, composed(text)), "the composed form is equal");
    require(canonicalHash(text) == canonicalHash(composed(text)), "equal texts hash alike");
    require(hasCanonicalPrefix(text, text), "a text begins with itself");
}
