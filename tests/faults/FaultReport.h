#pragma once

#include "faults/FailingCalls.h"

#include <string>

namespace orvalen::test {

/// The name by which people know an error: ENOSPC, or "half, then ENOSPC".
std::string nameOf(const Fault& fault);

/// Adds a line to the list that is printed at the end, of flows, what went wrong and what came of it. Faults
/// of one call with one outcome share a line.
void report(const std::string& flow, const std::string& call, const std::string& fault,
            const std::string& outcome);

/// Runs the tests, prints the list, and fails when docs/reliability.md does not hold every line of it.
int runAndReport(int argc, char** argv);

} // namespace orvalen::test
