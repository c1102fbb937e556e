#include "platform/desktop/DialogEnd.h"

#include <QFileDialog>
#include <QFileSystemModel>

namespace orvalen {
namespace {

/// A small folder that always answers and that no user visits.
const QString answeringFolder = QStringLiteral("/proc/self/ns");

} // namespace

void deleteWhenIdle(QFileDialog* dialog) {
    dialog->hide();
    auto* model = dialog->findChild<QFileSystemModel*>();
    if (!model)
        return dialog->deleteLater(); // the desktop's own dialog
    // The thread reads folders in the order of the requests, so this one is answered last.
    QObject::connect(model, &QFileSystemModel::directoryLoaded, dialog, [dialog](const QString& folder) {
        if (folder == answeringFolder)
            dialog->deleteLater();
    });
    model->setRootPath(answeringFolder);
}

} // namespace orvalen
