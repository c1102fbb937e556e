#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// What a word does in an artist or a title.
enum class WordRole {
    plain,
    aside,   ///< in brackets, or after a spaced dash: mostly names a version
    guest,   ///< after ‘feat.’
    article, ///< ‘the’, ‘and’ and their kind
};

struct SongWord {
    std::string text; ///< normalised
    WordRole role = WordRole::plain;
};

/// The words of an artist, a title or both in text order, in the form in which a search compares them:
/// normalised, with contractions (‘don't’), letters in dots (‘Y.M.C.A.’) and signs for letters (‘Ke$ha’)
/// made one word each, and some short spellings (‘u’, ‘mister’, ‘five’) made one with their common forms.
/// Pure; any thread.
std::vector<SongWord> songWords(std::string_view text);

} // namespace orvalen
