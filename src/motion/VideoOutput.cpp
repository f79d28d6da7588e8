#include "VideoOutput.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QSaveFile>
#include <QStandardPaths>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "app/model/CameraTools.h"
#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunCommand.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Units.h"
#include "motion/Flythrough.h"
#include "scene/engine_interface.h"

namespace {

// Panels shorter than this are shrunk for the small video.
constexpr int SMALL_FRAME_LIMIT = 500;
constexpr double SMALL_FRAME_DIVISOR = 2.5;
// The panorama's pictures are three times the screen, for a sharper stitch.
constexpr int IFACTOR = 3;
constexpr double PANORAMA_STEP = 30;
// The row of the width test lies this far above the bottom, on the ground.
constexpr int PANORAMA_TEST_ROW_FROM_BOTTOM = 70;
const char* const VIDEO_FILTER = "Video file (*.MP4)|*.mp4|WMV file (*.WMV)|*.WMV|AVI file (*.AVI) |*.AVI";

// Taken when the program starts, for the videos' start times.
const std::chrono::steady_clock::time_point PROCESS_START = std::chrono::steady_clock::now();

QByteArray local(const QString& path) { return QFile::encodeName(path); }

// A folder emptied and made anew; a failure is told and the run goes on.
void freshFolder(const QString& folder) {
    QDir(folder).removeRecursively();
    if (!QDir().mkpath(folder)) DisplayLastError("Can not create folder\n" + folder);
}

bool saveText(const QString& path, const QByteArray& text) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) return true;
    PrintRunLog("Can not write %s\n", local(path).constData());
    return false;
}

void readRoamingCamera(double* eye, double* target) {
    CameraState& c = cameraState();
    At3d_Get_Roaming_Data(c.roamingCameraName.c_str(), eye, target, &c.roaming_Up_Rotation, &c.roaming_FieldOfView,
                          1);
}

bool roaming() { return cameraState().activeCameraID != 0; }

}  // namespace

VideoState& videoState() {
    static VideoState state;
    return state;
}
void resetVideoState() { videoState() = VideoState{}; }

VideoHooks& videoHooks() {
    static VideoHooks hooks;
    return hooks;
}
void resetVideoHooks() { videoHooks() = VideoHooks{}; }

QSize VideoFrameSize(int panelWidth, int panelHeight, int FrameHeight) {
    int W = panelWidth, H = panelHeight;
    if (FrameHeight < SMALL_FRAME_LIMIT) {
        W = int(W / SMALL_FRAME_DIVISOR);
        H = int(H / SMALL_FRAME_DIVISOR);
    }
    return {W / 2 * 2, H / 2 * 2};
}

QString VideoEncoderTool() {
    const QString installed = QString::fromStdString(sessionPaths().CTQ_Path) + "ffmpeg";
    if (QFileInfo(installed).isExecutable()) return installed;
    return QStandardPaths::findExecutable("ffmpeg");
}

QString ShellQuoted(const QString& path) {
    QString quoted = path;
    for (const QChar sign : {QChar('\\'), QChar('"'), QChar('$'), QChar('`')})
        quoted.replace(sign, QString("\\") + sign);
    return "\"" + quoted + "\"";
}

QString VideoEncoderLine(const QString& tool, double framerate, const QString& output) {
    // A batch file needs the percent sign doubled; the shell passes it as it
    // is, so one is written and the encoder gets the same pattern.
    return QString::asprintf(" %s -y -framerate %.1f  -i Image-%%05d.bmp -vcodec libx264  -profile:v baseline "
                             "-level 3.0 -pix_fmt yuv420p -preset slow -crf 23  -movflags faststart %s",
                             ShellQuoted(tool).toUtf8().constData(), framerate,
                             ShellQuoted(output).toUtf8().constData());
}

