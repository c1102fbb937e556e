#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// A 128-bit identity, written as 36 characters with upper-case hexadecimal digits.
class UUID {
public:
    /// A new version 4 value from the system's random source. Any thread.
    static UUID random();
    /// Reads the canonical form, digits in either case; nothing for any other text.
    static std::optional<UUID> parse(std::string_view text);

    std::string toString() const;

    friend bool operator==(const UUID&, const UUID&) = default;
    friend auto operator<=>(const UUID&, const UUID&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace orvalen
