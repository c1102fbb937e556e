#include "matching/GramBitmaps.h"

#include <bit>
#include <bitset>

namespace orvalen {
namespace {

/// With more intersections than this, comparing the few remaining texts is cheaper.
constexpr std::size_t mostIntersections = 6;

/// Four byte values share each bitmap.
std::size_t bitmapOfByte(unsigned char byte) {
    return byte % 64;
}

std::size_t bitmapOfPair(unsigned char first, unsigned char second) {
    const std::uint32_t mixed = (std::uint32_t(first) << 8 | second) * 0x9E3779B1U;
    return 64 + (std::uint64_t(mixed) * 192 >> 32);
}

template <typename Visitor>
void forEachGram(std::string_view text, Visitor visit) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        visit(bitmapOfByte(byte));
        if (i + 1 < text.size())
            visit(bitmapOfPair(byte, static_cast<unsigned char>(text[i + 1])));
    }
}

} // namespace

std::size_t countBits(const Bitmap& bitmap) {
    std::size_t count = 0;
    for (const std::uint64_t word : bitmap)
        count += static_cast<std::size_t>(std::popcount(word));
    return count;
}

void GramBitmaps::fillWord(std::size_t word, std::span<const std::string_view> texts) {
    std::array<std::uint64_t, bitmapCount> bits{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        forEachGram(texts[i], [&bits, bit = std::uint64_t(1) << i](std::size_t gram) { bits[gram] |= bit; });
    for (std::size_t gram = 0; gram < bitmapCount; ++gram) {
        words_[gram * wordCount_ + word] = bits[gram];
        sizes_[gram] += static_cast<std::size_t>(std::popcount(bits[gram]));
    }
}

Bitmap GramBitmaps::candidates(std::string_view needle) const {
    std::bitset<bitmapCount> needed;
    forEachGram(needle, [&needed](std::size_t gram) { needed.set(gram); });
    std::vector<std::size_t> grams;
    for (std::size_t gram = 0; gram < bitmapCount; ++gram)
        if (needed[gram])
            grams.push_back(gram);
    std::sort(grams.begin(), grams.end(),
              [this](std::size_t left, std::size_t right) { return sizes_[left] < sizes_[right]; });
    grams.resize(std::min(grams.size(), mostIntersections));

    const auto bitmap = [this](std::size_t gram) { return words_.data() + gram * wordCount_; };
    Bitmap result(bitmap(grams[0]), bitmap(grams[0]) + wordCount_);
    for (std::size_t i = 1; i < grams.size(); ++i) {
        const std::uint64_t* const other = bitmap(grams[i]);
        for (std::size_t word = 0; word < wordCount_; ++word)
            result[word] &= other[word];
    }
    return result;
}

} // namespace orvalen
