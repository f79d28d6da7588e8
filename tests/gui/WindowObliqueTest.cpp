// Oblique photographs in the real window on the demo site: the open finds
// the catalogue below the model, and an Alt+click on the rendered flat roof
// ranks the photographs that show the clicked point.
#include <QFileInfo>

#include "WindowFixture.h"
#include "oblique/CatalogueWriter.h"
#include "oblique/ObliqueHooks.h"
#include "oblique/ObliqueRecords.h"

namespace {

// The middle of the flat-roof building's roof, in the file frame; the demo
// site's offset takes it to the map frame.
constexpr double ROOF_X = 15, ROOF_Y = -5, ROOF_Z = 51.09;
constexpr double OFFSET_X = 178500, OFFSET_Y = 663500;

class WindowOblique : public WindowFixture {
protected:
    void TearDown() override {
        resetObliqueHooks();
        resetObliqueStore();
        WindowFixture::TearDown();
    }
    // A nadir camera (50 mm, 100 pixels a millimetre) height metres over
    // the roof's middle, moved east and north: the roof's middle shows
    // 5000 / height pixels from its picture's centre per metre moved.
    TestShot camera(const std::string& name, double east, double north, int azimuth, int incl) {
        const double x = OFFSET_X + ROOF_X, y = OFFSET_Y + ROOF_Y;
        TestShot s = shotAt(name, x, y, 30);
        s.qxorg = x + east, s.qyorg = y + north, s.qzorg = ROOF_Z + 100;
        s.azimuth = azimuth;
        s.inclination = incl;
        testsupport::writeTextFile(dir.path("site/OBLIQUE/F1/" + name), "x");
        return s;
    }
};

}  // namespace

TEST_F(WindowOblique, AnAltClickOnTheRoofShowsThePhotographNearestToItsCentre) {
    writeCatalogue(dir.path("site/OBLIQUE/F1/oblixoblix.shp"),
                   {camera("A.jpg", 3, 0, 0, 90),      // 150 pixels from its centre
                    camera("B.jpg", 0, 1, 0, 90),      // 50 pixels
                    camera("C.jpg", 0, 0, 180, 45)});  // looks against the view
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    EXPECT_EQ(modelSession().KamaOblique, 3);
    EXPECT_TRUE(mainFormState().LabelForHelpCaption.endsWith(", Alt+LClick for Oblique"));

    QStringList shown;
    obliqueHooks().showObliqueBigWindow = [&shown](int index, int uid) {
        shown << QString::asprintf("%d %d %s", index, uid,
                                   QFileInfo(obliqueStore().OOO[index].Proj).fileName().toUtf8().constData());
    };
    // The operator looks north at the roof from close by.
    At3d_RotateCamera(0, 60, 0, 0);
    closeUp(ROOF_X, ROOF_Y, ROOF_Z, 45);
    const QPoint at = pixelOf(ROOF_X, ROOF_Y, ROOF_Z);
    ASSERT_EQ(layerAt(at), "flatroof_building");
    click(surface, at, Qt::LeftButton, Qt::AltModifier);

    EXPECT_EQ(form.statusText(2), " 3 Oblique images. Azimuth 0  2 relevants   ");
    EXPECT_EQ(shown, QStringList{"0 -9 B.jpg"});
    ASSERT_EQ(obliqueStore().relevants, 2);
    EXPECT_EQ(QFileInfo(obliqueStore().OOO[1].Proj).fileName(), "A.jpg");
    EXPECT_NEAR(obliqueStore().ForOBLIpoint.X, OFFSET_X + ROOF_X, 0.2);
    EXPECT_NEAR(obliqueStore().ForOBLIpoint.Z, ROOF_Z, 0.05);
}
