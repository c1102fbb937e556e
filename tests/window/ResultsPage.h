#pragma once

#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {

/// The results page with three rows: several candidates, one candidate, no candidate.
class ResultsPage : public testing::Test {
protected:
    static constexpr auto several = "Night Band – Last Train Home";
    static constexpr auto single = "ABBA – Dancing Queen";
    static constexpr auto none = "Nobody – Nothing";

    ResultsPage() {
        view.musicFolderURLs.set({{"/Music"}});
        view.matchedTracks.set(
            {row("Night Band", "Last Train Home",
                 {track("Night Band", "Last Train Home", 128, "/Music/a.mp3"),
                  track("Night Band", "Last Train Home (Live)", {}, "/Music/b.mp3"),
                  track("NIGHT BAND", "last train home", 127, "/Music/c.mp3")}),
             row("ABBA", "Dancing Queen", {track("ABBA", "Dancing Queen", {}, "/Music/d.mp3")}),
             row("Nobody", "Nothing")});
        window.openResults();
    }

    /// Shows `count` rows with the same candidates. Their artist is "Artist", their title a number.
    void showMany(int count, const std::vector<Track>& options) {
        std::vector<MatchedTrack> many;
        for (int i = 0; i < count; ++i)
            many.push_back(row("Artist", std::to_string(i), options));
        view.matchedTracks.set(many);
        window.settle();
    }
    /// Returns the position of the row that has the focus, or -1.
    int rowOfFocus() const {
        for (QQuickItem* it = window.window()->activeFocusItem(); it != nullptr; it = it->parentItem())
            if (it->property("label").isValid() && it->property("index").isValid())
                return it->property("index").toInt();
        return -1;
    }
    std::vector<MatchedTrack> rows() const { return view.matchedTracks.get(); }
    FakePlayback& lastPlayback() { return *window.platform.audioPlayers.playbacks.back(); }

    WindowHarness window;
    ContentView& view = window.view;
};

} // namespace orvalen::test
