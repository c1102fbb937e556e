#include "platform/desktop/DialogFolders.h"

#include "platform/system/PathKind.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace orvalen {

namespace {

QString keyOf(FileKind kind) {
    switch (kind) {
    case FileKind::music:
        return "folders/music";
    case FileKind::playlist:
        return "folders/playlists";
    case FileKind::sessionOrLibrary:
        return "folders/sessions";
    case FileKind::eventList:
        return "folders/events";
    }
    return {};
}

} // namespace

QString DialogFolders::folder(FileKind kind) const {
    const QString key = keyOf(kind);
    QString known = ofThisRun_.value(key);
    if (known.isEmpty() && !file_.isEmpty())
        known = QSettings(file_, QSettings::IniFormat).value(key).toString();
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    for (const QString& folder : {known, music})
        if (QDir::isAbsolutePath(folder) && pathKind(folder.toStdString()) == PathKind::folder)
            return folder;
    return QDir::homePath();
}

void DialogFolders::remember(FileKind kind, const QString& folder) {
    const QString key = keyOf(kind);
    ofThisRun_[key] = folder;
    if (!file_.isEmpty())
        QSettings(file_, QSettings::IniFormat).setValue(key, folder);
}

} // namespace orvalen
