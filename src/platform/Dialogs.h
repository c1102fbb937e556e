#pragma once

#include "core/Location.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvalen {

enum class TypeFamily { mp3Audio, mpeg4Audio, wavAudio, movie, commaSeparatedText };

/// The files that may be chosen. Any file if both lists are empty.
struct AllowedTypes {
    std::vector<TypeFamily> families{};
    std::vector<std::string> extensions{}; ///< lower case, without the dot

    bool anything() const { return families.empty() && extensions.empty(); }
};

/// Dialogs remember the last folder for each kind.
enum class FileKind { music, playlist, sessionOrLibrary, eventList };

struct OpenOptions {
    bool files = true;
    bool folders = false;
    bool several = false;
    AllowedTypes types{};
    std::string prompt{}; ///< label of the confirming button; empty: the system's own
    std::string title{};  ///< title of the window; empty: the prompt
    FileKind kind = FileKind::music;
    std::vector<Location>
        openIn{}; ///< the first existing one is shown; if none exists, the last folder of the kind
};

struct SaveOptions {
    std::string proposedName{};
    std::string title{};   ///< empty: the system's own
    std::string message{}; ///< shown above the files; empty: none
    AllowedTypes types{};
    FileKind kind = FileKind::playlist;
};

/// The system's file dialogs and modal messages. Main thread. Modal functions return when the user has
/// answered; posts and timers run in the meantime.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    /// Returns the chosen locations in the dialog's order; empty if cancelled.
    virtual std::vector<Location> chooseToOpen(const OpenOptions& options) = 0;
    /// Shows the dialog and returns at once. Calls `answer` later on the main thread, with an empty list if
    /// cancelled.
    virtual void chooseToOpenLater(const OpenOptions& options,
                                   std::function<void(std::vector<Location>)> answer) = 0;
    /// Returns the location to write to, or nullopt if cancelled. The dialog has asked before a file is
    /// replaced. If exactly one extension is allowed, it is added to names without it. The user can create
    /// folders.
    virtual std::optional<Location> chooseToSave(const SaveOptions& options) = 0;
    /// Shows a message with the button "OK".
    virtual void showMessage(const std::string& title, const std::string& informativeText) = 0;
    /// Asks a question with the buttons `acceptText` and "Cancel" (the default). Returns whether it was
    /// accepted.
    virtual bool confirm(const std::string& title, const std::string& informativeText,
                         const std::string& acceptText) = 0;
};

} // namespace orvalen
