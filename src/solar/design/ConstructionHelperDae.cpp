#include "ConstructionHelperDae.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>
#include <QStringList>
#include <cmath>

#include "ConstructionAdjust.h"
#include "PanelDaeEpsg.h"
#include "PlacementDae.h"
#include "app/services/FileDialogs.h"
#include "app/services/RunLog.h"
#include "scene/FileNameCase.h"

namespace {

constexpr int kSmallPicture = 500;   // px of the longer side below which it is enlarged
constexpr int kEnlargedSide = 2000;  // px of the longer side after
constexpr int kJpegQuality = 95;
constexpr double kMetresPerPixel = 0.01;
constexpr double kWallHeight = 3.0;  // m the walls reach below the roof
constexpr int kHelperEpsg = 6991;

struct Corner {
    double x = 0, y = 0, z = 0, u = 0, v = 0;
};

// The picture the model shows: the original, or a larger copy of a small one.
QString texturePicture(const QString& JPG, const QImage& image) {
    const int longer = std::max(image.width(), image.height());
    if (longer >= kSmallPicture || longer <= 0) return JPG;
    const double f = double(kEnlargedSide) / longer;
    const QImage big = image.scaled(int(std::floor(image.width() * f + 0.5)), int(std::floor(image.height() * f + 0.5)),
                                    Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QFileInfo info(JPG);
    const QString path = info.absolutePath() + "/" + info.completeBaseName() + "_upscaled.jpg";
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !big.save(&file, "JPG", kJpegQuality) || !file.commit()) return JPG;
    return path;
}

bool cornersFromCsv(const QString& CSV, Corner c[4]) {
    QFile file(CSV);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (lines.size() < 5) return false;
    for (int i = 0; i < 4; ++i) {
        const QStringList f = lines[1 + i].split(QLatin1Char(','));
        if (f.size() < 6) return false;
        c[i] = {f[1].trimmed().toDouble(), f[2].trimmed().toDouble(), f[3].trimmed().toDouble(),
                f[4].trimmed().toDouble(), f[5].trimmed().toDouble()};
    }
    return true;
}

QString daeText(const Corner c[4], const QString& texture) {
    QString positions, uv, walls;
    for (int i = 0; i < 4; ++i) {
        positions += QString::asprintf("%s%.6f %.6f %.6f", i ? " " : "", c[i].x, c[i].y, c[i].z);
        uv += QString::asprintf("%s%.6f %.6f", i ? " " : "", c[i].u, c[i].v);
    }
    for (int i = 0; i < 8; ++i) {
        const Corner& k = c[i % 4];
        walls += QString::asprintf("%s%.6f %.6f %.6f", i ? " " : "", k.x, k.y, i < 4 ? k.z : k.z - kWallHeight);
    }
    QString t;
    t += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    t += "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n";
    t += "  <asset>\n    <unit name=\"meter\" meter=\"1\"/>\n    <up_axis>Z_UP</up_axis>\n  </asset>\n";
    t += "  <library_images>\n    <image id=\"roof_tex\" name=\"roof_tex\">\n      <init_from>" +
         texture.toHtmlEscaped() + "</init_from>\n    </image>\n  </library_images>\n";
    t += "  <library_effects>\n"
         "    <effect id=\"roof_effect\">\n      <profile_COMMON>\n"
         "        <newparam sid=\"roof_surface\">\n          <surface type=\"2D\">\n"
         "            <init_from>roof_tex</init_from>\n          </surface>\n        </newparam>\n"
         "        <newparam sid=\"roof_sampler\">\n          <sampler2D>\n"
         "            <source>roof_surface</source>\n          </sampler2D>\n        </newparam>\n"
         "        <technique sid=\"common\">\n          <lambert>\n            <diffuse>\n"
         "              <texture texture=\"roof_sampler\" texcoord=\"UVSET0\"/>\n"
         "            </diffuse>\n          </lambert>\n        </technique>\n"
         "      </profile_COMMON>\n    </effect>\n"
         "    <effect id=\"wall_effect\">\n      <profile_COMMON>\n        <technique sid=\"common\">\n"
         "          <lambert>\n            <diffuse>\n              <color>0.7 0.7 0.7 1</color>\n"
         "            </diffuse>\n          </lambert>\n        </technique>\n      </profile_COMMON>\n"
         "    </effect>\n  </library_effects>\n";
    t += "  <library_materials>\n"
         "    <material id=\"roof\" name=\"roof\">\n      <instance_effect url=\"#roof_effect\"/>\n    </material>\n"
         "    <material id=\"wall\" name=\"wall\">\n      <instance_effect url=\"#wall_effect\"/>\n    </material>\n"
         "  </library_materials>\n";
    t += "  <library_geometries>\n    <geometry id=\"roof_geometry\" name=\"roof_geometry\">\n      <mesh>\n";
    t += "        <source id=\"roof_positions\">\n          <float_array id=\"roof_positions_array\" count=\"12\">" +
         positions +
         "</float_array>\n          <technique_common>\n"
         "            <accessor source=\"#roof_positions_array\" count=\"4\" stride=\"3\">\n"
         "              <param name=\"X\" type=\"float\"/>\n              <param name=\"Y\" type=\"float\"/>\n"
         "              <param name=\"Z\" type=\"float\"/>\n            </accessor>\n"
         "          </technique_common>\n        </source>\n";
    t += "        <source id=\"roof_uv\">\n          <float_array id=\"roof_uv_array\" count=\"8\">" + uv +
         "</float_array>\n          <technique_common>\n"
         "            <accessor source=\"#roof_uv_array\" count=\"4\" stride=\"2\">\n"
         "              <param name=\"S\" type=\"float\"/>\n              <param name=\"T\" type=\"float\"/>\n"
         "            </accessor>\n          </technique_common>\n        </source>\n";
    t +=
        "        <vertices id=\"roof_vertices\">\n          <input semantic=\"POSITION\" source=\"#roof_positions\"/>\n"
        "        </vertices>\n";
    t += "        <polylist count=\"1\" material=\"roof\">\n"
         "          <input semantic=\"VERTEX\" source=\"#roof_vertices\" offset=\"0\"/>\n"
         "          <input semantic=\"TEXCOORD\" source=\"#roof_uv\" offset=\"1\" set=\"0\"/>\n"
         "          <vcount>4</vcount>\n          <p>0 0 1 1 2 2 3 3</p>\n        </polylist>\n";
    t += "      </mesh>\n    </geometry>\n";
    t += "    <geometry id=\"wall_geometry\" name=\"wall_geometry\">\n      <mesh>\n";
    t += "        <source id=\"wall_positions\">\n          <float_array id=\"wall_positions_array\" count=\"24\">" +
         walls +
         "</float_array>\n          <technique_common>\n"
         "            <accessor source=\"#wall_positions_array\" count=\"8\" stride=\"3\">\n"
         "              <param name=\"X\" type=\"float\"/>\n              <param name=\"Y\" type=\"float\"/>\n"
         "              <param name=\"Z\" type=\"float\"/>\n            </accessor>\n"
         "          </technique_common>\n        </source>\n";
    t +=
        "        <vertices id=\"wall_vertices\">\n          <input semantic=\"POSITION\" source=\"#wall_positions\"/>\n"
        "        </vertices>\n";
    t += "        <triangles count=\"8\" material=\"wall\">\n"
         "          <input semantic=\"VERTEX\" source=\"#wall_vertices\" offset=\"0\"/>\n"
         "          <p>0 1 5  0 5 4  1 2 6  1 6 5  2 3 7  2 7 6  3 0 4  3 4 7</p>\n        </triangles>\n";
    t += "      </mesh>\n    </geometry>\n  </library_geometries>\n";
    t +=
        "  <library_visual_scenes>\n    <visual_scene id=\"Scene\">\n      <node id=\"roof_node\" name=\"roof_node\">\n"
        "        <instance_geometry url=\"#roof_geometry\">\n          <bind_material>\n"
        "            <technique_common>\n"
        "              <instance_material symbol=\"roof\" target=\"#roof\">\n"
        "                <bind_vertex_input semantic=\"UVSET0\" input_semantic=\"TEXCOORD\" input_set=\"0\"/>\n"
        "              </instance_material>\n            </technique_common>\n          </bind_material>\n"
        "        </instance_geometry>\n"
        "        <instance_geometry url=\"#wall_geometry\">\n          <bind_material>\n"
        "            <technique_common>\n              <instance_material symbol=\"wall\" target=\"#wall\"/>\n"
        "            </technique_common>\n          </bind_material>\n        </instance_geometry>\n"
        "      </node>\n    </visual_scene>\n  </library_visual_scenes>\n";
    t += "  <scene>\n    <instance_visual_scene url=\"#Scene\"/>\n  </scene>\n</COLLADA>\n";
    return t;
}

}  // namespace

