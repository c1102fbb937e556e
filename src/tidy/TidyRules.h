#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvalen {

// What the Tidy List button changes in one line. Each rule returns the line without one kind of flaw, or the
// line as it was. A rule never touches a line that only looks as if it had the flaw. Pure; any thread.

using TidyRule = std::string (*)(std::string_view line);

struct NamedTidyRule {
    const char* name;
    TidyRule apply;
};

/// The dash that tidied lines are written with.
inline constexpr std::string_view tidyDash = " \u2013 ";

/// Whether a match run reads the line, which does not depend on the format.
bool isRead(std::string_view line);

/// Tabs and unusual blanks become plain blanks, and characters of no width go.
std::string withPlainBlanks(std::string_view line);
std::string withoutEmoji(std::string_view line);
/// ‘• ’ and ‘- ’ at the start.
std::string withoutBullet(std::string_view line);
/// Marks around the whole line, or around one side of its dash.
std::string withoutQuotationMarks(std::string_view line);
/// A note to the DJ in brackets at the end, such as ‘(first dance)’; versions such as ‘(Live)’ stay.
std::string withoutNote(std::string_view line);
/// One tab between two texts becomes a dash with blanks.
std::string withDashForTab(std::string_view line);
/// A single long dash, or a dash with a blank on one side, gets blanks on both.
std::string withSpacedDash(std::string_view line);

/// All of these, in the order in which they are applied.
std::span<const NamedTidyRule> tidyRules();

/// The number at the start of a line such as ‘12. Artist – Title’ or ‘12) …’, and what stands after it.
struct NumberedLine {
    int number = 0; ///< -1 when the line has none
    std::string_view rest;
};
NumberedLine numberedLine(std::string_view line);

} // namespace orvalen
