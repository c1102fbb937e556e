#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

namespace orvalen {

/// Stores texts in blocks that never move. Copies share the blocks; text added to a copy goes into new
/// blocks.
class TextBlocks {
public:
    TextBlocks() = default;
    TextBlocks(const TextBlocks& other) : blocks_(other.blocks_) {}
    TextBlocks& operator=(const TextBlocks&) = delete;
    TextBlocks(TextBlocks&&) noexcept = default;
    TextBlocks& operator=(TextBlocks&&) noexcept = default;

    /// Copies the texts one after another. Returns the address of the first.
    const char* add(std::initializer_list<std::string_view> texts);

private:
    std::vector<std::shared_ptr<const char[]>> blocks_;
    char* free_ = nullptr;
    std::size_t left_ = 0;
    std::size_t nextSize_ = 4096;
};

} // namespace orvalen
