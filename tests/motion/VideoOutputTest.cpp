// Video and panorama: the frame sizes, the encoder's script, the frame loop
// with a recording renderer and a stand-in encoder, Cancel, the panorama's
// width measured on a flat ground, and the cropping and stitching.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSet>
#include <cmath>
#include <filesystem>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "motion/Flythrough.h"
#include "motion/VideoOutput.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

class Panel : public MainFormHost {
public:
    int width = 1001, height = 700;
    int viewPanelWidth() const override { return width; }
    int viewPanelHeight() const override { return height; }
};

// The sizes asked of the renderer; with writeFiles a grey picture of that size lands at the path.
struct Recorder {
    std::vector<QSize> sizes;
    bool writeFiles = true;
};
Recorder& recorder() {
    static Recorder r;
    return r;
}
int recordThumbnail(void*, const char* path, int width, int height) {
    recorder().sizes.emplace_back(width, height);
    if (!recorder().writeFiles) return 1;
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return image.save(QString::fromLocal8Bit(path), "BMP") ? 1 : 0;
}

class Video : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    Panel panel;

    void SetUp() override {
        resetFlythroughState();
        resetVideoState();
        resetVideoHooks();
        resetDispatchState();
        resetCameraState();
        resetMainFormState();
        resetViewerSettings();
        resetModelSession();
        resetSessionPaths();
        resetStartupState();
        sessionPaths().ORVO_T = dir.root() + "/";
        sessionPaths().CTQ_Path = dir.root() + "/data/";
        startupState().ImagesFolder = dir.root() + "/Temp/";
        modelSession().GlobalModelFileName = dir.path("site/Model.obj");
        modelSession().SCREENSHOTSFOLDER = dir.path("site/Screenshots/");
        installDialogService(&dialogs);
        installMainFormHost(&panel);
        recorder() = Recorder{};
        const At3d_RendererHooks hooks{nullptr, nullptr, recordThumbnail};
        At3d_Set_Renderer(&hooks);
    }
    void TearDown() override {
        At3d_Set_Renderer(nullptr);
        installMainFormHost(nullptr);
        installDialogService(nullptr);
        resetVideoHooks();
    }
    // An encoder in the installation's folder that notes its arguments, one a
    // line, and writes a small output file.
    std::string installFakeEncoder() {
        QDir().mkpath(QString::fromStdString(dir.root() + "/data"));
        const std::string tool = dir.root() + "/data/ffmpeg";
        testsupport::writeTextFile(tool, "#!/bin/sh\nprintf '%s\\n' \"$@\" > args.txt\n"
                                         "for last; do :; done\necho video > \"$last\"\n");
        std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
        return tool;
    }
    QString images() const { return QString::fromStdString(startupState().ImagesFolder); }
};

}  // namespace

TEST(VideoFrames, SmallFramesAreThePanelOver2Point5CutAndEven) {
    EXPECT_EQ(VideoFrameSize(1001, 700, 480), QSize(400, 280));  // 400.4 -> 400
    EXPECT_EQ(VideoFrameSize(1003, 601, 480), QSize(400, 240));  // 401.2 -> 401 -> 400; 240.4 -> 240
    EXPECT_EQ(VideoFrameSize(1001, 700, 1080), QSize(1000, 700));
    EXPECT_EQ(VideoFrameSize(999, 599, 1080), QSize(998, 598));
}

TEST(VideoFrames, TheEncoderLineIsTheBatchLineWithOnePercentForTheShell) {
    EXPECT_EQ(VideoEncoderLine("/usr/bin/ffmpeg", 25, "/home/u/Site/ScreenShots/18s_480_x_SC.mp4").toStdString(),
              " \"/usr/bin/ffmpeg\" -y -framerate 25.0  -i Image-%05d.bmp -vcodec libx264  -profile:v baseline "
              "-level 3.0 -pix_fmt yuv420p -preset slow -crf 23  -movflags faststart "
              "\"/home/u/Site/ScreenShots/18s_480_x_SC.mp4\"");
    // What the shell would expand inside double quotes is escaped.
    EXPECT_EQ(ShellQuoted("/a b/$x`y\"z\\.mp4").toStdString(), "\"/a b/\\$x\\`y\\\"z\\\\.mp4\"");
}

