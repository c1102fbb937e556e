#pragma once

#include "platform/Dialogs.h"

#include <QFileDialog>

class QLineEdit;

namespace orvalen {

/// Qt's save dialog. Reads the name field as one name; Qt would take quotation marks for several names. If
/// exactly one extension is allowed, adds it to names without it.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(const SaveOptions& options, const QString& folder);

    /// Returns the accepted absolute path; empty before.
    const QString& chosen() const { return chosen_; }
    void accept() override;

private:
    bool mayReplace(const QString& path);

    QLineEdit* nameField_;
    QString ending_; ///< the allowed extension with its dot, or empty
    QString chosen_;
};

} // namespace orvalen
