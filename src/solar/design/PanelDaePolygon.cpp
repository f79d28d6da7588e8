#include "PanelDaePolygon.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "PanelColladaModel.h"
#include "PanelDaeEarClipping.h"
#include "PanelDaeText.h"
#include "app/services/RunLog.h"

using paneldae::Fmt;

void ApplyTiltToPanel(TGIS_Point3D* panelPoints, int NP, double Tilt, int panelIndex, std::FILE* logFile) {
    if (!panelPoints || NP < 2) return;
    TGIS_Point3D& p0 = panelPoints[0];
    TGIS_Point3D& p1 = panelPoints[1];
    const double baselineZ = std::max(p0.Z, p1.Z) + 0.05;
    p0.Z = p1.Z = baselineZ;
    double dx = p1.X - p0.X, dy = p1.Y - p0.Y;
    const double length = std::hypot(dx, dy);
    if (length > 0.0001) {
        dx /= length;
        dy /= length;
    }
    const double px = -dy, py = dx;
    const double angle = Tilt * M_PI / 180.0;
    for (int i = 2; i < NP; ++i) {
        TGIS_Point3D& p = panelPoints[i];
        const double d = (p.X - p0.X) * px + (p.Y - p0.Y) * py;
        p.X += d * (std::cos(angle) - 1) * px;
        p.Y += d * (std::cos(angle) - 1) * py;
        p.Z = baselineZ + d * std::sin(angle);
    }
    if (logFile)
        std::fprintf(logFile, "ApplyTiltToPanel: polygon %d tilted to %.2f degrees about baseline Z %.3f\n", panelIndex,
                     Tilt, baselineZ);
}

