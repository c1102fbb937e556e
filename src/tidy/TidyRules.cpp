#include "tidy/TidyRules.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/Text.h"
#include "matching/WantedList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <unicode/uchar.h>
#include <unicode/utf8.h>
#include <utility>
#include <vector>

namespace orvalen {
namespace {

using namespace std::string_view_literals;

constexpr std::array bullets = {"-"sv,      "*"sv,      "\u2022"sv, "\u2013"sv, "\u2014"sv,
                                "\u00B7"sv, "\u25AA"sv, "\u25CF"sv, "\u25CB"sv, "\u25E6"sv,
                                "\u2023"sv, "\u25BA"sv, "\u2192"sv, "\u2713"sv, "\u2714"sv,
                                "\u2610"sv, "\u2611"sv, ">"sv,      "+"sv};
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> quotationMarks = {{
    {"\"", "\""},
    {"'", "'"},
    {"\u201C", "\u201D"},
    {"\u201E", "\u201C"},
    {"\u2018", "\u2019"},
    {"\u00AB", "\u00BB"},
    {"\u201D", "\u201D"},
}};
/// Compared with the normalised text in the brackets. Entries are separated by bars.
constexpr std::string_view notes =
    "|first dance|our first dance|1st dance|father daughter|father daughter dance|mother son|"
    "mother son dance|please|pls|plz|pretty please|please play|please please|must play|must have|a must|"
    "if possible|our song|our favourite|our favorite|favourite|favorite|grand entrance|cake cutting|"
    "last song|important|very important|bitte|unbedingt|eroffnungstanz|hochzeitstanz|unser lied|"
    "for the bride|for the groom|bride s favourite|groom s favourite|bride s favorite|groom s favorite|";

UChar32 characterAt(std::string_view text, std::size_t& place) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 c = 0;
    U8_NEXT_OR_FFFD(bytes, place, text.size(), c);
    return c;
}

bool isWidthless(UChar32 c) {
    return c == 0x200B || c == 0x2060 || c == 0xFEFF;
}

bool isEmoji(UChar32 c) {
    constexpr UChar32 firstPicture = 0x2300; // arrows and signs such as ‘™’ are text
    return (c >= firstPicture && u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC)) ||
           (c >= 0x1F1E6 && c <= 0x1F1FF) || (c >= 0x1F3FB && c <= 0x1F3FF) || (c >= 0x2669 && c <= 0x266C);
}

/// These characters join or colour emoji. Between letters of other scripts they have other meanings.
bool belongsToEmoji(UChar32 c) {
    return c == 0x200D || c == 0xFE0F || c == 0x20E3;
}

/// Returns the text without the quotation marks around it. Returns nullopt if it has none, or contains
/// further ones.
std::optional<std::string_view> unquoted(std::string_view text) {
    for (const auto& [open, close] : quotationMarks) {
        if (text.size() <= open.size() + close.size() || !text.starts_with(open) || !text.ends_with(close))
            continue;
        const std::string_view inside = text.substr(open.size(), text.size() - open.size() - close.size());
        if (inside.find(open) == std::string_view::npos && inside.find(close) == std::string_view::npos &&
            !isBlank(inside))
            return inside;
    }
    return std::nullopt;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A dash of any length in a line.
struct Dash {
    std::size_t place = 0;
    std::size_t size = 0;
    bool isLong = false;
    bool blankBefore = false;
    bool blankAfter = false;
};

std::vector<Dash> dashesOf(std::string_view line) {
    constexpr std::array dashes = {"--"sv,     "-"sv,      "\u2010"sv, "\u2011"sv, "\u2012"sv,
                                   "\u2013"sv, "\u2014"sv, "\u2015"sv, "\u2212"sv};
    std::vector<Dash> found;
    for (std::size_t i = 0; i < line.size();) {
        const std::string_view rest = line.substr(i);
        const auto* dash =
            std::ranges::find_if(dashes, [rest](std::string_view each) { return rest.starts_with(each); });
        if (dash == dashes.end()) {
            ++i;
            continue;
        }
        found.push_back({i, dash->size(), dash->size() > 1, i > 0 && line[i - 1] == ' ',
                         dash->size() < rest.size() && rest[dash->size()] == ' '});
        i += dash->size();
    }
    return found;
}

constexpr std::array rules = {
    NamedTidyRule{"emoji", withoutEmoji},     NamedTidyRule{"tab", withDashForTab},
    NamedTidyRule{"blanks", withPlainBlanks}, NamedTidyRule{"bullet", withoutBullet},
    NamedTidyRule{"note", withoutNote},       NamedTidyRule{"quotation marks", withoutQuotationMarks},
    NamedTidyRule{"dash", withSpacedDash},
};

} // namespace

bool isRead(std::string_view line) {
    return parseWantedLine(line, artistTitleFormat).has_value();
}

std::string withPlainBlanks(std::string_view line) {
    std::string result;
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t start = i;
        const UChar32 c = characterAt(line, i);
        if (c == '\t' || u_charType(c) == U_SPACE_SEPARATOR)
            result += ' ';
        else if (!isWidthless(c))
            result.append(line.substr(start, i - start));
    }
    return result;
}

std::string withoutEmoji(std::string_view line) {
    std::string result;
    bool afterEmoji = false;
    bool removed = false;
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t start = i;
        const UChar32 c = characterAt(line, i);
        afterEmoji = isEmoji(c) || (afterEmoji && belongsToEmoji(c));
        removed |= afterEmoji;
        if (!afterEmoji && !(c == ' ' && removed && (result.empty() || result.back() == ' ')))
            result.append(line.substr(start, i - start));
    }
    // A line that consists of emoji only stays, because it may be a name.
    const std::string_view left = removed ? trimmed(result) : line;
    return left.empty() || (isRead(line) && !isRead(left)) ? std::string(line) : std::string(left);
}

