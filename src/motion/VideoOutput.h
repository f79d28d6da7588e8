// The 3D view rendered to files: a video of a turn on the spot or of the
// flythrough, and a 360 degree panorama stitched from the roaming camera.
// Frames come from At3d_Save_Thumbnail_Image as bitmaps on disk; the video
// is made from them in one run of the encoder at the end.
#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>
#include <functional>

struct VideoState {
    // Seconds since the process started when the last video began.
    int AviStartTime = 0;
    QString PanoramaFolder;
    // The observer's name in a panorama's file name; empty without one.
    QString GlobalObserver;
};

VideoState& videoState();
void resetVideoState();

// Signs of life of the frame loop: the window shows them in a progress
// dialog whose Cancel stops the run; the command line prints them.
struct VideoHooks {
    std::function<void(int frame, int frames)> progress;
    // Asked after every frame; true abandons the run, and no video is made.
    std::function<bool()> cancelled;
};
VideoHooks& videoHooks();
void resetVideoHooks();

// The height of a frame that is not "Full HD".
constexpr int VIDEO_FRAME_HEIGHT = 480;
constexpr int VIDEO_FRAME_HEIGHT_FULL_HD = 1080;

// The frame of a view panel of panelWidth x panelHeight: below 500 rows both
// sides are divided by 2.5 and cut to whole numbers; both then go down to
// even numbers, as the encoder requires.
QSize VideoFrameSize(int panelWidth, int panelHeight, int FrameHeight);

// The encoder: "ffmpeg" in the installation's data folder when one is there,
// else Debian's on the PATH. Empty when neither exists.
QString VideoEncoderTool();
// The line of "MakeVideo.BAT" that encodes the folder's Image-NNNNN.bmp.
QString VideoEncoderLine(const QString& tool, double framerate, const QString& output);
// A path in double quotes as the shell reads it back unchanged.
QString ShellQuoted(const QString& path);

struct VideoResult {
    bool made = false;       // the encoder ran and the file is there
    bool cancelled = false;  // Cancel during the frames: no video
    int frames = 0;          // pictures written
    QSize frameSize;
    QString output;
};

// "Create video": 0 turns on the spot, 1 follows the opened flythrough.
VideoResult CreateVideo(int ma);
// The menu item: with "Flytrough" checked, the flythrough is completed and followed.
VideoResult Createvideo1Click();

// Half the width, in pixels, of the part of the view that spans DeltaAzim
// degrees, measured on the mesh along a row near the picture's bottom.
int FindWidthOfPanorama(double DeltaAzim);
// Keeps the columns NP1 to NP2, stretched onto one column more.
bool CropBitmap(const QString& Infile, const QString& Outfile, int NP1, int NP2);
// The pictures side by side, unscaled, in the order of the list.
bool CropBitmaps(const QStringList& TSBMP, const QString& Panorama);
// "Create panorama": twelve pictures a turn of the roaming camera, their
// middles stitched. The panorama's path, empty when none was made.
QString Createpanorama1Click();
// Writes image as BMP through a temporary file renamed into place.
bool SaveBitmap(const QImage& image, const QString& path);
