#include "search/WordDistance.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <unicode/utf8.h>
#include <vector>

namespace orvalen {
namespace {

template <typename Visitor>
void forEachLetter(std::string_view word, Visitor visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(word.data());
    for (std::size_t i = 0; i < word.size();) {
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(bytes, i, word.size(), c);
        visit(static_cast<char32_t>(c));
    }
}

bool hasDigit(const Letters& word) {
    constexpr std::uint64_t digits = std::uint64_t(0x3FF) << ('0' % 64);
    return (word.set & digits) != 0 &&
           std::ranges::any_of(word.letters, [](char32_t c) { return c >= U'0' && c <= U'9'; });
}

} // namespace

Letters lettersOf(std::string_view word) {
    Letters result;
    forEachLetter(word, [&result](char32_t c) { result.letters.push_back(c); });
    result.set = letterSet(word);
    return result;
}

std::uint64_t letterSet(std::string_view word) {
    std::uint64_t set = 0;
    forEachLetter(word, [&set](char32_t c) { set |= std::uint64_t(1) << (c % 64); });
    return set;
}

std::size_t editDistance(std::u32string_view left, std::u32string_view right, std::size_t limit) {
    if (left.size() > right.size())
        std::swap(left, right);
    if (right.size() - left.size() > limit)
        return limit + 1;
    // Three rows of the table, because an exchange of neighbours needs the row before the previous one.
    const std::size_t width = left.size() + 1;
    std::vector<std::size_t> cells(3 * width);
    std::size_t* before = cells.data();
    std::size_t* above = before + width;
    std::size_t* current = above + width;
    for (std::size_t i = 0; i < width; ++i)
        above[i] = i;
    for (std::size_t row = 1; row <= right.size(); ++row) {
        current[0] = row;
        std::size_t least = row;
        for (std::size_t i = 1; i < width; ++i) {
            const bool equal = left[i - 1] == right[row - 1];
            current[i] = std::min({above[i] + 1, current[i - 1] + 1, above[i - 1] + (equal ? 0 : 1)});
            if (i > 1 && row > 1 && left[i - 1] == right[row - 2] && left[i - 2] == right[row - 1])
                current[i] = std::min(current[i], before[i - 2] + 1);
            least = std::min(least, current[i]);
        }
        if (least > limit)
            return limit + 1;
        std::swap(before, above);
        std::swap(above, current);
    }
    return std::min(above[width - 1], limit + 1);
}

std::size_t toleratedEdits(std::size_t letterCount) {
    return letterCount <= 2 ? 0 : letterCount <= 4 ? 1 : letterCount <= 8 ? 2 : 3;
}

float resemblance(const Letters& left, const Letters& right) {
    if (left.letters == right.letters)
        return 1;
    const std::size_t longer = std::max(left.letters.size(), right.letters.size());
    const std::size_t shorter = std::min(left.letters.size(), right.letters.size());
    const std::size_t limit = toleratedEdits(shorter);
    // Each edit changes at most two bits of the set, so this rejects most words quickly.
    if (longer - shorter > limit || static_cast<std::size_t>(std::popcount(left.set ^ right.set)) > 2 * limit)
        return 0;
    if (hasDigit(left) || hasDigit(right))
        return 0;
    const std::size_t distance = editDistance(left.letters, right.letters, limit);
    if (distance > limit)
        return 0;
    const float share = 1 - static_cast<float>(distance) / static_cast<float>(longer);
    return share < 0.6F ? 0 : std::pow(share, 1.5F);
}

} // namespace orvalen
