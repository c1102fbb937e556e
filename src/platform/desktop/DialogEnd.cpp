#include "platform/desktop/DialogEnd.h"

#include <QFileDialog>
#include <QFileSystemModel>

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
    // The thread reads folders in the order of requests, so this folder is reported last.
    QObject::connect(model, &QFileSystemModel::directoryLoaded, dialog, [dialog](const QString& folder) {
        if (folder == answeringFolder)
            dialog->deleteLater();
    });
    model->setRootPath(answeringFolder);
}

} // namespace orvalen
