#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalen {

// The similarity of two normalised words. Thread-safe.

/// A word as code points, with a set of one bit per code point modulo 64.
struct Letters {
    std::u32string letters;
    std::uint64_t set = 0;
};

Letters lettersOf(std::string_view word);

/// Returns the set of the word's code points modulo 64, one bit each.
std::uint64_t letterSet(std::string_view word);

/// Returns the smallest number of letters to insert, delete, replace or exchange with a neighbour to turn one
/// word into the other. Returns limit + 1 if the number is larger than `limit`.
std::size_t editDistance(std::u32string_view left, std::u32string_view right, std::size_t limit);

/// Returns the largest number of edits in a misspelling of a word of this length.
std::size_t toleratedEdits(std::size_t letterCount);

/// Returns 1 for equal words, 0 for words that are not a misspelling of each other, or a value in between.
/// Words with a digit resemble only themselves.
float resemblance(const Letters& left, const Letters& right);

} // namespace orvalen
