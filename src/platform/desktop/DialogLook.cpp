#include "platform/desktop/DialogLook.h"

#include "platform/system/PathKind.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>

namespace orvalen {
namespace {

constexpr QSize dialogSize(780, 540);
constexpr int leastSideBar = 150;
constexpr int widestSideBar = 300;
constexpr int messageWidth = 380;
constexpr int messageIcon = 48;

void removeButtonIcons(QDialog& dialog) {
    for (auto* button : dialog.findChildren<QPushButton*>())
        button->setIcon({});
}

/// Returns the drives that the desktop has mounted, one folder per drive.
QStringList mountedDrives() {
    const QString user = qEnvironmentVariable("USER");
    QStringList drives;
    if (!user.isEmpty())
        for (const QString& place : {"/media/" + user + '/', "/run/media/" + user + '/'})
            for (const QString& name : QDir(place).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
                drives += place + name;
    return drives;
}

QList<QUrl> placesOfMusic() {
    QStringList folders;
    for (const auto location : {QStandardPaths::HomeLocation, QStandardPaths::MusicLocation,
                                QStandardPaths::DesktopLocation, QStandardPaths::DownloadLocation})
        folders += QStandardPaths::writableLocation(location);
    QList<QUrl> places{QUrl("file:")};
    for (const QString& folder : folders + mountedDrives()) {
        const QUrl place = QUrl::fromLocalFile(folder);
        // Skips drives that do not answer, because the dialog would wait for them.
        if (!places.contains(place) && pathKind(folder.toStdString()) == PathKind::folder)
            places.append(place);
    }
    return places;
}

/// Makes the side bar wide enough for the names in it. Qt's default width cuts them off.
void fitSideBar(QFileDialog& dialog) {
    auto* splitter = dialog.findChild<QSplitter*>("splitter");
    auto* sideBar = dialog.findChild<QListView*>("sidebar");
    if (!splitter || !sideBar)
        return;
    const int room = 2 * sideBar->frameWidth() + sideBar->fontMetrics().averageCharWidth();
    const int width = qBound(leastSideBar, sideBar->sizeHintForColumn(0) + room, widestSideBar);
    splitter->setSizes({width, dialogSize.width() - width});
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
}

} // namespace

void prepareDialog(QFileDialog& dialog) {
    dialog.resize(dialogSize);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setSidebarUrls(placesOfMusic());
    const auto* list = dialog.findChild<QTreeView*>("treeView");
    if (!list)
        return;
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    fitSideBar(dialog);
    removeButtonIcons(dialog);
}

void explain(QDialog& dialog, const QString& text) {
    QMessageBox box(QMessageBox::NoIcon, dialog.windowTitle(), text, QMessageBox::Ok, &dialog);
    prepareDialog(box);
    box.exec();
}

void addMessage(QFileDialog& dialog, const QString& message) {
    auto* label = new QLabel(message, &dialog);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setContentsMargins(9, 9, 9, 0);
    dialog.layout()->setMenuBar(label);
}

void prepareDialog(QMessageBox& box) {
    box.setIconPixmap(QGuiApplication::windowIcon().pixmap(messageIcon));
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    if (auto* heading = box.findChild<QLabel*>("qt_msgbox_label")) {
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
    }
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(messageWidth, 0, QSizePolicy::Minimum), grid->rowCount(), 0, 1,
                      grid->columnCount());
    box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowCloseButtonHint);
    removeButtonIcons(box);
}

} // namespace orvalen
