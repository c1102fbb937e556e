#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// A 128-bit identifier. Its text has 36 characters with upper-case hexadecimal digits.
class UUID {
public:
    /// Returns a new version 4 UUID. Thread-safe.
    static UUID random();
    /// Parses the 36-character form with digits in either case. Returns nullopt for any other text.
    static std::optional<UUID> parse(std::string_view text);

    std::string toString() const;

    friend bool operator==(const UUID&, const UUID&) = default;
    friend auto operator<=>(const UUID&, const UUID&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace orvalen
