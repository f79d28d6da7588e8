// What the oblique photograph window does apart from its widgets: the
// state of the one window, its caption, circular browsing, the distance and
// the report points taken on a photograph, saving and exporting the picture,
// and the order of the viewer's layers.
#pragma once

#include <QImage>
#include <QString>
#include <vector>

#include "ObliqueRecords.h"
#include "geo/GisTypes.h"

struct ObliqueWindowState {
    OBLIQUE OBLI_O;       // the photograph on screen
    QString OBLIIMAGE;    // its file name without extension
    // Place in OOO reached by browsing. A new click does not reset it:
    // browsing carries on from the old number.
    int Serial = 0;
    bool INDISTANCE = false;
    bool INOBLIDIGITIZE = false;
    TGIS_Point LastObliMouseDownptg{-99999, -99999};
    TGIS_Point PrevObliMouseDownptg{-99999, -99999};
    double LastMouseDownOBLIwx = 0, LastMouseDownOBLIwy = 0;
    float LastMouseDownOBLIwz = 0;
    QString CAPREM;  // the caption while "Click on the second point" stands in it
    bool shift2 = false, ctrl2 = false, alt2 = false, Ldown2 = false, Rdown2 = false;
};

ObliqueWindowState& obliqueWindowState();
void resetObliqueWindowState();

// Toolkit colours of the marks (red in the lowest byte).
constexpr int OBLI_YELLOW = 65535;
constexpr int OBLI_RED = 255;
constexpr int OBLI_BLUE = 16711680;
// Each wheel notch zooms by this factor.
constexpr double ZOOMFACTOR = 1.1;

// The place after Serial when stepping by step through a list of relevants
// photographs: the list is circular.
int NextSerial(int Serial, int step, int relevants);
// " Az %d Incl %d [%d] %s", or "Az %d  DIST %.1f [%d] %s" for a photograph
// of an OPK list; " ROT %.0f" follows for a turned photograph.
QString ObliqueCaption(const OBLIQUE& O, int relevants);
// Only cameras with a matrix (fpc above 1) can place the clicked point.
inline bool ObliqueHasMatrix(const OBLIQUE& O) { return O.fpc > 1; }
// Shrinks WW or HH so that WW / HH is the photograph's aspect factor.
void FitToAspect(int& WW, int& HH, double factor);
// The picture of a photograph: JPEG and the like through Qt, other rasters
// (ECW) through GDAL where it has the driver. A null image when unreadable.
QImage LoadObliquePicture(const QString& path);

// "Distance": the first point is the picture point pressed; its world point
// is kept and the caption text "Click on the second point" goes to the main
// status line. The world point through Pic2World.
TGIS_Point3D ObliqueDistanceStart(const TGIS_Point& ptg);
// The press that finishes a distance: the second world point, and the
// figures of the line from the first into the measure state, shown on the
// view's strip.
TGIS_Point3D ObliqueDistanceFinish(const TGIS_Point& ptg);

// "%.1lf,%.1lf,%.1f,%.0lf,%.0lf," of a world point and its picture point.
QString ObliqueReportText(double East, double North, double Elev, double N, double M);
// Appends a row to csv ("East,North,Elev,N,M,Remark,Image" first in a new
// file). False when it cannot be written.
bool AppendObliqueReport(const QString& csv, const QString& text, const QString& remark, const QString& image);
// "Report" at the last pressed picture point: asks the remark, appends the
// row to PANELSFOLDER + "Report.csv" and puts a blue post on the model.
// The file written, "" on cancel or failure.
QString ObliqueReportClick();

// Only ".JPG" and ".BMP", in any case, are saved.
bool ObliqueImageExtensionAccepted(const QString& path);
// Saves the view's picture as BMP or JPEG and opens it in the system's
// viewer; another extension is refused with a message. False when not saved.
bool SaveObliqueImage(const QImage& image, const QString& path);
// Copies the photograph's file into folder under its own name.
bool ExportObliqueFile(const QString& picture, const QString& folder);

// One layer of a viewer as the layer sort sees it.
struct ZLayerInfo {
    QString Name;
    bool raster = false;
    bool firstShapeIsPolygon = false;
    int areaPattern = 0;
    int ZOrder = 0;
};
// One row of the layer sort.
struct ZORDER {
    QString Name;
    int layer = 0;  // index into the layers given
    int ZOrder = 0;
    int NewZOrder = 0;
};
// The rows in the order the layers must end in the viewer's list, first
// drawn last: named layers first, then vectors, rasters behind them all.
std::vector<ZORDER> SortZorder(const std::vector<ZLayerInfo>& layers);
