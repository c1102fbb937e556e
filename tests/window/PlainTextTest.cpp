#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

constexpr auto marked = "<b>x</b><img src='http://a.example/x.png'>&amp;";

/// Text from outside is shown as it is: no view may take any of it for markup, fetch a picture for it or
/// guess.
TEST(PlainText, IsWhatEveryViewShows) {
    WindowHarness window;
    window.view.musicFolderURLs.set({{std::string("/Music/") + marked}});
    window.view.scanProgress.set(0.5);
    window.view.scanningFileName.set(marked);
    window.view.matchInput.set(marked);
    window.view.matchedTracks.set(
        {row(marked, marked, {track(marked, marked, 120), track(marked, "other", {})}), row(marked, "none")});
    window.openResults();
    EXPECT_TRUE(window.shows(QString("File: /Music/%1 - %1.mp3").arg(marked)));
    window.click(window.inRow(QString("%1 – %1").arg(marked), "Choose match"));
    window.expectShown("Choose match", QAccessible::List);

    int texts = 0;
    int withMarkup = 0;
    window.eachItem([&](const QQuickItem& item) {
        const QVariant format = item.property("textFormat");
        if (!format.isValid())
            return;
        const QString text = item.property("text").toString();
        ++texts;
        withMarkup += text.contains(marked);
        EXPECT_EQ(format.toInt(), int(Qt::PlainText)) << text.toStdString();
    });
    EXPECT_GT(texts, 40) << "the whole window was looked at";
    EXPECT_GE(withMarkup, 6) << "and the texts from outside are in it";
}

} // namespace
} // namespace orvalen::test
