#include "support/FakeDialogs.h"

#include <stdexcept>

namespace orvalen::test {
namespace {

std::vector<Location> locations(std::vector<std::string> paths) {
    std::vector<Location> result;
    for (std::string& path : paths)
        result.push_back(Location{std::move(path)});
    return result;
}

} // namespace

std::vector<Location> FakeDialogs::chooseToOpen(const OpenOptions& options) {
    opened.push_back(options);
    if (whileOpen)
        whileOpen();
    if (openAnswers_.empty())
        return {};
    auto answer = std::move(openAnswers_.front());
    openAnswers_.pop_front();
    return answer;
}

void FakeDialogs::chooseToOpenLater(const OpenOptions& options,
                                    std::function<void(std::vector<Location>)> answer) {
    opened.push_back(options);
    waiting_.push_back(std::move(answer));
}

std::optional<Location> FakeDialogs::chooseToSave(const SaveOptions& options) {
    saved.push_back(options);
    if (whileOpen)
        whileOpen();
    if (saveAnswers_.empty())
        return std::nullopt;
    auto answer = std::move(saveAnswers_.front());
    saveAnswers_.pop_front();
    return answer;
}

void FakeDialogs::showMessage(const std::string& title, const std::string& informativeText) {
    messages.push_back({title, informativeText});
    if (whileOpen)
        whileOpen();
}

bool FakeDialogs::confirm(const std::string& title, const std::string& informativeText, const std::string&) {
    questions.push_back({title, informativeText});
    return confirms;
}

void FakeDialogs::willOpen(std::vector<std::string> paths) {
    openAnswers_.push_back(locations(std::move(paths)));
}

void FakeDialogs::willSaveTo(std::string path) {
    saveAnswers_.push_back(Location{std::move(path)});
}

void FakeDialogs::answerLater(std::vector<std::string> paths) {
    if (waiting_.empty())
        throw std::logic_error("no dialog is open");
    auto answer = std::move(waiting_.front());
    waiting_.pop_front();
    answer(locations(std::move(paths)));
}

} // namespace orvalen::test