TEST_F(Video, ATurnOnTheSpotWritesEveryFrameThenTheScriptThatTheEncoderRuns) {
    const std::string tool = installFakeEncoder();
    const QString out = QString::fromStdString(dir.path("out/turn.mp4"));
    QDir().mkpath(QFileInfo(out).path());
    dialogs.pushText("0.2");
    dialogs.pushButton(2);  // not Full HD
    dialogs.pushFile(out);
    const VideoResult result = CreateVideo(0);

    EXPECT_EQ(dialogs.questions()[0].title, "Video creation");
    EXPECT_EQ(dialogs.questions()[0].value, "18");
    EXPECT_EQ(dialogs.questions()[1].title, "Video quality");
    EXPECT_EQ(dialogs.questions()[2].title, "Define the output file.");
    // The proposal: duration, frame height, the time stamp, in the model's screenshots folder.
    EXPECT_TRUE(dialogs.questions()[2].value.startsWith("0s_480_")) << dialogs.questions()[2].value.toStdString();
    EXPECT_TRUE(dialogs.questions()[2].value.endsWith("_SC.mp4"));

    // Five steps of 72 degrees, and the frame of the step that ended the video.
    EXPECT_NEAR(viewerSettings().GlobalVideoRotationStep, 72, 1e-5);  // of a float duration
    ASSERT_EQ(recorder().sizes.size(), 6u);
    for (const QSize& size : recorder().sizes) EXPECT_EQ(size, QSize(400, 280));
    EXPECT_EQ(result.frames, 6);
    EXPECT_EQ(images(), QString::fromStdString(dir.root() + "/Temp/Flytrough/"));
    for (int i = 0; i < 6; ++i) EXPECT_TRUE(QFile::exists(images() + QString::asprintf("Image-%05d.bmp", i)));

    const std::string script = testsupport::readTextFile(images().toStdString() + "MakeVideo.BAT");
    EXPECT_EQ(script, VideoEncoderLine(QString::fromStdString(tool), 25, out).toStdString() + "  \n");
    // The encoder ran in the frames' folder and got the pattern with one percent sign.
    const std::string args = testsupport::readTextFile(images().toStdString() + "args.txt");
    EXPECT_EQ(args, "-y\n-framerate\n25.0\n-i\nImage-%05d.bmp\n-vcodec\nlibx264\n-profile:v\nbaseline\n-level\n3.0\n"
                    "-pix_fmt\nyuv420p\n-preset\nslow\n-crf\n23\n-movflags\nfaststart\n" +
                        out.toStdString() + "\n");
    EXPECT_TRUE(result.made);
    EXPECT_EQ(dialogs.questions().back().kind, ScriptedDialogService::Question::Document);
    EXPECT_EQ(dialogs.questions().back().text, out);
    EXPECT_FALSE(dispatchState().keep_goingAVI);
}

TEST_F(Video, EighteenSecondsTurnOnceIn450StepsAndASecondVideoGoesOneFolderDeeper) {
    installFakeEncoder();
    recorder().writeFiles = false;
    const QString out = QString::fromStdString(dir.path("out.mp4"));
    for (int run = 0; run < 2; ++run) {
        dialogs.pushText("18");
        dialogs.pushButton(1);  // Full HD
        dialogs.pushFile(out);
    }
    CreateVideo(0);
    EXPECT_DOUBLE_EQ(viewerSettings().GlobalVideoRotationStep, 0.8);
    EXPECT_EQ(flythroughState().AVIframe, 451);
    EXPECT_EQ(recorder().sizes.front(), QSize(1000, 700));
    CreateVideo(0);
    EXPECT_EQ(images(), QString::fromStdString(dir.root() + "/Temp/Flytrough/Flytrough/"));
}

TEST_F(Video, CancelDuringTheFramesLeavesTheOldFileAndRunsNoEncoder) {
    installFakeEncoder();
    const QString out = QString::fromStdString(dir.path("kept.mp4"));
    testsupport::writeTextFile(out.toStdString(), "an older video");
    dialogs.pushText("4");
    dialogs.pushButton(2);
    dialogs.pushFile(out);
    std::vector<int> seen;
    videoHooks().progress = [&seen](int frame, int frames) {
        seen.push_back(frame);
        EXPECT_EQ(frames, 101);
    };
    videoHooks().cancelled = [&seen] { return seen.size() >= 3; };
    const VideoResult result = CreateVideo(0);
    EXPECT_TRUE(result.cancelled);
    EXPECT_FALSE(result.made);
    EXPECT_EQ(result.frames, 3);
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(testsupport::readTextFile(out.toStdString()), "an older video");
    EXPECT_FALSE(QFile::exists(images() + "MakeVideo.BAT"));
    EXPECT_FALSE(QFile::exists(images() + "args.txt"));
    EXPECT_EQ(mainFormState().statusTexts[0], "Create video cancelled: no video written");
    EXPECT_FALSE(dispatchState().keep_goingAVI);
}

