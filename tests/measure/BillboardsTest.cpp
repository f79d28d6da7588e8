// Billboards: the picture's transparency, its height, when it keeps its
// direction, icon ids and groups, spheres and cranes, placing with
// Shift+click in both modes, moving one or a whole group, and the menu of a
// selected billboard.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <cmath>

#include "MeasureFixture.h"
#include "app/dispatch/ViewPanelClick.h"
#include "app/session/StartupState.h"
#include "measure/BillboardMenu.h"
#include "measure/BillboardPicture.h"
#include "measure/BillboardPlacing.h"
#include "measure/Billboards.h"
#include "measure/IconCatalog.h"
#include "scene/EngineSession.h"

namespace {

const float RED[3] = {1, 0, 0};

struct Picture {
    BILLBOARD_DATA data{};
    ~Picture() { delete[] data.imagePtr; }
};

class Billboards : public MeasureFixture {
protected:
    static void read(int index, Picture& picture) { ASSERT_TRUE(Get_Billboard_Data(index, &picture.data)); }
    static void make(const QString& name, double x = 1, bool measuring = false, bool icon = false) {
        const double position[3] = {x, 2, 2}, pivot[3] = {x, 1, 2};
        ASSERT_EQ(MakeBillboard(position, pivot, name, RED, measuring, icon), 1);
    }
    static void shiftClick(int x, int y) {
        ClickInput in;
        in.Shift = true;
        in.X = x;
        in.Y_IN = y + viewerSettings().StatusbarHeight;
        ViewPanelMouseActivate(in);
    }
    // An icon of 10 x 8 pixels, blue on white, chosen on the icons form.
    void chooseIcon(const char* name) {
        QImage icon(10, 8, QImage::Format_RGB32);
        icon.fill(Qt::white);
        for (int x = 2; x < 8; ++x) icon.setPixelColor(x, 4, QColor(0, 0, 200));
        const QString path = QString::fromStdString(dir.path(std::string(name) + ".bmp"));
        ASSERT_TRUE(icon.save(path, "BMP"));
        startupState().SatamsList = {path};
        ASSERT_TRUE(IM01Click(0));
        billboardState().ICONNAME = billboardState().icons.name;
    }
};

}  // namespace

TEST_F(Billboards, WhitePixelsBecomeTransparentAndEveryOtherOneOpaque) {
    QImage image(3, 1, QImage::Format_RGB32);
    image.setPixelColor(0, 0, QColor(241, 241, 241));
    image.setPixelColor(1, 0, QColor(241, 240, 255));
    image.setPixelColor(2, 0, QColor(10, 20, 30));
    BillboardPicture picture;
    BillboardPixelsFromImage(image, picture);
    ASSERT_EQ(picture.rgba.size(), 12u);
    EXPECT_EQ(picture.rgba[3], 0);
    EXPECT_EQ(picture.rgba[7], 255);
    EXPECT_EQ(std::vector<UInt8>(picture.rgba.begin() + 8, picture.rgba.end()), std::vector<UInt8>({10, 20, 30, 255}));
    EXPECT_EQ(picture.transparentPixels, 1);
    EXPECT_EQ(picture.blackPixels, 1);
}

TEST_F(Billboards, ATextIsDrawnBoldAt48PixelsInItsColour) {
    make("Gate 3");
    Picture p;
    read(0, p);
    EXPECT_EQ(p.data.alphaFlag, 1);
    EXPECT_EQ(p.data.typeFlag, 0);
    EXPECT_EQ(p.data.pivotTypeFlag, 2);
    EXPECT_FLOAT_EQ(p.data.lineWidth, 4);
    // One line of text: the font's line height, and wider than high.
    EXPECT_GE(p.data.imageHeight, 48);
    EXPECT_LT(p.data.imageHeight, 70);
    EXPECT_GT(p.data.imageWidth, 2 * p.data.imageHeight);
    int red = 0, clear = 0;
    for (int i = 0; i < p.data.imageSize; i += 4) {
        if (p.data.imagePtr[i + 3] == 0) ++clear;
        if (p.data.imagePtr[i] == 255 && p.data.imagePtr[i + 1] == 0 && p.data.imagePtr[i + 2] == 0 &&
            p.data.imagePtr[i + 3] == 255)
            ++red;
    }
    const int pixels = p.data.imageWidth * p.data.imageHeight;
    // Without smoothing every pixel is either text or gone.
    EXPECT_EQ(red + clear, pixels);
    EXPECT_GT(red, pixels / 10);
}

