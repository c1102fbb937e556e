#pragma once

#include <string>
#include <string_view>

namespace orvalen {

/// The message as one line that cannot control a terminal: a line break becomes a space, other control
/// characters except the tab become ‘\u001B’ and the like, and invalid UTF-8 is replaced. Pure; any thread.
std::string consoleText(std::string_view message);

} // namespace orvalen
