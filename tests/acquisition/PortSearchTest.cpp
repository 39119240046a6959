// SPDX-License-Identifier: MIT
#include "acquisition/PortSearch.h"

#include "acquisition/LinkedTest.h"

namespace {

constexpr int Missing = ErrorNumber::InvalidPortNumber;
constexpr int Busy = ErrorNumber::PortAlreadyOpen;

} // namespace

/// A computer whose ports 1 to 3 exist; the dialog is an operator who acts as told.
class PortSearchTest : public testing::Test, protected AcquisitionRig {
protected:
    PortSearchTest() {
        ComPort.setPortOpen(false);
        for (int port = 4; port <= 10; ++port)
            set(port, Missing);
    }
    void set(int port, int error) { ComPort.failing[port] = CommTmp.failing[port] = error; }
    void pick(int port) {
        setup.optCom_Click(port - 1);
        EXPECT_TRUE(setup.ok());
    }

    PortSetup &setup = acquisition.setup;
    PortSearch &search = acquisition.search;
    std::function<void()> &operatorActs = window.whileSetup;
};

TEST_F(PortSearchTest, TheFirstCopyTakesTheStoredPort) {
    options.ComPortNumber = 3;
    EXPECT_TRUE(search.chooseAtStart());
    EXPECT_TRUE(window.showings.empty() && !ComPort.PortOpen() && !CommTmp.PortOpen());
    search.openAtStart();
    EXPECT_TRUE(ComPort.PortOpen() && ComPort.CommPort() == 3 && ComPort.inBufferSize == 32000);
}

TEST_F(PortSearchTest, OnlyPortsThatAreMissingOrHeldAreTakenAway) {
    set(2, ErrorNumber::PathFileAccess);
    set(3, Busy);
    setup.load();
    EXPECT_EQ(setup.choices().enabled, (std::array<bool, 10>{true, true}));
}

TEST_F(PortSearchTest, AHeldStoredPortIsLeftToTheOperator) {
    set(1, Busy);
    operatorActs = [&] {
        EXPECT_EQ(setup.SelectedComPort(), 1);
        EXPECT_FALSE(setup.choices().has(1));
        EXPECT_EQ(options.ComPortNumber, 2); // the first free one, though the stored one is shown
        EXPECT_FALSE(setup.ok());
        EXPECT_EQ(options.ComPortNumber, 2);
        pick(3);
    };
    EXPECT_TRUE(search.chooseAtStart());
    EXPECT_EQ(window.showings.join(','), "must choose");
    EXPECT_EQ(prompts.shown.at(0).text, "Cannot open the selected communication port\r" + RunTimeError::describe(Busy));
    EXPECT_FALSE(TimerCheckComData.Enabled() || ComPort.PortOpen());
    EXPECT_TRUE(ComPort.CommPort() == 3 && options.ComPortNumber == 3);

    operatorActs = [&] { pick(2); };
    options.ComPortNumber = 11; // which no port has
    EXPECT_TRUE(search.chooseAtStart());
    EXPECT_EQ(window.showings.size(), 2);
}

TEST_F(PortSearchTest, AFailedOpeningIsToldAndAMissingPortAsked) {
    ComPort.setCommPort(2);
    set(2, Busy);
    search.openAtStart();
    EXPECT_TRUE(window.showings.empty());
    set(2, Missing);
    search.openAtStart();
    EXPECT_EQ(window.showings.size(), 1);
    EXPECT_EQ(errors.codes, (std::vector<qint32>{Busy, Missing}));
}

TEST_F(PortSearchTest, AChangeThatFailsBringsTheOldPortBack) {
    search.openAtStart();
    link.StatusBlocksSeen = true;
    operatorActs = [&] {
        search.mnuComPort_Click(); // by way of the lost-link dialog
        setup.optCom_Click(1);
        set(2, Busy);
        EXPECT_FALSE(setup.ok());
        EXPECT_TRUE(ComPort.PortOpen() && ComPort.CommPort() == 1 && options.ComPortNumber == 1);
        ComPort.failing.erase(2);
        EXPECT_TRUE(setup.ok());
    };
    search.mnuComPort_Click();
    EXPECT_EQ(window.showings.join(','), "may cancel");
    EXPECT_TRUE(ComPort.PortOpen() && ComPort.CommPort() == 2 && TimerCheckComData.Enabled());
    EXPECT_FALSE(link.StatusBlocksSeen);
    EXPECT_EQ(prompts.shown.size(), 1);
}
