#include "core/TextBlocks.h"

#include <algorithm>
#include <cstring>

namespace orvalen {
namespace {

constexpr std::size_t largestBlock = std::size_t(4) << 20;

} // namespace

const char* TextBlocks::add(std::initializer_list<std::string_view> texts) {
    std::size_t size = 0;
    for (const std::string_view text : texts)
        size += text.size();
    if (size > left_) {
        left_ = std::max(size, nextSize_);
        nextSize_ = std::min(2 * nextSize_, largestBlock);
        std::shared_ptr<char[]> block(new char[left_]);
        free_ = block.get();
        blocks_.push_back(std::move(block));
    }
    const char* const start = free_;
    for (const std::string_view text : texts) {
        if (!text.empty())
            std::memcpy(free_, text.data(), text.size());
        free_ += text.size();
    }
    left_ -= size;
    return start;
}

} // namespace orvalen
