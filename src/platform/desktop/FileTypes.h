#pragma once

#include "platform/Dialogs.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// Returns the lower-case extensions of the types without duplicates. Extensions of the families come first.
std::vector<std::string> extensionsOf(const AllowedTypes& types);

/// Returns whether a file with this name may be chosen. Ignores letter case.
bool mayBeChosen(std::string_view name, const AllowedTypes& types);

/// Returns the entry for a dialog's list of file types: a label and patterns in lower and upper case. Empty
/// if any file may be chosen.
std::string nameFilter(const AllowedTypes& types);

} // namespace orvalen
