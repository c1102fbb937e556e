#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// What the program was built as.
class Bundle {
public:
    virtual ~Bundle() = default;
    /// The text under the key, for example "CFBundleShortVersionString"; nothing when there is none.
    virtual std::optional<std::string> text(std::string_view key) const = 0;
};

} // namespace orvalen
