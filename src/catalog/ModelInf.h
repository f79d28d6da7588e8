// The information file of an analysed model: "<model>_INF.CSV", a header and
// one row, with the thumbnail "<model>_INF.JPG" beside it. Discovery finds
// models by these files. Opening a model in the window writes none by
// itself: the model's producer makes it, here the "inf" command.
#pragma once

#include <QString>

inline constexpr const char* MODEL_INF_HEADER =
    "Project,Model,Creation,Last accessed,Xmin,Xmax,Ymin,Ymax,Zmin,Zmax,Vertices,Faces,Image,Comment,Lat,Lon";

struct ModelInfRecord {
    QString Project;
    QString Model;
    QString Creation;      // "yyyy-MM-dd hh:mm:ss"
    QString LastAccessed;  // the same form
    double MinMax[6] = {0, 0, 0, 0, 0, 0};  // Xmin, Xmax, Ymin, Ymax, Zmin, Zmax
    int Vertices = 0;
    int Faces = 0;
    QString Image;
    QString Comment;
    double Lat = 0;
    double Lon = 0;
};

// The model's file name without folder and extension, cut where "_model" begins.
QString ModelInfProject(const QString& modelPath);
// The model's path with its extension replaced by "_INF.CSV" / "_INF.JPG".
QString ModelInfFile(const QString& modelPath);
QString ModelInfImage(const QString& modelPath);

// The data line, without line end.
QString ModelInfRow(const ModelInfRecord& record);

// The record of the open model: extent from OriginalModelMinMax, counts from
// the engine, the comment of the open, and the extent's centre in degrees
// through GlobalCS (the plain centre, Lat = north, Lon = east, without one).
ModelInfRecord ModelInfOfOpenModel(const QString& modelPath);

// Writes both files of the open model; false when either fails. The picture
// is the engine's thumbnail, or without a renderer a top view of the
// vertices, coloured by height.
bool WriteModelInf(const QString& modelPath, int thumbnailWidth = 800, int thumbnailHeight = 600);
