#pragma once

#include "app/window/bridge/StateProperties.h"
#include "core/Location.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace orvalen {

/// The dragged files that the window accepts.
struct Drop {
    std::vector<Location> music;       ///< folders and audio files, as in the dialog for music folders
    std::optional<Location> eventList; ///< a DJEP file, if its input mode is selected
};

Drop sortDrop(const QList<QUrl>& urls, InputMode mode);
/// Returns the dragged audio file, or nullopt unless exactly one is dragged.
std::optional<Location> audioFile(const QList<QUrl>& urls);
/// Returns whether an alert waits for an answer.
bool showsAlert(const ContentView& view);

/// Accepts folders, audio files and DJEP files that are dropped on the window.
class Drops : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT

public:
    using StateProperties::StateProperties;

    /// Returns a text that says what a drop would do, or why it would do nothing. Empty for files that are
    /// never accepted.
    Q_INVOKABLE QString promise(const QList<QUrl>& urls) const;
    Q_INVOKABLE bool canTake(const QList<QUrl>& urls) const;
    Q_INVOKABLE void take(const QList<QUrl>& urls);

private:
    bool scanning() const { return view().scanProgress.get() > 0; }
    /// Returns whether the results page or an alert covers the main page.
    bool isCovered() const { return view().showResultsPage.get() || showsAlert(view()); }
};

} // namespace orvalen
