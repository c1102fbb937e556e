#pragma once

#include "app/window/bridge/StateProperties.h"

#include <QString>
#include <QTimer>

namespace orvalen {

/// The Now Playing panel. The state's progress changes a hundred times a second. Views are notified only
/// while the results page is shown, and only if the slider moves by a step or a time label changes.
///
/// After a file could not be opened, the earlier track can play without the timer that updates the progress.
/// The slider then shows the position of the player, and a timer of this class updates slider and labels.
class PreviewState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString position READ position NOTIFY changed)
    Q_PROPERTY(QString length READ length NOTIFY changed)
    /// The number of positions that the slider can show: the device pixels of its groove.
    Q_PROPERTY(int steps MEMBER steps_)

public:
    PreviewState(ContentView& view, ChangeNotifier& notifier);

    bool shown() const { return view().selectedTrack.get().has_value(); }
    QString title() const;
    /// The played share of the track, rounded to a step of the slider.
    double progress() const;
    QString position() const;
    QString length() const;

    /// Call while the user drags the slider. Changes only the field.
    Q_INVOKABLE void moveTo(double progress) { view().playbackProgress.set(progress); }
    /// Call when the user releases the slider. Seeks in the player.
    Q_INVOKABLE void seekTo(double progress);
    /// Seeks by a share of the length, forwards or backwards, not past either end.
    Q_INVOKABLE void stepBy(double share);
    Q_INVOKABLE void seekBySeconds(double seconds);

protected:
    void refresh() override;

private:
    /// The position as the views show it.
    struct Place {
        int step = 0;
        long long second = 0;
        bool operator==(const Place&) const = default;
    };

    Place place() const;
    /// Returns whether the player may be playing although no timer updates the progress.
    bool playsWithoutTimer() const;

    int steps_ = 1000;
    Place shown_; ///< at the last refresh
    QTimer labels_;
};

} // namespace orvalen