TEST_F(Billboards, PureWhiteTextCannotBeSeen) {
    const double position[3] = {1, 2, 2}, pivot[3] = {1, 1, 2};
    const float white[3] = {1, 1, 1};
    ASSERT_EQ(MakeBillboard(position, pivot, "Ghost", white, false, false), 1);
    Picture p;
    read(0, p);
    for (int i = 3; i < p.data.imageSize; i += 4) ASSERT_EQ(p.data.imagePtr[i], 0);
}

TEST_F(Billboards, NothingStandsAtTheExactOrigin) {
    const double origin[3] = {0, 0, 0}, pivot[3] = {0, -1, 0};
    EXPECT_EQ(MakeBillboard(origin, pivot, "Zero", RED, false, false), 0);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
}

TEST_F(Billboards, TheSizeChoiceSetsTheHeightAndIndoorModelsShrinkIt) {
    for (int size : {0, 1, 2}) {
        billboardState().dialog.sizeIndex = size;
        make("S", 1 + size);
    }
    modelSession().INDOOR = true;
    billboardState().dialog.sizeIndex = 2;
    make("Indoor", 5);
    const double expected[4] = {0.9, 2, 4, 0.8};
    for (int i = 0; i < 4; ++i) {
        Picture p;
        read(i, p);
        EXPECT_NEAR(p.data.height, expected[i], 1e-12) << i;
    }
}

TEST_F(Billboards, AnArrowAndAMeasureLabelKeepTheirDirectionEvenWithTheBoxOff) {
    billboardState().IsBillboardStatic = false;
    make(">>>", 1);
    make("12.50", 2, true);
    make("Free", 3);
    Picture arrow, label, free;
    read(0, arrow);
    read(1, label);
    read(2, free);
    EXPECT_EQ(arrow.data.staticFlag, 1);
    EXPECT_EQ(label.data.staticFlag, 1);
    EXPECT_EQ(label.data.alphaFlag, 2);
    EXPECT_EQ(label.data.typeFlag, 1);
    EXPECT_EQ(free.data.staticFlag, 0);
    EXPECT_FALSE(billboardState().IsBillboardStatic);
}

TEST_F(Billboards, AnIconStandsUnderItsTextAndItsIdCarriesItsNameAndTheClock) {
    chooseIcon("TENT_S");
    EXPECT_EQ(billboardState().icons.sizeNumber, 100);
    make("Camp", 1, false, true);
    Picture p;
    read(0, p);
    const QString id = p.data.id;
    EXPECT_TRUE(id.contains(QRegularExpression("^Camp\\|TENT_S\\d+$"))) << id.toStdString();
    EXPECT_EQ(StripID(id), "Camp");
    EXPECT_NEAR(p.data.height, 1, 1e-12);
    // The text is 0.8 of the icon's height: together at least 8 + 6 rows, the icon's row at the bottom.
    EXPECT_GE(p.data.imageHeight, 14);
    const int iconRow = p.data.imageHeight - 8 + 4;
    const UInt8* pixel = p.data.imagePtr + (iconRow * p.data.imageWidth + 3) * 4;
    EXPECT_EQ(pixel[2], 200);
    EXPECT_EQ(pixel[3], 255);
}

TEST_F(Billboards, AnIconNamedAsTheLastOneAsksForANewName) {
    chooseIcon("FLAG");
    make("Post", 1, false, true);
    dialogs.pushText("Post 2");
    make("Post", 2, false, true);
    Picture p;
    read(1, p);
    EXPECT_TRUE(QString(p.data.id).startsWith("Post 2|FLAG"));
    EXPECT_EQ(billboardState().icons.text, "Post 2");
}

