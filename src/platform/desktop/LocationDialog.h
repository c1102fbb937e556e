#pragma once

#include "platform/Dialogs.h"

#include <QFileDialog>
#include <QStringList>

class QItemSelectionModel;
class QLineEdit;

namespace orvalen {

/// The open dialog: Qt's own, which also takes folders beside files where the options say so. A folder that
/// is marked and confirmed is chosen, a double click still enters it, and with nothing marked the folder
/// that is shown is the choice. Only what the options allow is ever accepted, typed paths included.
class LocationDialog : public QFileDialog {
public:
    LocationDialog(const OpenOptions& options, const QString& folder);

    /// What was accepted, absolute, in the dialog's order.
    const QStringList& chosen() const { return chosen_; }
    void accept() override;

    /// Whether a native dialog, which closes by itself, was closed over a file that cannot be chosen; says
    /// so, and the caller shows the dialog again.
    bool refused();

private:
    void followSelection();
    QStringList selectedPaths() const;
    QString selectionText() const;
    QStringList typedPaths() const;
    QStringList candidates() const;
    bool isAcceptable(const QString& path);

    OpenOptions options_;
    // Both belong to the dialog; without them it is a native one and looks after itself.
    QLineEdit* nameField_ = nullptr;
    QItemSelectionModel* selection_ = nullptr;
    QString shownSelection_; ///< what the name field last showed of the selection
    QStringList chosen_;
    QString refused_; ///< what a native dialog took and may not be chosen
};

} // namespace orvalen
