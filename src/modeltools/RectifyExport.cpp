#include "RectifyExport.h"

#include <QDir>
#include <QString>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ModelToolProgress.h"
#include "Oc2nc.h"
#include "RectifyText.h"
#include "app/model/ModelPaths.h"
#include "scene/FileNameCase.h"
#include "scene/engine/AtomicFile.h"

namespace {

constexpr double PI = 3.141592654;
constexpr long long STATUS_EVERY = 5000;

using PointMap = void (*)(double& x, double& y, double& z);

void map3D(double& x, double& y, double& z) {
    double X, Y, Z;
    oc2nc3D(&x, &y, &z, &X, &Y, &Z, 1);
    x = X, y = Y, z = Z;
}

void map2D(double& x, double& y, double&) {
    double X, Y;
    oc2nc(&x, &y, &X, &Y, 1);
    x = X, y = Y;
}

bool exportObj(const std::string& input, const std::string& output, bool displaymessage, PointMap map) {
    std::FILE* in = std::fopen(input.c_str(), "rb");
    if (!in) return false;
    engine::AtomicFile out(output);
    char* line = nullptr;
    std::size_t capacity = 0;
    ssize_t length;
    long long record = 0;
    bool stopped = false;
    std::string text;
    while ((length = getline(&line, &capacity, in)) >= 0) {
        ++record;
        if (record % STATUS_EVERY == 0) {
            if (displaymessage) ReportModelToolProgress(QString::asprintf("Processing record %lld", record), record, 0);
            if (ModelToolCancelled()) {
                stopped = true;
                break;
            }
        }
        char word[8];
        double x, y, z;
        if (line[0] == 'v' && line[1] == ' ' && std::sscanf(line, "%7s %lf %lf %lf", word, &x, &y, &z) == 4) {
            map(x, y, z);
            out.write(Format("%s %lf %lf %lf\n", word, x, y, z));
        } else {
            out.write(line, static_cast<std::size_t>(length));
        }
    }
    const bool readFailed = std::ferror(in) != 0;
    std::free(line);
    std::fclose(in);
    return !stopped && !readFailed && out.commit();
}

// The model's OPK list, as the photo lookup keeps it, carried over to the
// output's name; a model without one has nothing to carry.
bool exportOpk(const std::string& model, const std::string& output, PointMap map) {
    const std::string list = FindFileNoCase(FolderOf(model) + "OBLIXS/" + BaseNameOf(model) + ".OPK");
    if (list.empty()) return true;
    std::string source;
    if (!ReadWholeFile(list, source)) return false;
    const std::string folder = SideFile(FolderOf(output), "OBLIXS") + "/";
    if (!QDir().mkpath(QString::fromStdString(folder))) return false;

    std::string opk, csv = "Image,X1,Y1,Z1,Z2,Y2,Z2,Azimuth,Pitch,fpc,DX,DY,DZ,DIST,Rotation\n";
    TextLines lines(source);
    std::string_view view;
    while (lines.next(view)) {
        const std::string line(view);
        std::string name(line.size() + 1, '\0');
        double c[3], t[3], azimuth = 0, pitch = 0;
        float fpc = 0, dx = 0, dy = 0, dz = 0, dist = 0;
        int rotation = 0;
        const int got = std::sscanf(line.c_str(), "%s%lf%lf%lf%lf%lf%lf%lf%lf%f%f%f%f%f%d", name.data(), &c[0], &c[1],
                                    &c[2], &t[0], &t[1], &t[2], &azimuth, &pitch, &fpc, &dx, &dy, &dz, &dist, &rotation);
        if (got < 7) continue;
        name.resize(std::strlen(name.c_str()));
        map(c[0], c[1], c[2]);
        map(t[0], t[1], t[2]);
        AzimuthFromXYZ(c[0], c[1], c[2], t[0], t[1], t[2], azimuth, pitch);
        const double DX = t[0] - c[0], DY = t[1] - c[1], DZ = t[2] - c[2];
        const std::string row = Format("%s,%.6lf,%.6lf,%.6lf,%.6lf,%.6lf,%.6lf,%.1lf,%.1lf,%.2f,%.2f,%.2f,%.2f,%.2f, %d\n",
                                       name.c_str(), c[0], c[1], c[2], t[0], t[1], t[2], azimuth, pitch, double(fpc),
                                       DX, DY, DZ, std::hypot(DX, DY), rotation);
        csv += row;
        std::string blanks = row;
        for (char& ch : blanks)
            if (ch == ',') ch = ' ';
        opk += blanks;
    }
    const std::string stem = folder + BaseNameOf(output);
    return engine::WriteFileAtomically(stem + ".OPK", opk, nullptr) &&
           engine::WriteFileAtomically(stem + ".CSV", csv, nullptr);
}

}  // namespace

void AzimuthFromXYZ(double xorg, double yorg, double zorg, double X, double Y, double Z, double& azimuth,
                    double& inclination) {
    const float dx = static_cast<float>(X - xorg);
    const float dy = static_cast<float>(Y - yorg);
    const double a = std::atan(std::fabs(double(dx) / double(dy)));
    double angle;
    if (dy <= 0)
        angle = dx < 0 ? PI + a : PI - a;
    else
        angle = dx < 0 ? 6.28 - a : a;
    azimuth = angle * 180 / PI;
    if (azimuth < 0) azimuth += 360;
    if (azimuth > 360) azimuth -= 360;
    const double horizontal = std::hypot(X - xorg, Y - yorg);
    inclination = std::atan((Z - zorg) / (horizontal + 0.01)) * 180 / PI;
}

bool ExportRectifiedModel(const std::string& ModelFileName, const std::string& OutOBJ_FILE, bool displaymessage) {
    return exportObj(ModelFileName, OutOBJ_FILE, displaymessage, map3D) &&
           exportOpk(ModelFileName, OutOBJ_FILE, map3D);
}

bool ExportRectifiedModelUse2D(const std::string& ModelFileName, const std::string& OutOBJ_FILE, bool displaymessage) {
    return exportObj(ModelFileName, OutOBJ_FILE, displaymessage, map2D) &&
           exportOpk(ModelFileName, OutOBJ_FILE, map2D);
}
