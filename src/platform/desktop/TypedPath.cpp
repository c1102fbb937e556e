#include "platform/desktop/TypedPath.h"

#include <QFileDialog>

namespace orvalen {

QString typedPath(const QFileDialog& dialog, const QString& typed) {
    QString path = typed;
    if (path == "~" || path.startsWith("~/"))
        path.replace(0, 1, QDir::homePath());
    return QDir::cleanPath(dialog.directory().absoluteFilePath(path));
}

} // namespace orvalen
