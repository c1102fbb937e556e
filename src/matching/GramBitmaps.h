#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orvalen {

/// A set of numbers with one bit each, 64 per word.
using Bitmap = std::vector<std::uint64_t>;

inline bool contains(const Bitmap& bitmap, std::size_t number) {
    return (bitmap[number / 64] >> (number % 64)) & 1;
}
std::size_t countBits(const Bitmap& bitmap);

/// Calls the visitor with each number in the set, in ascending order.
template <typename Visitor>
void forEachBit(const Bitmap& bitmap, Visitor visit) {
    for (std::size_t word = 0; word < bitmap.size(); ++word)
        for (std::uint64_t bits = bitmap[word]; bits != 0; bits &= bits - 1)
            visit(word * 64 + static_cast<std::size_t>(__builtin_ctzll(bits)));
}

/// For each gram (a byte, or a pair of neighbouring bytes), the set of texts that contain it. A text can
/// contain a needle only if it contains all grams of the needle, so a few intersections leave few texts to
/// compare. Grams share 256 bitmaps by their hash. Needs 32 bytes per text.
class GramBitmaps {
public:
    static constexpr std::size_t bitmapCount = 256;

    /// Calls textOf(number) once for each number below `textCount`, in ascending order.
    template <typename TextOf>
    GramBitmaps(std::size_t textCount, TextOf textOf)
        : wordCount_((textCount + 63) / 64), words_(bitmapCount * wordCount_) {
        std::array<std::string_view, 64> texts;
        for (std::size_t first = 0; first < textCount; first += texts.size()) {
            const std::size_t count = std::min(texts.size(), textCount - first);
            for (std::size_t i = 0; i < count; ++i)
                texts[i] = textOf(first + i);
            fillWord(first / 64, std::span(texts).first(count));
        }
    }

    /// Returns a superset of the texts that contain `needle`, which must not be empty.
    Bitmap candidates(std::string_view needle) const;

private:
    void fillWord(std::size_t word, std::span<const std::string_view> texts);

    std::size_t wordCount_;
    std::vector<std::uint64_t> words_; ///< one bitmap after another
    std::array<std::size_t, bitmapCount> sizes_{};
};

} // namespace orvalen
