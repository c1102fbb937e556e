#pragma once

#include "platform/Dialogs.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// The extensions that the types stand for, lower case, each once, the families' first.
std::vector<std::string> extensionsOf(const AllowedTypes& types);

/// Whether a file of that name may be chosen; letter case does not matter.
bool mayBeChosen(std::string_view name, const AllowedTypes& types);

/// The types as the one line of a dialog's type list: a label and its patterns in either letter case. Empty
/// when anything may be chosen.
std::string nameFilter(const AllowedTypes& types);

} // namespace orvalen
