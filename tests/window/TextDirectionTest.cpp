#include "app/window/bridge/TextDirection.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(TextDirection, IsolatesRightToLeftNames) {
    for (const auto& [text, expected] : {
             std::pair{u"ABBA – SOS (120 BPM)", u"ABBA – SOS (120 BPM)"},
             {u"عمرو – نور (128 BPM)", u"\u200e\u2068عمرو – نور\u2069 (128 BPM)"},
             {u"שלום", u"\u200e\u2068שלום\u2069"},
         })
        EXPECT_EQ(directedSong(QString::fromUtf16(text)), QString::fromUtf16(expected));
    for (const auto& [text, expected] : {
             std::pair{u"File: /Music/a.mp3", u"File: /Music/a.mp3"},
             {u"File: /M/عمرو/نور.mp3", u"\u200eFile: /\u2068M\u2069/\u2068عمرو\u2069/\u2068نور.mp3\u2069"},
         })
        EXPECT_EQ(directedPath(QString::fromUtf16(text)), QString::fromUtf16(expected));
}

} // namespace
} // namespace orvalen::test
