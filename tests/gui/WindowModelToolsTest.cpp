// The model menu in the real window on the demo site, under Xvfb: an outline
// digitised by clicks on the rendered flat-roof building crops the model,
// the cropped copy opens and shows alone, and a long pass stopped with its
// progress dialog's Cancel leaves nothing behind.
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include "WindowFixture.h"
#include "catalog/ModelBrowser.h"
#include "scene/engine_interface.h"

namespace {

// The flat-roof building: x 8 .. 22, y -10 .. 0, its roof at 51.09 in the file frame.
constexpr double FLAT_ROOF_Z = 51.09;

class WindowModelTools : public WindowFixture {
protected:
    static QStringList captionsOf(QMenu* menu) {
        QStringList captions;
        for (QAction* action : menu->actions())
            if (!action->isSeparator()) captions << action->text();
        return captions;
    }
    static long long faceLines(const std::string& path) {
        QFile file(QString::fromStdString(path));
        if (!file.open(QIODevice::ReadOnly)) return -1;
        long long faces = 0;
        while (!file.atEnd()) faces += file.readLine().startsWith("f ");
        return faces;
    }
};

}  // namespace

TEST_F(WindowModelTools, AnOutlineClickedAroundTheFlatRoofBuildingCropsTheModelToIt) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, FLAT_ROOF_Z, 45);
    const double corners[4][2] = {{9, -9}, {21, -9}, {21, -1}, {9, -1}};
    std::vector<QPoint> pixels;
    for (const auto& c : corners) pixels.push_back(pixelOf(c[0], c[1], FLAT_ROOF_Z));
    for (const QPoint& p : pixels) ASSERT_EQ(layerAt(p), "flatroof_building");

    chooseMenuItem(form, "PolygonMnu");
    for (int i = 0; i < 3; ++i) click(surface, pixels[std::size_t(i)]);
    // The outline is kept as a polygon file, as the operator is asked.
    dialogs.pushFile(QString::fromStdString(dir.path("site/Measurements/block.POL")));
    click(surface, pixels[3], Qt::RightButton);
    screenshot(surface, "crop_outline_on_flat_roof");
    const int sides = At3d_MeasureList_Get_Count();
    ASSERT_GE(sides, 4);

    dialogs.pushText("block");
    chooseMenuItem(form, "Cropthemodel1");
    const std::string cropped = dir.path("site/DemoSite_DemoSite_block_Cropped.obj");
    ASSERT_TRUE(QFileInfo::exists(QString::fromStdString(cropped)));
    EXPECT_EQ(dialogs.questions().back().text, QString::fromStdString(cropped) + "\nCreated");
    const long long kept = faceLines(cropped), all = faceLines(model);
    EXPECT_GT(kept, 0);
    EXPECT_LT(kept, all / 4);
    QFile outline(QString::fromStdString(dir.path("site/DemoSite_DemoSite_block_Cropped.LIN")));
    ASSERT_TRUE(outline.open(QIODevice::ReadOnly));
    EXPECT_EQ(outline.readAll().count('\n'), sides + 1);

    // The operator opens the copy: only the building and the ground it stands on are left.
    OpenThe3DModel(QString::fromStdString(cropped));
    ASSERT_TRUE(waitForFirstFrame(surface));
    EXPECT_EQ(modelSession().GlobalModelFileName, cropped);
    closeUp(15, -5, FLAT_ROOF_Z, 60);
    EXPECT_EQ(layerAt(pixelOf(15, -5, FLAT_ROOF_Z)), "flatroof_building");
    EXPECT_EQ(layerAt(pixelOf(-20, 8, 48)), "");
    screenshot(surface, "cropped_model_opened");
}

TEST_F(WindowModelTools, CancelInTheProgressDialogLeavesNoTurnedCopy) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ASSERT_TRUE(waitForFirstFrame(form.viewPanel()->surface()));
    QMenu* menu = form.findChild<QMenu*>("ModelMnu");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(captionsOf(menu),
              (QStringList{"Crop the model", "Mark close vertices", "Mark above the clicked Z", "Clean the model",
                           "Geocode model", "Export the model", "Save  localized model", "Shift the model",
                           "Shif/Rotate the model", "Find model shift", "Restore shifted", "Zip the model",
                           "Explore 3D models", "Find unanalyzed models"}));
    EXPECT_EQ(captionsOf(form.findChild<QMenu*>("GeocodeMnu")),
              (QStringList{"Rectify by ONC", "Rectify", "Export GCP", "Help"}));
    EXPECT_EQ(captionsOf(form.findChild<QMenu*>("Zipthemodel1")),
              (QStringList{"Normal", "With small JPG", "With obliques", "With every second JPG"}));

    dialogs.pushText("1 2 0 90");
    bool sawProgress = false;
    // The operator presses Cancel as soon as the bar shows.
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        for (QProgressDialog* progress : form.findChildren<QProgressDialog*>())
            if (progress->isVisible()) {
                sawProgress = true;
                screenshotOf(progress, "rotate_progress");
                progress->findChild<QPushButton*>()->click();
            }
    });
    watcher.start(0);
    chooseMenuItem(form, "ShiftRotatethemodel1");
    watcher.stop();
    EXPECT_TRUE(sawProgress);
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("site/DemoSite_Shifted_100_200_0_90.OBJ"))));
    EXPECT_EQ(QDir(QString::fromStdString(dir.path("site"))).entryList({"*.part-*"}), QStringList());
    EXPECT_EQ(form.statusText(0), "Shif/Rotate the model cancelled: nothing written");
}

TEST_F(WindowModelTools, WithNoModelOpenTheModelItemsSaySoAndWriteNothing) {
    const std::vector<std::string> argv{program()};
    CaptureCommandLine(argv, RawCommandLine(argv));
    dialogs.pushCancel();  // the open dialog at start-up
    TFormAt3 form;
    form.FormCreate(program());
    for (const char* item : {"Markclosevertices1", "Cropthemodel1", "Asis1", "ExportONC1"}) {
        chooseMenuItem(form, item);
        EXPECT_EQ(dialogs.questions().back().text, "Open a model first") << item;
    }
    EXPECT_EQ(QDir(QString::fromStdString(dir.root())).entryList({"*.txt", "*.obj", "*.zip", "*.ONC"}, QDir::Files),
              QStringList());
}
