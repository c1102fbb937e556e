#include "app/window/bridge/Drops.h"

#include "app/window/bridge/QtText.h"
#include "import/DjepImport.h"
#include "library/MusicFolders.h"
#include "platform/system/PathKind.h"

#include <QFileInfo>
#include <algorithm>

namespace orvalen {
namespace {

bool isFolder(const QString& path, bool withoutAnswer) {
    const auto kind = pathKind(toUtf8(path));
    return kind ? *kind == PathKind::folder : withoutAnswer;
}

bool isMusic(const QFileInfo& file) {
    const std::string extension = toUtf8(file.suffix().toLower());
    return std::ranges::find(addedExtensions, extension) != addedExtensions.end() ||
           isFolder(file.filePath(), true);
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

std::optional<Location> audioFile(const QList<QUrl>& urls) {
    Drop drop = sortDrop(urls, InputMode::textList);
    if (urls.size() != 1 || drop.music.size() != 1 || isFolder(urls.front().toLocalFile(), false))
        return std::nullopt;
    return std::move(drop.music.front());
}

bool showsAlert(const ContentView& view) {
    return view.showDeleteLibraryConfirmation.get() || (view.showUpdateAlert.get() && view.remoteInfo.get());
}

bool Drops::canTake(const QList<QUrl>& urls) const {
    const Drop drop = sortDrop(urls, view().inputMode.get());
    return !isCovered() && (drop.eventList || (!drop.music.empty() && !scanning()));
}

QString Drops::promise(const QList<QUrl>& urls) const {
    if (showsAlert(view()))
        return "Answer the question before you drop files";
    if (view().showResultsPage.get())
        return audioFile(urls) ? "Drop the file on a row" : "Only one audio file at a time, dropped on a row";
    const Drop drop = sortDrop(urls, view().inputMode.get());
    if (!drop.music.empty())
        return scanning() ? "Wait until the scan is done" : "Drop to add to your library";
    return drop.eventList ? "Drop to import the DJEP CSV" : QString();
}

void Drops::take(const QList<QUrl>& urls) {
    if (!canTake(urls))
        return;
    later([this, drop = sortDrop(urls, view().inputMode.get())](ContentView& state) {
        if (!drop.music.empty() && !scanning())
            addMusicLocations(state, drop.music);
        if (drop.eventList)
            parseDJEPCSV(state, *drop.eventList);
    });
}

} // namespace orvalen
