#include "platform/desktop/SaveDialog.h"

#include "platform/desktop/DialogLook.h"
#include "platform/desktop/FileTypes.h"
#include "platform/desktop/TypedPath.h"
#include "platform/system/PathKind.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>

namespace orvalen {

SaveDialog::SaveDialog(const SaveOptions& options, const QString& folder) {
    // Native dialogs may add another extension and cannot show the message.
    setOption(DontUseNativeDialog);
    setOption(HideNameFilterDetails);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setDirectory(folder);
    if (!options.types.anything())
        setNameFilter(QString::fromStdString(nameFilter(options.types)));
    if (const auto extensions = extensionsOf(options.types); extensions.size() == 1)
        ending_ = '.' + QString::fromStdString(extensions.front());
    nameField_ = findChild<QLineEdit*>("fileNameEdit");
    nameField_->setText(QString::fromStdString(options.proposedName));
    setWindowTitle(options.title.empty() ? tr("Save") : QString::fromStdString(options.title));
    if (!options.message.empty())
        addMessage(*this, QString::fromStdString(options.message));
}

bool SaveDialog::mayReplace(const QString& path) {
    if (pathKind(path.toStdString()) == PathKind::absent)
        return true;
    QMessageBox box(QMessageBox::NoIcon, windowTitle(),
                    tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName()),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    prepareDialog(box);
    return box.exec() == QMessageBox::Yes;
}

void SaveDialog::accept() {
    const QString name = nameField_->text();
    if (name.isEmpty())
        return;
    QString path = typedPath(*this, name);
    if (pathKind(path.toStdString()) == PathKind::folder) {
        setDirectory(path);
        nameField_->clear();
        return;
    }
    if (!path.endsWith(ending_, Qt::CaseInsensitive))
        path += ending_;
    const QString folder = QFileInfo(path).absolutePath();
    const auto kind = pathKind(folder.toStdString());
    if (!kind)
        return explain(*this, tr(noAnswer).arg(folder));
    if (name.endsWith('/') || kind != PathKind::folder) {
        explain(*this, tr("The folder\n%1\nwas not found.").arg(name.endsWith('/') ? path : folder));
        return;
    }
    if (!mayReplace(path))
        return;
    chosen_ = path;
    done(Accepted);
}

} // namespace orvalen
