#include "app/window/bridge/WantedState.h"

#include "app/window/bridge/Drops.h"
#include "app/window/bridge/QtText.h"
#include "core/Text.h"
#include "import/DjepImport.h"
#include "matching/WantedList.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <chrono>
#include <utility>

namespace orvalen {
namespace {

using namespace std::chrono_literals;

/// Texts up to this number of characters are sent to the state after each keystroke, without a delay.
constexpr int longText = 20'000;
constexpr auto longTextDelay = 250ms;

/// Longer texts would take the editor more than a few seconds to lay out. The time grows with the square of a
/// line's length.
constexpr qsizetype longestLine = 10'000;
constexpr qsizetype longestText = 12'000'000;

bool isLineBreak(QChar c) {
    return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

/// Returns the text with a line feed for every line break. The editor does not recognise all of them.
QString withLineFeeds(QString text) {
    text.replace("\r\n", "\n");
    std::replace_if(text.begin(), text.end(), isLineBreak, u'\n');
    return text;
}

bool canBeShown(const QString& text) {
    if (text.size() > longestText)
        return false;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isLineBreak(text[i]))
            start = i + 1;
        else if (i - start >= longestLine)
            return false;
    }
    return true;
}

} // namespace

WantedState::WantedState(ContentView& view, ChangeNotifier& notifier) : StateProperties(view, notifier) {
    follow(view.inputMode, view.matchInputFormat, view.matchInput, view.spotifyURLInput, view.ignoreDoNotPlay,
           view.trackDict, view.matchedTracks, view.showResultsPage, view.showDeleteLibraryConfirmation,
           view.showUpdateAlert, view.isMatching, view.matchProgress, view.scanningFileName);
    observe(view.matchInput, [this] {
        if (committing_)
            return;
        replaced_ = true;
        edited_ = false; // the later write replaces pending edits
    });
    commitTimer_.setSingleShot(true);
    connect(&commitTimer_, &QTimer::timeout, this, &WantedState::commitEdits);
}

void WantedState::refresh() {
    if (std::exchange(replaced_, false) && document_) {
        const QString text = toQString(view().matchInput.get());
        tooLongToShow_ = !canBeShown(text);
        replacing_ = true;
        replaceDocument(tooLongToShow_ ? QString() : withLineFeeds(text));
        emit textReplaced();
        replacing_ = false;
        edited_ = false;
    }
    emit changed();
}

void WantedState::edit(QQuickTextDocument* document, QQuickItem* editor) {
    // Makes the editor draw only the visible part of the text. Qt itself does so only if a long text is set,
    // not if it is pasted.
    editor->setFlag(QQuickItem::ItemObservesViewport);
    document_ = document->textDocument();
    connect(document_, &QTextDocument::contentsChanged, this, &WantedState::documentChanged);
    replaced_ = true;
    refresh();
    document_->clearUndoRedoStacks();
}

/// Replaces the whole text in one edit, which the user can undo.
void WantedState::replaceDocument(const QString& text) {
    QTextCursor cursor(document_);
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
}

void WantedState::documentChanged() {
    if (replacing_)
        return;
    edited_ = true;
    tooLongToShow_ = false;
    commitTimer_.start(document_->characterCount() > longText ? longTextDelay : 0ms);
}

void WantedState::commitEdits() {
    if (!edited_ || !document_)
        return;
    edited_ = false;
    committing_ = true;
    view().matchInput.set(toUtf8(rawText(*document_)));
    committing_ = false;
}

void WantedState::paste(int from, int to, bool markedElsewhere) {
    const QString text =
        QGuiApplication::clipboard()->text(markedElsewhere ? QClipboard::Selection : QClipboard::Clipboard);
    if (!canBeShown(text) || (tooLongToShow_ && !markedElsewhere)) {
        view().matchInput.set(toUtf8(text));
    } else if (document_ && !tooLongToShow_) {
        QTextCursor cursor(document_);
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.insertText(withLineFeeds(text));
    }
}

void WantedState::setFormatIndex(int index) {
    view().matchInputFormat.set(index == 0 ? artistTitleFormat : titleArtistFormat);
}

bool WantedState::canMatch() const {
    if (view().trackDict.get().empty())
        return false;
    switch (view().inputMode.get()) {
    case InputMode::textList:
        return !isBlank(view().matchInput.get());
    case InputMode::spotify:
        return !isBlank(view().spotifyURLInput.get());
    case InputMode::djep:
        return true;
    }
    return false;
}

bool WantedState::onTop() const {
    return !view().showResultsPage.get() && !showsAlert(view());
}

void WantedState::match() {
    later([this](ContentView& state) {
        commitEdits();
        if (canMatch())
            startMatching(state);
    });
}

void WantedState::importDJEP() {
    later(importDJEPCSV);
}

} // namespace orvalen
