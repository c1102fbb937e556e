#include "core/LibraryIndexBuilder.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "window/WindowHarness.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

QString ofEditor(WindowHarness& window, const char* property) {
    return window.control("Wanted list").item->property(property).toString();
}

TEST(ListHelp, SaysWhichLinesAreLeftOutAndShowsThem) {
    WindowHarness window;
    window.view.matchInput.set("ABBA – SOS\n\nno dash here\nA – B – C");
    window.expectShown("3 lines: 1 is read, 2 are left out");
    window.click("Lines that are left out");
    const auto line = window.control("A – B – C", QAccessible::Button);
    EXPECT_EQ(line.description(), "more than one dash with spaces");
    window.press(line);
    EXPECT_EQ(ofEditor(window, "selectedText"), "A – B – C");
    replaceIndex(window.view, buildIndex(std::vector{track("ABBA", "SOS")}));
    window.settle();
    window.click("Match Playlist");
    window.expectShown("2 lines of the list were left out");
    window.click("Close");
    window.view.matchInput.set({});
    window.expectGone("3 lines: 1 is read, 2 are left out");
    window.expectGone("Lines that are left out");
}

TEST(ListHelp, TidiesTheListAsOneEditThatCanBeUndone) {
    WindowHarness window;
    const std::string before = "1. ABBA – SOS\n2. Robyn\tHang With Me\n3. Adele – Hello (please!!)";
    window.view.matchInput.set(before);
    window.settle();
    EXPECT_EQ(window.view.matchInput.get(), before) << "nothing is tidied unasked";
    window.click("Tidy List");
    EXPECT_TRUE(window.waitFor([&] {
        return window.view.matchInput.get() == "ABBA – SOS\nRobyn – Hang With Me\nAdele – Hello";
    })) << window.view.matchInput.get();
    window.click("Wanted list");
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(window.waitFor([&] { return window.view.matchInput.get() == before; }))
        << window.view.matchInput.get();
}

TEST(ListHelp, AsksAboutLinesThatOnlyTheUserCanDecide) {
    WindowHarness window;
    replaceIndex(window.view, buildIndex(std::vector{track("ABBA", "Dancing Queen")}));
    window.view.matchInput.set(
        "Dancing Queen by ABBA\nHalo by Beyoncé\nStand By Me by Ben E. King\nHello by Adele");
    window.settle();
    window.click("Tidy List");
    window.expectShown("Line to decide: Dancing Queen by ABBA", QAccessible::Grouping);
    EXPECT_EQ(ofEditor(window, "selectedText"), "Dancing Queen by ABBA");
    window.key(Qt::Key_Tab, Qt::ShiftModifier);
    window.key(Qt::Key_Space);
    window.expectShown("Line to decide: Halo by Beyoncé", QAccessible::Grouping);
    window.settle();
    window.key(Qt::Key_A);
    window.expectShown("Line to decide: Stand By Me by Ben E. King", QAccessible::Grouping);
    window.key(Qt::Key_L);
    window.expectShown("Line to decide: Hello by Adele", QAccessible::Grouping);
    window.key(Qt::Key_Escape);
    window.expectGone("Leave All");
    EXPECT_TRUE(window.waitFor([&] {
        return window.view.matchInput.get() ==
               "ABBA – Dancing Queen\nBeyoncé – Halo\nStand By Me by Ben E. King\nHello by Adele";
    })) << window.view.matchInput.get();
}

} // namespace
} // namespace orvalen::test
