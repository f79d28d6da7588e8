// The renderer under Xvfb: thumbnails of small scenes checked pixel by pixel
// against where the engine's own camera math puts things, the render modes,
// backface culling, the lists and overlays, and the demo site.
#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdlib>
#include <set>
#include <string>

#include "scene/engine/CameraMath.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "scene/render/OverlayLayout.h"
#include "scene/render/ViewCapture.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

constexpr int kWidth = 320;
constexpr int kHeight = 240;
const QColor kRed(255, 0, 0), kGreen(0, 255, 0), kBlue(0, 0, 255), kYellow(255, 255, 0);

// 64 x 64, quadrants as seen in the picture: red top-left, green top-right,
// blue bottom-left, yellow bottom-right. On a rectangle with UV (0, 0) at
// its south-west corner: blue south-west, yellow south-east, red
// north-west, green north-east.
std::string writeQuadrantTexture(const testsupport::ScratchDir& dir) {
    QImage image(64, 64, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(0, 0, 32, 32, kRed);
    painter.fillRect(32, 0, 32, 32, kGreen);
    painter.fillRect(0, 32, 32, 32, kBlue);
    painter.fillRect(32, 32, 32, 32, kYellow);
    painter.end();
    const std::string path = dir.path("quadrants.png");
    image.save(QString::fromStdString(path));
    return path;
}

void lookDown(double x, double y, double z, double distance) {
    At3d_ViewTop();
    At3d_SetCameraViewPoint(x, y, z);
    At3d_SetCameraDistance(distance);
    At3d_SetCameraFieldOfView(0, 60);
}

// Pixel where the engine's camera puts a point on a kWidth x kHeight surface.
QPoint pixelOf(double x, double y, double z) {
    const double point[3] = {x, y, z};
    int px = -1, py = -1;
    EXPECT_TRUE(engine::projectToPixel(engineState(), point, px, py));
    return QPoint(px, py);
}

bool near(QColor actual, QColor expected, int tolerance = 40) {
    return std::abs(actual.red() - expected.red()) <= tolerance &&
           std::abs(actual.green() - expected.green()) <= tolerance &&
           std::abs(actual.blue() - expected.blue()) <= tolerance;
}

std::string describe(QColor c) {
    return "(" + std::to_string(c.red()) + ", " + std::to_string(c.green()) + ", " + std::to_string(c.blue()) + ")";
}

#define EXPECT_COLOUR(image, point, expected)                                                         \
    do {                                                                                              \
        const QColor actual_ = (image).pixelColor(point);                                             \
        EXPECT_TRUE(near(actual_, expected)) << "pixel " << (point).x() << "," << (point).y() << " is " \
                                             << describe(actual_) << ", expected " << describe(expected); \
    } while (0)

class RenderThumbnail : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "RenderThumbnailTest";
        static char* argv[] = {name, nullptr};
        app = new QGuiApplication(argc, argv);
    }
    static void TearDownTestSuite() {
        delete app;
        app = nullptr;
    }

    void SetUp() override {
        render::attachOffscreenRenderer();
        At3d_Size(kWidth, kHeight);
        At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
        texture = writeQuadrantTexture(dir);
    }

    // A 20 m textured square over x, y in [0, 20] at height 0, facing up.
    void addTexturedSquare() {
        engine::Layer square = testsupport::makeRectangle("ground", 0, 0, 20, 20, 0);
        square.texturePath = texture;
        testsupport::addLayer(square);
    }

    QImage thumbnail(const std::string& name = "view.png") {
        const std::string path = dir.path(name);
        EXPECT_EQ(At3d_Save_Thumbnail_Image(path.c_str(), kWidth, kHeight), 1);
        const QImage image(QString::fromStdString(path));
        EXPECT_EQ(image.size(), QSize(kWidth, kHeight));
        return image;
    }

    QColor background() {
        engineState().layers.clear();
        engine::invalidateHitIndex();
        return thumbnail("empty.png").pixelColor(kWidth / 2, kHeight / 2);
    }

    static QGuiApplication* app;
    testsupport::EngineFixtureGuard guard;
    testsupport::ScratchDir dir;
    std::string texture;
};

QGuiApplication* RenderThumbnail::app = nullptr;

