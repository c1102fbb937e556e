#include "app/window/bridge/Drops.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"
#include "window/WindowHarness.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

QList<QUrl> urls(const std::vector<std::string>& paths) {
    QList<QUrl> result;
    for (const std::string& path : paths)
        result.append(QUrl::fromLocalFile(QString::fromStdString(path)));
    return result;
}

class DropTest : public testing::Test {
protected:
    /// Drags the files over the window, reads its text, and drops them.
    QString drop(const std::vector<std::string>& paths, const QPoint& place = {300, 300}) {
        QMimeData data;
        data.setUrls(urls(paths));
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.window(), &enter);
        window.settle();
        QString said;
        for (const auto& control : window.everything())
            if (QRegularExpression("^(Drop|Wait|Only|Answer) ").match(control.name).hasMatch())
                said = control.name;
        QDropEvent let(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.window(), &let);
        window.settle();
        return said;
    }

    TemporaryFolder files;
    const std::string folder = files.makeFolder("House.mp3.d");
    const std::string csv = files.write("event.CSV", "head\n");
    WindowHarness window;
};

TEST_F(DropTest, TakesWhatTheDialogWouldTake) {
    EXPECT_EQ(sortDrop(urls({folder + "/"}), InputMode::textList).music, std::vector<Location>{{folder}});
    const std::vector<std::string> music{folder, files.write("a.mp3"), files.write("b.AIFF"),
                                         files.write("c d#%é.wav")};
    QList<QUrl> given = urls(music);
    given += urls({csv, files.write("cover.jpg"), files.write("video.mp4")});
    given.append(QUrl("https://orvalen.example/x.mp3"));
    std::vector<Location> expected;
    for (const std::string& path : music)
        expected.push_back({path});
    EXPECT_EQ(sortDrop(given, InputMode::textList).music, expected);
    EXPECT_FALSE(sortDrop(given, InputMode::textList).eventList);
    EXPECT_EQ(sortDrop(given, InputMode::djep).eventList, Location{csv});
}

TEST_F(DropTest, AddsMusicUnlessAScanRuns) {
    window.view.scanProgress.set(0.5);
    EXPECT_EQ(drop({folder}), "Wait until the scan is done");
    EXPECT_TRUE(window.view.musicFolderURLs.get().empty());
    window.view.scanProgress.set(0);
    EXPECT_EQ(drop({folder}), "Drop to add to your library");
    EXPECT_EQ(window.view.musicFolderURLs.get(), std::vector{Location{folder}});
    EXPECT_FALSE(window.shows("Drop to add to your library"));
}

TEST_F(DropTest, TakesOnTheResultsPageOneAudioFileForARow) {
    window.view.matchedTracks.set({row("A", "1"), row("A", "2")});
    window.openResults();
    const std::string song = files.write("song.mp3");
    const QPoint onRow = window.control("A – 2", QAccessible::Grouping).sceneRect().center().toPoint();
    const QPoint beside = window.control("Select All").sceneRect().center().toPoint();
    EXPECT_EQ(drop({song}, beside), "Drop the file on a row");
    EXPECT_EQ(drop({song, song}, onRow), "Only one audio file at a time, dropped on a row");
    EXPECT_EQ(drop({folder}, onRow), "Only one audio file at a time, dropped on a row");
    window.view.showDeleteLibraryConfirmation.set(true);
    window.settle();
    EXPECT_EQ(drop({song}, onRow), "Answer the question before you drop files");
    window.view.showDeleteLibraryConfirmation.set(false);
    window.settle();
    EXPECT_FALSE(window.view.matchedTracks.get()[1].selectedTrack);
    EXPECT_EQ(drop({song}, onRow), "");
    ASSERT_TRUE(window.view.matchedTracks.get()[1].selectedTrack);
    EXPECT_EQ(window.view.matchedTracks.get()[1].selectedTrack->path, song);
    EXPECT_TRUE(window.view.musicFolderURLs.get().empty()) << "no drop became a music folder";
}

TEST_F(DropTest, ImportsAnEventListWhereItBelongs) {
    EXPECT_EQ(drop({csv}), "") << "not in the track list";
    window.view.inputMode.set(InputMode::djep);
    EXPECT_EQ(drop({csv}), "Drop to import the DJEP CSV");
    EXPECT_EQ(window.view.inputMode.get(), InputMode::textList) << "the imported list is shown";
}

} // namespace
} // namespace orvalen::test
