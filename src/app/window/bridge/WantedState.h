#pragma once

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/StateProperties.h"

#include <QQuickItem>
#include <QQuickTextDocument>
#include <QString>
#include <QTimer>

namespace orvalen {

/// The wanted songs: the three ways to state them, and the match run.
///
/// The editor's text is not bound: a long list would be copied at every keystroke. Edits reach the state in
/// the next turn of the event loop, of a long list a moment later, and always before an operation that reads
/// them; the editor is told when the state's text was replaced from elsewhere.
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

    /// 0 track list, 1 playlist address, 2 DJEP file.
    int inputMode() const { return static_cast<int>(view().inputMode.get()); }
    void setInputMode(int mode) { view().inputMode.set(static_cast<InputMode>(mode)); }
    /// 0 artist first, 1 title first.
    int formatIndex() const { return view().matchInputFormat.get() == artistTitleFormat ? 0 : 1; }
    void setFormatIndex(int index);
    QString spotifyAddress() const { return toQString(view().spotifyURLInput.get()); }
    void setSpotifyAddress(const QString& address) { view().spotifyURLInput.set(toUtf8(address)); }
    bool ignoreDoNotPlay() const { return view().ignoreDoNotPlay.get(); }
    void setIgnoreDoNotPlay(bool ignore) { view().ignoreDoNotPlay.set(ignore); }
    /// The state's list would take the editor minutes to lay out, so it shows none.
    bool tooLongToShow() const { return tooLongToShow_; }
    bool canMatch() const;
    /// Whether neither the results page nor an alert lies over the main page.
    bool onTop() const;
    /// Whether there are results whose page is closed.
    bool canReturn() const { return !view().matchedTracks.get().empty() && !view().showResultsPage.get(); }
    bool matching() const { return view().isMatching.get(); }
    QString matchingText() const { return "Matching " + toShownText(view().scanningFileName.get()) + "…"; }
    bool matchBarVisible() const { return matchProgress() > 0 && matchProgress() < 1; }
    double matchProgress() const { return view().matchProgress.get(); }

    /// Follows the editor's document from now on and asks for it to be filled.
    Q_INVOKABLE void edit(QQuickTextDocument* document, QQuickItem* editor);
    /// Replaces a part of the editor's text by the clipboard's text, or by what is marked elsewhere. A text
    /// that is too long to show becomes the whole list, and so does every paste over such a list.
    Q_INVOKABLE void paste(int from, int to, bool markedElsewhere);
    Q_INVOKABLE void clearList() { view().matchInput.set({}); }
    Q_INVOKABLE void match();
    Q_INVOKABLE void showResults() { view().showResultsPage.set(true); }
    Q_INVOKABLE void importDJEP();

    /// Hands what was typed to the state now.
    void commitEdits();

signals:
    /// The state's text has taken the place of the editor's.
    void textReplaced();

protected:
    void refresh() override;

private:
    void documentChanged();
    void replaceDocument(const QString& text);

    QPointer<QTextDocument> document_;
    QTimer commitTimer_;
    bool edited_ = false;     ///< the document holds what the state does not
    bool committing_ = false; ///< the write to the field is our own
    bool replaced_ = false;   ///< the field holds what the document does not
    bool replacing_ = false;  ///< the document's change is our own
    bool tooLongToShow_ = false;
};

} // namespace orvalen