TEST_F(RenderThumbnail, TextureColoursLandWhereTheCameraPutsThem) {
    addTexturedSquare();
    lookDown(15, 15, 0, 30);
    const QImage image = thumbnail();
    EXPECT_COLOUR(image, QPoint(kWidth / 2, kHeight / 2), kGreen);  // the view point lies in the north-east quarter
    EXPECT_COLOUR(image, pixelOf(5, 5, 0), kBlue);
    EXPECT_COLOUR(image, pixelOf(15, 5, 0), kYellow);
    EXPECT_COLOUR(image, pixelOf(5, 15, 0), kRed);
    const QColor sky = background();
    EXPECT_FALSE(near(sky, kGreen) || near(sky, kBlue));
    EXPECT_COLOUR(image, pixelOf(-5, 10, 0), sky);  // west of the square
}

TEST_F(RenderThumbnail, FarFromTheOriginEdgesStayOnTheirPixels) {
    // Map-sized numbers in the engine's frame: floats alone would put the
    // corners 0.25 m off; the quarter of a 2 m square would show it.
    const double x0 = 3612000.456, y0 = 663000.123;
    engine::Layer square = testsupport::makeRectangle("far", x0, y0, x0 + 2, y0 + 2, 100);
    square.texturePath = texture;
    testsupport::addLayer(square);
    lookDown(x0 + 1, y0 + 1, 100, 3);
    const QImage image = thumbnail();
    EXPECT_COLOUR(image, pixelOf(x0 + 0.9, y0 + 0.9, 100), kBlue);
    EXPECT_COLOUR(image, pixelOf(x0 + 1.1, y0 + 0.9, 100), kYellow);
    EXPECT_COLOUR(image, pixelOf(x0 + 0.9, y0 + 1.1, 100), kRed);
    EXPECT_COLOUR(image, pixelOf(x0 + 1.1, y0 + 1.1, 100), kGreen);
}

TEST_F(RenderThumbnail, BackfaceCullingHidesASquareSeenFromBelow) {
    addTexturedSquare();
    At3d_ViewBottom();
    At3d_SetCameraViewPoint(15, 15, 0);
    At3d_SetCameraDistance(30);
    At3d_WriteFlag(LIBFLAG_BACKFACE_CULL, 0);
    EXPECT_COLOUR(thumbnail("both.png"), QPoint(kWidth / 2, kHeight / 2), kGreen);
    At3d_WriteFlag(LIBFLAG_BACKFACE_CULL, 1);
    const QImage culled = thumbnail("culled.png");
    EXPECT_FALSE(near(culled.pixelColor(kWidth / 2, kHeight / 2), kGreen));
    EXPECT_COLOUR(culled, QPoint(kWidth / 2, kHeight / 2), background());
}

TEST_F(RenderThumbnail, FalseColourRunsFromEntry271AtTheBottomTo268AtTheTop) {
    testsupport::addLayer(testsupport::makeRectangle("low", 0, 0, 10, 10, 0));
    testsupport::addLayer(testsupport::makeRectangle("high", 10, 0, 20, 10, 10));
    lookDown(10, 5, 5, 40);
    const float blue[3] = {0, 0, 1}, red[3] = {1, 0, 0};
    At3d_SetColorMap(271, blue);
    At3d_SetColorMap(268, red);
    At3d_WriteFlag(LIBFLAG_RENDER_MODE, 3);
    const QImage image = thumbnail();
    const QColor low = image.pixelColor(pixelOf(5, 5, 0)), high = image.pixelColor(pixelOf(15, 5, 10));
    EXPECT_TRUE(low.blue() > 150 && low.red() < 30 && low.green() < 30) << describe(low);
    EXPECT_TRUE(high.red() > 150 && high.blue() < 30 && high.green() < 30) << describe(high);
}

TEST_F(RenderThumbnail, WireframeLeavesTheInsideOfTrianglesEmpty) {
    addTexturedSquare();
    lookDown(10, 10, 0, 30);
    const QPoint insideRed = pixelOf(4, 14, 0);  // well away from the three edges of its triangle
    EXPECT_COLOUR(thumbnail("filled.png"), insideRed, kRed);
    At3d_WriteFlag(LIBFLAG_RENDER_MODE, 8);
    const QImage wire = thumbnail("wire.png");
    EXPECT_FALSE(near(wire.pixelColor(insideRed), kRed));
    EXPECT_COLOUR(wire, insideRed, background());
}