QString JPGandCSV2DAE(const QString& JPG, const QString& CSV) {
    const QImage image(JPG);
    if (image.isNull()) {
        PrintRunLog("JPGandCSV2DAE: can't read %s\n", JPG.toUtf8().constData());
        return QString();
    }
    const QString picture = texturePicture(JPG, image);
    const QImage used = picture == JPG ? image : QImage(picture);
    const bool withCsv = !CSV.isEmpty() && QFileInfo::exists(CSV);
    Corner c[4];
    if (withCsv) {
        if (!cornersFromCsv(CSV, c)) {
            PrintRunLog("JPGandCSV2DAE: no corner table in %s\n", CSV.toUtf8().constData());
            return QString();
        }
    } else {
        const double W = used.width() * kMetresPerPixel, H = used.height() * kMetresPerPixel;
        c[0] = {0, 0, 0, 0, 0};
        c[1] = {W, 0, 0, 1, 0};
        c[2] = {W, H, 0, 1, 1};
        c[3] = {0, H, 0, 0, 1};
    }
    const QFileInfo info(JPG);
    const QString dae = info.absolutePath() + "/" + info.completeBaseName() +
                        (withCsv ? QStringLiteral("_Helper.dae") : QStringLiteral(".dae"));
    QSaveFile file(dae);
    const QByteArray bytes = daeText(c, QFileInfo(picture).fileName()).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        PrintRunLog("JPGandCSV2DAE: can't write %s\n", dae.toUtf8().constData());
        return QString();
    }
    EmbedEPSGInDAE(dae, kHelperEpsg);
    if (GetEPSGFromDAE(dae) != kHelperEpsg)
        PrintRunLog("JPGandCSV2DAE: EPSG %d not read back from %s\n", kHelperEpsg, dae.toUtf8().constData());
    return dae;
}

QString CreateautoDAEhelper1Click(const QString& folder) {
    QString picture = folder;
    if (!OrvoOpenFile(picture, "jpg", "Picture (*.JPG)|*.jpg", "Open the roof picture (input)", folder)) return {};
    const QFileInfo info(picture);
    const std::string table = FindFileNoCase((info.path() + "/" + info.completeBaseName() + ".csv").toStdString());
    QString adjusted;
    if (!table.empty()) {
        adjusted = AdjustCSV(QString::fromStdString(table));
        if (adjusted.isEmpty()) return {};
    }
    const QString model = JPGandCSV2DAE(picture, adjusted);
    if (!model.isEmpty() && placementHooks().addModels) placementHooks().addModels({model});
    return model;
}
