#include "app/window/bridge/ExportState.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/WantedState.h"
#include "export/ExportTargets.h"
#include "export/PlaylistCounts.h"
#include "session/SessionFiles.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <string>

namespace orvalen {

ExportState::ExportState(ContentView& view, ChangeNotifier& notifier, WantedState& wanted)
    : StateProperties(view, notifier), wanted_(wanted) {
    follow(view.selectedExportFormat, view.matchedTracks, view.showExportSuccessBanner);
}

QList<QString> ExportState::formats() const {
    QList<QString> labels;
    for (const ExportTarget& target : exportTargets())
        labels.append(toQString(target.label));
    return labels;
}

QList<QString> ExportState::howTos() const {
    QList<QString> buttons;
    for (const HowTo& howTo : orvalen::howTos())
        buttons.append(toQString(howTo.button));
    return buttons;
}

int ExportState::formatIndex() const {
    const ExportTarget* target = exportTarget(view().selectedExportFormat.get());
    return target == nullptr ? -1 : static_cast<int>(target - exportTargets().data());
}

void ExportState::setFormatIndex(int index) {
    view().selectedExportFormat.set(std::string(exportTargets()[static_cast<std::size_t>(index)].value));
}

QString ExportState::tip() const {
    const ExportTarget* target = exportTarget(view().selectedExportFormat.get());
    return target == nullptr ? QString() : toQString(target->tip);
}

QString ExportState::longestTip() const {
    QString longest;
    for (const ExportTarget& target : exportTargets())
        if (const QString tip = toQString(target.tip); tip.size() > longest.size())
            longest = tip;
    return longest;
}

QString ExportState::caption() const {
    return toQString(playlistCaption(playlistCounts(view().matchedTracks.get())));
}

bool ExportState::lacksFiles() const {
    return std::ranges::any_of(view().matchedTracks.get(),
                               [](const MatchedTrack& row) { return !row.selectedTrack; });
}

void ExportState::copyMissing() {
    QGuiApplication::clipboard()->setText(toQString(missingList(view().matchedTracks.get())));
}

bool ExportState::canExport() const {
    return orvalen::canExport(view());
}

void ExportState::showHowTo(int index) {
    later([&howTo = orvalen::howTos()[static_cast<std::size_t>(index)]](ContentView& state) {
        showHowToAlert(state, howTo);
    });
}

void ExportState::exportPlaylist() {
    later([this](ContentView& state) {
        if (canExport())
            orvalen::exportPlaylist(state);
    });
}

void ExportState::saveSession() {
    later([this](ContentView& state) {
        wanted_.commitEdits();
        orvalen::saveSession(state);
    });
}

} // namespace orvalen
