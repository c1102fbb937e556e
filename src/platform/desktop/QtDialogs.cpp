#include "platform/desktop/QtDialogs.h"

#include "platform/desktop/FileTypes.h"
#include "platform/desktop/LocationDialog.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTreeView>
#include <QWindow>

namespace orvalen {

namespace {

bool isOrdinary(const QWindow* window) {
    return window && window->isVisible() && (window->type() == Qt::Window || window->type() == Qt::Dialog);
}

/// The window that a dialog belongs over: the one with the focus, else any ordinary one.
QWindow* windowInFront() {
    if (QWindow* focused = QGuiApplication::focusWindow(); isOrdinary(focused))
        return focused;
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (isOrdinary(window))
            return window;
    return nullptr;
}

/// Puts the dialog over the program's window, which is no widget and so cannot be its parent.
void settle(QWidget& dialog) {
    QWindow* parent = windowInFront();
    dialog.winId(); // makes the window handle
    dialog.windowHandle()->setTransientParent(parent);
    dialog.setAccessibleName(dialog.windowTitle());
}

/// A line above the dialog's own content.
void addMessage(QDialog& dialog, const std::string& message) {
    auto* label = new QLabel(QString::fromStdString(message), &dialog);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setContentsMargins(9, 9, 9, 0);
    dialog.layout()->setMenuBar(label);
}

std::vector<Location> locations(const QStringList& paths) {
    std::vector<Location> result;
    for (const QString& path : paths)
        result.push_back(Location{path.toStdString()});
    return result;
}

/// The list of a dialog that is not the system's own: names in full, and dates that are not cut off.
void arrange(QFileDialog& dialog) {
    dialog.resize(760, 520);
    dialog.setViewMode(QFileDialog::Detail);
    const auto* list = dialog.findChild<QTreeView*>("treeView");
    if (!list)
        return;
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

} // namespace

QtDialogs::QtDialogs() {
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    folder_ = (QFileInfo(music).isDir() ? music : QDir::homePath()).toStdString();
}

std::vector<Location> QtDialogs::chooseToOpen(const OpenOptions& options) {
    LocationDialog dialog(options, QString::fromStdString(folder_));
    arrange(dialog);
    settle(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    folder_ = dialog.directory().absolutePath().toStdString();
    return locations(dialog.chosen());
}

void QtDialogs::chooseToOpenLater(const OpenOptions& options,
                                  std::function<void(std::vector<Location>)> answer) {
    auto* dialog = new LocationDialog(options, QString::fromStdString(folder_));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    arrange(*dialog);
    settle(*dialog);
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [this, dialog, answer = std::move(answer)](int code) {
                         if (code == QDialog::Accepted)
                             folder_ = dialog->directory().absolutePath().toStdString();
                         answer(locations(dialog->chosen()));
                     });
    dialog->show();
}

std::optional<Location> QtDialogs::chooseToSave(const SaveOptions& options) {
    QFileDialog dialog;
    // Native dialogs may add an extension of their own and have no place for the message.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDirectory(QString::fromStdString(folder_));
    if (!options.types.anything())
        dialog.setNameFilter(QString::fromStdString(nameFilter(options.types)));
    dialog.selectFile(QString::fromStdString(options.proposedName));
    dialog.setWindowTitle(options.title.empty() ? QStringLiteral("Save")
                                                : QString::fromStdString(options.title));
    if (!options.message.empty())
        addMessage(dialog, options.message);
    arrange(dialog);
    settle(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    folder_ = dialog.directory().absolutePath().toStdString();
    return Location{dialog.selectedFiles().constFirst().toStdString()};
}

void QtDialogs::showMessage(const std::string& title, const std::string& informativeText) {
    QMessageBox box(QMessageBox::Information, QString::fromStdString(title), QString::fromStdString(title),
                    QMessageBox::Ok);
    box.setInformativeText(QString::fromStdString(informativeText));
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    if (auto* heading = box.findChild<QLabel*>("qt_msgbox_label")) {
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
    }
    settle(box);
    box.exec();
}

} // namespace orvalen
