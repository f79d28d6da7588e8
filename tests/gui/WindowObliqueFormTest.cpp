// The oblique photograph window as a lookup opens it from the real main
// window: the caption, the yellow mark of the clicked point in the middle,
// wheel zoom about the mouse, and browsing round the list at the same zoom.
#include <QFile>
#include <QGraphicsView>
#include <QToolButton>

#include "WindowFixture.h"
#include "oblique/ObliqueHooks.h"
#include "oblique/ObliqueRecords.h"
#include "oblique/ObliqueWindow.h"
#include "oblique/ui/TFormOBLI.h"

namespace {

class WindowObliqueForm : public WindowFixture {
protected:
    void TearDown() override {
        CloseObliqueWindow();
        settle(50);
        resetObliqueStore();
        resetObliqueWindowState();
        WindowFixture::TearDown();
    }
    QString photo(const char* name) {
        const QString path = QString::fromStdString(dir.path("site/OBLIX/")) + name;
        QDir().mkpath(QFileInfo(path).absolutePath());
        EXPECT_TRUE(QFile::copy(QString::fromStdString(dir.path("site/DemoSite.jpg")), path));
        return path;
    }
    // Looking straight down from 100 m over (x, 2000): 2048 pixels on a
    // 20.48 mm sensor behind a 50 mm lens, principal point in the middle.
    static OBLIQUE nadir(double x, const QString& picture) {
        OBLIQUE O;
        O.Qxorg = x, O.Qyorg = 2000, O.Qzorg = 100;
        O.q11 = O.q22 = O.q33 = 1;
        O.fpc = 50, O.QW_mm = 20.48f, O.Width = O.Height = 2048, O.QScale = 100;
        O.QPicX00 = O.QPicX0 = 1024, O.QPicY00 = O.QPicY0 = -1024;
        O.Xmin = 0, O.Xmax = 2048, O.Ymin = -2048, O.Ymax = 0;
        O.Azimuth = 30, O.Incl = 90;
        O.Proj = picture;
        return O;
    }
    static void expectNear(QPoint a, QPoint b, int tolerance) {
        EXPECT_LE(std::abs(a.x() - b.x()), tolerance) << a.x() << " vs " << b.x();
        EXPECT_LE(std::abs(a.y() - b.y()), tolerance) << a.y() << " vs " << b.y();
    }
};

}  // namespace

TEST_F(WindowObliqueForm, ALookupShowsTheMarkedPhotographAndBrowsesRoundTheList) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ASSERT_TRUE(obliqueHooks().showObliqueBigWindow);

    ObliqueStore& store = obliqueStore();
    // 5 m east and 10 m south of the first camera, 100 m down: 2.5 mm right
    // and 5 mm down of the centre, picture (1274, -1524); 15 m east of the
    // second: (1774, -1524).
    store.ForOBLIpoint = {1005, 1990, 0, 0};
    store.OOO[0] = nadir(1000, photo("A.jpg"));
    store.OOO[1] = nadir(990, photo("B.jpg"));
    OBLIQUE opk;
    opk.Proj = photo("C.jpg");
    opk.fpc = -12.34f, opk.Azimuth = 271;
    store.OOO[2] = opk;
    store.relevants = 3;

    obliqueHooks().showObliqueBigWindow(0, -9);
    TFormOBLI* obli = FormOBLI();
    ASSERT_NE(obli, nullptr);
    settle(200);
    ASSERT_TRUE(obli->isVisible());
    EXPECT_EQ(obli->windowTitle(), " Az 30 Incl 90 [3] A.jpg");
    EXPECT_FALSE(obli->findChild<QWidget*>("BrowswObliques")->isHidden());
    QWidget* view = obli->viewer()->viewport();
    const QPoint middle(view->width() / 2, view->height() / 2);
    ASSERT_EQ(obli->marks().size(), 1u);
    expectNear(obli->Map2Screen({1274, -1524}), middle, 2);
    // The whole picture fits the view at first.
    EXPECT_NEAR(obli->Zoom(), std::min(view->width(), view->height()) / 2048.0, 1e-3);

    // Towards the user: nearer by 1.1, the picture point under the mouse stays.
    const QPoint at(view->width() / 4, view->height() / 3);
    const TGIS_Point under = obli->Screen2Map(at.x(), at.y());
    const double zoom = obli->Zoom();
    QWheelEvent wheelEvent(QPointF(at), view->mapToGlobal(QPointF(at)), QPoint(), QPoint(0, -120), Qt::NoButton,
                           Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view, &wheelEvent);
    EXPECT_NEAR(obli->Zoom(), zoom * 1.1, 1e-9);
    expectNear(obli->Map2Screen(under), at, 1);
    screenshotOf(obli, "oblique_first");

    obli->findChild<QToolButton*>("BrowswObliquesNext")->click();
    settle(100);
    EXPECT_EQ(obliqueWindowState().Serial, 1);
    EXPECT_EQ(obli->windowTitle(), " Az 30 Incl 90 [3] B.jpg");
    EXPECT_NEAR(obli->Zoom(), zoom * 1.1, 1e-9);
    expectNear(obli->Map2Screen({1774, -1524}), middle, 2);
    screenshotOf(obli, "oblique_browsed");

    // The photograph of an OPK list: a distance in the caption, no mark, no "Report".
    obli->findChild<QToolButton*>("BrowswObliquesNext")->click();
    EXPECT_EQ(obli->windowTitle(), "Az 271  DIST 12.3 [3] C.jpg");
    EXPECT_TRUE(obli->marks().empty());
    EXPECT_FALSE(obli->findChild<QAction*>("Report1")->isVisible());
    obli->findChild<QToolButton*>("BrowswObliquesNext")->click();
    EXPECT_EQ(obliqueWindowState().Serial, 0);
    EXPECT_TRUE(obli->findChild<QAction*>("Report1")->isVisible());

    // Back from the first lands on the last.
    obli->findChild<QToolButton*>("BrowswObliquesBack")->click();
    EXPECT_EQ(obliqueWindowState().Serial, 2);

    // A new lookup with one photograph: no browsing.
    store.relevants = 1;
    obliqueHooks().showObliqueBigWindow(0, -9);
    EXPECT_EQ(FormOBLI(), obli);
    EXPECT_TRUE(obli->findChild<QWidget*>("BrowswObliques")->isHidden());
    // "Clear" keeps only the photograph; a new mark gets a new layer.
    obli->ClearClick();
    EXPECT_TRUE(obli->marks().empty());
    obli->AddSimun(TGIS_Point{100, -100}, OBLI_RED, 8);
    EXPECT_EQ(obli->marks().size(), 1u);

    obliqueHooks().closeObliqueWindow();
    settle(50);
    EXPECT_EQ(FormOBLI(), nullptr);
}

