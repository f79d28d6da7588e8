// The drawing widget under Xvfb: it repaints when the engine renders, not
// under no-draw; it gives the engine its size; mouse presses reach the
// engine only when allowed; thumbnails come from its context or, without
// it, from an offscreen one.
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QWindow>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <memory>
#include <string>

#include "scene/engine/CameraMath.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewPanelGL.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

// A 20 m square over [0, 20]^2, green in its north-east quarter, blue in its south-west.
void addSquare(const testsupport::ScratchDir& dir) {
    QImage image(2, 2, QImage::Format_RGB32);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(1, 0, Qt::green);
    image.setPixelColor(0, 1, Qt::blue);
    image.setPixelColor(1, 1, Qt::yellow);
    const std::string path = dir.path("four.png");
    image.save(QString::fromStdString(path));
    engine::Layer square = testsupport::makeRectangle("ground", 0, 0, 20, 20, 0);
    square.texturePath = path;
    testsupport::addLayer(square);
}

bool isGreen(QColor c) { return c.green() > 200 && c.red() < 60 && c.blue() < 60; }

void press(QWidget& widget, QPoint at, Qt::MouseButton button) {
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(at), QPointF(widget.mapToGlobal(at)), button, button,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

class RenderViewPanel : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "RenderViewPanelTest";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
    }
    static void TearDownTestSuite() {
        delete app;
        app = nullptr;
    }

    void SetUp() override {
        At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
        addSquare(dir);
        panel = std::make_unique<ViewPanelGL>();
        panel->resize(400, 300);
        panel->show();
        // The server shows the window a little later, and the first frame's flush
        // settles after that; until then Qt defers a repaint to the event loop.
        QElapsedTimer waited;
        waited.start();
        while ((!panel->windowHandle()->isExposed() || panel->framesPainted() == 0) && waited.elapsed() < 5000)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
        waited.restart();
        while (waited.elapsed() < 300) QApplication::processEvents(QEventLoop::AllEvents, 20);
        At3d_ViewTop();
        At3d_SetCameraViewPoint(15, 15, 0);
        At3d_SetCameraDistance(30);
    }

    static QApplication* app;
    testsupport::EngineFixtureGuard guard;
    testsupport::ScratchDir dir;
    std::unique_ptr<ViewPanelGL> panel;
};

QApplication* RenderViewPanel::app = nullptr;

TEST_F(RenderViewPanel, RenderDrawsAtOnceExceptUnderNoDraw) {
    ASSERT_GT(panel->framesPainted(), 0);
    EXPECT_EQ(engineState().width, 400);
    EXPECT_EQ(engineState().height, 300);

    const int before = panel->framesPainted();
    At3d_RenderOpenGLScene();
    EXPECT_EQ(panel->framesPainted(), before + 1);

    At3d_WriteFlag(LIBFLAG_NO_DRAW, 1);
    At3d_RenderOpenGLScene();
    panel->repaint();  // a paint asked by the window system draws nothing new either
    EXPECT_EQ(panel->framesPainted(), before + 1);
    At3d_DeleteLayer("ground");
    EXPECT_TRUE(isGreen(panel->grabFramebuffer().pixelColor(200, 150)));  // the last frame stays
}

TEST_F(RenderViewPanel, PressesReachTheEngineOnlyWhenAllowed) {
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    const double target[3] = {5, 5, 0};
    int x = 0, y = 0;
    ASSERT_TRUE(engine::projectToPixel(engineState(), target, x, y));

    press(*panel, QPoint(x, y), Qt::LeftButton);
    EXPECT_NE(engineState().rubberband[1].hitFlag, AT3D_HIT);

    panel->setEngineMouseInput(true);
    press(*panel, QPoint(x, y), Qt::LeftButton);
    ASSERT_EQ(engineState().rubberband[1].hitFlag, AT3D_HIT);
    // One pixel is about 0.09 m on the ground here.
    testsupport::expectVec(engineState().rubberband[1].xyz, 5, 5, 0, 0.1);
}

// The widget keeps layers on the card: what the engine changes must reach it.
TEST_F(RenderViewPanel, ChangedMovedSwappedAndDeletedLayersAreSentAgain) {
    const auto centre = [&] { return panel->grabFramebuffer().pixelColor(200, 150); };
    ASSERT_TRUE(isGreen(centre()));
    EXPECT_FALSE(engineState().layers[0].gpuUpdate);  // taken by the paint

    const double east[3] = {10, 0, 0};  // the north-west quarter (red) comes under the view point
    At3d_Mesh_Static_Translate("ground", 1, east);
    const QColor moved = centre();
    EXPECT_TRUE(moved.red() > 200 && moved.green() < 60) << moved.red() << " " << moved.green();

    QImage grey(2, 2, QImage::Format_RGB32);
    grey.fill(QColor(128, 128, 128));
    const std::string greyPath = dir.path("grey.png");
    grey.save(QString::fromStdString(greyPath));
    At3d_SetTextureName("ground", greyPath.c_str());
    const QColor swapped = centre();
    EXPECT_NEAR(swapped.red(), 128, 3);
    EXPECT_NEAR(swapped.blue(), 128, 3);

    At3d_DeleteLayer("ground");
    const QColor gone = centre();
    EXPECT_FALSE(std::abs(gone.red() - 128) < 10 && std::abs(gone.blue() - 128) < 10);
}

TEST_F(RenderViewPanel, ThumbnailsComeFromTheWidgetAndWithoutIt) {
    const std::string shown = dir.path("shown.png");
    ASSERT_EQ(At3d_Save_Thumbnail_Image(shown.c_str(), 200, 100), 1);
    const QImage fromWidget(QString::fromStdString(shown));
    ASSERT_EQ(fromWidget.size(), QSize(200, 100));
    EXPECT_TRUE(isGreen(fromWidget.pixelColor(100, 50)));

    panel->hide();
    panel.reset();
    const std::string offscreen = dir.path("offscreen.png");
    ASSERT_EQ(At3d_Save_Thumbnail_Image(offscreen.c_str(), 200, 100), 1);
    const QImage alone(QString::fromStdString(offscreen));
    int differing = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x) differing += fromWidget.pixel(x, y) != alone.pixel(x, y);
    EXPECT_LT(differing, 200) << "the two paths should draw the same picture";
}

}  // namespace
