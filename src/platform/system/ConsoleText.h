#pragma once

#include <string>
#include <string_view>

namespace orvalen {

/// Returns the message as one line that cannot control a terminal. Line breaks become spaces. Other control
/// characters except the tab become ‘\u001B’ and the like. Invalid UTF-8 is replaced. Thread-safe.
std::string consoleText(std::string_view message);

} // namespace orvalen
