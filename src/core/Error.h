#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace orvalen {

/// Why something failed, in words fit for the end of a console line.
struct Error {
    std::string description;
};

/// What can fail returns this; no exception crosses a folder of this tree.
template <typename T>
using Expected = tl::expected<T, Error>;

inline tl::unexpected<Error> failure(std::string description) {
    return tl::unexpected<Error>(Error{std::move(description)});
}

/// The error that the system's last failed call left in errno.
tl::unexpected<Error> systemFailure(int errorNumber);

} // namespace orvalen
