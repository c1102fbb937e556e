#include "core/Keys.h"

#include "core/Text.h"

#include <array>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace orvalen {
namespace {

/// For each ASCII byte the letter or digit it folds to, or 0 where it separates words.
constexpr std::array<char, 128> asciiFolding = [] {
    std::array<char, 128> table{};
    for (char c = '0'; c <= '9'; ++c)
        table[static_cast<std::size_t>(c)] = c;
    for (char c = 'a'; c <= 'z'; ++c)
        table[static_cast<std::size_t>(c)] = c;
    for (char c = 'A'; c <= 'Z'; ++c)
        table[static_cast<std::size_t>(c)] = static_cast<char>(c - 'A' + 'a');
    return table;
}();

std::string normalizeAscii(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    bool pendingSpace = false;
    for (const char c : text) {
        const char folded = asciiFolding[static_cast<unsigned char>(c)];
        if (folded == 0) {
            pendingSpace = !result.empty();
            continue;
        }
        if (pendingSpace) {
            result += ' ';
            pendingSpace = false;
        }
        result += folded;
    }
    return result;
}

const icu::Normalizer2& decomposer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Normalizer2::getNFDInstance(status);
    }();
    return *instance;
}

/// Marks that the Brahmic scripts need to spell a syllable are letters in all but name; others are
/// diacritics.
bool isDiacritic(UChar32 c) {
    const auto category = u_charType(c);
    if (category != U_NON_SPACING_MARK && category != U_ENCLOSING_MARK)
        return false;
    const int role = u_getIntPropertyValue(c, UCHAR_INDIC_SYLLABIC_CATEGORY);
    return role == U_INSC_OTHER || role == U_INSC_NUKTA;
}

bool isAlphanumeric(UChar32 c) {
    return (U_GET_GC_MASK(c) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

std::string normalizeUnicode(std::string_view text) {
    icu::UnicodeString lowered =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    lowered.toLower(icu::Locale::getRoot());
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString decomposed = decomposer().normalize(lowered, status);

    icu::UnicodeString words;
    bool pendingSpace = false;
    for (std::int32_t i = 0; i < decomposed.length();) {
        const UChar32 c = decomposed.char32At(i);
        i += U16_LENGTH(c);
        if (isDiacritic(c))
            continue;
        if (!isAlphanumeric(c)) {
            pendingSpace = !words.isEmpty();
            continue;
        }
        if (pendingSpace) {
            words.append(u' ');
            pendingSpace = false;
        }
        words.append(c);
    }
    std::string result;
    words.toUTF8String(result);
    return composed(result);
}

} // namespace

std::string normalize(std::string_view text) {
    return isAscii(text) ? normalizeAscii(text) : normalizeUnicode(text);
}

std::string libraryKey(std::string_view artist, std::string_view title) {
    std::string joined;
    joined.reserve(artist.size() + 1 + title.size());
    joined.append(artist).append(1, ' ').append(title);
    return normalize(joined);
}

std::string fileNameKey(std::string_view path) {
    return normalize(bareName(path));
}

bool containsNormalized(std::string_view haystack, std::string_view needle) {
    return !needle.empty() && haystack.find(needle) != std::string_view::npos;
}

bool containmentTest(const TrackView& track, std::string_view wantedArtist, std::string_view wantedTitle) {
    return containsNormalized(normalize(track.artist), normalize(wantedArtist)) &&
           containsNormalized(normalize(track.title), normalize(wantedTitle));
}

} // namespace orvalen
