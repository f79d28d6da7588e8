#include "ObliqueWindow.h"

#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <gdal_priv.h>

#include "ObliqueGeometry.h"
#include "app/model/SceneLayers.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/Viewers.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Units.h"
#include "measure/MeasureDisplay.h"
#include "measure/MeasureState.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelStore.h"

namespace {

ObliqueWindowState& state() {
    static ObliqueWindowState s;
    return s;
}

// Height of the blue post a report point leaves on the model.
constexpr double REPORT_POST = 5;

// A raster Qt has no reader for, through GDAL: its first three bands as
// red, green and blue (one band as grey).
QImage loadThroughGdal(const QString& path) {
    GDALAllRegister();
    GDALDataset* data = static_cast<GDALDataset*>(GDALOpen(QFile::encodeName(path).constData(), GA_ReadOnly));
    if (!data) return {};
    const int w = data->GetRasterXSize(), h = data->GetRasterYSize(), bands = data->GetRasterCount();
    QImage image;
    if (w > 0 && h > 0 && bands > 0) image = QImage(w, h, QImage::Format_RGB888);
    for (int b = 0; !image.isNull() && b < 3; ++b) {
        GDALRasterBand* band = data->GetRasterBand(std::min(b, bands - 1) + 1);
        // Interleaved straight into the image's rows: 3 bytes a pixel.
        if (band->RasterIO(GF_Read, 0, 0, w, h, image.bits() + b, w, h, GDT_Byte, 3, image.bytesPerLine(),
                           nullptr) != CE_None)
            image = QImage();
    }
    GDALClose(data);
    return image;
}

}  // namespace

ObliqueWindowState& obliqueWindowState() { return state(); }
void resetObliqueWindowState() { state() = ObliqueWindowState{}; }

int NextSerial(int Serial, int step, int relevants) {
    if (relevants <= 0) return 0;
    return ((Serial + step) % relevants + relevants) % relevants;
}

QString ObliqueCaption(const OBLIQUE& O, int relevants) {
    const QString name = QFileInfo(O.Proj).fileName();
    QString caption = O.fpc < 0 ? QString::asprintf("Az %d  DIST %.1f [%d] ", O.Azimuth, std::fabs(O.fpc), relevants)
                                : QString::asprintf(" Az %d Incl %d [%d] ", O.Azimuth, O.Incl, relevants);
    caption += name;
    if (O.RotationDeg != 0) caption += QString::asprintf(" ROT %.0f", double(O.RotationDeg));
    return caption;
}

void FitToAspect(int& WW, int& HH, double factor) {
    if (HH <= 0 || factor <= 0) return;
    if (double(WW) / HH > factor)
        WW = static_cast<int>(HH * factor);
    else
        HH = static_cast<int>(WW / factor);
}

QImage LoadObliquePicture(const QString& path) {
    QImageReader reader(path);
    // Oblique cameras take pictures of a hundred megapixels and more.
    reader.setAllocationLimit(0);
    QImage image = reader.read();
    if (image.isNull()) image = loadThroughGdal(path);
    // Without a driver for the compressed copy the picture it stands for will do.
    if (image.isNull() && QFileInfo(path).suffix().compare("ecw", Qt::CaseInsensitive) == 0) {
        const QString base = path.left(path.size() - 3);
        for (const char* ext : {"jpg", "JPG", "jpeg", "JPEG"}) {
            if (!QFileInfo::exists(base + ext)) continue;
            QImageReader jpeg(base + ext);
            jpeg.setAllocationLimit(0);
            image = jpeg.read();
            break;
        }
    }
    return image;
}

TGIS_Point3D ObliqueDistanceStart(const TGIS_Point& ptg) {
    ObliqueWindowState& s = state();
    s.INDISTANCE = true;
    TGIS_Point3D w;
    Pic2World(ptg.X, ptg.Y, s.OBLI_O, w.X, w.Y, w.Z);
    s.LastMouseDownOBLIwx = w.X;
    s.LastMouseDownOBLIwy = w.Y;
    s.LastMouseDownOBLIwz = static_cast<float>(w.Z);
    SSetTextAt3(0, "Click on the second point");
    return w;
}

TGIS_Point3D ObliqueDistanceFinish(const TGIS_Point& ptg) {
    ObliqueWindowState& s = state();
    s.INDISTANCE = false;
    TGIS_Point3D w;
    Pic2World(ptg.X, ptg.Y, s.OBLI_O, w.X, w.Y, w.Z);
    const double x1 = s.LastMouseDownOBLIwx, y1 = s.LastMouseDownOBLIwy, z1 = s.LastMouseDownOBLIwz;
    MeasureState& m = measureState();
    m.Dist3D = distance(x1, y1, z1, w.X, w.Y, w.Z);
    m.Dist2D = distance(x1, y1, w.X, w.Y);
    m.AzimuthToTarget = azimD(x1, y1, w.X, w.Y);
    m.DDZ = w.Z - z1;
    DisplayDistancesInAt3W("");
    At3d_RenderOpenGLScene();
    return w;
}

