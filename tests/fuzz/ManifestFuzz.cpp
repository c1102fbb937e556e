#include "Fuzz.h"
#include "app/UpdateCheck.h"

using namespace orvalen;
using fuzz::require;

namespace {

int order(std::string_view left, std::string_view right) {
    const int order = compareNumerically(left, right);
    return (order > 0) - (order < 0);
}

} // namespace

void fuzz::tryInput(std::string_view bytes) {
    decodeLatestInfo(bytes);

    // Splits the input into three texts.
    const std::string_view first = bytes.substr(0, bytes.size() / 3);
    const std::string_view second = bytes.substr(bytes.size() / 3, bytes.size() / 3);
    const std::string_view third = bytes.substr(bytes.size() / 3 * 2);
    require(order(first, first) == 0, "a version equals itself");
    require(order(first, second) == -order(second, first), "an order read backwards is the other one");
    if (order(first, second) <= 0 && order(second, third) <= 0)
        require(order(first, third) <= 0, "the order carries over");
}
