#pragma once

#include "platform/Dialogs.h"
#include "platform/desktop/DialogFolders.h"

class QFileDialog;

namespace orvalen {

/// Qt's file dialogs and message boxes. Dialogs open in the folder of the last chosen file of their kind,
/// else in the user's music folder, else in home. They stay above the focused window.
class QtDialogs : public Dialogs {
public:
    /// Remembers folders in `memoryFile`. With an empty name, only until the program ends.
    explicit QtDialogs(const std::string& memoryFile = {});

    std::vector<Location> chooseToOpen(const OpenOptions& options) override;
    void chooseToOpenLater(const OpenOptions& options,
                           std::function<void(std::vector<Location>)> answer) override;
    std::optional<Location> chooseToSave(const SaveOptions& options) override;
    void showMessage(const std::string& title, const std::string& informativeText) override;
    bool confirm(const std::string& title, const std::string& informativeText,
                 const std::string& acceptText) override;

private:
    QString firstFolder(const OpenOptions& options) const;
    std::vector<Location> remembered(FileKind kind, const QFileDialog& dialog, const QStringList& chosen);

    DialogFolders folders_;
};

} // namespace orvalen
