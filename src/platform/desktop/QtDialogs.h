#pragma once

#include "platform/Dialogs.h"
#include "platform/desktop/DialogFolders.h"

class QFileDialog;

namespace orvalen {

/// Qt's file dialogs and message box. They open in the folder of the last answer for files of their kind,
/// else in the user's music folder, else at home, and stay above the window that has the focus.
class QtDialogs : public Dialogs {
public:
    /// The folders are remembered in the file, across restarts; with an empty name for this run only.
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
