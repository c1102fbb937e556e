#include "platform/desktop/DialogEnd.h"

#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QUrl>

namespace orvalen {
namespace {

/// A small folder that can always be read and that no user opens.
const QString answeringFolder = QStringLiteral("/proc/self/ns");

} // namespace

void deleteWhenIdle(QFileDialog* dialog) {
    dialog->hide();
    auto* model = dialog->findChild<QFileSystemModel*>();
    if (!model)
        return dialog->deleteLater(); // a native dialog
    // Qt opens the next dialog with the last folder and the side bar of this one. Both may be on a drive that
    // does not answer.
    const QString home = QDir::homePath();
    dialog->setDirectory(home);
    dialog->setSidebarUrls({QUrl("file:"), QUrl::fromLocalFile(home)});
    // The thread reads folders in the order of requests, so this folder is reported last.
    QObject::connect(model, &QFileSystemModel::directoryLoaded, dialog, [dialog](const QString& folder) {
        if (folder == answeringFolder)
            dialog->deleteLater();
    });
    model->setRootPath(answeringFolder);
}

} // namespace orvalen