TEST_F(WindowObliqueForm, DistanceMarksBothPointsAndSaveImageKeepsTheWindow) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ObliqueStore& store = obliqueStore();
    store.ForOBLIpoint = {1005, 1990, 0, 0};
    store.OOO[0] = nadir(1000, photo("A.jpg"));
    store.relevants = 1;
    obliqueHooks().showObliqueBigWindow(0, -9);
    TFormOBLI* obli = FormOBLI();
    ASSERT_NE(obli, nullptr);
    settle(100);
    const QString caption = obli->windowTitle();
    QWidget* view = obli->viewer()->viewport();

    // The right press that opens the menu is the first point.
    const QPoint first(100, 120), second(300, 260);
    mouse(view, QEvent::MouseButtonPress, first, Qt::RightButton, Qt::RightButton);
    mouse(view, QEvent::MouseButtonRelease, first, Qt::RightButton, Qt::NoButton);
    obli->findChild<QAction*>("Distance1")->trigger();
    EXPECT_TRUE(obliqueWindowState().INDISTANCE);
    EXPECT_EQ(obli->windowTitle(), "Click on the second point");
    EXPECT_EQ(mainFormState().statusTexts[0], "Click on the second point");
    click(view, second);
    EXPECT_FALSE(obliqueWindowState().INDISTANCE);
    EXPECT_EQ(obli->windowTitle(), caption);
    // The yellow mark, a red one at each end and the red line between them.
    ASSERT_EQ(obli->marks().size(), 4u);
    const TGIS_Point a = obliqueWindowState().PrevObliMouseDownptg, b = obliqueWindowState().LastObliMouseDownptg;
    expectNear(obli->Map2Screen(a), first, 1);
    expectNear(obli->Map2Screen(b), second, 1);
    screenshotOf(obli, "oblique_distance");

    const QRect geometry = obli->geometry();
    const QString jpg = QString::fromStdString(dir.path("view.jpg"));
    dialogs.pushFile(jpg);
    obli->SaveImageClick();
    EXPECT_FALSE(obli->isMaximized());
    EXPECT_EQ(obli->geometry().size(), geometry.size());
    const QImage saved(jpg);
    // Without a window manager the maximised view is no larger: at least the view's own size.
    EXPECT_GE(saved.width(), view->width());
    EXPECT_GE(saved.height(), view->height());
    EXPECT_EQ(dialogs.questions()[dialogs.questions().size() - 2].title, "Specify the output file");

    const QString png = QString::fromStdString(dir.path("view.png"));
    dialogs.pushFile(png);
    obli->SaveImageClick();
    EXPECT_FALSE(QFile::exists(png));
    EXPECT_EQ(dialogs.questions().back().text, png + " is an illegal file extension\nOnly JPG and BMP are accepted");
}
