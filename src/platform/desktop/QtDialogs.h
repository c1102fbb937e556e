#pragma once

#include "platform/Dialogs.h"

class QFileDialog;

namespace orvalen {

/// Qt's file dialogs and message box. They open in the folder of the last answer of this run, else in the
/// user's music folder, else at home, and stay above the window that has the focus.
class QtDialogs : public Dialogs {
public:
    QtDialogs();

    std::vector<Location> chooseToOpen(const OpenOptions& options) override;
    void chooseToOpenLater(const OpenOptions& options,
                           std::function<void(std::vector<Location>)> answer) override;
    std::optional<Location> chooseToSave(const SaveOptions& options) override;
    void showMessage(const std::string& title, const std::string& informativeText) override;
    bool confirm(const std::string& title, const std::string& informativeText,
                 const std::string& acceptText) override;

private:
    std::vector<Location> remembered(const QFileDialog& dialog, std::vector<Location> chosen);

    std::string folder_; ///< where the next dialog opens
};

} // namespace orvalen
