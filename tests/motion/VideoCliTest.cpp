// zorvex64-cli video and panorama, run as a user would, rendered offscreen
// (under Xvfb when there is no display) and encoded by Debian's ffmpeg.
#include <gtest/gtest.h>

#include <QImageReader>
#include <QString>
#include <cstdio>
#include <filesystem>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::ScratchDir;

namespace {

// Width, height and decoded frames of the video's first stream, as ffprobe counts them.
std::string probe(const std::string& video) {
    const std::string command = "ffprobe -v error -count_frames -select_streams v:0 -show_entries "
                                "stream=codec_name,width,height,nb_read_frames -of csv=p=0 '" + video + "'";
    std::string out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, pipe)) out += buffer;
        pclose(pipe);
    }
    return out;
}

class VideoCli : public ::testing::Test {
protected:
    ScratchDir dir;
    CliResult run(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "HOME=" + dir.path("home"));
    }
    std::string demoSite() {
        std::filesystem::copy(std::filesystem::path(ZV_SOURCE_DIR) / "samples/site", dir.path("site"));
        return dir.path("site/DemoSite.obj");
    }
};

}  // namespace

TEST_F(VideoCli, AShortTurnOfTheDemoSiteIsAnH264VideoOfItsFrames) {
    const std::string model = demoSite();
    const std::string out = dir.path("videos/turn.mp4");
    const CliResult r = run("video " + model + " " + out + " --seconds 0.2 --size 320x240");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    // Five steps of the turn and the last step's frame; 320 x 240 / 2.5.
    EXPECT_EQ(r.out, "frames 6\n" + out + "\n");
    EXPECT_EQ(probe(out), "h264,128,96,6\n");
}

TEST_F(VideoCli, AFlythroughVideoEndsAtThePathsEnd) {
    const std::string model = demoSite();
    testsupport::writeTextFile(dir.path("path.txt"), "178480 663480 60\n178520 663480 60\n178520 663520 60\n");
    const std::string waypoints = dir.path("path.shp");
    const CliResult made = run("flythrough " + model + " " + dir.path("path.txt") + " " + waypoints + " --alt 20");
    ASSERT_EQ(made.exitCode, 0) << made.err;
    const std::string out = dir.path("fly.mp4");
    const CliResult r =
        run("video " + model + " " + out + " --flythrough " + waypoints + " --seconds 0.2 --size 320x240");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    // A fifth of the path a step: the fifth step passes the end and gives the last frame.
    EXPECT_EQ(r.out, "frames 5\n" + out + "\n");
    EXPECT_EQ(probe(out), "h264,128,96,5\n");
}

TEST_F(VideoCli, ThePanoramaOfAFlatGroundIsTwelveMeasuredSlices) {
    testsupport::writeTextFile(dir.path("ground/Ground.obj"), "v -2000 -2000 0\nv 2000 -2000 0\nv 2000 2000 0\n"
                                                              "v -2000 2000 0\ng ground\nf 1 2 3 4\n");
    const std::string out = dir.path("pano/east.bmp");
    const CliResult r =
        run("panorama " + dir.path("ground/Ground.obj") + " 0 0 10 90 " + out + " --fov 60 --size 200x150");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    // On a 200 x 150 panel 60 degrees high, pixel X looks (X + 0.5 - 100) / 100
    // * tan(30) * 4 / 3 to the side: 15 degrees is passed at X = 135, so a
    // slice keeps columns 65 to 135, three times over: 211 columns, 450 rows.
    EXPECT_EQ(r.out, out + "\nsize 2532 450\n");
    EXPECT_EQ(QImageReader(QString::fromStdString(out)).size(), QSize(2532, 450));
}

TEST_F(VideoCli, BadArgumentsGiveTheUsage) {
    const CliResult r = run("video model.obj out.mp4 --size 12");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_NE(r.err.find("usage: zorvex64-cli video MODEL OUT.mp4"), std::string::npos) << r.err;
}
