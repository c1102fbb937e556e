#include "platform/desktop/DialogLook.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>

namespace orvalen {
namespace {

constexpr int messageWidth = 380;
constexpr int messageIcon = 48;

/// The buttons' words are enough.
void removeButtonIcons(QDialog& dialog) {
    for (auto* button : dialog.findChildren<QPushButton*>())
        button->setIcon({});
}

/// Where desktops mount what is plugged in, one folder a drive.
QFileInfoList mountedDrives() {
    const QString user = qEnvironmentVariable("USER");
    QFileInfoList drives;
    if (!user.isEmpty())
        for (const QString& place : {"/media/" + user, "/run/media/" + user})
            drives += QDir(place).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    return drives;
}

QList<QUrl> placesOfMusic() {
    QList<QUrl> places{QUrl("file:")};
    for (const auto location : {QStandardPaths::HomeLocation, QStandardPaths::MusicLocation,
                                QStandardPaths::DesktopLocation, QStandardPaths::DownloadLocation}) {
        const QUrl place = QUrl::fromLocalFile(QStandardPaths::writableLocation(location));
        if (QFileInfo(place.toLocalFile()).isDir() && !places.contains(place))
            places.append(place);
    }
    for (const QFileInfo& drive : mountedDrives())
        places.append(QUrl::fromLocalFile(drive.absoluteFilePath()));
    return places;
}

} // namespace

void prepareDialog(QFileDialog& dialog) {
    dialog.resize(780, 540);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setSidebarUrls(placesOfMusic());
    const auto* list = dialog.findChild<QTreeView*>("treeView");
    if (!list)
        return;
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    removeButtonIcons(dialog);
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
