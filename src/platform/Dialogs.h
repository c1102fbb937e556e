#pragma once

#include "core/Location.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvalen {

enum class TypeFamily { mp3Audio, mpeg4Audio, wavAudio, movie, commaSeparatedText };

/// What may be chosen; both lists empty: anything.
struct AllowedTypes {
    std::vector<TypeFamily> families{};
    std::vector<std::string> extensions{}; ///< lower case, without the dot

    bool anything() const { return families.empty() && extensions.empty(); }
};

/// The dialogs remember one folder for each kind.
enum class FileKind { music, playlist, sessionOrLibrary, eventList };

struct OpenOptions {
    bool files = true;
    bool folders = false;
    bool several = false;
    AllowedTypes types{};
    std::string prompt{}; ///< of the confirming button; empty: the system's own
    std::string title{};  ///< of the window; empty: the prompt
    FileKind kind = FileKind::music;
    std::vector<Location> openIn{}; ///< the first that exists is shown; without one, the kind's last folder
};

struct SaveOptions {
    std::string proposedName{};
    std::string title{};   ///< empty: the system's own
    std::string message{}; ///< empty: none
    AllowedTypes types{};
    FileKind kind = FileKind::playlist;
};

/// The system's file dialogs and its modal message. Main thread. Modal calls return when the user is done;
/// posts and timers go on meanwhile.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    /// The chosen locations in the dialog's order; none when cancelled.
    virtual std::vector<Location> chooseToOpen(const OpenOptions& options) = 0;
    /// Returns at once; the answer arrives on the main thread.
    virtual void chooseToOpenLater(const OpenOptions& options,
                                   std::function<void(std::vector<Location>)> answer) = 0;
    /// The location to write to, over what stands there: the dialog has asked. None when cancelled. Where one
    /// extension is allowed and the user typed another or none, it is added; folders can be created.
    virtual std::optional<Location> chooseToSave(const SaveOptions& options) = 0;
    /// One button, "OK".
    virtual void showMessage(const std::string& title, const std::string& informativeText) = 0;
    /// Two buttons, `acceptText` and "Cancel", which is the default. True when accepted.
    virtual bool confirm(const std::string& title, const std::string& informativeText,
                         const std::string& acceptText) = 0;
};

} // namespace orvalen
