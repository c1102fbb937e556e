#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalen {

// How much two normalised words resemble each other. Pure; any thread.

/// A word as code points, with one bit for each code point modulo 64.
struct Letters {
    std::u32string letters;
    std::uint64_t set = 0;
};

Letters lettersOf(std::string_view word);

/// One bit for each letter of the word, modulo 64.
std::uint64_t letterSet(std::string_view word);

/// The least number of inserted, deleted, replaced or exchanged neighbouring letters that turns one word into
/// the other; limit + 1 when it is above the limit.
std::size_t editDistance(std::u32string_view left, std::u32string_view right, std::size_t limit);

/// How many edits a word of so many letters may differ by and still be taken for a misspelling.
std::size_t toleratedEdits(std::size_t letterCount);

/// 1 for equal words, 0 for words that are no misspelling of each other, or a value between. Words with a
/// digit resemble only themselves.
float resemblance(const Letters& left, const Letters& right);

} // namespace orvalen
