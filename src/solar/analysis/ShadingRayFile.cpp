#include "ShadingRayFile.h"

#include <QFileInfo>
#include <QString>
#include <charconv>
#include <cmath>
#include <string>

#include "app/services/OrvoFopen.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"

ShadingRayFile& shadingRayFile() {
    static ShadingRayFile file;
    return file;
}

void resetShadingRayFile() {
    ShadingRayFile& file = shadingRayFile();
    if (file.fdae) std::fclose(file.fdae);
    file = ShadingRayFile{};
}

void BeginShadingDAE(const std::string& filename) {
    resetShadingRayFile();
    ShadingRayFile& file = shadingRayFile();
    const QString name = QString::fromStdString(filename);
    const QByteArray geometryName = QFileInfo(name).completeBaseName().remove(QStringLiteral("Panel-")).toUtf8();
    file.fdae = ORVOfopen(name, "w");
    if (!file.fdae) {
        PrintSunLog("ERROR: Cannot create shading DAE %s\n", filename.c_str());
        return;
    }
    std::FILE* f = file.fdae;
    std::fputs("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n", f);
    std::fputs("<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n", f);
    std::fputs("<asset><contributor><authoring_tool>ShadowRayTracer</authoring_tool></contributor>\n", f);
    std::fputs("<created>2025-06-14</created><modified>2025-06-14</modified>\n", f);
    std::fputs("<unit name=\"meter\" meter=\"1\"/><up_axis>Z_UP</up_axis></asset>\n", f);
    std::fputs("<library_geometries>\n", f);
    std::fprintf(f, "<geometry id=\"%s\" name=\"%s\">\n", SHADING_RAYS_GEOMETRY, geometryName.constData());
    std::fputs("<mesh><source id=\"ShadingRays-positions\">\n", f);
    // The count is a fixed placeholder: the rays are not known yet when it is written.
    std::fputs("<float_array id=\"ShadingRays-positions-array\" count=\"99999\">\n", f);
}

// The altitude travels with the ray for the caller's sake; the file has no place for it.
void LogShadowRay(const Vec3& origin, const Vec3& hit, double, double azimuth) {
    ShadingRayFile& file = shadingRayFile();
    if (std::isfinite(azimuth)) {
        int degree = static_cast<int>(azimuth + 0.5);
        if (degree >= 360) degree -= 360;
        if (degree < 0) degree += 360;
        if (degree >= 0 && degree < 360) file.azimuthUsed[degree] = true;
    }
    if (!file.fdae) return;
    const double values[6] = {origin.x, origin.y, origin.z, hit.x, hit.y, hit.z};
    for (double v : values)
        if (std::isnan(v)) return;
    const double ox = OC(0), oy = OC(1), oz = OC(2);
    const double world[6] = {origin.x + ox, origin.y + oy, origin.z + oz, hit.x + ox, hit.y + oy, hit.z + oz};
    // "%.2f" six times, as printf writes it in the "C" locale; a shaded year
    // is thousands of rays a panel, too many to parse a format for each.
    char text[6 * 400];
    char* p = text;
    for (int k = 0; k < 6; ++k) {
        if (k > 0 || file.rayCount > 0) *p++ = ' ';
        p = std::to_chars(p, text + sizeof text, world[k], std::chars_format::fixed, 2).ptr;
    }
    std::fwrite(text, 1, static_cast<std::size_t>(p - text), file.fdae);
    ++file.rayCount;
}

void EndDAE() {
    ShadingRayFile& file = shadingRayFile();
    std::FILE* f = file.fdae;
    if (!f) return;
    std::fputs("\n</float_array>\n", f);
    std::fprintf(f,
                 "<technique_common><accessor source=\"#ShadingRays-positions-array\" count=\"%d\" stride=\"3\">\n",
                 2 * file.rayCount);
    std::fputs("<param name=\"X\" type=\"float\"/><param name=\"Y\" type=\"float\"/><param name=\"Z\" type=\"float\"/>\n",
               f);
    std::fputs("</accessor></technique_common></source>\n", f);
    std::fputs("<vertices id=\"ShadingRays-vertices\"><input semantic=\"POSITION\" source=\"#ShadingRays-positions\"/>"
               "</vertices>\n",
               f);
    std::fprintf(f, "<lines count=\"%d\"><input semantic=\"VERTEX\" source=\"#ShadingRays-vertices\" offset=\"0\"/><p>\n",
                 file.rayCount);
    std::string indices;
    indices.reserve(static_cast<std::size_t>(file.rayCount) * 16);
    char number[16];
    for (int i = 0; i < file.rayCount; ++i)
        for (const int index : {2 * i, 2 * i + 1}) {
            indices += ' ';
            indices.append(number, std::to_chars(number, number + sizeof number, index).ptr);
        }
    std::fwrite(indices.data(), 1, indices.size(), f);
    std::fputs("\n</p></lines>\n", f);
    std::fputs("</mesh></geometry>\n", f);
    std::fputs("</library_geometries>\n", f);
    std::fputs("</COLLADA>\n", f);
    std::fclose(f);
    file.fdae = nullptr;
    PrintSunLog("DAE closed successfully, %d rays written\n", file.rayCount);
}

int GetRayCount() { return shadingRayFile().rayCount; }
