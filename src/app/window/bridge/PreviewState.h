#pragma once

#include "app/window/bridge/StateProperties.h"

#include <QString>

namespace orvalen {

/// The Now Playing panel.
class PreviewState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window")
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString position READ position NOTIFY changed)
    Q_PROPERTY(QString length READ length NOTIFY changed)

public:
    PreviewState(ContentView& view, ChangeNotifier& notifier);

    bool shown() const { return view().selectedTrack.get().has_value(); }
    QString title() const;
    double progress() const { return view().playbackProgress.get(); }
    QString position() const;
    QString length() const;

    /// The slider is being dragged: only the field follows.
    Q_INVOKABLE void moveTo(double progress) { view().playbackProgress.set(progress); }
    /// The slider was let go: the player follows too.
    Q_INVOKABLE void seekTo(double progress);
    /// A share of the length on from where the player is, or back; not past either end.
    Q_INVOKABLE void stepBy(double share);
};

} // namespace orvalen
