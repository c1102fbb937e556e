#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

QString shownText(WindowHarness& window) {
    return window.control("Wanted list").item->property("text").toString();
}

void paste(WindowHarness& window, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    window.click("Wanted list");
    window.key(Qt::Key_A, Qt::ControlModifier);
    window.key(Qt::Key_V, Qt::ControlModifier);
}

QString lines(int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString("Artist %1 – Title %1\n").arg(i);
    return text;
}

TEST(WantedEditor, ShowsTheStateAndHandsOverWhatIsTyped) {
    WindowHarness window;
    window.view.matchInput.set("Édith Piaf – Milord\nABBA – <b>SOS</b> &amp;");
    window.settle();
    EXPECT_EQ(shownText(window), "Édith Piaf – Milord\nABBA – <b>SOS</b> &amp;");
    window.click("Wanted list");
    window.key(Qt::Key_Home, Qt::ControlModifier);
    window.type("a\n");
    window.type("A"); // the cursor stays where it was
    EXPECT_EQ(window.view.matchInput.get(), "a\nAÉdith Piaf – Milord\nABBA – <b>SOS</b> &amp;");
}

TEST(WantedEditor, KeepsEveryCharacterOfAPaste) {
    WindowHarness window;
    paste(window, "A\u00a0B – C\r\nD – E\u2028F – G\rH – I\U0001F4C4\n");
    EXPECT_EQ(window.view.matchInput.get(), "A\u00a0B – C\nD – E\nF – G\nH – I\U0001F4C4\n");
}

TEST(WantedEditor, CommitsALongListBeforeItIsUsed) {
    for (const char* use : {"Match Playlist", "Save Session"}) {
        WindowHarness window;
        replaceIndex(window.view, buildIndex(std::vector{track("Artist 1", "Title 1")}));
        window.platform.dialogs.willSaveTo(window.platform.support().path("a.orvs"));
        window.view.matchInput.set("x");
        window.settle();
        paste(window, lines(3000));
        if (use == std::string_view("Save Session"))
            window.view.showResultsPage.set(true);
        window.press(window.control(use));
        EXPECT_EQ(window.view.matchInput.get(), lines(3000).toStdString()) << use;
        EXPECT_TRUE(window.waitFor([&] {
            return window.view.matchedTracks.get().size() == 3000 ||
                   window.platform.support().exists("a.orvs");
        })) << use;
    }
}

TEST(WantedEditor, TakesAListThatIsTooLongToShow) {
    for (const QString& text :
         {QString("word ").repeated(2'000'000), QString("Artist – Title of a song\n").repeated(800'000)}) {
        WindowHarness window;
        const QString note = "This list is too long to show. It is matched and saved whole.";
        paste(window, text);
        EXPECT_TRUE(window.view.matchInput.get() == text.toStdString());
        EXPECT_EQ(shownText(window), "");
        EXPECT_TRUE(window.shows(note));
        window.type("a - b");
        window.key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(window.view.matchInput.get() == text.toStdString()) << "a key replaced the list";
        window.click("Clear List");
        EXPECT_FALSE(window.shows(note));
        window.type("a - b");
        EXPECT_EQ(window.view.matchInput.get(), "a - b");
    }
}

TEST(WantedEditor, BreaksLinesAtEveryLineBreakOfAList) {
    WindowHarness window;
    for (const char* lineBreak : {"\r", "\u0085", "\u2028", "\v", "\r\n"}) {
        const QString list = lines(100).replace("\n", QString::fromUtf8(lineBreak));
        window.view.matchInput.set(list.toStdString());
        window.settle();
        EXPECT_EQ(shownText(window), lines(100));
        EXPECT_EQ(window.view.matchInput.get(), list.toStdString()) << "the file keeps its line breaks";
    }
}

TEST(WantedEditor, SpeaksOfWhatIsSeenAndTakesWhatIsSaid) {
    WindowHarness window;
    paste(window, lines(200));
    const auto editor = window.control("Wanted list", QAccessible::EditableText);
    auto* spoken = QAccessible::queryAccessibleInterface(editor.item);
    EXPECT_LE(spoken->rect().height(), 120) << "not what is scrolled away";
    auto* text = spoken->textInterface();
    EXPECT_EQ(text->text(0, 19), "Artist 0 – Title 0\n");
    EXPECT_EQ(text->characterCount(), lines(200).size());
    text->setSelection(0, 0, 6);
    int begin = -1;
    int end = -1;
    text->selection(0, &begin, &end);
    EXPECT_EQ(std::pair(begin, end), std::pair(0, 6));
    EXPECT_EQ(text->offsetAtPoint(text->characterRect(3).center()), 3);
    spoken->editableTextInterface()->replaceText(0, text->characterCount(), "ABBA – SOS\nA – B");
    EXPECT_TRUE(window.waitFor([&] { return window.view.matchInput.get() == "ABBA – SOS\nA – B"; }));
}

TEST(WantedEditor, PastesByMouseAlone) {
    WindowHarness window;
    QGuiApplication::clipboard()->setText("ABBA – SOS");
    QTest::mouseClick(window.window(), Qt::RightButton, Qt::NoModifier,
                      window.control("Wanted list").sceneRect().center().toPoint());
    EXPECT_FALSE(window.control("Cut").enabled());
    window.click("Paste");
    EXPECT_EQ(window.view.matchInput.get(), "ABBA – SOS");
}

TEST(WantedEditor, TheLaterWriteWins) {
    WindowHarness window;
    replaceIndex(window.view, buildIndex(std::vector{track("Artist 1", "Title 1")}));
    paste(window, lines(3000)); // sent to the state later, or by the button
    window.view.matchInput.set("from a session");
    window.press(window.control("Match Playlist"));
    EXPECT_EQ(window.view.matchInput.get(), "from a session");
    EXPECT_TRUE(window.waitFor([&] { return shownText(window) == "from a session"; }));
}

} // namespace
} // namespace orvalen::test
