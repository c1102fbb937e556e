#pragma once

#include "platform/Dialogs.h"

#include <QMap>
#include <QString>

namespace orvalen {

/// The folder in which the dialogs of each kind open: where a file of that kind was chosen last, in this run
/// or an earlier one. Main thread.
class DialogFolders {
public:
    /// Reads and writes the file; with an empty name the folders last for this run. A file that cannot be
    /// read or written counts as empty.
    explicit DialogFolders(QString file) : file_(std::move(file)) {}

    /// The user's music folder, or home, while no folder is known or the known one does not exist.
    QString folder(FileKind kind) const;
    void remember(FileKind kind, const QString& folder);

private:
    QString file_;
    QMap<QString, QString> ofThisRun_;
};

} // namespace orvalen
