#include "core/Keys.h"

#include "core/Text.h"

#include <array>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace orvalen {
namespace {

const icu::Normalizer2& decomposer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Normalizer2::getNFDInstance(status);
    }();
    return *instance;
}

/// Returns whether `c` is dropped as a diacritic. Vowel signs and other marks that spell a syllable in Indic
/// scripts are kept.
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

/// Normalises any text with ICU. Slow: the callers handle Latin texts themselves.
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

/// The normalised form of a character below U+0370, which does not depend on its neighbours. At most three
/// bytes.
struct Folding {
    enum Kind : std::uint8_t { separator, dropped, letter };
    Kind kind = separator;
    std::uint8_t length = 0;
    std::array<char, 3> bytes{};
};

constexpr UChar32 foldedEnd = 0x370;
using FoldingTable = std::array<Folding, foldedEnd>;

/// The limit excludes Greek, because the lower case of its letter sigma depends on the neighbours.
const FoldingTable& foldings() {
    static const FoldingTable table = [] {
        FoldingTable made;
        for (UChar32 c = 0; c < foldedEnd; ++c) {
            std::string text;
            icu::UnicodeString(c).toUTF8String(text);
            const std::string folded = normalizeUnicode(text);
            Folding& folding = made[static_cast<std::size_t>(c)];
            folding.kind = isDiacritic(c)   ? Folding::dropped
                           : folded.empty() ? Folding::separator
                                            : Folding::letter;
            folding.length =
                static_cast<std::uint8_t>(folded.copy(folding.bytes.data(), folding.bytes.size()));
        }
        return made;
    }();
    return table;
}

/// Writes words with one space between them into a buffer that is large enough.
class WordWriter {
public:
    explicit WordWriter(char* start) : start_(start), end_(start) {}

    void separate() {
        // Writing always and advancing conditionally avoids a branch that the processor mispredicts.
        *end_ = ' ';
        end_ += end_ != start_ && end_[-1] != ' ';
    }
    void letter(char c) { *end_++ = c; }
    std::size_t finish() {
        if (end_ != start_ && end_[-1] == ' ')
            --end_;
        return static_cast<std::size_t>(end_ - start_);
    }

private:
    char* start_;
    char* end_;
};

/// General punctuation: dashes, quotation marks, spaces, the ellipsis.
bool isPunctuation(UChar32 c) {
    return c >= 0x2000 && c <= 0x206F;
}

/// Returns false if a character needs normalizeUnicode().
bool normalizeLatin(std::string& result, std::string_view text) {
    const FoldingTable& table = foldings();
    result.resize(text.size() + text.size() / 2 + 1);
    WordWriter words(result.data());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t i = 0; i < text.size();) {
        UChar32 c = 0;
        U8_NEXT(bytes, i, text.size(), c);
        if (isPunctuation(c)) {
            words.separate();
            continue;
        }
        if (c < 0 || c >= foldedEnd)
            return false;
        const Folding& folding = table[static_cast<std::size_t>(c)];
        if (folding.kind == Folding::separator)
            words.separate();
        for (std::uint8_t k = 0; k < folding.length; ++k)
            words.letter(folding.bytes[k]);
    }
    result.resize(words.finish());
    return true;
}

/// For each ASCII byte, its lower-case letter or digit, or a space for separators.
constexpr std::array<char, 128> asciiFolding = [] {
    std::array<char, 128> table{};
    table.fill(' ');
    for (unsigned char c = '0'; c <= '9'; ++c)
        table[c] = static_cast<char>(c);
    for (unsigned char c = 'a'; c <= 'z'; ++c)
        table[c] = static_cast<char>(c);
    for (unsigned char c = 'A'; c <= 'Z'; ++c)
        table[c] = static_cast<char>(c - 'A' + 'a');
    return table;
}();

void normalizeAscii(std::string& result, std::string_view text) {
    result.resize(text.size());
    char* end = result.data();
    char before = ' ';
    for (const char c : text) {
        const char folded = asciiFolding[static_cast<unsigned char>(c)];
        *end = folded; // overwritten by the next character if it is a repeated space; avoids a branch
        end += (folded != ' ') | (before != ' ');
        before = folded;
    }
    const auto length = static_cast<std::size_t>(end - result.data());
    result.resize(length > 0 && end[-1] == ' ' ? length - 1 : length);
}

} // namespace

std::string normalize(std::string_view text) {
    std::string result;
    normalizeInto(result, text);
    return result;
}

void normalizeInto(std::string& result, std::string_view text) {
    if (isAscii(text))
        normalizeAscii(result, text);
    else if (!normalizeLatin(result, text))
        result = normalizeUnicode(text);
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