std::string withoutBullet(std::string_view line) {
    for (const std::string_view bullet : bullets)
        if (line.starts_with(bullet) && line.substr(bullet.size()).starts_with(' ')) {
            const std::string_view rest = trimmed(line.substr(bullet.size()));
            return std::string(rest.empty() ? line : rest);
        }
    return std::string(line);
}

std::string withoutQuotationMarks(std::string_view line) {
    if (const auto inside = unquoted(line))
        return std::string(trimmed(*inside));
    const std::vector<Dash> dashes = dashesOf(line);
    const auto spaced = [](const Dash& dash) { return dash.blankBefore && dash.blankAfter; };
    const auto dash = std::ranges::find_if(dashes, spaced);
    if (dash == dashes.end() || std::ranges::count_if(dashes, spaced) != 1)
        return std::string(line);
    const std::string_view first = trimmed(line.substr(0, dash->place));
    const std::string_view second = trimmed(line.substr(dash->place + dash->size));
    const auto plainFirst = unquoted(first);
    const auto plainSecond = unquoted(second);
    if (!plainFirst && !plainSecond)
        return std::string(line);
    return std::string(plainFirst.value_or(first)) + " " + std::string(line.substr(dash->place, dash->size)) +
           " " + std::string(plainSecond.value_or(second));
}

std::string withoutNote(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (!text.ends_with(')') && !text.ends_with(']'))
        return std::string(line);
    const std::size_t open = text.find_last_of(text.back() == ')' ? '(' : '[');
    if (open == std::string_view::npos || open == 0)
        return std::string(line);
    const std::string_view inside = text.substr(open + 1, text.size() - open - 2);
    const std::string note = normalize(inside);
    const bool isNote = note.empty() || notes.find("|" + note + "|") != std::string_view::npos;
    const std::string_view rest = trimmed(text.substr(0, open));
    if (!isNote || (isRead(line) && !isRead(rest)))
        return std::string(line);
    return std::string(rest);
}

std::string withDashForTab(std::string_view line) {
    const std::size_t first = line.find('\t');
    if (first == std::string_view::npos || isRead(line))
        return std::string(line);
    const std::size_t last = line.find_last_of('\t');
    const std::string_view left = trimmed(line.substr(0, first));
    const std::string_view right = trimmed(line.substr(last + 1));
    // A line with more than two columns stays unchanged, because a column may be a number or a length. If a
    // tab is beside a dash, it is treated as a space.
    const bool isOneGap = isBlank(line.substr(first, last - first + 1));
    const auto besideDash = [](std::string_view text) {
        const std::vector<Dash> dashes = dashesOf(text);
        return std::ranges::any_of(dashes, [text](const Dash& dash) {
            return dash.place == 0 || dash.place + dash.size == text.size();
        });
    };
    if (!isOneGap || left.empty() || right.empty() || besideDash(left) || besideDash(right))
        return std::string(line);
    const std::string result = std::string(left) + std::string(tidyDash) + std::string(right);
    return isRead(result) ? result : std::string(line);
}

std::string withSpacedDash(std::string_view line) {
    if (isRead(line))
        return std::string(line);
    const std::vector<Dash> dashes = dashesOf(line);
    // A hyphen between letters may belong to a name: ‘Jay-Z’.
    const auto mayPart = [line](const Dash& dash) {
        const std::size_t end = dash.place + dash.size;
        const bool betweenDigits =
            dash.place > 0 && end < line.size() && isDigit(line[dash.place - 1]) && isDigit(line[end]);
        return dash.place > 0 && end < line.size() && !betweenDigits &&
               (dash.isLong || dash.blankBefore || dash.blankAfter);
    };
    const auto dash = std::ranges::find_if(dashes, mayPart);
    if (dash == dashes.end() || std::ranges::count_if(dashes, mayPart) != 1)
        return std::string(line);
    const std::string_view left = trimmed(line.substr(0, dash->place));
    const std::string_view right = trimmed(line.substr(dash->place + dash->size));
    if (left.empty() || right.empty())
        return std::string(line);
    return std::string(left) + std::string(tidyDash) + std::string(right);
}

std::span<const NamedTidyRule> tidyRules() {
    return rules;
}

NumberedLine numberedLine(std::string_view line) {
    const NumberedLine none{-1, line};
    const std::string_view text = line.starts_with('#') ? line.substr(1) : line;
    std::size_t end = 0;
    while (end < text.size() && end < 4 && isDigit(text[end]))
        ++end;
    if (end == 0 || end == 4 || end == text.size())
        return none;
    NumberedLine result;
    std::from_chars(text.data(), text.data() + end, result.number);
    const std::string_view sign = text.substr(end);
    const bool isMarked = (sign[0] == '.' || sign[0] == ')' || sign[0] == ':') && sign.size() > 1 &&
                          (sign[1] == ' ' || sign[1] == '\t');
    if (!isMarked && sign[0] != '\t' && !(line.starts_with('#') && sign[0] == ' ') &&
        !sign.starts_with(" - "))
        return none;
    result.rest = trimmed(sign.substr(sign.starts_with(" - ") ? 3 : 1));
    // In ‘22 - Taylor Swift’, 22 is a title.
    if (result.rest.empty() || (sign.starts_with(" - ") && !isRead(result.rest)))
        return none;
    return result;
}

} // namespace orvalen
