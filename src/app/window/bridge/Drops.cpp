#include "app/window/bridge/Drops.h"

#include "app/window/bridge/QtText.h"
#include "import/DjepImport.h"
#include "library/MusicFolders.h"

#include <QFileInfo>
#include <QStringList>

namespace orvalen {
namespace {

bool isMusic(const QFileInfo& file) {
    static const QStringList extensions{"mp3", "m4a", "wav", "aiff", "aif"};
    return file.isDir() || extensions.contains(file.suffix(), Qt::CaseInsensitive);
}

} // namespace

Drop sortDrop(const QList<QUrl>& urls, InputMode mode) {
    Drop drop;
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        const QFileInfo file(url.toLocalFile());
        const Location location = locationOf(toUtf8(file.absoluteFilePath()));
        if (isMusic(file))
            drop.music.push_back(location);
        else if (mode == InputMode::djep && file.suffix().compare("csv", Qt::CaseInsensitive) == 0)
            drop.eventList = location;
    }
    return drop;
}

QString Drops::promise(const QList<QUrl>& urls) const {
    const Drop drop = sortDrop(urls, view().inputMode.get());
    if (!drop.music.empty())
        return scanning() ? "Wait until the scan is done" : "Drop to add to your library";
    return drop.eventList ? "Drop to import the DJEP CSV" : QString();
}

void Drops::take(const QList<QUrl>& urls) {
    later([this, drop = sortDrop(urls, view().inputMode.get())](ContentView& state) {
        if (!drop.music.empty() && !scanning())
            addMusicLocations(state, drop.music);
        if (drop.eventList)
            parseDJEPCSV(state, *drop.eventList);
    });
}

} // namespace orvalen
