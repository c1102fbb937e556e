#include "core/Keys.h"

#include <benchmark/benchmark.h>

namespace {

void normalizeText(benchmark::State& state, const char* text) {
    for (auto _ : state)
        benchmark::DoNotOptimize(orvalen::normalize(text));
}

BENCHMARK_CAPTURE(normalizeText, ascii, "The Night Band - Last Train Home (Extended Mix)")
    ->Name("normalize/ascii");
BENCHMARK_CAPTURE(normalizeText, latin, "Señor Ritmo – Übermäßig Café (Édition Spéciale)")
    ->Name("normalize/latin");

} // namespace
