#pragma once

#include "platform/Dialogs.h"

#include <QFileDialog>
#include <QStringList>

class QItemSelectionModel;
class QLineEdit;

namespace orvalen {

/// Qt's dialog for opening. If the options allow folders, it accepts files and folders together. The button
/// chooses a selected folder; a double click enters it. Without a selection, the shown folder is chosen.
/// Accepts only what the options allow, also for typed paths.
class LocationDialog : public QFileDialog {
public:
    LocationDialog(const OpenOptions& options, const QString& folder);

    /// Returns the accepted absolute paths, in the dialog's order.
    const QStringList& chosen() const { return chosen_; }
    void accept() override;

    /// Returns whether a native dialog was closed with a file that may not be chosen. In this case, shows a
    /// message first. The caller must then show the dialog again.
    bool refused();

private:
    void followSelection();
    QStringList selectedPaths() const;
    QString selectionText() const;
    QStringList typedPaths() const;
    QStringList candidates() const;
    bool isAcceptable(const QString& path);

    OpenOptions options_;
    // Children of the dialog. Null if the dialog is a native one.
    QLineEdit* nameField_ = nullptr;
    QItemSelectionModel* selection_ = nullptr;
    QString shownSelection_; ///< the selection that the name field showed last
    QStringList chosen_;
    QString refused_; ///< a file that a native dialog accepted and that may not be chosen
};

} // namespace orvalen