TEST_F(RenderThumbnail, TexturesOffDrawsTheLayerColour) {
    addTexturedSquare();
    const float grey[3] = {0.5f, 0.5f, 0.5f};
    At3d_SetMaterial_F3("ground", 3, grey);
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 0);
    lookDown(15, 15, 0, 30);
    const QColor c = thumbnail().pixelColor(kWidth / 2, kHeight / 2);
    EXPECT_TRUE(std::abs(c.red() - c.green()) < 4 && std::abs(c.green() - c.blue()) < 4 && c.red() > 60)
        << describe(c);
}

TEST_F(RenderThumbnail, LineGeometryAndSphereMarkers) {
    engine::Layer lines;
    lines.name = "lines";
    lines.lineVertices = {0, 10, 0, 20, 10, 0};
    lines.lineSegments = {0, 1};
    lines.diffuse[0] = 1, lines.diffuse[1] = 1, lines.diffuse[2] = 0;
    testsupport::addLayer(lines);
    lookDown(10, 10, 0, 30);
    At3d_WriteFlag(LIBFLAG_SHOW_SPHERES, 1);
    const double where[3] = {15, 15, 0};
    const float cyan[3] = {0, 1, 1}, white[3] = {1, 1, 1};
    ASSERT_EQ(At3d_Sphere_Marker_Add("s", 4, where, cyan, white, 0, 500, 0, 1), 1);
    QImage image = thumbnail();
    EXPECT_COLOUR(image, pixelOf(5, 10, 0), kYellow);
    const QColor sphere = image.pixelColor(pixelOf(15, 15, 2));
    EXPECT_TRUE(sphere.green() > 150 && sphere.blue() > 150 && sphere.red() < 30) << describe(sphere);

    engineState().selectedSphere = 0;  // drawn in the list's selected colour, magenta
    const QColor selected = thumbnail("selected.png").pixelColor(pixelOf(15, 15, 2));
    EXPECT_TRUE(selected.red() > 150 && selected.blue() > 150 && selected.green() < 30) << describe(selected);
}

TEST_F(RenderThumbnail, MeasureLinesTakeTheSelectedColourAndHideBehindTheMeshWithTheDepthFlag) {
    addTexturedSquare();
    lookDown(10, 10, 0, 30);
    At3d_WriteFlag(LIBFLAG_SHOW_MEASURES, 1);
    const float white[3] = {1, 1, 1};
    const double a[3] = {2, 10, -1}, b[3] = {18, 10, -1}, none[3] = {0, 0, 0};
    At3d_MeasureList_Add_Item("under", 1, 0, 0, 5, white, a, b, none, none);
    const QPoint onLine = pixelOf(6, 10, -1);
    EXPECT_COLOUR(thumbnail("over.png"), onLine, QColor(255, 255, 255));
    At3d_WriteFlag(LIBFLAG_MEASURE_DEPTH, 1);
    const QImage hidden = thumbnail("hidden.png");
    EXPECT_FALSE(near(hidden.pixelColor(onLine), QColor(255, 255, 255)));

    At3d_WriteFlag(LIBFLAG_MEASURE_DEPTH, 0);
    engineState().selectedMeasure = 0;
    EXPECT_COLOUR(thumbnail("selected.png"), onLine, QColor(255, 0, 255));
}

TEST_F(RenderThumbnail, BillboardPictureKeepsItsTransparency) {
    addTexturedSquare();
    lookDown(10, 10, 0, 30);
    At3d_WriteFlag(LIBFLAG_SHOW_BILLBOARDS, 1);
    // 40 x 20 RGBA: the left half opaque magenta, the right half clear.
    std::vector<UInt8> pixels(40 * 20 * 4, 0);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x) {
            UInt8* p = &pixels[std::size_t((y * 40 + x) * 4)];
            p[0] = 255, p[1] = 0, p[2] = 255, p[3] = 255;
        }
    const double position[3] = {5, 15, 0}, pivot[3] = {5, 15, 1}, rotation[3] = {0, 0, 0};
    const float black[3] = {0, 0, 0};
    ASSERT_EQ(At3d_Measure_Billboard_Add_Item("label", pixels.data(), 40, 20, 1, 0, 0, 1, 1, 0, black, 1, 4,
                                              position, pivot, rotation),
              1);
    // Seen from above the picture lies flat on the screen: 8 m wide, 4 m high, centred on the pivot.
    const QImage image = thumbnail();
    EXPECT_COLOUR(image, pixelOf(3, 15, 1), QColor(255, 0, 255));
    EXPECT_COLOUR(image, pixelOf(7, 15, 1), kRed);  // the texture under the clear half
}

