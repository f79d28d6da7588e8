// video and panorama: the view rendered offscreen to a video or a stitched
// panorama, through the same steps as "Create video" and "Create panorama".
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "motion/Flythrough.h"
#include "motion/VideoOutput.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr const char* videoUsage =
    "zorvex64-cli video MODEL OUT.mp4 [--seconds S] [--full-hd] [--flythrough WAYPOINTS.shp] [--size WxH]";
constexpr const char* panoramaUsage = "zorvex64-cli panorama MODEL X Y Z AZIMUTH OUT.bmp [--fov F] [--size WxH]";
constexpr const char* UNDER_XVFB = "ZV_CLI_UNDER_XVFB";
// The view panel the frames are cut from when none is given: a Full HD screen.
constexpr int VIDEO_PANEL_WIDTH = 1920, VIDEO_PANEL_HEIGHT = 1080;
// The panorama's pictures are three times the panel: a smaller one keeps them in memory.
constexpr int PANORAMA_PANEL_WIDTH = 800, PANORAMA_PANEL_HEIGHT = 600;
constexpr double TARGET_DISTANCE = 10;

// The panel the logic measures, as the window's would be.
class CliPanel : public MainFormHost {
public:
    CliPanel(int width, int height) : width_(width), height_(height) {
        installMainFormHost(this);
        At3d_Size(width, height);
    }
    ~CliPanel() override { installMainFormHost(nullptr); }
    int viewPanelWidth() const override { return width_; }
    int viewPanelHeight() const override { return height_; }

private:
    int width_, height_;
};

bool parseSize(const std::string& word, int& width, int& height) {
    int w = 0, h = 0;
    char end = 0;
    if (std::sscanf(word.c_str(), "%dx%d%c", &w, &h, &end) != 2 || w < 2 || h < 2 || w > 16384 || h > 16384)
        return false;
    width = w;
    height = h;
    return true;
}

// Offscreen rendering needs an X server: without a display the command
// runs itself again under Xvfb. Returns only when it runs here.
int runUnderXvfbIfNeeded(const char* command, const std::vector<std::string>& args) {
    const char* display = std::getenv("DISPLAY");
    if ((display && *display) || std::getenv(UNDER_XVFB)) return -1;
    static char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0) return -1;
    self[length] = '\0';
    setenv(UNDER_XVFB, "1", 1);
    std::vector<std::string> words{"xvfb-run", "-a", "-s", "-screen 0 1280x1024x24", self, command};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    std::fflush(stdout);
    execvp(argv[0], argv.data());
    std::fprintf(stderr, "error: no display, and xvfb-run could not be started\n");
    return CLI_FAILED;
}

// The Qt application that gives the offscreen context its display.
std::unique_ptr<QGuiApplication> startGui() {
    static int qtArgc = 1;
    static char qtName[] = "zorvex64-cli";
    static char* qtArgv[] = {qtName, nullptr};
    if (QCoreApplication::instance()) return nullptr;
    return std::make_unique<QGuiApplication>(qtArgc, qtArgv);
}

bool openForPictures(const std::string& model) {
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(model, opened)) return false;
    render::attachOffscreenRenderer();
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);  // the picture as the viewer shows it
    At3d_Add_Roaming_Camera(cameraState().roamingCameraName.c_str());
    return true;
}