TEST_F(Video, WithoutAnEncoderTheRunStopsBeforeAnythingIsWritten) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(dir.root() + "/nothing"));
    dialogs.pushText("1");
    const VideoResult result = CreateVideo(0);
    qputenv("PATH", path);
    EXPECT_FALSE(result.made);
    EXPECT_EQ(dialogs.questions().back().text, QString::fromStdString(dir.root() + "/data/ffmpeg Is missing."));
    EXPECT_TRUE(recorder().sizes.empty());
    EXPECT_FALSE(QDir(images() + "Flytrough").exists());
}

TEST_F(Video, ThePanoramaWidthIsMeasuredOnTheGround) {
    // Flat ground 10 m below a level camera looking north, 60 degrees high,
    // on an 800 x 600 panel: half the picture is tan(30) * 800 / 600 wide at
    // unit depth, so pixel X (its centre X + 0.5) looks (X + 0.5 - 400) / 400
    // * 0.7698 to the side. 15 degrees (tan 0.26795) is passed first at X = 539.
    testsupport::addLayer(testsupport::makeRectangle("ground", -2000, -2000, 2000, 2000, 0));
    panel.width = 800;
    panel.height = 600;
    At3d_Size(800, 600);
    At3d_Add_Roaming_Camera("R1");
    const double eye[3] = {0, 0, 10}, target[3] = {0, 10, 10}, up = 0, fov = 60;
    At3d_Set_Roaming_Data("R1", eye, target, &up, &fov);
    At3d_Switch_OGL_Camera("R1");
    cameraState().activeCameraID = 1;
    EXPECT_EQ(FindWidthOfPanorama(30), 139);
    const QStringList lines =
        QString::fromStdString(testsupport::readTextFile(dir.path("az.txt"))).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 140);
    EXPECT_TRUE(lines.back().startsWith("X   539 Az 15.")) << lines.back().toStdString();
    EXPECT_TRUE(lines.back().endsWith("   60"));
}

TEST_F(Video, APanoramaNeedsTheRoamingCamera) {
    EXPECT_TRUE(Createpanorama1Click().isEmpty());
    EXPECT_EQ(dialogs.questions().back().text, "Panorama can be created only in roaming mode");
}

TEST_F(Video, CropBitmapStretchesTheColumnsOntoOneMore) {
    QImage source(10, 4, QImage::Format_RGB32);
    for (int x = 0; x < 10; ++x)
        for (int y = 0; y < 4; ++y) source.setPixel(x, y, qRgb(x * 20, 0, 0));
    const QString in = QString::fromStdString(dir.path("in.bmp")), out = QString::fromStdString(dir.path("out.bmp"));
    ASSERT_TRUE(source.save(in, "BMP"));
    ASSERT_TRUE(CropBitmap(in, out, 2, 6));
    const QImage cropped(out);
    ASSERT_EQ(cropped.size(), QSize(5, 4));
    // Columns 2 to 5 of the source, one of them twice; column 6 is not copied.
    QSet<int> columns;
    for (int x = 0; x < 5; ++x) columns.insert(qRed(cropped.pixel(x, 1)) / 20);
    EXPECT_EQ(columns, (QSet<int>{2, 3, 4, 5}));
    EXPECT_EQ(qRed(cropped.pixel(0, 0)) / 20, 2);
    EXPECT_EQ(qRed(cropped.pixel(4, 3)) / 20, 5);
}

TEST_F(Video, CropBitmapsLaysThePicturesSideBySide) {
    QStringList files;
    for (int i = 0; i < 3; ++i) {
        QImage picture(4, 3, QImage::Format_RGB32);
        picture.fill(qRgb(0, 100 * i, 0));
        files << QString::fromStdString(dir.path("p" + std::to_string(i) + ".bmp"));
        ASSERT_TRUE(picture.save(files.back(), "BMP"));
    }
    const QString panorama = QString::fromStdString(dir.path("pano.BMP"));
    ASSERT_TRUE(CropBitmaps(files, panorama));
    const QImage stitched(panorama);
    ASSERT_EQ(stitched.size(), QSize(12, 3));
    for (int x = 0; x < 12; ++x) EXPECT_EQ(qGreen(stitched.pixel(x, 2)), 100 * (x / 4)) << x;
}
