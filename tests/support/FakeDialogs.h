#pragma once

#include "platform/Dialogs.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvalen::test {

/// Dialogs that answer from a script and keep what they were asked. An answer that was not scripted is a
/// cancel.
class FakeDialogs : public Dialogs {
public:
    std::vector<Location> chooseToOpen(const OpenOptions& options) override;
    void chooseToOpenLater(const OpenOptions& options,
                           std::function<void(std::vector<Location>)> answer) override;
    std::optional<Location> chooseToSave(const SaveOptions& options) override;
    void showMessage(const std::string& title, const std::string& informativeText) override;
    bool confirm(const std::string& title, const std::string& informativeText,
                 const std::string& acceptText) override;

    void willOpen(std::vector<std::string> paths);
    void willSaveTo(std::string path);
    /// Answers the oldest non-blocking dialog that is still open.
    void answerLater(std::vector<std::string> paths);

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
    std::deque<std::vector<Location>> openAnswers_;
    std::deque<Location> saveAnswers_;
    std::deque<std::function<void(std::vector<Location>)>> waiting_;
};

} // namespace orvalen::test