TEST_F(Billboards, ASphereIconMakesABlinkingMarkerAndALineInTheModelsList) {
    chooseIcon("SPHERE");
    viewerSettings().SphereColor = 0x00FF00;
    make("Pole", 4, false, true);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
    ASSERT_EQ(At3d_Sphere_Marker_Get_Count(), 1);
    char name[AT3D_NAME_SIZE] = {};
    ASSERT_TRUE(At3d_Sphere_Marker_Get_Name(0, name));
    EXPECT_STREQ(name, "Pole|SPHERE");
    EXPECT_EQ(mainFormState().statusTexts[3], "Bef 0 Aft 1");
    EXPECT_TRUE(StatusStripText().endsWith("! 1 Spheres and Cranes"));
    QFile csv(measurements("SpheresAndCranes.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    EXPECT_EQ(csv.readAll(), QString::asprintf("Pole|SPHERE,%lf,%lf,%lf,%lf,%f,%f,%f,1,500,1,1\n", 4 + CENTER_X,
                                               2 + CENTER_Y, 2 + CENTER_Z, 3.0, 0.0, 1.0, 0.0)
                                 .toUtf8());
}

TEST_F(Billboards, AShiftClickInTextModeAsksTheDialogAndPlacesOneBillboard) {
    measureForms().billboardDialog = [](BillboardDialogValues& values) {
        values.text = "";
        values.pivotHeight = 3;
        values.isStatic = true;
        return true;
    };
    SetControlChecked("DoBillboard", true);
    DoBillboardClick();
    double point[3];
    ASSERT_TRUE(roofPoint(40, 40, point));
    shiftClick(40, 40);
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
    Picture p;
    read(0, p);
    // An empty text becomes "Orvo"; the foot on the clicked point, the picture 3 m towards the viewer.
    EXPECT_STREQ(p.data.id, "Orvo");
    EXPECT_EQ(p.data.staticFlag, 1);
    testsupport::expectVec(p.data.position, point[0], point[1], point[2], 1e-9);
    EXPECT_NEAR(std::hypot(p.data.pivot[0] - point[0], p.data.pivot[1] - point[1]), 3, 1e-9);
    // Text mode ends after one billboard.
    EXPECT_FALSE(dispatchState().BILLBOARDMODE);
    EXPECT_FALSE(ControlChecked("DoBillboard"));
    shiftClick(60, 40);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
}

TEST_F(Billboards, IconModeStaysOnForARowOfIcons) {
    chooseIcon("FLAG");
    bool formShown = false;
    measureForms().showIconsForm = [&](bool show) { formShown = show; };
    SetControlChecked("SimanTactiModeBtn", true);
    SimanTactiModeBtnClick();
    EXPECT_TRUE(formShown);
    billboardState().icons.text = "A";
    shiftClick(30, 40);
    billboardState().icons.text = "B";
    shiftClick(50, 40);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 2);
    EXPECT_TRUE(dispatchState().BILLBOARDMODE);
    ReleaseBillboardTools();
    EXPECT_FALSE(formShown);
}

TEST_F(Billboards, MovingAGroupMovesEveryBillboardWhoseTextMatches) {
    const double position[3] = {1, 2, 2}, pivot[3] = {1, 1, 2};
    const UInt8 pixels[4] = {1, 2, 3, 255};
    for (const char* id : {"A|FLAG1", "A|TENT2", "A|FLAG3", "B|FLAG4"})
        ASSERT_TRUE(At3d_Measure_Billboard_Add_Item(id, pixels, 1, 1, 1, 2, 0, 1, 1, 0, RED, 4, 1, position, pivot,
                                                    position));
    dispatchState().GlobalMeasureOrBilboard = 2;
    dispatchState().GlobalSelectedIdx = 1;
    MoveAllgroup1Click();
    EXPECT_EQ(dispatchState().MOVEBILLBOARD, 2);
    double target[3];
    ASSERT_TRUE(roofPoint(70, 50, target));
    shiftClick(70, 50);
    for (int i = 0; i < 4; ++i) {
        Picture p;
        read(i, p);
        const double dx = i < 3 ? target[0] - 1 : 0;
        EXPECT_NEAR(p.data.position[0], 1 + dx, 1e-9) << i;
        EXPECT_NEAR(p.data.pivot[0], 1 + dx, 1e-9) << i;
    }
    // The move ends and the selection tool takes over again.
    EXPECT_EQ(dispatchState().MOVEBILLBOARD, 0);
    EXPECT_TRUE(ControlChecked("SelectMeasuringBtn"));
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_SELECT_MEASURE), 1);
}

