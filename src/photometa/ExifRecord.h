// A photograph's metadata with every maker's tag names folded into one set
// of fields, and the drone whose camera took it.
#pragma once

#include <QString>

// Angles and altitudes no tag gave.
constexpr float EXIF_NO_VALUE = -9999;

struct EXIF {
    QString Make, Model;
    QString Date, Time;
    QString GPSDate, GPSTime;
    QString AltitudeRef;
    QString DewarpData;
    QString UserComment;
    QString SerialNumber;
    QString DroneName;
    QString FocalLengthString;
    float D_fx = 0, D_fy = 0, D_cx = 0, D_cy = 0, D_k1 = 0, D_k2 = 0, D_p1 = 0, D_p2 = 0, D_k3 = 0, D_pixelsize = 0;
    QString TrackCreateDate;
    QString TrackDuration;
    QString Title;
    QString FileSize, ImageSize;
    QString FilePath;
    QString FileModificationDateTime, FileCreationDateTime;
    float FocalLength = 0;
    float PixelSize = 0;
    float FocalLengthIn35mm = 0;
    float GPSDirection = 0;
    double GPSLat = 0, GPSLon = 0;
    float ZMin = 0, ZMax = 0;
    int Width = 0, Height = 0;
    int GPSSatellites = 0;
    int Heading = 0;
    int JPEGQualityEstimate = 0;
    int ProgressiveScans = 0;
    int Orientation = 0;
    int BitsPerSample = 0;
    float Xres = 0, Yres = 0;
    float TiePointX = 0, TiePointY = 0;
    float exiftime = 0;  // seconds of the day the picture was taken
    float VideoFrameRate = 0;
    float GPSAltitude = 0;
    float OriginalAbs = EXIF_NO_VALUE, AbsoluteAltitude = EXIF_NO_VALUE, RelativeAltitude = EXIF_NO_VALUE;
    float GimbalRoll = EXIF_NO_VALUE, GimbalYaw = EXIF_NO_VALUE, GimbalPitch = EXIF_NO_VALUE;
    float FlightRoll = EXIF_NO_VALUE, FlightYaw = EXIF_NO_VALUE, FlightPitch = EXIF_NO_VALUE;
    float ImageRotate = EXIF_NO_VALUE;
    int RtkFlag = 0;
};

struct DRONE {
    QString Name, Camera;
    int Width = 0, Height = 0, QJPEGQualityEstimate = 0, RollingShutter = 0;
    float Focal = 0, Focal35Length = 0, Widthmm = 0;
};
