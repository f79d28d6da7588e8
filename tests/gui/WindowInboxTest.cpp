// The inbox channels of the real window: a Shift+right click on the model
// hands its point over through the inbox folder, and a centre file dropped
// there by another program moves the view.
#include <QFile>

#include "WindowFixture.h"
#include "app/session/DispatchState.h"
#include "app/session/StartupState.h"
#include "geo/Frames.h"

namespace {

class WindowInbox : public WindowFixture {};

}  // namespace

TEST_F(WindowInbox, AShiftRightClickHandsThePointOverAndACentreFileMovesTheView) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, 51.09, 45);
    click(surface, pixelOf(15, -5, 51.09), Qt::RightButton, Qt::ShiftModifier);
    settle(400);
    QFile handover(QString::fromStdString(startupState().MONITOREDFOLDER + "Handover.tmp"));
    ASSERT_TRUE(handover.open(QIODevice::ReadOnly));
    double east = 0, north = 0;
    ASSERT_EQ(std::sscanf(handover.readAll().constData(), "%lf %lf", &east, &north), 2);
    EXPECT_NEAR(east, 15 + OC(0), 0.3);
    EXPECT_NEAR(north, -5 + OC(1), 0.3);
    EXPECT_NEAR(east, dispatchState().FromModel_X, 1e-6);

    QFile centre(QString::fromStdString(startupState().MONITOREDFOLDER + "Center3DView.tmp"));
    ASSERT_TRUE(centre.open(QIODevice::WriteOnly));
    centre.write(QString::asprintf("%.2f %.2f %.2f\n", OC(0) - 20, OC(1) + 8, OC(2) + 48).toUtf8());
    centre.close();
    double view[3] = {0, 0, 0};
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 5000) {
        settle(50);
        At3d_GetCameraViewPoint(&view[0], &view[1], &view[2]);
        if (std::abs(view[0] + 20) < 0.01) break;
    }
    // The file holds the point to the centimetre.
    EXPECT_NEAR(view[0], -20, 0.01);
    EXPECT_NEAR(view[1], 8, 0.01);
    EXPECT_NEAR(view[2], 48, 0.01);
}
