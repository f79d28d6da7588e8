// Facade photographs in the real window on the demo site with its photo
// sets: "Create container" reads the pictures' tags and keeps those that see
// the tall block, and an Alt+click on the wall a picture looks at shows that
// picture in the facade photograph window.
#include <QFile>
#include <QFileInfo>

#include "WindowFixture.h"
#include "app/model/ModelSession.h"
#include "oblique/FacadeStore.h"
#include "oblique/ui/TFormPhoto.h"

namespace {

class WindowFacade : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        for (const char* folder : {"OBLIQUE", "FACADES"})
            fs::copy(fs::path(ZV_SOURCE_DIR) / "samples/site" / folder, dir.path(std::string("site/") + folder),
                     fs::copy_options::recursive);
    }
};

}  // namespace

TEST_F(WindowFacade, TheContainerIsMadeAndAnAltClickOnAWallShowsItsPicture) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    ASSERT_GT(modelSession().KamaOblique, 0);

    chooseMenuItem(form, "CreateContainer1");
    const QString container = QString::fromStdString(dir.path("site/FACADES/FACADES.FAC"));
    EXPECT_EQ(dialogs.questions().back().text, "5 Images saved 0 skept to " + container);
    EXPECT_EQ(modelSession().KamaFacades, 5);
    ASSERT_EQ(facadeState().TSFACADES.size(), 5);

    FacadeRow row;
    ASSERT_TRUE(ReadFacadeRow(facadeState().TSFACADES[2], row));
    const double* offset = frameState().Offset;
    closeUp(row.OX - offset[0], row.OY - offset[1], row.OZ - offset[2], 25);
    click(surface, pixelOfMap(TGIS_Point3D{row.OX, row.OY, row.OZ, 0}), Qt::LeftButton, Qt::AltModifier);
    settle(200);
    TFormPhoto* photo = FormPhoto();
    ASSERT_NE(photo, nullptr);
    EXPECT_TRUE(photo->isVisible());
    EXPECT_EQ(facadeState().THE_JPG, row.picture);
    EXPECT_TRUE(photo->windowTitle().startsWith(QFileInfo(row.picture).fileName() + " DXY: "));
    screenshotOf(photo, "facade_photo_window");
}
