#pragma once

#include "platform/Dialogs.h"

#include <QFileDialog>

class QLineEdit;

namespace orvalen {

/// Qt's save dialog, with the name field read as one name: Qt's own reading takes quotation marks for marks
/// around several names. Where one extension is allowed, a name without it gets it.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(const SaveOptions& options, const QString& folder);

    /// What was accepted, absolute; empty before.
    const QString& chosen() const { return chosen_; }
    void accept() override;

private:
    bool mayReplace(const QString& path);

    QLineEdit* nameField_;
    QString ending_; ///< the one allowed extension with its dot, or empty
    QString chosen_;
};

} // namespace orvalen