VideoResult CreateVideo(int ma) {
    VideoResult result;
    FlythroughState& fs = flythroughState();
    DispatchState& d = dispatchState();
    ViewerSettings& settings = viewerSettings();
    int FrameHeight = VIDEO_FRAME_HEIGHT;
    if (ma == 0) {
        fs.AviDuration = 18;
        QString duration = "18";
        if (!MyInputQuery("Video creation", "Please define the requested video duration (seconds)", duration))
            return result;
        float seconds = 0;
        std::sscanf(duration.toUtf8().constData(), "%f", &seconds);
        fs.AviDuration = seconds;
    }
    const QString keptCaption = fs.FormCaption;
    const QString tool = VideoEncoderTool();
    if (tool.isEmpty()) {
        MyShowMessage(QString::fromStdString(sessionPaths().CTQ_Path) + "ffmpeg" + " Is missing.");
        return result;
    }
    if (MyMessageBox("Full HD?", "Video quality", MB_YESNO | MB_DEFBUTTON2) == IDYES)
        FrameHeight = VIDEO_FRAME_HEIGHT_FULL_HD;
    if (roaming()) {
        double eye[3], target[3];
        readRoamingCamera(eye, target);
    }
    // Appended at each run: a second video of a session goes one level deeper.
    std::string& ImagesFolder = startupState().ImagesFolder;
    ImagesFolder += "Flytrough/";
    const QString images = QString::fromStdString(ImagesFolder);
    freshFolder(images);

    mainFormHost().showMainForm();
    const QString stamp = QDateTime::currentDateTime().toString("dd-MM-yyyy_hh-mm-ss");
    const ModelSession& model = modelSession();
    const QString screenshots = model.SCREENSHOTSFOLDER.empty()
                                    ? QString::fromStdString(ModelFolder()) + "ScreenShots/"
                                    : QString::fromStdString(model.SCREENSHOTSFOLDER);
    QDir().mkpath(screenshots);
    QString output =
        screenshots + QString::asprintf("%.0fs_%d_", double(fs.AviDuration), FrameHeight) + stamp + "_SC.mp4";
    if (!OrvoSaveFile(output, "mp4", VIDEO_FILTER, "Define the output file.", 1)) return result;
    result.output = output;

    // One full turn over the video.
    settings.GlobalVideoRotationStep = 360 / (settings.FRAMERATE * double(fs.AviDuration));
    fs.AVIframe = 0;
    videoState().AviStartTime =
        int(std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - PROCESS_START).count());
    d.keep_goingAVI = true;
    fs.TSCSV.clear();
    const QSize frame =
        VideoFrameSize(mainFormHost().viewPanelWidth(), mainFormHost().viewPanelHeight(), FrameHeight);
    result.frameSize = frame;
    const int expected = int(settings.FRAMERATE * fs.AviDuration) + 1;
    const VideoHooks& hooks = videoHooks();
    while (d.keep_goingAVI) {
        const bool more = ma == 0 ? DoOneStepCircle() : DoOneStepFlyTrough();
        // The step that ends the video still gives its frame.
        if (!more) d.keep_goingAVI = false;
        const QString name = images + QString::asprintf("Image-%05d.bmp", fs.AVIframe);
        At3d_Save_Thumbnail_Image(local(name).constData(), frame.width(), frame.height());
        fs.AVIframe += 1;
        if (hooks.progress) hooks.progress(fs.AVIframe, expected);
        if (hooks.cancelled && hooks.cancelled()) {
            result.cancelled = true;
            d.keep_goingAVI = false;
        }
    }
    fs.FormCaption = keptCaption;
    result.frames = fs.AVIframe;
    if (result.cancelled) {
        SSetTextAt3(0, "Create video cancelled: no video written");
        return result;
    }
    // A turn on the spot traces nothing; an empty list would only wipe a CSV beside the model.
    if (!fs.TSCSV.isEmpty() && !model.GlobalModelFileName.empty()) {
        const QFileInfo modelFile(QString::fromStdString(model.GlobalModelFileName));
        saveText(modelFile.dir().filePath(modelFile.completeBaseName() + ".CSV"), fs.TSCSV.join("\n").toUtf8() + "\n");
    }

    const QString script = images + "MakeVideo.BAT";
    if (!saveText(script, (VideoEncoderLine(tool, settings.FRAMERATE, output) + "  \n").toUtf8())) return result;
    const QString keptFolder = QDir::currentPath();
    QDir::setCurrent(images);
    OrvoRunCommand("/bin/sh MakeVideo.BAT", false, "MakeVideo");
    QDir::setCurrent(keptFolder);
    fs.FormCaption = keptCaption;
    result.made = QFileInfo(output).size() > 0;
    if (result.made) dialogService().openDocument(output);
    return result;
}

VideoResult Createvideo1Click() {
    int ma = 0;
    if (ControlChecked("FlytroughVieport")) {
        ma = 1;
        CompleteFTWP();
    }
    return CreateVideo(ma);
}

