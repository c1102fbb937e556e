#pragma once

#include "platform/Dialogs.h"

#include <QMap>
#include <QString>

namespace orvalen {

/// Remembers, for each kind of file, the folder of the last chosen file. Dialogs open in it, also after a
/// restart. Main thread.
class DialogFolders {
public:
    /// Stores the folders in `file`. With an empty name, or if the file cannot be read or written, folders
    /// are remembered until the program ends.
    explicit DialogFolders(QString file) : file_(std::move(file)) {}

    /// Returns the remembered folder if it exists, else the user's music folder, else home.
    QString folder(FileKind kind) const;
    void remember(FileKind kind, const QString& folder);

private:
    QString file_;
    QMap<QString, QString> ofThisRun_;
};

} // namespace orvalen
