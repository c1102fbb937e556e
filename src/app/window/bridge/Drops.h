#pragma once

#include "app/window/bridge/StateProperties.h"
#include "core/Location.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace orvalen {

/// What of the things held over the window can be taken.
struct Drop {
    std::vector<Location> music;       ///< folders and audio files, as the add dialog takes them
    std::optional<Location> eventList; ///< a DJEP export, while that input is open
};

Drop sortDrop(const QList<QUrl>& urls, InputMode mode);
/// The one audio file that is held over a row; nothing for anything else.
std::optional<Location> audioFile(const QList<QUrl>& urls);
/// Whether an alert waits for an answer.
bool showsAlert(const ContentView& view);

/// Takes folders, audio files and event lists that are dropped on the window.
class Drops : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT

public:
    using StateProperties::StateProperties;

    /// What letting go would do, or why it would do nothing, in words; empty for what is never taken.
    Q_INVOKABLE QString promise(const QList<QUrl>& urls) const;
    Q_INVOKABLE bool canTake(const QList<QUrl>& urls) const;
    Q_INVOKABLE void take(const QList<QUrl>& urls);

private:
    bool scanning() const { return view().scanProgress.get() > 0; }
    /// Whether another page or an alert lies over the main page.
    bool isCovered() const { return view().showResultsPage.get() || showsAlert(view()); }
};

} // namespace orvalen
