// What the window tests share: one QApplication for the program, a copy of
// the demo site opened as from the command line, a scripted operator for the
// file dialogs and boxes, and the hands of a user: clicks and keys sent to
// the real widgets, tool buttons pressed, menu items chosen, and the pixel
// where a point of the model shows.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <QToolBar>
#include <QWheelEvent>
#include <clocale>
#include <filesystem>
#include <functional>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/CameraState.h"
#include "app/session/CommandLine.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "app/session/UserFolders.h"
#include "app/session/ViewerSettings.h"
#include "app/model/CameraTools.h"
#include "app/ui/TFormAt3.h"
#include "app/ui/ViewPanel.h"
#include "geo/Frames.h"
#include "measure/BillboardState.h"
#include "measure/ui/TFormBillboard.h"
#include "measure/DigitiseState.h"
#include "measure/MeasureState.h"
#include "scene/EngineSession.h"
#include "scene/engine/CameraMath.h"
#include "scene/engine_interface.h"
#include "scene/engine/EngineState.h"
#include "scene/render/ViewPanelGL.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "support/TestSupport.h"

namespace fs = std::filesystem;

class WindowFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "zv_gui_window";
        static char* argv[] = {name, nullptr};
        // Never torn down: a static QApplication would run Qt's clean-up at exit
        // after Qt's own globals (the icon cache) were already destroyed.
        static QApplication* application = new QApplication(argc, argv);
        (void)application;
        setlocale(LC_NUMERIC, "C");
    }

    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    std::string model;

    void SetUp() override {
        resetSession();
        installDialogService(&dialogs);
        // The demo site is copied, so the folders an open makes land in scratch.
        fs::copy(fs::path(ZV_SOURCE_DIR) / "samples/site", dir.path("site"));
        model = dir.path("site/DemoSite.obj");
        DeriveUserFolders(dir.root() + "home", program(), false);
        const std::vector<std::string> argv{program(), model};
        CaptureCommandLine(argv, RawCommandLine(argv));
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetRunLog();
    }
    // Everything a new start of the program begins without.
    static void resetSession() {
        resetSessionPaths();
        resetStartupState();
        resetOrvoIni();
        resetMainFormState();
        resetModelSession();
        resetEngineSession();
        resetCameraState();
        resetCameraToolState();
        resetDispatchState();
        resetFrameState();
        resetMeasureState();
        resetDigitiseState();
        resetBillboardState();
        resetPanelFormState();
        resetPanelStore();
    }
    static std::string program() { return fs::read_symlink("/proc/self/exe").string(); }

    // Runs the event loop until the surface has painted a frame.
    static bool waitForFirstFrame(ViewPanelGL* surface) {
        QElapsedTimer clock;
        clock.start();
        while (surface->framesPainted() == 0 && clock.elapsed() < 60000)
            QApplication::processEvents(QEventLoop::AllEvents, 50);
        return surface->framesPainted() > 0;
    }
    static void settle(int milliseconds = 100) {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    static void wheel(QWidget* surface, int delta) {
        const QPointF at(surface->width() / 2.0, surface->height() / 2.0);
        QWheelEvent event(at, surface->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(surface, &event);
    }
    static void press(QWidget* form, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(form, &event);
    }
    static void mouse(QWidget* surface, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent event(type, QPointF(at), surface->mapToGlobal(QPointF(at)), button, held, modifiers);
        QApplication::sendEvent(surface, &event);
    }
    // A press and release without moving, as a click on the view.
    static void click(QWidget* surface, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        mouse(surface, QEvent::MouseButtonPress, at, button, button, modifiers);
        mouse(surface, QEvent::MouseButtonRelease, at, button, Qt::NoButton, modifiers);
        // Notifications the engine posted arrive now.
        QApplication::processEvents();
    }
    // A drag with the given buttons from the panel's middle, dx, dy pixels.
    static void drag(QWidget* surface, Qt::MouseButton button, int dx, int dy) {
        const QPoint from(surface->width() / 2, surface->height() / 2);
        mouse(surface, QEvent::MouseButtonPress, from, button, button);
        mouse(surface, QEvent::MouseMove, from + QPoint(dx, dy), Qt::NoButton, button);
        mouse(surface, QEvent::MouseButtonRelease, from + QPoint(dx, dy), button, Qt::NoButton);
    }
    // Types text into a widget with the keyboard.
    static void typeText(QWidget* widget, const QString& text) {
        for (const QChar c : text) {
            QKeyEvent down(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QApplication::sendEvent(widget, &down);
        }
    }
    // Presses the tool button of the form's tool bar named so.
    static void pressToolButton(QMainWindow& form, const char* name) {
        QAction* action = form.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        auto* tools = form.findChild<QToolBar*>("ToolBar1");
        auto* button = qobject_cast<QAbstractButton*>(tools->widgetForAction(action));
        ASSERT_NE(button, nullptr) << name;
        button->click();
    }
    // Chooses the menu item named so.
    static void chooseMenuItem(QWidget& form, const char* name) {
        QAction* action = form.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        action->trigger();
    }
    // Does what the operator does in the modal dialog that the next step opens.
    template <class Dialog>
    static void whenDialogOpens(std::function<void(Dialog*)> answer) {
        QTimer::singleShot(50, [answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            answer(dialog);
        });
    }
    // Billboard `index` as the engine holds it, without its picture.
    static BILLBOARD_DATA billboard(int index) {
        BILLBOARD_DATA b{};
        Get_Billboard_Data(index, &b);
        delete[] b.imagePtr;
        b.imagePtr = nullptr;
        return b;
    }
    // A Shift+click that places a text billboard, answering its dialog with text.
    static void placeBillboard(TFormAt3& form, ViewPanelGL* surface, QPoint at, const QString& text) {
        pressToolButton(form, "DoBillboard");
        whenDialogOpens<TFormBillboard>([text](TFormBillboard* dialog) {
            dialog->TextEdit->setText(text);
            dialog->accept();
        });
        click(surface, at, Qt::LeftButton, Qt::ShiftModifier);
    }
    // The pixel of the view where a point of the model file shows.
    static QPoint pixelOf(double fileX, double fileY, double fileZ) {
        const double* center = frameState().OriginalobjectCenter;
        const double local[3] = {fileX - center[0], fileY - center[1], fileZ - center[2]};
        int x = -1, y = -1;
        EXPECT_TRUE(engine::projectToPixel(engine::engineState(), local, x, y));
        return {x, y};
    }
    // The pixel of the view where a point of the map frame shows.
    static QPoint pixelOfMap(const TGIS_Point3D& map) {
        const double local[3] = {map.X - OC(0), map.Y - OC(1), map.Z - OC(2)};
        int x = -1, y = -1;
        EXPECT_TRUE(engine::projectToPixel(engine::engineState(), local, x, y));
        return {x, y};
    }
    // The layer the view shows at a pixel.
    static QString layerAt(QPoint at) {
        int hit = 0;
        double xyz[3];
        char layer[AT3D_NAME_SIZE] = {};
        At3d_Get_Mesh_Location_At_Point(at.x(), at.y(), &hit, xyz, layer, nullptr, nullptr);
        return hit == AT3D_HIT ? QString(layer) : QString();
    }
    // The operator zooms in: the view looks at a point of the model file from distance metres.
    static void closeUp(double fileX, double fileY, double fileZ, double distance) {
        const double* center = frameState().OriginalobjectCenter;
        At3d_SetCameraViewPoint(fileX - center[0], fileY - center[1], fileZ - center[2]);
        At3d_SetCameraDistance(distance);
        At3d_RenderOpenGLScene();
        settle(50);
    }
    // A widget as it shows now, saved beside the view's pictures.
    static void screenshotOf(QWidget* widget, const QString& name) {
        const QString folder = QString(ZV_BINARY_DIR) + "/test-screens";
        QDir().mkpath(folder);
        widget->grab().save(folder + "/" + name + ".png");
    }
    // The view as it shows now, saved for a person to look at under build/test-screens/.
    static QImage screenshot(ViewPanelGL* surface, const QString& name) {
        At3d_RenderOpenGLScene();
        settle(50);
        const QImage frame = surface->grabFramebuffer();
        const QString folder = QString(ZV_BINARY_DIR) + "/test-screens";
        QDir().mkpath(folder);
        frame.save(folder + "/" + name + ".png");
        return frame;
    }
};