TEST_F(Billboards, AMoveClickOffTheMeshMovesNothingButEndsTheMove) {
    make("Solo", 1);
    dispatchState().GlobalMeasureOrBilboard = 2;
    dispatchState().GlobalSelectedIdx = 0;
    MovethisoneClick();
    shiftClick(0, 0);
    Picture p;
    read(0, p);
    EXPECT_DOUBLE_EQ(p.data.position[0], 1);
    EXPECT_EQ(dispatchState().MOVEBILLBOARD, 0);
}

TEST_F(Billboards, TheGroupMenuHidesAndDeletesFromTheLastDown) {
    const double position[3] = {1, 2, 2}, pivot[3] = {1, 1, 2};
    const UInt8 pixels[4] = {1, 2, 3, 255};
    for (const char* id : {"A|X1", "B|X2", "A|X3", "A|X4"})
        ASSERT_TRUE(At3d_Measure_Billboard_Add_Item(id, pixels, 1, 1, 1, 2, 0, 1, 1, 0, RED, 4, 1, position, pivot,
                                                    position));
    dispatchState().GlobalMeasureOrBilboard = 2;
    dispatchState().GlobalSelectedIdx = 2;
    HidegroupClick();
    for (int i = 0; i < 4; ++i) {
        Picture p;
        read(i, p);
        EXPECT_EQ(p.data.visibleFlag, i == 1 ? 1 : 0) << i;
    }
    Showwall1Click();
    DeleteGroupClick();
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
    char id[AT3D_NAME_SIZE] = {};
    At3d_Measure_Billboard_Get_ID(0, id);
    EXPECT_STREQ(id, "B|X2");
    EXPECT_EQ(dispatchState().GlobalMeasureOrBilboard, 0);
}

TEST_F(Billboards, DeletingASelectedSegmentTakesItsWholeOutline) {
    const double a[3] = {0, 0, 2}, b[3] = {1, 1, 2};
    for (const char* id : {"POL_77-1", "M1", "POL_77-2"})
        ASSERT_TRUE(At3d_MeasureList_Add_Item(id, 1, 0, 0, 2, nullptr, a, b, a, a));
    dispatchState().GlobalMeasureOrBilboard = 1;
    dispatchState().GlobalSelectedIdx = 2;
    DeleteThisOneClick();
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    dispatchState().GlobalMeasureOrBilboard = 1;
    dispatchState().GlobalSelectedIdx = 0;
    DeleteThisOneClick();
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
}

TEST_F(Billboards, MeasureLabelsHideAndShowTogether) {
    make("Plain", 1);
    make("3.20", 2, true);
    ShowHideMeasuringBilboard(0);
    Picture plain, label;
    read(0, plain);
    read(1, label);
    EXPECT_EQ(plain.data.visibleFlag, 1);
    EXPECT_EQ(label.data.visibleFlag, 0);
}

TEST_F(Billboards, ChangeColorPaintsEveryPixelThatIsNotPureWhite) {
    QImage icon(2, 1, QImage::Format_RGB32);
    icon.setPixelColor(0, 0, Qt::white);
    icon.setPixelColor(1, 0, QColor(250, 250, 250));
    const QImage painted = RecolourIcon(icon, 0x0000FF);
    EXPECT_EQ(painted.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(painted.pixelColor(1, 0), QColor(255, 0, 0));
    chooseIcon("FLAG");
    dialogs.pushColor(0xFF0000);
    ASSERT_TRUE(ChangeColorBtnClick());
    EXPECT_EQ(viewerSettings().SphereColor, 0xFF0000);
    EXPECT_EQ(billboardState().icons.SelectedImage.pixelColor(4, 4), QColor(0, 0, 255));
}