int CliVideo(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    double seconds = -1;
    bool fullHd = false;
    std::string waypoints;
    int width = VIDEO_PANEL_WIDTH, height = VIDEO_PANEL_HEIGHT;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const bool hasValue = i + 1 < args.size();
        if (args[i] == "--seconds") {
            if (!hasValue || !ParseCliNumber(args[i + 1], seconds) || seconds <= 0)
                return CliUsageError("--seconds takes a duration above 0", videoUsage);
            ++i;
        } else if (args[i] == "--full-hd") {
            fullHd = true;
        } else if (args[i] == "--flythrough") {
            if (!hasValue) return CliUsageError("--flythrough takes a way point file", videoUsage);
            waypoints = args[++i];
        } else if (args[i] == "--size") {
            if (!hasValue || !parseSize(args[i + 1], width, height))
                return CliUsageError("--size takes WxH, as 1280x720", videoUsage);
            ++i;
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() != 2) return CliUsageError("video takes a model and an output file", videoUsage);
    if (const int exec = runUnderXvfbIfNeeded("video", args); exec >= 0) return exec;

    PrepareCliSession();
    const auto gui = startGui();
    if (!openForPictures(words[0])) return CLI_FAILED;
    const QString out = QFileInfo(QString::fromStdString(words[1])).absoluteFilePath();
    QDir().mkpath(QFileInfo(out).absolutePath());
    const CliPanel panel(width, height);
    FullViewBtnClick();  // the viewer's first view

    StderrDialogService dialogs;
    const CliCommandScope scope(&dialogs);
    const QString duration = QString::number(seconds > 0 ? seconds : waypoints.empty() ? 18 : 40, 'g', 10);
    int ma = 0;
    if (!waypoints.empty()) {
        if (!QFileInfo::exists(QString::fromStdString(waypoints))) {
            std::fprintf(stderr, "Missing\n%s\n", waypoints.c_str());
            return CLI_FAILED;
        }
        dialogs.pushText(duration);
        if (!OpenFlytroughFile(QString::fromStdString(waypoints))) return CLI_FAILED;
        ma = 1;
    } else {
        dialogs.pushText(duration);
    }
    dialogs.pushButton(fullHd ? 1 : 2);  // "Full HD?": Yes or No
    dialogs.pushFile(out);
    videoHooks().progress = [](int frame, int frames) {
        if (frame % 25 == 0 || frame == 1) std::fprintf(stderr, "frame %d of %d\n", frame, frames);
    };
    const VideoResult result = CreateVideo(ma);
    resetVideoHooks();
    if (!result.made) {
        std::fprintf(stderr, "error: no video was made at %s\n", QFile::encodeName(out).constData());
        return CLI_FAILED;
    }
    std::printf("frames %d\n%s\n", result.frames, QFile::encodeName(result.output).constData());
    return CLI_OK;
}

int CliPanorama(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    double fov = cameraState().roaming_FieldOfView;
    int width = PANORAMA_PANEL_WIDTH, height = PANORAMA_PANEL_HEIGHT;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const bool hasValue = i + 1 < args.size();
        if (args[i] == "--fov") {
            if (!hasValue || !ParseCliNumber(args[i + 1], fov) || fov < 1 || fov > 170)
                return CliUsageError("--fov takes degrees from 1 to 170", panoramaUsage);
            ++i;
        } else if (args[i] == "--size") {
            if (!hasValue || !parseSize(args[i + 1], width, height))
                return CliUsageError("--size takes WxH, as 800x600", panoramaUsage);
            ++i;
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() != 6) return CliUsageError("panorama takes a model, X Y Z, an azimuth and an output file",
                                                panoramaUsage);
    double xyza[4];
    int error = 0;
    if (!ParseCliNumbers(words, 1, 4, xyza, panoramaUsage, error)) return error;
    if (const int exec = runUnderXvfbIfNeeded("panorama", args); exec >= 0) return exec;

    PrepareCliSession();
    const auto gui = startGui();
    if (!openForPictures(words[0])) return CLI_FAILED;
    const CliPanel panel(width, height);
    const CliCommandScope scope;
    // The roaming camera at the map point, level, looking along the azimuth.
    CameraState& c = cameraState();
    c.roaming_FieldOfView = fov;
    double eye[3] = {xyza[0] - OC(0), xyza[1] - OC(1), xyza[2] - OC(2)};
    double target[3] = {0, 0, eye[2]};
    DAzim(eye[0], eye[1], TARGET_DISTANCE, xyza[3], target[0], target[1]);
    At3d_Set_Roaming_Data(c.roamingCameraName.c_str(), eye, target, &c.roaming_Up_Rotation, &c.roaming_FieldOfView);
    c.activeCameraName = c.roamingCameraName;
    At3d_Switch_OGL_Camera(c.activeCameraName.c_str());
    c.activeCameraID = 1;

    const QString made = Createpanorama1Click();
    if (made.isEmpty()) {
        std::fprintf(stderr, "error: no panorama was made\n");
        return CLI_FAILED;
    }
    const QString out = QFileInfo(QString::fromStdString(words[5])).absoluteFilePath();
    QDir().mkpath(QFileInfo(out).absolutePath());
    const QImage panorama(made);
    if (!SaveBitmap(panorama, out)) {
        std::fprintf(stderr, "error: can not write %s\n", words[5].c_str());
        return CLI_FAILED;
    }
    QFile::remove(made);
    std::printf("%s\nsize %d %d\n", QFile::encodeName(out).constData(), panorama.width(), panorama.height());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("video", "MODEL OUT.mp4 [--seconds S] [--full-hd] [--flythrough WAYPOINTS.shp] [--size WxH]",
               CliVideo);
ZV_CLI_COMMAND("panorama", "MODEL X Y Z AZIMUTH OUT.bmp [--fov F] [--size WxH]", CliPanorama);
