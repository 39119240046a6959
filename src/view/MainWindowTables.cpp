// SPDX-License-Identifier: MIT
#include "view/MainWindowTables.h"

namespace ostrel {

namespace MainWindowTables {

namespace {

// clang-format off
constexpr MenuRow fileMenu[] = {
    // name                caption                      shortcut
    {"mnuOpenData",        "&Open Data...",             "Ctrl+O"},
    {"mnuSpace0",          "-",                         ""},
    {"mnuOpenLog",         "Open &Log...",              ""},
    {"mnuSpace1",          "-",                         ""},
    {"mnuClose",           "&Close",                    "Ctrl+C", false},
    {"mnuSpace2",          "-",                         ""},
    {"mnuSaveData",        "&Save Data",                "Ctrl+S"},
    {"mnuSaveDataAs",      "Save Data &As...",          ""},
    {"mnuSaveSlectedData", "Save Selec&ted Data As...", ""},
    {"mnuSpace3",          "-",                         ""},
    {"mnuSaveLog",         "Save Lo&g...",              "",       false},
    {"mnuSpace4",          "-",                         ""},
    {"mnuExport",          "&Export",                   "Ctrl+E"},
    {"mnuSpace5",          "-",                         ""},
    {"mnuPrintSetup",      "P&rint Setup",              ""},
    {"mnuPrint",           "&Print...",                 "Ctrl+P"},
    {"mnuSpace6",          "-",                         ""},
    {"mnuExit",            "E&xit",                     ""},
};
constexpr MenuRow collectMenu[] = {
    {"mnuStart",           "&Record",                   "Ctrl+R"},
    {"mnuStop",            "&Stop",                     "Ctrl+T"},
    {"mnuSpace7",          "-",                         ""},
    {"mnuClear",           "&Clear Chart Recorder",     ""},
    {"mnuSpace8",          "-",                         ""},
    {"mnuLogOn",           "&Log ON",                   ""},
    {"mnuLogOff",          "Log O&FF",                  ""},
    {"mnuSpace9",          "-",                         ""},
    {"mnuLogName",         "Velquin System &Name",      ""},
    {"mnuComPort",         "COM &Port",                 ""},
};
constexpr MenuRow viewMenu[] = {
    {"mnuMethod",          "&Method",                   "Ctrl+M"},
    {"mnuNotes",           "&Notes",                    "Ctrl+N"},
};
constexpr MenuRow helpMenu[] = {
    {"mnuIntro",           "Introduction to &Ostrel",   ""},
    {"mnuIndex",           "Help &Index",               ""},
    {"mnuAbout",           "&About",                    ""},
};
constexpr Menu menuBar[] = {
    {"mnuFile",       "&File",         fileMenu},
    {"mnuColectData", "Collect &Data", collectMenu},
    {"mnuView",       "&View",         viewMenu},
    {"mnuHelp",       "&Help",         helpMenu},
};

using enum ButtonStyle;
constexpr ButtonRow toolbar[] = {
    // key         caption    tool-tip                       style        pressed image
    {"cmdOpen",    "Open",    "Open data file",              Plain,       false,  "picOpen"},
    {"cmdSave",    "Save",    "Save Chart Recorder",         Plain,       false,  "picSave"},
    {"cmdPrint",   "Print",   "Print graph",                 Plain,       false,  "picPrint"},
    {"cmdClear",   "Clear",   "Clear Chart Recorder  data",  Plain,       false,  "picClear"},
    {"",           "",        "",                            Separator,   false,  ""},
    {"cmdRecord",  "Record",  "Start record form Velquin",   Group,       false,  "picRecord"},
    {"cmdStop",    "Stop",    "Stop record form Velquin",    Group,       true,   "picStop"},
    {"",           "",        "",                            Separator,   false,  ""},
    {"cmdMethod",  "Methods", "Show Methods",                Check,       false,  "picMethod"},
    {"cmdNotes",   "Notes",   "Show Notes ",                 Check,       false,  "picNotes"},
    {"",           "",        "",                            Placeholder, false,  ""},
    {"cmdLogOn",   "Log ON",  "Start log data.",             Group,       true,   "picLogOn"},
    {"cmdLogOff",  "Log OFF", "Stop log data.",              Group,       false,  "picLogOff"},
};

constexpr ControlRow panels[] = {
    // name             kind          text                 parent            left   top   width height
    {"FrameScaleAxis",  Kind::Frame,  "",                  "",                240, 5760,  7750, 1095},
    {"FrameAxis(0)",    Kind::Frame,  "UV Axis",           "FrameScaleAxis",   50,    0,  2325, 1030, Ink::Blue},
    {"cmbYAxis(0)",     Kind::Combo,  "2.000",             "FrameAxis(0)",     90,  240,   915,  315, Ink::Plain, "UV full scale, AUFS"},
    {"lblAxis(0)",      Kind::Label,  "AUFS",              "FrameAxis(0)",   1030,  280,   495,  255},
    {"cmdSet(0)",       Kind::Button, "Set",               "FrameAxis(0)",   1560,  230,   650,  400, Ink::Plain, "Set UV axis"},
    {"txtYAxisMin(0)",  Kind::Text,   "-0.200",            "FrameAxis(0)",     90,  600,   915,  315, Ink::Plain, "UV axis minimum"},
    {"lblAxisMin(0)",   Kind::Label,  "Axis Minimum",      "FrameAxis(0)",   1030,  700,  1095,  255},
    {"FrameAxis(1)",    Kind::Frame,  "Time Axis",         "FrameScaleAxis", 2400,    0,  2970, 1030},
    {"optTimeAxis(0)",  Kind::Option, "Full View",         "FrameAxis(1)",    120,  290,  1275,  255},
    {"optTimeAxis(1)",  Kind::Option, "Window:",           "FrameAxis(1)",    120,  680,   975,  255},
    {"txtChartTime",    Kind::Text,   "10.0",              "FrameAxis(1)",   1080,  630,   750,  315, Ink::Plain, "Window, minutes"},
    {"lblWindow",       Kind::Label,  "Minutes",           "FrameAxis(1)",   1875,  700,   735,  255},
    {"cmdSetTime",      Kind::Button, "Set",               "FrameAxis(1)",   2200,  230,   650,  400, Ink::Plain, "Set time window"},
    {"cmdRegistry",     Kind::HiddenButton, "Registry",    "FrameAxis(1)",   1320,  240,   615,  255},
    {"FrameAxis(2)",    Kind::Frame,  "Conductivity Axis", "FrameScaleAxis", 5400,    0,  2325, 1030, Ink::Red},
    {"cmbYAxis(1)",     Kind::Combo,  "500.0",             "FrameAxis(2)",     90,  240,   915,  315, Ink::Plain, "Conductivity full scale, mSFS"},
    {"lblAxis(2)",      Kind::Label,  "mSFS",              "FrameAxis(2)",   1030,  280,   615,  255},
    {"cmdSet(1)",       Kind::Button, "Set",               "FrameAxis(2)",   1560,  230,   650,  400, Ink::Plain, "Set conductivity axis"},
    {"txtYAxisMin(1)",  Kind::Text,   "0.0",               "FrameAxis(2)",     90,  630,   915,  315, Ink::Plain, "Conductivity axis minimum"},
    {"lblAxisMin(1)",   Kind::Label,  "Axis Minimum",      "FrameAxis(2)",   1030,  700,  1095,  255},
};

constexpr ControlRow leds[] = {
    // name             kind           text                     parent       left  top  width height
    {"frameLeds",       Kind::Frame,   "",                      "",          7320, 600, 2085, 400},
    {"lblRecive",       Kind::Label,   "Receive:",              "frameLeds",   15, 120,  630, 210},
    {"ShapeReciveLed",  Kind::Led,     "",                      "frameLeds",  720, 140,  150, 150, Ink::Plain, "Receive"},
    {"ImgLogo",         Kind::Picture, ":/pictures/ImgLogo.svg", "frameLeds", 960,  45, 1110, 330},
};
// clang-format on

} // namespace

std::span<const Menu> menus() { return menuBar; }
std::span<const ButtonRow> buttons() { return toolbar; }
std::span<const ControlRow> axisControls() { return panels; }
std::span<const ControlRow> ledControls() { return leds; }

} // namespace MainWindowTables

} // namespace ostrel
