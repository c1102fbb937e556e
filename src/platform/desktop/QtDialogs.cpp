#include "platform/desktop/QtDialogs.h"

#include "platform/desktop/DialogEnd.h"
#include "platform/desktop/DialogLook.h"
#include "platform/desktop/FileTypes.h"
#include "platform/desktop/LocationDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>
#include <QStandardPaths>
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
void placeOverWindow(QWidget& dialog) {
    QWindow* parent = windowInFront();
    dialog.winId(); // makes the window handle
    dialog.windowHandle()->setTransientParent(parent);
    dialog.setAccessibleName(dialog.windowTitle());
}

std::vector<Location> locations(const QStringList& paths) {
    std::vector<Location> result;
    for (const QString& path : paths)
        result.push_back(Location{path.toStdString()});
    return result;
}

/// Completes a typed name where one extension is allowed: under another, nobody could choose the file again.
class SaveDialog : public QFileDialog {
public:
    explicit SaveDialog(const AllowedTypes& types) {
        if (const auto extensions = extensionsOf(types); extensions.size() == 1)
            ending_ = '.' + QString::fromStdString(extensions.front());
    }

    void accept() override {
        auto* field = findChild<QLineEdit*>("fileNameEdit");
        const QString name = field->text();
        const bool isFolder = QFileInfo(directory(), name).isDir();
        if (!name.isEmpty() && !isFolder && !name.endsWith(ending_, Qt::CaseInsensitive))
            field->setText(name + ending_);
        QFileDialog::accept();
    }

private:
    QString ending_;
};

/// A message over the program's window.
class MessageBox : public QMessageBox {
public:
    MessageBox(const std::string& title, const std::string& informativeText, StandardButton button)
        : QMessageBox(NoIcon, QString::fromStdString(title), QString::fromStdString(title), button) {
        setInformativeText(QString::fromStdString(informativeText));
        setDefaultButton(button);
        setEscapeButton(button);
    }

    /// Returns when the user has answered.
    void ask() {
        prepareDialog(*this);
        placeOverWindow(*this);
        exec();
    }
};

} // namespace

QtDialogs::QtDialogs() {
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    folder_ = (QFileInfo(music).isDir() ? music : QDir::homePath()).toStdString();
    // Nobody else draws pixmaps, and every file dialog leaves its symbols in the cache: ten megabytes, by
    // default.
    QPixmapCache::setCacheLimit(1024);
}

/// The next dialog opens where something was chosen last.
std::vector<Location> QtDialogs::remembered(const QFileDialog& dialog, std::vector<Location> chosen) {
    if (chosen.empty())
        return chosen;
    const QString shown = dialog.directory().absolutePath();
    const QString first = QString::fromStdString(chosen.front().path);
    // A path that was typed may lead elsewhere.
    const QString parent = QFileInfo(first).absolutePath();
    folder_ = (first == shown ? shown : parent).toStdString();
    return chosen;
}

std::vector<Location> QtDialogs::chooseToOpen(const OpenOptions& options) {
    const OwnedDialog<LocationDialog> owned(new LocationDialog(options, QString::fromStdString(folder_)));
    LocationDialog& dialog = *owned;
    prepareDialog(dialog);
    placeOverWindow(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return remembered(dialog, locations(dialog.chosen()));
}

void QtDialogs::chooseToOpenLater(const OpenOptions& options,
                                  std::function<void(std::vector<Location>)> answer) {
    auto* dialog = new LocationDialog(options, QString::fromStdString(folder_));
    prepareDialog(*dialog);
    placeOverWindow(*dialog);
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [this, dialog, answer = std::move(answer)](int code) {
                         answer(code == QDialog::Accepted ? remembered(*dialog, locations(dialog->chosen()))
                                                          : std::vector<Location>());
                         deleteWhenIdle(dialog);
                     });
    dialog->show();
}

std::optional<Location> QtDialogs::chooseToSave(const SaveOptions& options) {
    const OwnedDialog<SaveDialog> owned(new SaveDialog(options.types));
    SaveDialog& dialog = *owned;
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
        addMessage(dialog, QString::fromStdString(options.message));
    prepareDialog(dialog);
    placeOverWindow(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return remembered(dialog, {Location{dialog.selectedFiles().constFirst().toStdString()}}).front();
}

void QtDialogs::showMessage(const std::string& title, const std::string& informativeText) {
    MessageBox(title, informativeText, QMessageBox::Ok).ask();
}

bool QtDialogs::confirm(const std::string& title, const std::string& informativeText,
                        const std::string& acceptText) {
    MessageBox box(title, informativeText, QMessageBox::Cancel);
    const QAbstractButton* accept =
        box.addButton(QString::fromStdString(acceptText), QMessageBox::AcceptRole);
    box.ask();
    return box.clickedButton() == accept;
}

} // namespace orvalen
