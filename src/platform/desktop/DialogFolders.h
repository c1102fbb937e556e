#pragma once

#include "platform/Dialogs.h"

#include <QMap>
#include <QString>

namespace orvalen {

/// The folder in which dialogs of each kind open: the folder of the last file chosen, also in earlier runs.
/// Main thread.
class DialogFolders {
public:
    /// Reads and writes `file`. With an empty name, folders are remembered until the program ends. A file
    /// that cannot be read or written counts as empty.
    explicit DialogFolders(QString file) : file_(std::move(file)) {}

    /// Returns the user's music folder, or home, if no existing folder is known.
    QString folder(FileKind kind) const;
    void remember(FileKind kind, const QString& folder);

private:
    QString file_;
    QMap<QString, QString> ofThisRun_;
};

} // namespace orvalen