int FindWidthOfPanorama(double DeltaAzim) {
    if (!roaming()) MyShowMessage("This is applicable only for roaming camera");
    double viewPoint[3];
    At3d_GetCameraViewPoint(&viewPoint[0], &viewPoint[1], &viewPoint[2]);
    double eye[3], target[3];
    readRoamingCamera(eye, target);
    const double Azim0 = azimD(eye[0], eye[1], target[0], target[1]);
    const double HalfDeltaAzim = DeltaAzim / 2;
    const int W = mainFormHost().viewPanelWidth(), H = mainFormHost().viewPanelHeight();
    const int Y = H - PANORAMA_TEST_ROW_FROM_BOTTOM;
    // A miss leaves the last point found in use.
    double xyz[3] = {eye[0], eye[1], eye[2]};
    QStringList lines;
    int X = W / 2;
    for (; X < W; ++X) {
        int hit = 0;
        At3d_Get_Mesh_Location_At_Point(X, Y, &hit, xyz, nullptr, nullptr, nullptr);
        const double Azim = azimD(eye[0], eye[1], xyz[0], xyz[1]);
        const double Diff = Azim - Azim0;
        lines << QString::asprintf("X %5d Az %.2f   Delta %.2f   %.0lf", X, Azim, Diff,
                                   cameraState().roaming_FieldOfView);
        if (Diff > HalfDeltaAzim) break;
    }
    saveText(QString::fromStdString(sessionPaths().ORVO_T) + "az.txt", lines.join("\n").toUtf8() + "\n");
    return X - W / 2;
}

bool SaveBitmap(const QImage& image, const QString& path) {
    QSaveFile file(path);
    if (!image.isNull() && file.open(QIODevice::WriteOnly) && image.save(&file, "BMP") && file.commit()) return true;
    PrintRunLog("Can not write %s\n", local(path).constData());
    return false;
}

bool CropBitmap(const QString& Infile, const QString& Outfile, int NP1, int NP2) {
    QImage source(Infile);
    if (source.isNull()) {
        PrintRunLog("CropBitmap: can not read %s\n", local(Infile).constData());
        return false;
    }
    if (source.format() == QImage::Format_Indexed8 || source.format() == QImage::Format_Mono)
        source = source.convertToFormat(QImage::Format_RGB32);
    const int H = source.height();
    const int Wcropped = NP2 - NP1 + 1;
    if (Wcropped < 1) return false;
    QImage cropped(Wcropped, H, source.format());
    cropped.fill(Qt::black);
    QPainter painter(&cropped);
    // The destination is one column wider than the source: the copy stretches.
    painter.drawImage(QRect(0, 0, Wcropped, H), source, QRect(NP1, 0, NP2 - NP1, H));
    painter.end();
    return SaveBitmap(cropped, Outfile);
}

bool CropBitmaps(const QStringList& TSBMP, const QString& Panorama) {
    const int Kama = int(TSBMP.size());
    if (Kama == 0) return false;
    const QImage first(TSBMP.front());
    if (first.isNull()) {
        PrintRunLog("CropBitmaps: can not read %s\n", local(TSBMP.front()).constData());
        return false;
    }
    const int W = first.width(), H = first.height();
    QImage panorama(W * Kama, H, first.format());
    panorama.fill(Qt::black);
    QPainter painter(&panorama);
    for (int I = 0; I < Kama; ++I) painter.drawImage(QPoint(W * I, 0), I == 0 ? first : QImage(TSBMP[I]));
    painter.end();
    return SaveBitmap(panorama, Panorama);
}

QString Createpanorama1Click() {
    if (!roaming()) {
        MyShowMessage("Panorama can be created only in roaming mode");
        return {};
    }
    double eye[3], target[3];
    readRoamingCamera(eye, target);
    const int FOV = int(cameraState().roaming_FieldOfView);
    VideoState& vs = videoState();
    vs.PanoramaFolder = QString::fromStdString(sessionPaths().ORVO_T) + "PanFOV_" + QString::number(FOV) + "/";
    const QString center = vs.PanoramaFolder + "Center/";
    freshFolder(vs.PanoramaFolder);
    freshFolder(center);
    // Stays set afterwards, as the walk's skew step.
    viewerSettings().GlobalVideoRotationStep = PANORAMA_STEP;
    const int KamaImages = int(360 / PANORAMA_STEP);
    const int W = mainFormHost().viewPanelWidth(), H = mainFormHost().viewPanelHeight();
    const int NPixels = FindWidthOfPanorama(PANORAMA_STEP);
    const int NP1 = W / 2 - NPixels, NP2 = W / 2 + NPixels;
    QStringList TSBMP;
    for (int I = 0; I < KamaImages; ++I) {
        if (I > 0) At3d_Move_Roaming_Turn(viewerSettings().GlobalVideoRotationStep);
        const QString file = "Image-" + QString::number(I) + ".bmp";
        const int width = 2 * IFACTOR * (W / 2), height = 2 * IFACTOR * (H / 2);
        At3d_Save_Thumbnail_Image(local(vs.PanoramaFolder + file).constData(), width, height);
        CropBitmap(vs.PanoramaFolder + file, center + file, NP1 * IFACTOR, NP2 * IFACTOR);
        TSBMP << center + file;
    }
    const QString name = vs.PanoramaFolder + QString::number(std::rand()) + vs.GlobalObserver + "_Panorama.BMP";
    if (!CropBitmaps(TSBMP, name)) return {};
    dialogService().openDocument(name);
    return name;
}
