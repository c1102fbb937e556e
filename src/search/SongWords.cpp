#include "search/SongWords.h"

#include "core/Keys.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvalen {
namespace {

using namespace std::string_view_literals;

constexpr std::array apostrophes = {"'"sv, "\u2019"sv, "\u2018"sv, "`"sv, "\u00B4"sv};
constexpr std::array spacedDashes = {" - "sv, " \u2013 "sv, " \u2014 "sv};
constexpr std::array articles = {"the"sv, "a"sv, "an"sv, "and"sv};

constexpr std::array<std::pair<std::string_view, std::string_view>, 18> commonForms = {{
    {"u", "you"},
    {"ur", "your"},
    {"r", "are"},
    {"n", "and"},
    {"und", "and"},
    {"mister", "mr"},
    {"misses", "mrs"},
    {"saint", "st"},
    {"two", "2"},
    {"three", "3"},
    {"four", "4"},
    {"five", "5"},
    {"six", "6"},
    {"seven", "7"},
    {"eight", "8"},
    {"nine", "9"},
    {"ten", "10"},
    {"vs", "and"},
}};

bool isLetter(char c) {
    // Bytes of other scripts and of accented letters count as letters.
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

bool isGuestSign(std::string_view word) {
    return word == "feat" || word == "ft" || word == "featuring";
}

/// Removes apostrophes inside words and replaces ‘$’ and ‘!’ inside words by the letters that they stand for.
std::string spelledOut(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::string_view rest = text.substr(i);
        const auto mark = std::ranges::find_if(
            apostrophes, [rest](std::string_view apostrophe) { return rest.starts_with(apostrophe); });
        const bool afterLetter = !result.empty() && isLetter(result.back());
        const std::size_t length = mark == apostrophes.end() ? 1 : mark->size();
        const bool beforeLetter = length < rest.size() && isLetter(rest[length]);
        if (mark != apostrophes.end() && afterLetter && beforeLetter)
            i += length;
        else if (mark == apostrophes.end() && afterLetter && beforeLetter &&
                 (rest[0] == '$' || rest[0] == '!'))
            result.push_back(rest[0] == '$' ? 's' : 'i'), ++i;
        else
            result.append(rest.substr(0, length)), i += length;
    }
    return result;
}

/// Collects the words of one text, piece by piece.
class WordCollector {
public:
    /// Adds the words of a piece: the text up to a bracket or a spaced dash.
    void addPiece(std::string_view piece, bool isAside) {
        normalizeInto(normalized_, piece);
        bool afterGuestSign = false;
        bool joinsLetters = false;
        for (std::string_view rest = normalized_; !rest.empty();) {
            const std::size_t end = std::min(rest.find(' '), rest.size());
            const std::string_view word = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
            const bool isSingle = word.size() == 1 && isLetter(word[0]);
            if (isGuestSign(word)) {
                afterGuestSign = true;
            } else if (isSingle && joinsLetters) {
                words_.back().text += word;
            } else {
                add(word, afterGuestSign ? WordRole::guest : isAside ? WordRole::aside : WordRole::plain);
            }
            joinsLetters = isSingle;
        }
    }

    std::vector<SongWord> finish() {
        for (SongWord& word : words_) {
            const auto* form = std::ranges::find(commonForms, std::string_view(word.text),
                                                 &std::pair<std::string_view, std::string_view>::first);
            if (form != commonForms.end())
                word.text = form->second;
            if (std::ranges::find(articles, std::string_view(word.text)) != articles.end())
                word.role = WordRole::article;
        }
        return std::move(words_);
    }

private:
    void add(std::string_view word, WordRole role) { words_.push_back({std::string(word), role}); }

    std::string normalized_;
    std::vector<SongWord> words_;
};

} // namespace

std::vector<SongWord> songWords(std::string_view text) {
    const std::string spelled = spelledOut(text);
    WordCollector words;
    std::size_t start = 0;
    int depth = 0;
    bool afterDash = false;
    const auto cut = [&](std::size_t end) {
        words.addPiece(std::string_view(spelled).substr(start, end - start), depth > 0 || afterDash);
        start = end;
    };
    for (std::size_t i = 0; i < spelled.size(); ++i) {
        const char c = spelled[i];
        const std::string_view rest = std::string_view(spelled).substr(i);
        if (c == '(' || c == '[') {
            cut(i);
            ++depth;
        } else if (c == ')' || c == ']') {
            cut(i);
            depth = std::max(0, depth - 1);
        } else if (c == ' ' && std::ranges::any_of(spacedDashes, [rest](std::string_view dash) {
                       return rest.starts_with(dash);
                   })) {
            cut(i);
            afterDash = true;
        }
    }
    cut(spelled.size());
    return words.finish();
}

} // namespace orvalen
