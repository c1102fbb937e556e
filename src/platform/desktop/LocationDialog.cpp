#include "platform/desktop/LocationDialog.h"

#include "platform/desktop/DialogLook.h"
#include "platform/desktop/FileTypes.h"
#include "platform/desktop/TypedPath.h"
#include "platform/system/PathKind.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <utility>

namespace orvalen {

namespace {

constexpr qsizetype longestTitle = 200;
constexpr const char* wrongKind = "%1\ncannot be chosen here: it has another file type.";

QFileDialog::FileMode modeOf(const OpenOptions& options) {
    if (!options.files)
        return QFileDialog::Directory;
    return options.several || options.folders ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
}

} // namespace

LocationDialog::LocationDialog(const OpenOptions& options, const QString& folder) : options_(options) {
    // Must come first: changing this option resets the other settings.
    setOption(DontUseNativeDialog, options.folders);
    setOption(HideNameFilterDetails);
    setAcceptMode(AcceptOpen);
    setFileMode(modeOf(options));
    setDirectory(folder);
    if (!options.types.anything())
        setNameFilter(QString::fromStdString(nameFilter(options.types)));
    if (!options.prompt.empty())
        setLabelText(Accept, QString::fromStdString(options.prompt));
    // A native dialog would show an empty title.
    const std::string& title = options.title.empty() ? options.prompt : options.title;
    setWindowTitle(title.empty() ? tr("Open")
                                 : QString::fromStdString(title).simplified().left(longestTitle));

    nameField_ = findChild<QLineEdit*>("fileNameEdit");
    const auto* list = findChild<QListView*>("listView");
    if (!nameField_ || !list)
        return;
    selection_ = list->selectionModel();
    if (!options.several)
        for (auto* view : findChildren<QAbstractItemView*>())
            if (view->selectionModel() == selection_)
                view->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(selection_, &QItemSelectionModel::selectionChanged, this, [this] { followSelection(); });
    // Qt disables its own button while no file is named and for names with a quotation mark, and renames it
    // while a folder is selected.
    auto* box = findChild<QDialogButtonBox*>("buttonBox");
    QPushButton* confirm = box->button(QDialogButtonBox::Open);
    auto* own = box->addButton(confirm->text(), QDialogButtonBox::AcceptRole);
    box->removeButton(confirm);
    confirm->deleteLater();
    own->setDefault(true);
    if (options.folders)
        return;
    own->setEnabled(false);
    connect(nameField_, &QLineEdit::textChanged, own,
            [own](const QString& text) { own->setEnabled(!text.trimmed().isEmpty()); });
}

/// Shows the selected names in the name field, including folders, which Qt omits.
void LocationDialog::followSelection() {
    if (focusWidget() == nameField_)
        return; // Qt selects the entry that is being typed
    const QString text = selectionText();
    if (text.isEmpty() && nameField_->text() != shownSelection_)
        return;
    shownSelection_ = text;
    nameField_->setText(text);
}

QStringList LocationDialog::selectedPaths() const {
    QStringList paths;
    for (const QModelIndex& index : selection_->selectedRows()) {
        const QString path = index.data(QFileSystemModel::FilePathRole).toString();
        // While a path is typed, Qt also selects folders that are not shown.
        if (QFileInfo(path).absolutePath() == directory().absolutePath())
            paths.append(path);
    }
    return paths;
}

QString LocationDialog::selectionText() const {
    const QStringList paths = selectedPaths();
    QStringList names;
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).fileName();
        names.append(paths.size() == 1 ? name : '"' + name + '"');
    }
    return names.join(' ');
}

/// Returns the name field as one path if that exists, else as names in quotation marks.
QStringList LocationDialog::typedPaths() const {
    const QString text = nameField_->text();
    for (const QString& whole : {text, text.trimmed()})
        if (pathKind(typedPath(*this, whole).toStdString()) != PathKind::absent)
            return {typedPath(*this, whole)};
    const QStringList pieces = text.split('"');
    if (pieces.size() < 3)
        return {typedPath(*this, text.trimmed())};
    QStringList paths;
    for (qsizetype i = 1; i < pieces.size(); i += 2)
        paths.append(typedPath(*this, pieces[i]));
    return paths;
}

QStringList LocationDialog::candidates() const {
    const QString text = nameField_->text();
    if (!text.trimmed().isEmpty() && text != selectionText())
        return typedPaths();
    QStringList selected = selectedPaths();
    if (selected.isEmpty() && options_.folders)
        return {directory().absolutePath()};
    return selected;
}

bool LocationDialog::isAcceptable(const QString& path) {
    const auto kind = pathKind(path.toStdString());
    if (kind != PathKind::file && kind != PathKind::folder) {
        explain(*this, (kind ? tr("%1\nwas not found.") : tr(noAnswer)).arg(path));
        return false;
    }
    const bool isFolder = kind == PathKind::folder;
    if (isFolder && !options_.folders) {
        setDirectory(path);
        nameField_->clear();
        return false;
    }
    if (!isFolder && (!options_.files || !mayBeChosen(path.toStdString(), options_.types))) {
        explain(*this, tr(wrongKind).arg(path));
        return false;
    }
    return true;
}

void LocationDialog::accept() {
    if (!nameField_) {
        for (const QString& path : selectedFiles())
            if (mayBeChosen(path.toStdString(), options_.types))
                chosen_.append(path);
            else
                refused_ = path;
        QFileDialog::accept(); // emits the signals that exec() waits for
        return;
    }
    QStringList paths = candidates();
    if (paths.isEmpty())
        return;
    if (!options_.several)
        paths = paths.mid(0, 1);
    for (const QString& path : std::as_const(paths))
        if (!isAcceptable(path))
            return;
    chosen_ = paths;
    done(Accepted);
}

bool LocationDialog::refused() {
    if (!chosen_.isEmpty() || refused_.isEmpty())
        return false;
    explain(*this, tr(wrongKind).arg(std::exchange(refused_, {})));
    return true;
}

} // namespace orvalen
