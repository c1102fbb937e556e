#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace orvalen {

/// A hash table of numbers, eight bytes per slot. The numbered things are stored elsewhere: find() asks the
/// caller whether a number with the same hash is the wanted one.
class HashedNumbers {
public:
    template <typename IsIt>
    std::optional<std::uint32_t> find(std::size_t hash, IsIt isIt) const {
        if (slots_.empty())
            return std::nullopt;
        const auto tag = static_cast<std::uint32_t>(hash);
        for (std::size_t i = tag & mask(); slots_[i].number != none; i = (i + 1) & mask())
            if (slots_[i].tag == tag && isIt(slots_[i].number))
                return slots_[i].number;
        return std::nullopt;
    }

    void insert(std::size_t hash, std::uint32_t number) {
        if (4 * (count_ + 1) > 3 * slots_.size())
            grow();
        place({static_cast<std::uint32_t>(hash), number});
        ++count_;
    }

private:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t number = none;
    };

    std::size_t mask() const { return slots_.size() - 1; }

    void place(Slot slot) {
        std::size_t i = slot.tag & mask();
        while (slots_[i].number != none)
            i = (i + 1) & mask();
        slots_[i] = slot;
    }

    void grow() {
        const std::vector<Slot> old = std::move(slots_);
        slots_ = std::vector<Slot>(old.empty() ? 16 : 2 * old.size());
        for (const Slot& slot : old)
            if (slot.number != none)
                place(slot);
    }

    std::vector<Slot> slots_; ///< size is a power of two, at most three quarters full
    std::size_t count_ = 0;
};

} // namespace orvalen
