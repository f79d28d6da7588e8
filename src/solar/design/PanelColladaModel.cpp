#include "PanelColladaModel.h"

#include <cmath>

#include "PanelDaeText.h"

using paneldae::Fmt;

namespace {

double edgeLength(const TGIS_Point3D& a, const TGIS_Point3D& b) {
    return std::sqrt((b.X - a.X) * (b.X - a.X) + (b.Y - a.Y) * (b.Y - a.Y) + (b.Z - a.Z) * (b.Z - a.Z));
}

QString positionsLine(const PANEL& panel, const PanelModelShape& shape) {
    // LL, LR, UR, UL; the box repeats them, so it has no height and still six faces.
    const int order[4] = {0, 3, 2, 1};
    QString line(12, QLatin1Char(' '));
    const int vertices = shape.box ? 8 : 4;
    for (int v = 0; v < vertices; ++v) {
        const TGIS_Point3D& p = panel.Corners[order[v % 4]];
        if (shape.printedForm)
            line += Fmt("%.6f %.6f %.6f ", p.X, p.Y, p.Z);
        else
            line += Fmt(v ? " %.6f %.6f %.6f" : "%.6f %.6f %.6f", p.X, p.Y, p.Z);
    }
    return line;
}

QString uvLine(const PANEL& panel, const PanelModelShape& shape) {
    if (shape.printedForm) return QStringLiteral("            0.0 0.0  1.0 0.0  1.0 1.0  0.0 1.0 ");
    // A landscape panel takes the texture turned by a quarter.
    const bool landscape = edgeLength(panel.Corners[0], panel.Corners[3]) > edgeLength(panel.Corners[0], panel.Corners[1]);
    return landscape ? QStringLiteral("            1.0 0.0 1.0 1.0 0.0 1.0 0.0 0.0")
                     : QStringLiteral("            0.0 0.0 1.0 0.0 1.0 1.0 0.0 1.0");
}

QString faceIndices(bool box, bool textured) {
    if (box && textured)
        return QStringLiteral(
            "0 0 1 1 2 2 3 3 7 3 6 2 5 1 4 0 0 0 3 3 7 3 4 0 1 1 2 2 6 2 5 1 2 2 3 3 7 3 6 2 3 3 0 0 4 0 7 3");
    if (box) return QStringLiteral("0 1 2 3 7 6 5 4 0 3 7 4 1 2 6 5 2 3 7 6 3 0 4 7");
    return textured ? QStringLiteral("0 0 1 1 2 2 3 3") : QStringLiteral("0 1 2 3");
}

}  // namespace

QString PhongColourLine(const char* element, TColor color) {
    return Fmt("            <%s><color>%.2f %.2f %.2f 1.0</color></%s>", element, (color & 0xFF) / 255.0,
               ((color >> 8) & 0xFF) / 255.0, ((color >> 16) & 0xFF) / 255.0, element);
}

QString PanelColladaBuildDate() {
    // __DATE__ is "Mmm dd yyyy" with the day padded by a blank.
    return QString::fromLatin1(__DATE__).simplified();
}

