#pragma once

#include "platform/Dialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvalen::test {

/// Dialogs with scripted answers that record their arguments. Without a scripted answer, a dialog is
/// cancelled.
class FakeDialogs : public Dialogs {
public:
    std::vector<Location> chooseToOpen(const OpenOptions& options) override {
        opened.push_back(options);
        return next(openAnswers_);
    }
    void chooseToOpenLater(const OpenOptions& options,
                           std::function<void(std::vector<Location>)> then) override {
        opened.push_back(options);
        waiting_.push_back(std::move(then));
    }
    std::optional<Location> chooseToSave(const SaveOptions& options) override {
        saved.push_back(options);
        return next(saveAnswers_);
    }
    void showMessage(const std::string& title, const std::string& informativeText) override {
        messages.push_back({title, informativeText});
        if (whileOpen)
            whileOpen();
    }
    bool confirm(const std::string& title, const std::string& informativeText, const std::string&) override {
        questions.push_back({title, informativeText});
        return confirms;
    }

    void willOpen(const std::vector<std::string>& paths) { openAnswers_.push_back(locations(paths)); }
    void willSaveTo(std::string path) { saveAnswers_.emplace_back(Location{std::move(path)}); }
    /// Answers the oldest non-blocking dialog that is still open.
    void answerLater(const std::vector<std::string>& paths) {
        if (waiting_.empty())
            throw std::logic_error("no dialog is open");
        const auto then = std::move(waiting_.front());
        waiting_.pop_front();
        then(locations(paths));
    }

    struct Message {
        std::string title;
        std::string text;
    };

    std::vector<OpenOptions> opened;
    std::vector<SaveOptions> saved;
    std::vector<Message> messages;
    std::vector<Message> questions;
    bool confirms = false; ///< the answer to every question
    /// Runs while a modal dialog is open, before it is answered.
    std::function<void()> whileOpen;

private:
    static std::vector<Location> locations(const std::vector<std::string>& paths) {
        std::vector<Location> result;
        for (const std::string& path : paths)
            result.push_back(Location{path});
        return result;
    }
    template <typename Answer>
    Answer next(std::deque<Answer>& answers) {
        if (whileOpen)
            whileOpen();
        if (answers.empty())
            return {};
        Answer first = std::move(answers.front());
        answers.pop_front();
        return first;
    }

    std::deque<std::vector<Location>> openAnswers_;
    std::deque<std::optional<Location>> saveAnswers_;
    std::deque<std::function<void(std::vector<Location>)>> waiting_;
};

} // namespace orvalen::test
