#pragma once

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/StateProperties.h"

#include <QQuickItem>
#include <QQuickTextDocument>
#include <QString>
#include <QTimer>

namespace orvalen {

/// The wanted text in its three input modes, and the match run.
///
/// The editor's text is not bound to the field, because each keystroke would copy a long list. A timer sends
/// edits to the state: in the next pass of the event loop, or after 250 ms for a long list. Matching, Tidy
/// List and "Save Session" call commitEdits() first. textReplaced() reports that the state's text has
/// replaced the editor's.
class WantedState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int inputMode READ inputMode WRITE setInputMode NOTIFY changed)
    Q_PROPERTY(int formatIndex READ formatIndex WRITE setFormatIndex NOTIFY changed)
    Q_PROPERTY(QString spotifyAddress READ spotifyAddress WRITE setSpotifyAddress NOTIFY changed)
    Q_PROPERTY(bool ignoreDoNotPlay READ ignoreDoNotPlay WRITE setIgnoreDoNotPlay NOTIFY changed)
    Q_PROPERTY(bool tooLongToShow READ tooLongToShow NOTIFY changed)
    Q_PROPERTY(bool canMatch READ canMatch NOTIFY changed)
    Q_PROPERTY(bool onTop READ onTop NOTIFY changed)
    Q_PROPERTY(bool canReturn READ canReturn NOTIFY changed)
    Q_PROPERTY(bool matching READ matching NOTIFY changed)
    Q_PROPERTY(QString matchingText READ matchingText NOTIFY changed)
    Q_PROPERTY(bool matchBarVisible READ matchBarVisible NOTIFY changed)
    Q_PROPERTY(double matchProgress READ matchProgress NOTIFY changed)

public:
    WantedState(ContentView& view, ChangeNotifier& notifier);

    /// 0: track list, 1: playlist address, 2: DJEP file.
    int inputMode() const { return static_cast<int>(view().inputMode.get()); }
    void setInputMode(int mode) { view().inputMode.set(static_cast<InputMode>(mode)); }
    /// 0: artist first, 1: title first.
    int formatIndex() const { return view().matchInputFormat.get() == artistTitleFormat ? 0 : 1; }
    void setFormatIndex(int index);
    QString spotifyAddress() const { return toQString(view().spotifyURLInput.get()); }
    void setSpotifyAddress(const QString& address) { view().spotifyURLInput.set(toUtf8(address)); }
    bool ignoreDoNotPlay() const { return view().ignoreDoNotPlay.get(); }
    void setIgnoreDoNotPlay(bool ignore) { view().ignoreDoNotPlay.set(ignore); }
    /// Returns whether the text is so long that the editor would need too much time to lay it out. The editor
    /// is then empty.
    bool tooLongToShow() const { return tooLongToShow_; }
    bool canMatch() const;
    /// Returns whether neither the results page nor an alert covers the main page.
    bool onTop() const;
    /// Returns whether there are rows whose page is closed.
    bool canReturn() const { return !view().matchedTracks.get().empty() && !view().showResultsPage.get(); }
    bool matching() const { return view().isMatching.get(); }
    QString matchingText() const { return "Matching " + toShownText(view().scanningFileName.get()) + "…"; }
    bool matchBarVisible() const { return matchProgress() > 0 && matchProgress() < 1; }
    double matchProgress() const { return view().matchProgress.get(); }

    /// Follows the document of the editor from now on, and fills it.
    Q_INVOKABLE void edit(QQuickTextDocument* document, QQuickItem* editor);
    /// Replaces a part of the editor's text by the clipboard or, if `markedElsewhere`, by the X11 primary
    /// selection. A pasted text that is too long to show replaces the whole list. If the current list is too
    /// long to show, the clipboard replaces the whole list. The primary selection then replaces it only if it
    /// is also too long.
    Q_INVOKABLE void paste(int from, int to, bool markedElsewhere);
    Q_INVOKABLE void clearList() { view().matchInput.set({}); }
    Q_INVOKABLE void match();
    Q_INVOKABLE void showResults() { view().showResultsPage.set(true); }
    Q_INVOKABLE void importDJEP();

    /// Sends pending edits to the state.
    void commitEdits();

signals:
    /// Emitted after the state's text has replaced the editor's text.
    void textReplaced();

protected:
    void refresh() override;

private:
    void documentChanged();
    void replaceDocument(const QString& text);

    QPointer<QTextDocument> document_;
    QTimer commitTimer_;
    bool edited_ = false;     ///< the document has edits that the state does not have
    bool committing_ = false; ///< this object is writing to the field
    bool replaced_ = false;   ///< the field has a text that the document does not have
    bool replacing_ = false;  ///< this object is changing the document
    bool tooLongToShow_ = false;
};

} // namespace orvalen