QString ObliqueReportText(double East, double North, double Elev, double N, double M) {
    return QString::asprintf("%.1lf,%.1lf,%.1f,%.0lf,%.0lf,", East, North, Elev, N, M);
}

bool AppendObliqueReport(const QString& csv, const QString& text, const QString& remark, const QString& image) {
    QString body = QFileInfo::exists(csv) ? StringFromFile(csv) : QStringLiteral("East,North,Elev,N,M,Remark,Image\n");
    body += text + remark + "," + image + "\n";
    return StringToFile(body, csv);
}

QString ObliqueReportClick() {
    ObliqueWindowState& s = state();
    const TGIS_Point ptg = s.LastObliMouseDownptg;
    TGIS_Point3D w;
    Pic2World(ptg.X, ptg.Y, s.OBLI_O, w.X, w.Y, w.Z);
    const QString text = ObliqueReportText(w.X, w.Y, w.Z, ptg.X, ptg.Y);
    QString remark;
    if (!MyInputQuery(text, "Remark?", remark)) return {};
    const QString csv = panelStore().PANELSFOLDER + "Report.csv";
    if (!AppendObliqueReport(csv, text, remark, QFileInfo(s.OBLI_O.Proj).fileName())) {
        PrintRunLog("Report: can not write %s\n", QFile::encodeName(csv).constData());
        return {};
    }
    AddLineToScene(s.OBLI_O.Proj, w, TGIS_Point3D{w.X, w.Y, w.Z + REPORT_POST, 0}, OBLI_BLUE, 4);
    if (!viewerSettings().ConfiguredForSolar) SetControlVisible("SelectMeasuringBtn", true);
    return csv;
}

bool ObliqueImageExtensionAccepted(const QString& path) {
    const QString ext = QFileInfo(path).suffix();
    return ext.compare("jpg", Qt::CaseInsensitive) == 0 || ext.compare("bmp", Qt::CaseInsensitive) == 0;
}

bool SaveObliqueImage(const QImage& image, const QString& path) {
    if (!ObliqueImageExtensionAccepted(path)) {
        MyShowMessage(path + " is an illegal file extension\nOnly JPG and BMP are accepted");
        return false;
    }
    const bool jpeg = QFileInfo(path).suffix().compare("jpg", Qt::CaseInsensitive) == 0;
    QSaveFile file(path);
    if (image.isNull() || !file.open(QIODevice::WriteOnly) ||
        !image.convertToFormat(QImage::Format_RGB888).save(&file, jpeg ? "JPG" : "BMP") || !file.commit()) {
        PrintRunLog("Save image: can not write %s\n", QFile::encodeName(path).constData());
        return false;
    }
    ShowOrvoTextFile(path);
    return true;
}

bool ExportObliqueFile(const QString& picture, const QString& folder) {
    if (folder.isEmpty() || !QFileInfo(picture).isFile()) return false;
    QString to = folder;
    if (!to.endsWith('/')) to += '/';
    return OrvoCopyFile(picture, to + QFileInfo(picture).fileName());
}

std::vector<ZORDER> SortZorder(const std::vector<ZLayerInfo>& layers) {
    // Named layers of the drawings have fixed places; the first matching row decides.
    static const std::pair<const char*, int> named[] = {
        {"perif", 3}, {"Gridp", 2}, {"GridL", 1}, {"pplot", -4444}, {"Loops", 5}};
    std::vector<ZORDER> rows;
    for (int i = 0; i < static_cast<int>(layers.size()); ++i) {
        const ZLayerInfo& l = layers[i];
        ZORDER row{l.Name, i, l.ZOrder, 0};
        bool found = false;
        for (const auto& [name, order] : named)
            if (!found && l.Name.compare(name, Qt::CaseInsensitive) == 0) row.NewZOrder = order, found = true;
        if (!found) {
            if (l.raster)
                row.NewZOrder = l.ZOrder + 2000;
            else if (l.firstShapeIsPolygon)
                row.NewZOrder = l.ZOrder + (l.areaPattern == 1 ? 200 : 300);
            else
                row.NewZOrder = l.ZOrder + 100;
        }
        rows.push_back(row);
    }
    std::stable_sort(rows.begin(), rows.end(), [](const ZORDER& a, const ZORDER& b) { return a.NewZOrder < b.NewZOrder; });
    return rows;
}