TEST_F(RenderThumbnail, StatusStripAndDecalsArePaintedOver) {
    addTexturedSquare();
    lookDown(10, 10, 0, 30);
    At3d_StatusBar_Show(1, 30);
    At3d_StatusBar_Set_Font_Color(0xFF0000);
    QImage logo(20, 20, QImage::Format_RGB32);
    logo.fill(QColor(0, 128, 0));
    const std::string logoPath = dir.path("logo.png");
    logo.save(QString::fromStdString(logoPath));
    At3d_View_Decal_Add("NothrArrow", logoPath.c_str(), "Top_Right", 10, 0, 0, 0, 0, 1);
    const QColor sky = background();
    addTexturedSquare();

    const QImage withoutDecals = thumbnail("strip.png");
    const QColor strip = withoutDecals.pixelColor(kWidth - 5, kHeight - 5);
    EXPECT_GT(strip.lightness(), sky.lightness() + 20) << describe(strip);  // the strip's pale ground
    const QRectF rect = render::decalRect(engineState().decals[0], QSizeF(kWidth, kHeight), QSizeF(20, 20));
    EXPECT_FALSE(near(withoutDecals.pixelColor(rect.center().toPoint()), QColor(0, 128, 0), 10));

    At3d_WriteFlag(LIBFLAG_DECALS, 1);
    EXPECT_COLOUR(thumbnail("decal.png"), rect.center().toPoint(), QColor(0, 128, 0));
}

TEST_F(RenderThumbnail, ImageFormatFollowsTheExtension) {
    addTexturedSquare();
    lookDown(15, 15, 0, 30);
    for (const char* name : {"v.jpg", "v.JPEG", "v.png", "v.bmp"}) {
        const std::string path = dir.path(name);
        ASSERT_EQ(At3d_Save_Thumbnail_Image(path.c_str(), 64, 48), 1) << name;
        const QImage image(QString::fromStdString(path));
        EXPECT_EQ(image.size(), QSize(64, 48)) << name;
        EXPECT_COLOUR(image, QPoint(32, 24), kGreen);
    }
    EXPECT_EQ(At3d_Save_Thumbnail_Image(dir.path("v.gif").c_str(), 64, 48), 0);
    EXPECT_EQ(At3d_Save_Thumbnail_Image(dir.path("missing/v.png").c_str(), 64, 48), 0);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(dir.path("v.gif"))));
}

// Centred, textured and drawn: the demo site seen as the full view shows it.
// Set ZV_RENDER_SHOTS to a folder to keep the picture for a look.
TEST_F(RenderThumbnail, DemoSiteIsDrawnTexturedAndCentred) {
    const std::string obj = std::string(ZV_SOURCE_DIR) + "/samples/site/DemoSite.obj";
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, obj.c_str(), 1), 1);
    At3d_WriteFlag(LIBFLAG_ROTATE_181, 1);
    At3d_RotateObjectX_90Minus();
    At3d_SetObject_XYZCenter();
    At3d_WriteFlag(LIBFLAG_BACKFACE_CULL, 1);
    At3d_ZoomReset();
    At3d_ViewTop();
    At3d_RotateCamera(0, 45, 0, 0);
    const char* keep = std::getenv("ZV_RENDER_SHOTS");
    const std::string path = keep ? std::string(keep) + "/DemoSite.png" : dir.path("DemoSite.png");
    ASSERT_EQ(At3d_Save_Thumbnail_Image(path.c_str(), kWidth, kHeight), 1);
    const QImage image(QString::fromStdString(path));
    ASSERT_EQ(image.size(), QSize(kWidth, kHeight));

    const QColor sky = image.pixelColor(2, 2);  // the far corner sees past the site
    std::set<QRgb> colours;
    double sumX = 0, sumY = 0;
    int drawn = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const QColor c = image.pixelColor(x, y);
            colours.insert(c.rgb());
            if (near(c, sky, 6)) continue;
            sumX += x;
            sumY += y;
            ++drawn;
        }
    EXPECT_GT(drawn, kWidth * kHeight / 8);
    EXPECT_GT(colours.size(), 1000u);  // a texture, not a few flat colours
    ASSERT_GT(drawn, 0);
    EXPECT_NEAR(sumX / drawn, kWidth / 2.0, kWidth * 0.1);
    EXPECT_NEAR(sumY / drawn, kHeight / 2.0, kHeight * 0.1);
}

}  // namespace
