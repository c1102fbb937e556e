#include "Fuzz.h"
#include "import/DjepImport.h"
#include "matching/WantedList.h"

using namespace orvalen;
using fuzz::require;

void fuzz::tryInput(std::string_view csv) {
    const std::string all = wantedTextOfDJEP(csv, false);
    const std::string some = wantedTextOfDJEP(csv, true);
    require(some.size() <= all.size(), "leaving requests out adds nothing");
    require(wantedLines(some).size() <= wantedLines(all).size(), "leaving requests out adds no line");
    require(wantedTextOfDJEP(csv, true) == some, "an export always reads alike");
}
