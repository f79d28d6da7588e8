// The inbox channels: a map point dropped into the watched folder moves the
// view (once for a burst of writes), copied coordinates become ONC pairs with
// the clicked model point, and a hand-over writes the clicked point.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>

#include "app/inbox/ClipboardInbox.h"
#include "app/inbox/FolderWatch.h"
#include "app/inbox/FolderWatchChange.h"
#include "app/inbox/Handover.h"
#include "app/inbox/InboxState.h"
#include "app/model/ModelSession.h"
#include "app/services/RunLog.h"
#include "app/session/DispatchState.h"
#include "app/session/StartupState.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class Inbox : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "zv_inbox";
        static char* argv[] = {name, nullptr};
        static QCoreApplication application(argc, argv);
    }
    void SetUp() override {
        resetInboxState();
        resetFrameState();
        resetDispatchState();
        resetModelSession();
        startupState().MONITOREDFOLDER = dir.path("JFR/");
        QDir().mkpath(QString::fromStdString(startupState().MONITOREDFOLDER));
        At3d_SetCameraViewPoint(0, 0, 0);
    }
    void TearDown() override { RemoveWatches(); }

    static std::array<double, 3> viewPoint() {
        std::array<double, 3> p{};
        At3d_GetCameraViewPoint(&p[0], &p[1], &p[2]);
        return p;
    }
    std::string inbox(const char* name) const { return startupState().MONITOREDFOLDER + name; }

    testsupport::ScratchDir dir;
    testsupport::EngineFixtureGuard engine;
};

}  // namespace

TEST_F(Inbox, ACentreFileMovesTheViewOnceForABurstOfChanges) {
    frameState().OriginalobjectCenter[0] = 1000;
    writeTextFile(inbox("Center3DView.tmp"), "1010.5 2020 30\n");
    FolderWatchOnChangeEx(FOLDER_MODIFIED, "Center3DView.tmp");
    EXPECT_EQ(viewPoint(), (std::array<double, 3>{10.5, 2020, 30}));
    writeTextFile(inbox("Center3DView.tmp"), "1100 2100 40\n");
    FolderWatchOnChangeEx(FOLDER_MODIFIED, "Center3DView.tmp");
    EXPECT_EQ(viewPoint(), (std::array<double, 3>{10.5, 2020, 30}));
}

TEST_F(Inbox, AnUnreadableCentreLeavesTheView) {
    writeTextFile(inbox("Center3DView.tmp"), "five 5 5\n");
    FolderWatchOnChangeEx(FOLDER_ADDED, "Center3DView.tmp");
    EXPECT_EQ(viewPoint(), (std::array<double, 3>{0, 0, 0}));
}

TEST_F(Inbox, TheWatchReportsAFileWrittenIntoTheFolder) {
    AddWatches();
    ASSERT_NE(FolderWatchObjectEx(), nullptr);
    // Written the way most writers do it: created, filled, closed.
    writeTextFile(inbox("Center3DView.tmp"), "7 8 9\n");
    QElapsedTimer waited;
    waited.start();
    while (viewPoint()[0] != 7 && waited.elapsed() < 5000) QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_EQ(viewPoint(), (std::array<double, 3>{7, 8, 9}));
}

TEST_F(Inbox, CopiedCoordinatesPairWithTheClickedPointInTheOncList) {
    modelSession().GlobalONCFileName = dir.path("Model.ONC");
    dispatchState().FromModel_X = 100.126;
    dispatchState().FromModel_Y = 200;
    dispatchState().FromModel_Z = 30;
    EXPECT_FALSE(HandleClipboardText("Lat 32.1 34.8 55"));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(dir.path("Model.ONC"))));
    EXPECT_TRUE(HandleClipboardText("Point WGS84 Lat 612000.5,3612000.25,55.5 deg"));
    EXPECT_TRUE(HandleClipboardText("m 612010 3612010 56"));
    EXPECT_EQ(readTextFile(dir.path("Model.ONC")),
              "100.13 200.00 30.00 612000.50 3612000.25  55.50\n"
              "100.13 200.00 30.00 612010.00 3612010.00  56.00\n");
}

TEST_F(Inbox, TheHandOverFileHoldsTheClickedEastAndNorth) {
    dispatchState().FromModel_X = 612000.5;
    dispatchState().FromModel_Y = 3612000.25;
    WriteHandoverFile();
    EXPECT_EQ(readTextFile(inbox("Handover.tmp")), "612000.500000 3612000.250000 \n");
}
