#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace orvalen::fuzz {

/// Each fuzzer defines this function: it reads one input and checks the promises of the reader.
void tryInput(std::string_view bytes);

/// Stops the fuzzer if a promise is broken. The fuzzer saves the input.
inline void require(bool holds, const char* promise) {
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

} // namespace orvalen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orvalen::fuzz::tryInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
