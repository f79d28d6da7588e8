// The main window under Xvfb on the demo site: the wheel, the arrow keys and
// mouse drags move the camera by the dispatcher's steps, a saved viewport
// brings the view back, and the layer form shows and hides layers.
#include <QTableWidget>
#include <cmath>

#include "WindowFixture.h"
#include "app/model/Viewport.h"
#include "app/ui/ManageLayersForm.h"
#include "measure/BillboardMenu.h"
#include "scene/engine_interface.h"

namespace {

struct Camera {
    double distance = 0, fov = 0, point[3] = {0, 0, 0}, angles[3] = {0, 0, 0};
};

Camera engineCamera() {
    Camera c;
    At3d_GetCameraDistance(&c.distance);
    At3d_GetCameraFieldOfView(&c.fov);
    At3d_GetCameraViewPoint(&c.point[0], &c.point[1], &c.point[2]);
    At3d_GetCameraAngles(&c.angles[0], &c.angles[1], &c.angles[2]);
    return c;
}

class WindowView : public WindowFixture {};

}  // namespace

TEST_F(WindowView, WheelArrowsAndDragsMoveTheCameraByTheirSteps) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    const Camera start = engineCamera();
    ASSERT_GT(start.distance, 2);
    EXPECT_NEAR(start.angles[0], 45, 1e-9);

    // One notch in, one out: the eye moves by the 1 m step each way.
    wheel(surface, 120);
    EXPECT_NEAR(engineCamera().distance, start.distance - 1, 1e-6);
    wheel(surface, -120);
    EXPECT_NEAR(engineCamera().distance, start.distance, 1e-6);

    press(&form, Qt::Key_Right);
    EXPECT_NEAR(engineCamera().angles[2], start.angles[2] + 5, 1e-9);
    EXPECT_EQ(form.statusText(3), "Azimuth 5");
    press(&form, Qt::Key_Up);
    EXPECT_NEAR(engineCamera().angles[0], 40, 1e-9);
    press(&form, Qt::Key_Left);
    EXPECT_NEAR(engineCamera().angles[2], start.angles[2], 1e-9);

    // Dragging left with the left button turns the view back one step; down tilts it.
    drag(surface, Qt::LeftButton, -30, 0);
    EXPECT_NEAR(engineCamera().angles[2], std::fmod(start.angles[2] + 355, 360), 1e-9);
    drag(surface, Qt::LeftButton, 0, 30);
    EXPECT_NEAR(engineCamera().angles[0], 45, 1e-9);

    // The right button carries the view point; the angles stay.
    drag(surface, Qt::RightButton, 40, 0);
    const Camera panned = engineCamera();
    EXPECT_GT(std::hypot(panned.point[0] - start.point[0], panned.point[1] - start.point[1]), 0.5);
    EXPECT_NEAR(panned.angles[0], 45, 1e-9);
}

TEST_F(WindowView, ASavedViewportAndTheHomeViewComeBack) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    const Camera home = engineCamera();

    press(&form, Qt::Key_Right);
    press(&form, Qt::Key_Right);
    wheel(surface, 120);
    const Camera saved = engineCamera();
    const std::string path = SaveViewport(dir.path("site/Measurements/view.vpt"));
    ASSERT_EQ(path, dir.path("site/Measurements/view.vpt"));

    press(&form, Qt::Key_Down);
    drag(surface, Qt::RightButton, 50, 20);
    ASSERT_TRUE(RestoreViewport(path));
    const Camera back = engineCamera();
    EXPECT_NEAR(back.distance, saved.distance, 1e-5);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(back.point[i], saved.point[i], 1e-5);
        EXPECT_NEAR(back.angles[i], saved.angles[i], 1e-5);
    }

    // The full view goes back to the model's "Home.vpt".
    FullViewBtnClick();
    const Camera full = engineCamera();
    EXPECT_NEAR(full.distance, home.distance, 1e-5);
    EXPECT_NEAR(full.angles[2], home.angles[2], 1e-5);
    EXPECT_EQ(form.statusText(0), "");
}

TEST_F(WindowView, TheLayerFormListsEveryLayerAndItsCheckBoxHidesOne) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ASSERT_TRUE(waitForFirstFrame(form.viewPanel()->surface()));
    Managelayers(&form);
    auto* layers = form.findChild<ManageLayersForm*>();
    ASSERT_NE(layers, nullptr);
    EXPECT_TRUE(layers->isVisible());
    QTableWidget* grid = layers->grid();
    ASSERT_EQ(grid->rowCount(), 7);
    ASSERT_EQ(grid->columnCount(), 4);
    EXPECT_EQ(grid->horizontalHeaderItem(3)->text(), "Active");
    EXPECT_TRUE(layers->windowTitle().startsWith(" 25012 Faces 13819 3Dvertices "));
    EXPECT_TRUE(layers->windowTitle().endsWith("7 Layers"));
    for (int row = 0; row < grid->rowCount(); ++row) EXPECT_EQ(grid->item(row, 3)->checkState(), Qt::Checked);

    // Unticking a row hides its layer at once.
    const std::string name = grid->item(0, 0)->text().toStdString();
    grid->item(0, 3)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(At3d_GetLayerOutputFlag(name.c_str()), 0);
    grid->item(0, 3)->setCheckState(Qt::Checked);
    EXPECT_EQ(At3d_GetLayerOutputFlag(name.c_str()), 1);
}

TEST_F(WindowView, ARightClickOnAMeasureWithTheSelectToolSelectsIt) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    // A line across the view point: it passes through the middle of the view.
    const Camera view = engineCamera();
    const float red[3] = {1, 0, 0};
    const double a[3] = {view.point[0] - 5, view.point[1], view.point[2]};
    const double b[3] = {view.point[0] + 5, view.point[1], view.point[2]};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("M1", 1, 0, 0, 2, red, a, b, a, a));
    SetControlChecked("SelectMeasuringBtn", true);
    SelectMeasuringBtnClick();

    const QPoint middle(surface->width() / 2, surface->height() / 2);
    mouse(surface, QEvent::MouseButtonPress, middle, Qt::RightButton, Qt::RightButton);
    mouse(surface, QEvent::MouseButtonRelease, middle, Qt::RightButton, Qt::NoButton);
    // The engine's notification arrives as a posted event.
    QApplication::processEvents();
    EXPECT_EQ(dispatchState().GlobalMeasureOrBilboard, 1);
    EXPECT_EQ(dispatchState().GlobalSelectedIdx, 0);
}
