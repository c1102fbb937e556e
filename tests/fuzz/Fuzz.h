#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace orvalen::fuzz {

/// What every fuzzer defines: reads one input and checks what the reader promises.
void tryInput(std::string_view bytes);

/// Stops the fuzzer, which keeps the input, when a promise does not hold.
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
