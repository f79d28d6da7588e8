// Writes small oblique catalogues for the tests: an "oblixoblix.shp" whose
// polygons are rectangular footprints, with the camera attributes by name.
#pragma once

#include <cpl_error.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <QDir>
#include <QFileInfo>
#include <string>
#include <vector>

struct TestShot {
    std::string proj;
    double x0 = 0, y0 = 0, x1 = 10, y1 = 10;  // footprint
    // The true camera: the file gets it raised by 123.
    double qxorg = 0, qyorg = 0, qzorg = 0;
    double qxtarg = 0, qytarg = 0, qztarg = 0;
    int azimuth = 0, ravia = 0, rotation = 0, inclination = 45, camera = 0;
    int width = 3600, height = 2400;
    double fpc = 50, qwmm = 36, pxo = 0, pyo = 0;
    double k1 = 0, k2 = 0, k3 = 0;
    double q[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    int year = 2023, month = 5, day = 14;
};

struct CatalogueFields {
    bool inclination = true;
    bool lens = false;
    bool camera = false;
};

inline void writeCatalogue(const std::string& path, const std::vector<TestShot>& shots, CatalogueFields with = {}) {
    GDALAllRegister();
    QDir().mkpath(QFileInfo(QString::fromStdString(path)).absolutePath());
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    GDALDataset* ds = driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    OGRLayer* layer = ds->CreateLayer("oblixoblix", nullptr, wkbPolygon, nullptr);
    // Long names are cut to 10 characters by the format, as in real catalogues.
    CPLPushErrorHandler(CPLQuietErrorHandler);
    auto add = [&](const char* name, OGRFieldType type) {
        OGRFieldDefn field(name, type);
        if (type == OFTString) field.SetWidth(254);
        layer->CreateField(&field);
    };
    add("Proj", OFTString);
    add("Date", OFTDate);
    for (const char* name : {"RotationAngle", "Azimuth", "Ravia", "Width", "Height"}) add(name, OFTInteger);
    if (with.camera) add("Camera", OFTInteger);
    if (with.inclination) add("Inclination", OFTInteger);
    if (with.lens)
        for (const char* name : {"K1", "K2", "K3"}) add(name, OFTReal);
    for (const char* name : {"fpc", "QW_mm", "Qxorg", "Qyorg", "Qzorg", "Qxtarg", "Qytarg", "Qztarg",
                             "PrincipalXOffset", "PrincipalYOffset", "q11", "q12", "q13", "q21", "q22", "q23", "q31",
                             "q32", "q33"})
        add(name, OFTReal);
    CPLPopErrorHandler();
    auto field = [&](OGRFeature& f, const char* name) {
        const int i = f.GetFieldIndex(name);
        return i >= 0 ? i : f.GetFieldIndex(std::string(name, 10).c_str());
    };
    for (const TestShot& s : shots) {
        OGRFeature f(layer->GetLayerDefn());
        f.SetField(field(f, "Proj"), s.proj.c_str());
        f.SetField(field(f, "Date"), s.year, s.month, s.day);
        f.SetField(field(f, "RotationAngle"), s.rotation);
        f.SetField(field(f, "Azimuth"), s.azimuth);
        f.SetField(field(f, "Ravia"), s.ravia);
        f.SetField(field(f, "Width"), s.width);
        f.SetField(field(f, "Height"), s.height);
        if (with.camera) f.SetField(field(f, "Camera"), s.camera);
        if (with.inclination) f.SetField(field(f, "Inclination"), s.inclination);
        if (with.lens) {
            f.SetField(field(f, "K1"), s.k1);
            f.SetField(field(f, "K2"), s.k2);
            f.SetField(field(f, "K3"), s.k3);
        }
        f.SetField(field(f, "fpc"), s.fpc);
        f.SetField(field(f, "QW_mm"), s.qwmm);
        f.SetField(field(f, "Qxorg"), s.qxorg + 123);
        f.SetField(field(f, "Qyorg"), s.qyorg + 123);
        f.SetField(field(f, "Qzorg"), s.qzorg + 123);
        f.SetField(field(f, "Qxtarg"), s.qxtarg);
        f.SetField(field(f, "Qytarg"), s.qytarg);
        f.SetField(field(f, "Qztarg"), s.qztarg);
        f.SetField(field(f, "PrincipalXOffset"), s.pxo);
        f.SetField(field(f, "PrincipalYOffset"), s.pyo);
        const char* names[9] = {"q11", "q12", "q13", "q21", "q22", "q23", "q31", "q32", "q33"};
        for (int i = 0; i < 9; ++i) f.SetField(field(f, names[i]), s.q[i]);
        // Clockwise, as the format keeps an outer ring.
        OGRLinearRing ring;
        ring.addPoint(s.x0, s.y0);
        ring.addPoint(s.x0, s.y1);
        ring.addPoint(s.x1, s.y1);
        ring.addPoint(s.x1, s.y0);
        ring.addPoint(s.x0, s.y0);
        OGRPolygon polygon;
        polygon.addRing(&ring);
        f.SetGeometry(&polygon);
        if (layer->CreateFeature(&f) != OGRERR_NONE) break;
    }
    GDALClose(ds);
}

// A square footprint centred on (x, y), half its side given.
inline TestShot shotAt(const std::string& proj, double x, double y, double half = 5) {
    TestShot s;
    s.proj = proj;
    s.x0 = x - half, s.x1 = x + half, s.y0 = y - half, s.y1 = y + half;
    return s;
}
