#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace orvalen {

/// The reason of a failure, as a text that fits at the end of a console line.
struct Error {
    std::string description;
};

/// The result of a function that can fail. Functions return errors to other folders of src/ and do not throw
/// them.
template <typename T>
using Expected = tl::expected<T, Error>;

inline tl::unexpected<Error> failure(std::string description) {
    return tl::unexpected<Error>(Error{std::move(description)});
}

/// Returns the operating system's description of `errorNumber`, a value of errno.
tl::unexpected<Error> systemFailure(int errorNumber);

} // namespace orvalen