bool CreatePolygonDAE(const QString& DAE, const TGIS_Point3D* P, int NP, int Opacity, TColor colour, double Tilt,
                      float Area) {
    if (!P || NP < 3) return false;
    std::vector<TGIS_Point3D> points(P, P + NP);
    const TGIS_Point3D& first = points.front();
    const TGIS_Point3D& last = points.back();
    if (std::fabs(first.X - last.X) < 1e-9 && std::fabs(first.Y - last.Y) < 1e-9 && std::fabs(first.Z - last.Z) < 1e-9)
        points.pop_back();
    const int n = static_cast<int>(points.size());
    if (n < 3) return false;
    ApplyTiltToPanel(points.data(), n, Tilt, -1, runLog().fp_prt);
    const std::vector<std::array<int, 3>> triangles = EarClipPolygon(points.data(), n);

    QString positions(12, QLatin1Char(' '));
    for (int i = 0; i < n; ++i) positions += Fmt(i ? " %.6f %.6f %.6f" : "%.6f %.6f %.6f", points[i].X, points[i].Y, points[i].Z);
    QString indices;
    for (const std::array<int, 3>& t : triangles)
        indices += Fmt(indices.isEmpty() ? "%d %d %d" : " %d %d %d", t[0], t[1], t[2]);
    const QString date = PanelColladaBuildDate();

    const QStringList lines{
        QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>"),
        QStringLiteral("<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">"),
        QStringLiteral("  <asset>"),
        QStringLiteral("    <contributor><author>Zorvex64 Roof Polygon Exporter</author></contributor>"),
        QStringLiteral("    <created>") + date + QStringLiteral("</created>"),
        QStringLiteral("    <modified>") + date + QStringLiteral("</modified>"),
        QStringLiteral("    <unit name=\"meter\" meter=\"1.0\"/>"),
        QStringLiteral("    <up_axis>Z_UP</up_axis>"),
        QStringLiteral("  </asset>"),
        QStringLiteral("  <library_effects>"),
        QStringLiteral("    <effect id=\"roof_polygon_effect\">"),
        QStringLiteral("      <profile_COMMON>"),
        QStringLiteral("        <technique sid=\"common\">"),
        QStringLiteral("          <phong>"),
        PhongColourLine("emission", colour),
        PhongColourLine("ambient", colour),
        PhongColourLine("diffuse", colour),
        QStringLiteral("            <specular><color>0.1 0.1 0.1 1.0</color></specular>"),
        Fmt("            <transparency><float>%.2f</float></transparency>", Opacity / 100.0),
        QStringLiteral("          </phong>"),
        QStringLiteral("        </technique>"),
        QStringLiteral("      </profile_COMMON>"),
        QStringLiteral("    </effect>"),
        QStringLiteral("  </library_effects>"),
        QStringLiteral("  <library_materials>"),
        QStringLiteral("    <material id=\"roof_polygon_material\" name=\"roof_polygon_material\">"),
        QStringLiteral("      <instance_effect url=\"#roof_polygon_effect\"/>"),
        QStringLiteral("    </material>"),
        QStringLiteral("  </library_materials>"),
        QStringLiteral("  <library_geometries>"),
        QStringLiteral("    <geometry id=\"roof_polygon_geometry\" name=\"roof_polygon_geometry\">"),
        QStringLiteral("      <mesh>"),
        QStringLiteral("        <source id=\"roof_polygon_positions\">"),
        Fmt("          <float_array id=\"roof_polygon_positions_array\" count=\"%d\">", 3 * n),
        positions,
        QStringLiteral("          </float_array>"),
        QStringLiteral("          <technique_common>"),
        Fmt("            <accessor source=\"#roof_polygon_positions_array\" count=\"%d\" stride=\"3\">", n),
        QStringLiteral("              <param name=\"X\" type=\"float\"/>"),
        QStringLiteral("              <param name=\"Y\" type=\"float\"/>"),
        QStringLiteral("              <param name=\"Z\" type=\"float\"/>"),
        QStringLiteral("            </accessor>"),
        QStringLiteral("          </technique_common>"),
        QStringLiteral("        </source>"),
        QStringLiteral("        <vertices id=\"roof_polygon_vertices\">"),
        QStringLiteral("          <input semantic=\"POSITION\" source=\"#roof_polygon_positions\"/>"),
        QStringLiteral("        </vertices>"),
        Fmt("        <triangles material=\"roof_polygon_material\" count=\"%d\">", int(triangles.size())),
        QStringLiteral("          <input semantic=\"VERTEX\" source=\"#roof_polygon_vertices\" offset=\"0\"/>"),
        QStringLiteral("          <p>") + indices + QStringLiteral("</p>"),
        QStringLiteral("        </triangles>"),
        QStringLiteral("      </mesh>"),
        QStringLiteral("    </geometry>"),
        QStringLiteral("  </library_geometries>"),
        QStringLiteral("  <library_visual_scenes>"),
        QStringLiteral("    <visual_scene id=\"scene\" name=\"Roof Polygon Scene\">"),
        QStringLiteral("      <node id=\"roof_polygon_node\" name=\"roof_polygon\">"),
        QStringLiteral("        <extra>"),
        QStringLiteral("          <technique profile=\"roof_polygon_data\">"),
        QStringLiteral("            <type>roof_surface</type>"),
        Fmt("            <area_m2>%.2f</area_m2>", double(Area)),
        QStringLiteral("          </technique>"),
        QStringLiteral("        </extra>"),
        QStringLiteral("        <instance_geometry url=\"#roof_polygon_geometry\">"),
        QStringLiteral("          <bind_material>"),
        QStringLiteral("            <technique_common>"),
        QStringLiteral("              <instance_material symbol=\"roof_polygon_material\" target=\"#roof_polygon_material\"/>"),
        QStringLiteral("            </technique_common>"),
        QStringLiteral("          </bind_material>"),
        QStringLiteral("        </instance_geometry>"),
        QStringLiteral("      </node>"),
        QStringLiteral("    </visual_scene>"),
        QStringLiteral("  </library_visual_scenes>"),
        QStringLiteral("  <scene>"),
        QStringLiteral("    <instance_visual_scene url=\"#scene\"/>"),
        QStringLiteral("  </scene>"),
        QStringLiteral("</COLLADA>")};
    QString error;
    if (!paneldae::WriteLines(DAE, lines, &error)) {
        PrintRunLog("ERROR saving DAE file: %s (%s)\n", qPrintable(DAE), qPrintable(error));
        return false;
    }
    return true;
}
