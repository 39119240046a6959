// SPDX-License-Identifier: MIT
#include "forms/FormBuilder.h"

#include "forms/FormPlaces.h"

#include <QApplication>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

TEST(FormPlaces, MakeRoomForLargerTextsInTheirRowAndKeepRowsTogether) {
    // A panel that holds "Window:" [entry] "Minutes" in one row and a button above, drawn for texts 200 twips high.
    enum { Panel, Option, Entry, Units, Button };
    const std::vector<FormPlace> drawn{
        {-1, {50, 0, 2000, 1000}, {}},
        {Panel, {100, 600, 900, 300}, {900, 200}},
        {Panel, {1000, 600, 500, 300}, {400, 200}},
        {Panel, {1520, 600, 400, 300}, {300, 200}},
        {Panel, {1400, 100, 500, 400}, {300, 200}},
    };
    std::vector<FormPlace> places = drawn;
    places[Option].needs.setWidth(1000);
    makeRoom(places);
    EXPECT_EQ(places[Entry].at.left(), 1100);
    EXPECT_EQ(places[Units].at.left(), 1620);
    EXPECT_EQ(places[Button].at.left(), 1400);
    EXPECT_EQ(places[Panel].at.width(), 2040);

    places = drawn; // and its label reaches into its neighbour, where its text alone counts
    places[Option].at.setWidth(950);
    places[Option].needs.setWidth(880);
    makeRoom(places);
    EXPECT_EQ(places[Entry].at.left(), 1000);

    places = drawn;
    places[Entry].needs.setHeight(600);
    makeRoom(places);
    EXPECT_EQ(places[Panel].at.height(), 2000);
    EXPECT_EQ(places[Button].at.top(), 200);
}

TEST(FormBuilderTest, InkIsLegibleOnLightAndDark) {
    QWidget form;
    constexpr ControlRow rows[] = {{"frmAxis", Kind::Frame, "Axis", "", 0, 0, 3000, 1500, Ink::Blue},
                                   {"txtMin(0)", Kind::Text, "-0.2", "frmAxis", 30, 800, 900, 315}};
    FormBuilder(form).build(rows);
    const auto *entry = form.findChild<TextEntry *>("txtMin(0)");
    for (const QColor ground : {QColor(Qt::white), QColor(32, 32, 32)}) {
        form.setPalette(QPalette(ground));
        const QColor ink = entry->palette().color(QPalette::Text);
        EXPECT_GT(ink.blue(), ink.red());
        EXPECT_GT(std::abs(qGray(ink.rgb()) - qGray(ground.rgb())), 100);
    }
}

} // namespace
