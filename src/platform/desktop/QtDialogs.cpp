#include "platform/desktop/QtDialogs.h"

#include "platform/desktop/DialogEnd.h"
#include "platform/desktop/DialogLook.h"
#include "platform/desktop/LocationDialog.h"
#include "platform/desktop/SaveDialog.h"
#include "platform/system/PathKind.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPushButton>
#include <QWindow>

namespace orvalen {

namespace {

bool isOrdinary(const QWindow* window) {
    return window && window->isVisible() && (window->type() == Qt::Window || window->type() == Qt::Dialog);
}

/// Returns the window for a new dialog to stay above: the focused one, else any ordinary one.
QWindow* windowInFront() {
    if (QWindow* focused = QGuiApplication::focusWindow(); isOrdinary(focused))
        return focused;
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (isOrdinary(window))
            return window;
    return nullptr;
}

/// Keeps the dialog above the program's window, which is not a widget and cannot be its parent.
void placeOverWindow(QWidget& dialog) {
    QWindow* parent = windowInFront();
    dialog.winId(); // creates the window handle
    dialog.windowHandle()->setTransientParent(parent);
    dialog.setAccessibleName(dialog.windowTitle());
}

std::vector<Location> locations(const QStringList& paths) {
    std::vector<Location> result;
    for (const QString& path : paths)
        result.push_back(Location{path.toStdString()});
    return result;
}

/// A message above the program's window.
class MessageBox : public QMessageBox {
public:
    MessageBox(const std::string& title, const std::string& informativeText, StandardButton button)
        : QMessageBox(NoIcon, QString::fromStdString(title), QString::fromStdString(title), button) {
        setInformativeText(QString::fromStdString(informativeText));
        setDefaultButton(button);
        setEscapeButton(button);
    }

    /// Shows the message and returns when the user has answered.
    void ask() {
        prepareDialog(*this);
        placeOverWindow(*this);
        exec();
    }
};

} // namespace

QtDialogs::QtDialogs(const std::string& memoryFile) : folders_(QString::fromStdString(memoryFile)) {
    // Only file dialogs use pixmaps, and each leaves its symbols in the cache, which is 10 MB by default.
    QPixmapCache::setCacheLimit(1024);
}

QString QtDialogs::firstFolder(const OpenOptions& options) const {
    for (const Location& folder : options.openIn)
        if (pathKind(folder.path) == PathKind::folder)
            return QString::fromStdString(folder.path);
    return folders_.folder(options.kind);
}

/// Remembers the folder of the first chosen path and returns all chosen paths. A typed path can be outside
/// the folder that the dialog shows.
std::vector<Location> QtDialogs::remembered(FileKind kind, const QFileDialog& dialog,
                                            const QStringList& chosen) {
    if (!chosen.isEmpty()) {
        const QString shown = dialog.directory().absolutePath();
        const QString& first = chosen.constFirst();
        folders_.remember(kind, first == shown ? shown : QFileInfo(first).absolutePath());
    }
    return locations(chosen);
}

std::vector<Location> QtDialogs::chooseToOpen(const OpenOptions& options) {
    const OwnedDialog<LocationDialog> owned(new LocationDialog(options, firstFolder(options)));
    LocationDialog& dialog = *owned;
    prepareDialog(dialog);
    placeOverWindow(dialog);
    do {
        if (dialog.exec() != QDialog::Accepted)
            return {};
    } while (dialog.refused());
    return remembered(options.kind, dialog, dialog.chosen());
}

void QtDialogs::chooseToOpenLater(const OpenOptions& options,
                                  std::function<void(std::vector<Location>)> answer) {
    auto* dialog = new LocationDialog(options, firstFolder(options));
    prepareDialog(*dialog);
    placeOverWindow(*dialog);
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [this, dialog, kind = options.kind, answer = std::move(answer)](int code) {
                         if (code != QDialog::Accepted)
                             answer({});
                         else if (dialog->refused())
                             return dialog->show();
                         else
                             answer(remembered(kind, *dialog, dialog->chosen()));
                         deleteWhenIdle(dialog);
                     });
    dialog->show();
}

std::optional<Location> QtDialogs::chooseToSave(const SaveOptions& options) {
    const OwnedDialog<SaveDialog> owned(new SaveDialog(options, folders_.folder(options.kind)));
    SaveDialog& dialog = *owned;
    prepareDialog(dialog);
    placeOverWindow(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return remembered(options.kind, dialog, {dialog.chosen()}).front();
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
