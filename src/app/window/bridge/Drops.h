#pragma once

#include "app/window/bridge/FieldGroup.h"
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

/// Takes folders, audio files and event lists that are dropped on the window.
class Drops : public orvalen::FieldGroup {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window")

public:
    using FieldGroup::FieldGroup;

    /// What letting go would do, in words; empty when nothing could be taken.
    Q_INVOKABLE QString promise(const QList<QUrl>& urls) const;
    Q_INVOKABLE void take(const QList<QUrl>& urls);

private:
    bool scanning() const { return view().scanProgress.get() > 0; }
};

} // namespace orvalen
