#include "CatalogueFile.h"

#include <cpl_error.h>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include <cmath>
#include <cstdio>

#include "oblique/ObliqueRecords.h"

namespace {

// Beyond this plan distance a ray that misses the ground is cut.
constexpr double kReach = 400;

}  // namespace

bool writeObliqueCatalogue(const std::string& path, const std::vector<PhotoCamera>& cameras, double groundZ,
                           const FlightDate& date, const std::string& prjWkt) {
    GDALAllRegister();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    if (!driver) return false;
    GDALDataset* ds = driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!ds) {
        std::fprintf(stderr, "error: can not create %s\n", path.c_str());
        return false;
    }
    OGRSpatialReference srs;
    const bool hasSrs = !prjWkt.empty() && srs.importFromWkt(prjWkt.c_str()) == OGRERR_NONE;
    char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
    OGRLayer* layer = ds->CreateLayer("oblixoblix", hasSrs ? &srs : nullptr, wkbPolygon25D, options);
    CSLDestroy(options);
    if (!layer) {
        GDALClose(ds);
        return false;
    }
    // The format keeps 10 characters of a name ("RotationAn", "PrincipalX"):
    // the reader looks for both, as it must with catalogues from elsewhere.
    CPLPushErrorHandler(CPLQuietErrorHandler);
    auto add = [&](const char* name, OGRFieldType type) {
        OGRFieldDefn field(name, type);
        if (type == OFTString) field.SetWidth(254);
        if (type == OFTReal) {
            field.SetWidth(24);
            field.SetPrecision(15);
        }
        layer->CreateField(&field);
    };
    add("Proj", OFTString);
    add("Date", OFTDate);
    for (const char* name : {"RotationAngle", "Camera", "Azimuth", "Ravia", "Width", "Height", "Inclination"})
        add(name, OFTInteger);
    for (const char* name : {"K1", "K2", "K3", "fpc", "QW_mm", "Qxorg", "Qyorg", "Qzorg", "Qxtarg", "Qytarg", "Qztarg",
                             "PrincipalXOffset", "PrincipalYOffset", "q11", "q12", "q13", "q21", "q22", "q23", "q31",
                             "q32", "q33"})
        add(name, OFTReal);
    CPLPopErrorHandler();

    bool ok = true;
    for (const PhotoCamera& c : cameras) {
        OGRFeature f(layer->GetLayerDefn());
        auto set = [&](const char* name, double value) {
            int i = f.GetFieldIndex(name);
            if (i < 0) i = f.GetFieldIndex(std::string(name, 10).c_str());
            f.SetField(i, value);
        };
        auto setInt = [&](const char* name, int value) {
            int i = f.GetFieldIndex(name);
            if (i < 0) i = f.GetFieldIndex(std::string(name, 10).c_str());
            f.SetField(i, value);
        };
        f.SetField(f.GetFieldIndex("Proj"), c.name.c_str());
        f.SetField(f.GetFieldIndex("Date"), date.year, date.month, date.day);
        setInt("RotationAngle", 0);
        setInt("Camera", c.mount);
        setInt("Azimuth", int(std::lround(c.azimuth())) % 360);
        setInt("Ravia", 0);
        setInt("Width", c.width);
        setInt("Height", c.height);
        setInt("Inclination", int(std::lround(c.inclination())));
        set("K1", c.k[0]);
        set("K2", c.k[1]);
        set("K3", c.k[2]);
        set("fpc", c.fpc);
        set("QW_mm", c.sensorWidth);
        set("Qxorg", c.eye[0] + SHABESH);
        set("Qyorg", c.eye[1] + SHABESH);
        set("Qzorg", c.eye[2] + SHABESH);
        // The axis's ground point; straight down it is the camera's own plan position.
        double target[3];
        pictureRayOnPlane(c, c.width / 2 + c.principalX, -(c.height / 2) + c.principalY, groundZ, kReach, target);
        set("Qxtarg", target[0]);
        set("Qytarg", target[1]);
        set("Qztarg", target[2]);
        set("PrincipalXOffset", c.principalXmm());
        set("PrincipalYOffset", c.principalYmm());
        double q[9];
        c.matrix(q);
        const char* names[9] = {"q11", "q12", "q13", "q21", "q22", "q23", "q31", "q32", "q33"};
        for (int i = 0; i < 9; ++i) set(names[i], q[i]);

        // The picture's corners on the ground, clockwise from the top left.
        const double corners[4][2] = {{0, 0}, {double(c.width), 0}, {double(c.width), -double(c.height)},
                                      {0, -double(c.height)}};
        OGRLinearRing ring;
        for (const auto& corner : corners) {
            double p[3];
            pictureRayOnPlane(c, corner[0], corner[1], groundZ, kReach, p);
            ring.addPoint(p[0], p[1], p[2]);
        }
        ring.closeRings();
        OGRPolygon polygon;
        polygon.addRing(&ring);
        f.SetGeometry(&polygon);
        if (layer->CreateFeature(&f) != OGRERR_NONE) {
            std::fprintf(stderr, "error: can not add %s to %s\n", c.name.c_str(), path.c_str());
            ok = false;
            break;
        }
    }
    GDALClose(ds);
    return ok;
}
