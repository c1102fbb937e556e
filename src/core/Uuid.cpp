#include "core/Uuid.h"

#include <charconv>
#include <random>

namespace orvalen {
namespace {

bool isHyphenPosition(std::size_t i) {
    return i == 8 || i == 13 || i == 18 || i == 23;
}

/// Seeded once per thread from the system's random source. Ids of rows need not be secret.
std::mt19937_64& generator() {
    thread_local std::mt19937_64 engine = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return engine;
}

} // namespace

UUID UUID::random() {
    UUID id;
    for (std::size_t half = 0; half < 2; ++half) {
        std::uint64_t bits = generator()();
        for (std::size_t i = 0; i < 8; ++i, bits >>= 8)
            id.bytes_[half * 8 + i] = static_cast<std::uint8_t>(bits & 0xFF);
    }
    id.bytes_[6] = static_cast<std::uint8_t>((id.bytes_[6] & 0x0F) | 0x40);
    id.bytes_[8] = static_cast<std::uint8_t>((id.bytes_[8] & 0x3F) | 0x80);
    return id;
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != 36)
        return std::nullopt;
    UUID id;
    const char* place = text.data();
    for (std::uint8_t& byte : id.bytes_) {
        if (isHyphenPosition(static_cast<std::size_t>(place - text.data())) && *place++ != '-')
            return std::nullopt;
        if (std::from_chars(place, place + 2, byte, 16).ptr != place + 2)
            return std::nullopt;
        place += 2;
    }
    return id;
}

std::string UUID::toString() const {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (const std::uint8_t byte : bytes_) {
        if (isHyphenPosition(text.size()))
            text += '-';
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

} // namespace orvalen
