#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// Values that were set when the program was built.
class Bundle {
public:
    virtual ~Bundle() = default;
    /// Returns the value of the key, for example "CFBundleShortVersionString", or nullopt.
    virtual std::optional<std::string> text(std::string_view key) const = 0;
};

} // namespace orvalen
