#include "Fuzz.h"
#include "import/DjepImport.h"
#include "matching/WantedList.h"

using namespace orvalen;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view csv = fuzz::text(data, size);
    const std::string all = wantedTextOfDJEP(csv, false);
    const std::string some = wantedTextOfDJEP(csv, true);
    require(some.size() <= all.size(), "leaving requests out adds nothing");
    require(wantedLines(some).size() <= wantedLines(all).size(), "leaving requests out adds no line");
    require(wantedTextOfDJEP(csv, true) == some, "an export always reads alike");
    return 0;
}
