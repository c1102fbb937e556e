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
BENCHMARK_CAPTURE(normalizeText, decomposed, "Sen\u0303or Ritmo – U\u0308berma\u0308ßig Cafe\u0301")
    ->Name("normalize/decomposed");
BENCHMARK_CAPTURE(normalizeText, cyrillic, "Группа Крови – Последний Поезд (Ремикс)")
    ->Name("normalize/cyrillic");

} // namespace
