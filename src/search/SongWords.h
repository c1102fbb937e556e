#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// The role of a word in an artist or title.
enum class WordRole {
    plain,
    aside,   ///< in brackets or after a spaced dash; mostly the name of a version
    guest,   ///< after ‘feat.’
    article, ///< ‘the’, ‘and’ and similar words
};

struct SongWord {
    std::string text; ///< normalised
    WordRole role = WordRole::plain;
};

/// Returns the words of an artist, a title or both, in order, normalised for comparison. Contractions
/// (‘don't’), letters with dots (‘Y.M.C.A.’) and signs for letters (‘Ke$ha’) become one word each. Some short
/// spellings (‘u’, ‘mister’, ‘five’) become their common form. Thread-safe.
std::vector<SongWord> songWords(std::string_view text);

} // namespace orvalen
