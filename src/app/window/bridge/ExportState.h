#pragma once

#include "app/window/bridge/StateProperties.h"

#include <QList>
#include <QString>

namespace orvalen {

class WantedState;

/// The export options of the results page.
class ExportState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<QString> formats READ formats CONSTANT)
    Q_PROPERTY(QList<QString> howTos READ howTos CONSTANT)
    Q_PROPERTY(int formatIndex READ formatIndex WRITE setFormatIndex NOTIFY changed)
    Q_PROPERTY(QString tip READ tip NOTIFY changed)
    Q_PROPERTY(QString longestTip READ longestTip CONSTANT)
    Q_PROPERTY(QString caption READ caption NOTIFY changed)
    Q_PROPERTY(bool lacksFiles READ lacksFiles NOTIFY changed)
    Q_PROPERTY(bool canExport READ canExport NOTIFY changed)
    Q_PROPERTY(bool bannerShown READ bannerShown NOTIFY changed)

public:
    ExportState(ContentView& view, ChangeNotifier& notifier, WantedState& wanted);

    QList<QString> formats() const;
    QList<QString> howTos() const;
    /// Returns -1 if the state has an unknown value.
    int formatIndex() const;
    void setFormatIndex(int index);
    QString tip() const;
    QString longestTip() const;
    /// Returns a text about rows without a file and repeated files in the playlist; empty if there are none.
    QString caption() const;
    /// Returns whether a row has no selected track.
    bool lacksFiles() const;
    bool canExport() const;
    bool bannerShown() const { return view().showExportSuccessBanner.get(); }

    Q_INVOKABLE void showHowTo(int index);
    /// Copies the rows without a selected track to the clipboard, one line "Artist – Title" per row.
    Q_INVOKABLE void copyMissing();
    Q_INVOKABLE void exportPlaylist();
    Q_INVOKABLE void saveSession();

private:
    WantedState& wanted_;
};

} // namespace orvalen
