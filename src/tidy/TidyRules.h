#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvalen {

// The changes of "Tidy List" in one line. Each rule returns the line without one kind of flaw, or the
// unchanged line. If a rule is not sure that there is a flaw, it changes nothing. Thread-safe.

using TidyRule = std::string (*)(std::string_view line);

struct NamedTidyRule {
    const char* name;
    TidyRule apply;
};

/// The dash in tidied lines.
inline constexpr std::string_view tidyDash = " \u2013 ";

/// Returns whether a match run reads the line. The format does not matter.
bool isRead(std::string_view line);

/// Replaces tabs and unusual spaces by plain spaces, and removes characters without width.
std::string withPlainBlanks(std::string_view line);
std::string withoutEmoji(std::string_view line);
/// Removes ‘• ’, ‘- ’ and similar marks at the start.
std::string withoutBullet(std::string_view line);
/// Removes quotation marks around the whole line, or around one side of its dash.
std::string withoutQuotationMarks(std::string_view line);
/// Removes a note to the DJ in brackets at the end, such as ‘(first dance)’. Versions such as ‘(Live)’ stay.
std::string withoutNote(std::string_view line);
/// Replaces one tab between two texts by a dash with spaces.
std::string withDashForTab(std::string_view line);
/// Puts a space on each side of a dash that is long, or has a space on one side only. Changes nothing if
/// there are several such dashes.
std::string withSpacedDash(std::string_view line);

/// Returns all rules in the order in which they are applied.
std::span<const NamedTidyRule> tidyRules();

/// The number at the start of a line such as ‘12. Artist – Title’ or ‘12) …’, and the text after it.
struct NumberedLine {
    int number = 0; ///< -1 if the line has no number
    std::string_view rest;
};
NumberedLine numberedLine(std::string_view line);

} // namespace orvalen
