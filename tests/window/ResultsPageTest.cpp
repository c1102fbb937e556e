#include "window/ResultsPage.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <algorithm>

namespace orvalen::test {
namespace {

TEST_F(ResultsPage, ShowsLongNamesShortenedAndMarksALineBreakInAPath) {
    const std::string longName(300'000, 'x');
    const std::string shown = "A – " + std::string(996, 'x') + "…";
    view.matchedTracks.set({row("A", longName, {track("A", longName, {}, "/Music/one\ntwo.mp3")})});
    window.expectShown(QString::fromStdString(shown), QAccessible::Grouping);
    window.expectShown("Line break in the file name");
    EXPECT_EQ(rows()[0].title, longName) << "the record keeps it all";
}

TEST_F(ResultsPage, PicksByKeys) {
    view.matchedTracks.update([](auto& changed) { // as after browsing to a file that is a candidate already
        changed[0].options.push_back(track("Night Band", "Last Train Home", {}, "/Music/a.mp3"));
    });
    window.settle();
    const auto picker = window.inRow(several, "Choose match");
    struct Case {
        Qt::Key opens;
        Qt::KeyboardModifiers modifiers;
        std::vector<Qt::Key> keys;
        const char* path;
    };
    const Case cases[] = {{Qt::Key_Return, {}, {Qt::Key_Down, Qt::Key_Return}, "/Music/b.mp3"},
                          {Qt::Key_Space, {}, {Qt::Key_End, Qt::Key_Space}, "/Music/a.mp3"},
                          {Qt::Key_Return, {}, {Qt::Key_End, Qt::Key_Up, Qt::Key_Return}, "/Music/c.mp3"},
                          {Qt::Key_F4, {}, {Qt::Key_Up, Qt::Key_Escape}, "/Music/c.mp3"},
                          {Qt::Key_Down, Qt::AltModifier, {Qt::Key_Home, Qt::Key_Return}, "/Music/a.mp3"},
                          {Qt::Key_F4, {}, {Qt::Key_N, Qt::Key_Enter}, "/Music/b.mp3"}};
    for (const Case& c : cases) {
        picker.item->forceActiveFocus(Qt::TabFocusReason);
        window.key(c.opens, c.modifiers);
        window.expectShown("Choose match", QAccessible::List);
        for (const Qt::Key key : c.keys)
            window.key(key);
        window.expectGone("Choose match", QAccessible::List);
        EXPECT_EQ(rows()[0].selectedTrack->path, c.path) << "opened by " << c.opens;
    }
    EXPECT_TRUE(view.showResultsPage.get()) << "Escape closes the list alone";
    window.key(Qt::Key_Down);
    EXPECT_EQ(window.focused(), "Include in playlist") << "the next row has no picker";
    EXPECT_EQ(rows()[0].selectedTrack->path, "/Music/b.mp3") << "Down does not choose";
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(rows()[0].selectedTrack->path, "/Music/a.mp3") << "undone";
}

TEST_F(ResultsPage, KeepsTheListClearOfItsPickerAndOfARestingPointer) {
    std::vector<Track> many;
    for (int i = 0; i < 40; ++i)
        many.push_back(track("Night Band", "Take " + std::to_string(i)));
    view.matchedTracks.set({row("A", "1", many), row("A", "2", many), row("A", "3", many)});
    window.settle();
    for (const char* label : {"A – 1", "A – 2", "A – 3"}) {
        const auto picker = window.inRow(label, "Choose match");
        const QRectF box = picker.sceneRect();
        window.click(picker);
        const auto list = window.control("Choose match", QAccessible::List);
        EXPECT_FALSE(list.sceneRect().intersects(box)) << label;
        QTest::mouseMove(window.window(), list.sceneRect().center().toPoint()); // the pointer rests there
        window.settle();
        window.key(Qt::Key_Return);
        window.expectGone("Choose match", QAccessible::List);
    }
    for (const MatchedTrack& each : rows())
        EXPECT_EQ(each.selectedTrack->path, many.front().path);
}

TEST_F(ResultsPage, CanBePressedByAScreenReader) {
    window.press(window.inRow(single, "Include in playlist"));
    EXPECT_TRUE(rows()[1].include);
    window.press(window.inRow(single, "Play"));
    EXPECT_TRUE(view.isPlaying.get());
    window.press(window.inRow(several, "Choose match"));
    window.expectShown("Choose match", QAccessible::List);
    window.press(window.control("Night Band – Last Train Home (Live)", QAccessible::ListItem));
    EXPECT_EQ(rows()[0].selectedTrack->path, "/Music/b.mp3");
}

TEST_F(ResultsPage, ListsItsRowsInOrderForAScreenReader) {
    showMany(60, {track("Artist", "one")});
    auto* list = QAccessible::queryAccessibleInterface(window.control("Results", QAccessible::List).item);
    for (const int position : {59, 0, 30}) { // leaves rows that wait for reuse
        QMetaObject::invokeMethod(list->object(), "positionViewAtIndex", Q_ARG(int, position), Q_ARG(int, 0));
        window.settle();
        ASSERT_GT(list->childCount(), 3);
        const int first = list->child(0)->object()->property("index").toInt();
        for (int i = 0; i < list->childCount(); ++i) {
            EXPECT_EQ(list->child(i)->text(QAccessible::Name), "Artist – " + QString::number(first + i));
            EXPECT_EQ(list->indexOfChild(list->child(i)), i);
        }
    }
    EXPECT_EQ(window.inRow("Artist – 30", "Include in playlist").description(), "file proposed");
}

TEST_F(ResultsPage, OffersWhatEachRowAllowsAndTellsWhichNeedADecision) {
    const auto said = [&](const char* row) {
        return window.control(row, QAccessible::Grouping).description();
    };
    EXPECT_EQ(window.all("Choose match", QAccessible::ComboBox).size(), 1U) << "only for several candidates";
    EXPECT_EQ(window.all("Play").size(), 2U) << "only where a file is chosen";
    EXPECT_EQ(said(several), "1 of 3, needs a choice") << "the first of several is only a proposal";
    EXPECT_EQ(said(single), "2 of 3, file proposed");
    EXPECT_EQ(said(none), "3 of 3, no file found");
    window.click(window.inRow(several, "Choose match"));
    window.key(Qt::Key_Return);
    window.expectGone("Choose match", QAccessible::List);
    window.click(window.inRow(single, "Include in playlist"));
    EXPECT_EQ(said(several), "1 of 3, file chosen") << "the first, by the user";
    EXPECT_EQ(said(single), "2 of 3, in the playlist");
    window.platform.dialogs.willOpen({"/Music/e.mp3"});
    window.click(window.inRow(none, "Browse for file"));
    window.expectShown("File: /Music/e.mp3");
    EXPECT_TRUE(rows()[2].selectedTrack.has_value());
}

TEST_F(ResultsPage, LeadsToWhatIsLeftToDo) {
    const auto row = [&] { return rowOfFocus(); };
    EXPECT_TRUE(window.shows("1 without a file"));
    EXPECT_TRUE(window.shows("1 to choose"));
    EXPECT_TRUE(window.shows("1 with a proposed file"));
    EXPECT_FALSE(window.control("0 in the playlist").enabled());
    window.click("1 with a proposed file");
    EXPECT_EQ(row(), 1);
    window.click("1 without a file");
    EXPECT_EQ(row(), 2);
    EXPECT_EQ(window.focused(), "Browse for file");
    window.click("Select All");
    window.click("2 in the playlist");
    EXPECT_EQ(row(), 0);
    window.key(Qt::Key_N);
    EXPECT_EQ(row(), 1);
    window.key(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(row(), 0);
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(window.shows("0 tracks selected")) << "Select All is one step";

    window.key(Qt::Key_F, Qt::ControlModifier);
    window.type("nóthing");
    window.key(Qt::Key_Escape);
    EXPECT_EQ(row(), 2);
    EXPECT_TRUE(view.showResultsPage.get()) << "Escape leaves the field first";
    for (const Qt::Key letter : {Qt::Key_A, Qt::Key_A, Qt::Key_X}) { // the artist's; no artist's
        window.key(letter);
        EXPECT_EQ(row(), 1) << letter;
    }
    window.key(Qt::Key_F1);
    window.expectShown("Keys", QAccessible::Dialog);
    window.key(Qt::Key_Escape);
    window.expectGone("Keys", QAccessible::Dialog);
    EXPECT_TRUE(view.showResultsPage.get());
}

TEST_F(ResultsPage, LeadsTheKeysFromASuggestionToItsFile) {
    view.matchedTracks.set({row("Aba", "Dancing Qeen")});
    replaceIndex(view, buildIndex(std::vector{track("ABBA", "Dancing Queen")}));
    EXPECT_TRUE(window.waitFor([&] { return window.shows("Did you mean ABBA – Dancing Queen?"); }));
    window.key(Qt::Key_N);
    EXPECT_EQ(window.focused(), "Did you mean ABBA – Dancing Queen?");
    window.key(Qt::Key_Return);
    EXPECT_TRUE(window.waitFor([&] { return window.focused() == "Play"; }));
}

TEST_F(ResultsPage, IncludesRowsAndExportsThemSayingWhatIsMissing) {
    const char* const caption = "2 files will be written; 1 selected row has no file";
    EXPECT_FALSE(window.control("Export Playlist").enabled());
    window.click(window.inRow(single, "Include in playlist"));
    window.expectShown("1 track selected");
    EXPECT_FALSE(window.shows(caption));
    window.click("Select All");
    window.expectShown("3 tracks selected");
    EXPECT_TRUE(window.shows(caption));
    window.click("Copy Missing");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Nobody – Nothing\n");
    window.click("VirtualDJ (M3U)");
    EXPECT_TRUE(std::ranges::any_of(window.everything(),
                                    [](const auto& shown) { return shown.name.startsWith("Tip: "); }));
    window.platform.dialogs.willSaveTo(window.platform.support().path("party.m3u"));
    window.click("Export Playlist");
    EXPECT_TRUE(window.platform.support().exists("party.m3u"));
    window.expectShown("✅ Playlist Exported Successfully!");
    window.click("How to use in Rekordbox");
    EXPECT_EQ(window.platform.dialogs.messages.size(), 1U);
    window.click("Deselect All");
    window.expectShown("0 tracks selected");
    view.isAutoSaving.set(true);
    window.settle();
    EXPECT_EQ(window.control("Auto-save enabled", QAccessible::Graphic).description(), "saving");
}

TEST_F(ResultsPage, LeadsTheKeysThroughRowsThatDoNotExistYet) {
    showMany(18, {track("Artist", "one")});
    window.control("Find").item->forceActiveFocus(Qt::TabFocusReason);
    for (int i = 0; i < 18; ++i)
        for (const char* name : {"Play", "Browse for file", "Find in library", "Include in playlist"}) {
            window.key(Qt::Key_Tab);
            ASSERT_EQ(window.focused(), name) << "row " << i;
            ASSERT_EQ(rowOfFocus(), i) << name;
        }
    window.key(Qt::Key_Tab);
    EXPECT_EQ(window.focused(), "M3U");
    window.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window.focused(), "Include in playlist");
    EXPECT_EQ(rowOfFocus(), 17);
    window.key(Qt::Key_Space);
    EXPECT_TRUE(rows()[17].include);
    for (int i = 16; i >= 0; --i) {
        window.key(Qt::Key_Up);
        ASSERT_EQ(rowOfFocus(), i);
    }
    EXPECT_EQ(window.focused(), "Include in playlist");
    window.key(Qt::Key_Up);
    EXPECT_EQ(window.focused(), "Find");
}

TEST_F(ResultsPage, NeverGivesAKeyToARowThatTheUserDidNotFocus) {
    showMany(60, {track("A", "B"), track("C", "D")});
    auto* list = window.control("Results", QAccessible::List).item.data();
    const auto scrollTo = [&](double y) {
        list->setProperty("contentY", y);
        window.settle();
    };
    for (const double away : {300.0, 4000.0}) // within the cached rows, and beyond
        for (const char* name : {"Play", "Choose match", "Include in playlist"}) {
            scrollTo(0);
            window.inRow("Artist – 0", name).item->forceActiveFocus(Qt::TabFocusReason);
            scrollTo(away);
            EXPECT_EQ(window.focused(), "Results");
            window.key(Qt::Key_Space);
            EXPECT_EQ(window.focused(), name) << "the key only scrolls back";
            EXPECT_FALSE(rows()[0].include) << name;
        }
    window.key(Qt::Key_Space);
    EXPECT_TRUE(rows()[0].include);
    window.key(Qt::Key_End);
    window.key(Qt::Key_Space);
    EXPECT_TRUE(rows()[59].include);
    EXPECT_TRUE(window.platform.audioPlayers.playbacks.empty());
}

TEST_F(ResultsPage, ComesBackByItsButtonAsItWas) {
    EXPECT_FALSE(window.shows("Back to Results"));
    window.click(window.inRow(single, "Include in playlist"));
    window.click("Close");
    window.expectGone("Playlist Results");
    view.matchedTracks.update([](auto& edited) { edited[0].title = "By Hand"; }); // as in an edited session
    window.click("Back to Results");
    window.expectShown("Night Band – By Hand");
    EXPECT_TRUE(rows()[1].include);
    view.showResultsPage.set(false);
    view.matchedTracks.set({});
    window.expectGone("Back to Results");
}

} // namespace
} // namespace orvalen::test