QStringList PanelModelLines(const PANEL& panel, const PanelModelShape& shape, const QStringList& nodeData) {
    const QString name = paneldae::XmlText(QString::fromUtf8(panel.Name));
    const bool textured = !shape.textureLeaf.isEmpty();
    const QString date = PanelColladaBuildDate();
    QStringList out;
    const auto add = [&out, &name](QString line) { out << line.replace(QLatin1String("NAME"), name); };

    add(QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>"));
    add(QStringLiteral("<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">"));
    add(QStringLiteral("  <asset>"));
    out << QStringLiteral("    <contributor><author>") + paneldae::XmlText(shape.author) +
               QStringLiteral("</author></contributor>");
    out << QStringLiteral("    <created>") + date + QStringLiteral("</created>");
    out << QStringLiteral("    <modified>") + date + QStringLiteral("</modified>");
    add(QStringLiteral("    <unit name=\"meter\" meter=\"1.0\"/>"));
    add(QStringLiteral("    <up_axis>Z_UP</up_axis>"));
    add(QStringLiteral("  </asset>"));

    if (textured) {
        add(QStringLiteral("  <library_images>"));
        add(QStringLiteral("    <image id=\"solar_panel_texture\" name=\"solar_panel_texture\">"));
        out << QStringLiteral("      <init_from>") + paneldae::XmlText(shape.textureLeaf) + QStringLiteral("</init_from>");
        add(QStringLiteral("    </image>"));
        add(QStringLiteral("  </library_images>"));
    }

    add(QStringLiteral("  <library_effects>"));
    add(QStringLiteral("    <effect id=\"NAME_effect\">"));
    add(QStringLiteral("      <profile_COMMON>"));
    if (textured) {
        add(QStringLiteral("        <newparam sid=\"solar_panel_texture_surface\">"));
        add(QStringLiteral("          <surface type=\"2D\"><init_from>solar_panel_texture</init_from></surface>"));
        add(QStringLiteral("        </newparam>"));
        add(QStringLiteral("        <newparam sid=\"solar_panel_texture_sampler\">"));
        add(QStringLiteral("          <sampler2D><source>solar_panel_texture_surface</source></sampler2D>"));
        add(QStringLiteral("        </newparam>"));
    }
    add(QStringLiteral("        <technique sid=\"common\">"));
    add(QStringLiteral("          <phong>"));
    out << PhongColourLine("emission", shape.color) << PhongColourLine("ambient", shape.color);
    if (textured)
        add(QStringLiteral(
            "            <diffuse><texture texture=\"solar_panel_texture_sampler\" texcoord=\"UVSET\"/></diffuse>"));
    else
        out << PhongColourLine("diffuse", shape.color);
    add(QStringLiteral("            <specular><color>0.1 0.1 0.1 1.0</color></specular>"));
    out << Fmt("            <transparency><float>%.2f</float></transparency>", shape.opacity / 100.0);
    add(QStringLiteral("          </phong>"));
    add(QStringLiteral("        </technique>"));
    add(QStringLiteral("      </profile_COMMON>"));
    add(QStringLiteral("    </effect>"));
    add(QStringLiteral("  </library_effects>"));

    add(QStringLiteral("  <library_materials>"));
    add(QStringLiteral("    <material id=\"NAME_material\" name=\"NAME_material\">"));
    add(QStringLiteral("      <instance_effect url=\"#NAME_effect\"/>"));
    add(QStringLiteral("    </material>"));
    add(QStringLiteral("  </library_materials>"));

    const int vertices = shape.box ? 8 : 4;
    add(QStringLiteral("  <library_geometries>"));
    add(QStringLiteral("    <geometry id=\"NAME_geometry\" name=\"NAME_geometry\">"));
    add(QStringLiteral("      <mesh>"));
    add(QStringLiteral("        <source id=\"NAME_positions\">"));
    add(QStringLiteral("          <float_array id=\"NAME_positions_array\" count=\"%1\">").arg(vertices * 3));
    out << positionsLine(panel, shape);
    add(QStringLiteral("          </float_array>"));
    add(QStringLiteral("          <technique_common>"));
    add(QStringLiteral("            <accessor source=\"#NAME_positions_array\" count=\"%1\" stride=\"3\">").arg(vertices));
    add(QStringLiteral("              <param name=\"X\" type=\"float\"/>"));
    add(QStringLiteral("              <param name=\"Y\" type=\"float\"/>"));
    add(QStringLiteral("              <param name=\"Z\" type=\"float\"/>"));
    add(QStringLiteral("            </accessor>"));
    add(QStringLiteral("          </technique_common>"));
    add(QStringLiteral("        </source>"));
    if (textured) {
        add(QStringLiteral("        <source id=\"NAME_uv\">"));
        add(QStringLiteral("          <float_array id=\"NAME_uv_array\" count=\"8\">"));
        out << uvLine(panel, shape);
        add(QStringLiteral("          </float_array>"));
        add(QStringLiteral("          <technique_common>"));
        add(QStringLiteral("            <accessor source=\"#NAME_uv_array\" count=\"4\" stride=\"2\">"));
        add(QStringLiteral("              <param name=\"S\" type=\"float\"/>"));
        add(QStringLiteral("              <param name=\"T\" type=\"float\"/>"));
        add(QStringLiteral("            </accessor>"));
        add(QStringLiteral("          </technique_common>"));
        add(QStringLiteral("        </source>"));
    }
    add(QStringLiteral("        <vertices id=\"NAME_vertices\">"));
    add(QStringLiteral("          <input semantic=\"POSITION\" source=\"#NAME_positions\"/>"));
    add(QStringLiteral("        </vertices>"));
    add(QStringLiteral("        <polylist count=\"%1\" material=\"NAME_material\">").arg(shape.box ? 6 : 1));
    add(QStringLiteral("          <input semantic=\"VERTEX\" source=\"#NAME_vertices\" offset=\"0\"/>"));
    if (textured) add(QStringLiteral("          <input semantic=\"TEXCOORD\" source=\"#NAME_uv\" offset=\"1\" set=\"0\"/>"));
    add(shape.box ? QStringLiteral("          <vcount>4 4 4 4 4 4</vcount>") : QStringLiteral("          <vcount>4</vcount>"));
    add(QStringLiteral("          <p>") + faceIndices(shape.box, textured) + QStringLiteral("</p>"));
    add(QStringLiteral("        </polylist>"));
    add(QStringLiteral("      </mesh>"));
    add(QStringLiteral("    </geometry>"));
    add(QStringLiteral("  </library_geometries>"));

    add(QStringLiteral("  <library_visual_scenes>"));
    out << QStringLiteral("    <visual_scene id=\"scene\" name=\"") + paneldae::XmlText(shape.sceneName) +
               QStringLiteral("\">");
    add(QStringLiteral("      <node id=\"NAME\" name=\"NAME\">"));
    out << nodeData;
    add(QStringLiteral("        <instance_geometry url=\"#NAME_geometry\">"));
    add(QStringLiteral("          <bind_material>"));
    add(QStringLiteral("            <technique_common>"));
    add(QStringLiteral("              <instance_material symbol=\"NAME_material\" target=\"#NAME_material\">"));
    if (textured)
        add(QStringLiteral(
            "                <bind_vertex_input semantic=\"UVSET\" input_semantic=\"TEXCOORD\" input_set=\"0\"/>"));
    add(QStringLiteral("              </instance_material>"));
    add(QStringLiteral("            </technique_common>"));
    add(QStringLiteral("          </bind_material>"));
    add(QStringLiteral("        </instance_geometry>"));
    add(QStringLiteral("      </node>"));
    add(QStringLiteral("    </visual_scene>"));
    add(QStringLiteral("  </library_visual_scenes>"));
    add(QStringLiteral("  <scene>"));
    add(QStringLiteral("    <instance_visual_scene url=\"#scene\"/>"));
    add(QStringLiteral("  </scene>"));
    add(QStringLiteral("</COLLADA>"));
    return out;
}
