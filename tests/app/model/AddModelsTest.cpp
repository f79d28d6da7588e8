// Zipped models and added files: a ZIP's first OBJ opens and the others are
// added, each added file's layers come into the scene's local frame, and
// KML files come in as DXF lines.
#include <QFileInfo>
#include <algorithm>
#include <cstdint>
#include <vector>

#include "ModelOpenFixture.h"
#include "app/model/AddModels.h"
#include "app/model/LayerTable.h"
#include "app/model/ModelGisFiles.h"
#include "app/model/ModelZip.h"
#include "app/model/ReadModel.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

std::uint32_t crc32(const std::string& data) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

void put16(std::string& out, std::uint32_t v) {
    out += char(v & 0xFF);
    out += char((v >> 8) & 0xFF);
}
void put32(std::string& out, std::uint32_t v) {
    put16(out, v & 0xFFFF);
    put16(out, v >> 16);
}

// A ZIP archive of stored (uncompressed) entries, laid out by hand from the
// format: local headers with their data, the central directory, its end.
std::string storedZip(const std::vector<std::pair<std::string, std::string>>& entries) {
    std::string out, directory;
    for (const auto& [name, data] : entries) {
        const std::uint32_t offset = std::uint32_t(out.size());
        const std::uint32_t crc = crc32(data), size = std::uint32_t(data.size());
        put32(out, 0x04034b50);
        for (std::uint32_t v : {20u, 0u, 0u, 0u, 0x21u}) put16(out, v);  // version, flags, method, time, date
        put32(out, crc);
        put32(out, size);
        put32(out, size);
        put16(out, std::uint32_t(name.size()));
        put16(out, 0);
        out += name + data;
        put32(directory, 0x02014b50);
        for (std::uint32_t v : {20u, 20u, 0u, 0u, 0u, 0x21u}) put16(directory, v);
        put32(directory, crc);
        put32(directory, size);
        put32(directory, size);
        for (std::uint32_t v : {std::uint32_t(name.size()), 0u, 0u, 0u, 0u}) put16(directory, v);
        put32(directory, 0);
        put32(directory, offset);
        directory += name;
    }
    const std::uint32_t start = std::uint32_t(out.size());
    out += directory;
    put32(out, 0x06054b50);
    for (std::uint32_t v : {0u, 0u, std::uint32_t(entries.size()), std::uint32_t(entries.size())}) put16(out, v);
    put32(out, std::uint32_t(directory.size()));
    put32(out, start);
    put16(out, 0);
    return out;
}

// A square in its own group; the comment lines make a file of over 200
// bytes, which is what an added file needs to count as written.
std::string squareObj(const std::string& group, double x, double y, double z) {
    std::string text;
    for (int i = 0; i < 4; ++i) text += "# padding line of an added model file, long enough\n";
    text += "g " + group + "\n";
    char v[160];
    std::snprintf(v, sizeof v, "v %g %g %g\nv %g %g %g\nv %g %g %g\nv %g %g %g\nf 1 2 3 4\n", x, y, z, x + 10, y, z,
                  x + 10, y + 10, z, x, y + 10, z);
    return text + v;
}

std::string layerEndingWith(const std::string& tail) {
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    for (int k = 0; k < NL; ++k) {
        const std::string name = layerTable().layerName[k];
        if (name.size() >= tail.size() && name.compare(name.size() - tail.size(), tail.size(), tail) == 0) return name;
    }
    return "";
}

using AddModels = ModelOpenFixture;

}  // namespace

TEST_F(AddModels, AZipOpensItsFirstObjAndAddsTheSecond) {
    writeTextFile(dir.path("site/models.obj.zip"),
                  storedZip({{"a/first.obj", squareObj("first", 100, 200, 10)},
                             {"b/second.obj", squareObj("second", 300, 400, 50)},
                             {"../escape.obj", squareObj("escape", 0, 0, 0)}}));
    startupState().GlobalARGVforDebug = dir.path("site/models.obj.zip");
    ReadModelBtnClick();

    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("escape.obj"))));
    const ModelSession& model = modelSession();
    EXPECT_EQ(model.INPUTFILENAME, dir.path("site/Unzipped/a/first.obj"));
    ASSERT_EQ(model.TSImportedFiles.size(), 2);
    EXPECT_EQ(model.TSImportedFiles[1].toStdString(), dir.path("site/Unzipped/b/second.obj"));
    EXPECT_EQ(At3d_LayerCount(), 2);
    // The first model's centre (105, 205, 10) is the origin of the local frame.
    double v[3];
    ASSERT_EQ(At3d_GetVertex(0, "first", v), 1);
    testsupport::expectVec(v, -5, -5, 0);
    const std::string second = layerEndingWith("second");
    ASSERT_FALSE(second.empty());
    EXPECT_EQ(second[0], 'P');
    ASSERT_EQ(At3d_GetVertex(0, second.c_str(), v), 1);
    testsupport::expectVec(v, 300 - 105, 400 - 205, 50 - 10);
    EXPECT_EQ(StatusStripText(), "Ready after adding 2 models");
}

TEST_F(AddModels, AZipWithoutObjOpensNothing) {
    writeTextFile(dir.path("site/notes.zip"), storedZip({{"readme.txt", "no model here"}}));
    startupState().GlobalARGVforDebug = dir.path("site/notes.zip");
    ReadModelBtnClick();
    EXPECT_EQ(modelSession().INPUTFILENAME, "");
    EXPECT_EQ(At3d_LayerCount(), 0);
    EXPECT_TRUE(UnzipModel(dir.path("site/none.zip")).isEmpty());
}

TEST_F(AddModels, SmallAndMissingFilesArePassedOver) {
    writeTextFile(dir.path("site/m.obj"), squareObj("base", 0, 0, 0));
    writeTextFile(dir.path("site/small.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    startupState().GlobalARGVforDebug = dir.path("site/m.obj");
    ReadModelBtnClick();
    AddmodelsClick({QString::fromStdString(dir.path("site/small.obj")), QString::fromStdString(dir.path("site/gone.obj"))});
    EXPECT_EQ(At3d_LayerCount(), 1);
    EXPECT_EQ(modelSession().TSImportedFiles.size(), 1);
}

TEST_F(AddModels, KmlLinesBecomeADxfBesideItAndLinesInTheLocalFrame) {
    writeTextFile(dir.path("site/m.obj"), squareObj("base", 30, 30, 0));
    startupState().GlobalARGVforDebug = dir.path("site/m.obj");
    ReadModelBtnClick();
    writeTextFile(dir.path("site/route.kml"),
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                  "<kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document><Placemark><name>r</name>\n"
                  "<LineString><coordinates>35.5,32.25,0 36,32.5,0 36.5,32.5,0</coordinates></LineString>\n"
                  "</Placemark></Document></kml>\n");
    AddmodelsClick({QString::fromStdString(dir.path("site/route.kml"))});
    // Two segments as DXF LINEs, the model having no system to project into.
    EXPECT_EQ(readTextFile(dir.path("site/route.DXF")),
              "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n"
              "  0\nLINE\n  8\nroute\n 10\n35.5\n 20\n32.25\n 30\n0\n 11\n36\n 21\n32.5\n 31\n0\n"
              "  0\nLINE\n  8\nroute\n 10\n36\n 20\n32.5\n 30\n0\n 11\n36.5\n 21\n32.5\n 31\n0\n"
              "  0\nENDSEC\n  0\nEOF\n");
    ASSERT_EQ(At3d_LayerCount(), 2);
    std::string added;
    char name[AT3D_NAME_SIZE];
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
        if (std::string(name) != "base") added = name;
    ASSERT_GT(At3d_2DVertexCount(added.c_str()), 0);
    double v[3];
    ASSERT_EQ(At3d_2DGetVertex(0, added.c_str(), v), 1);
    // Into the local frame of the base square, centred on (35, 35, 0); the
    // DXF came through a float reader.
    testsupport::expectVec(v, 35.5 - 35, 32.25 - 35, 0, 1e-5);
}

TEST_F(AddModels, AKmlThatCantBeOpenedIsReportedAndSkipped) {
    writeTextFile(dir.path("site/m.obj"), squareObj("base", 0, 0, 0));
    startupState().GlobalARGVforDebug = dir.path("site/m.obj");
    ReadModelBtnClick();
    writeTextFile(dir.path("site/broken.kml"), "this is no KML at all");
    AddmodelsClick({QString::fromStdString(dir.path("site/broken.kml"))});
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_TRUE(dialogs.questions().back().text.startsWith("File can't be open\n\r"));
    EXPECT_EQ(At3d_LayerCount(), 1);
}

TEST_F(AddModels, APanelFileInTheMapFrameLandsOnItsRoofOfAModelWithAnOffset) {
    writeTextFile(dir.path("site/m.obj"), squareObj("base", 100, 200, 10));
    writeTextFile(dir.path("site/offset.txt"), "1000 2000 5\n");
    startupState().GlobalARGVforDebug = dir.path("site/m.obj");
    ReadModelBtnClick();
    // A panel over the square's middle, its corners in the map frame as panel files hold them.
    PanelStore& store = panelStore();
    PANEL& p = store.panels[0];
    p = PANEL{};
    SetPanelText(p.Name, QStringLiteral("1/7"));
    const std::string file = dir.path("site/PANELS/Panel-1_7.dae");
    SetPanelText(p.Filename, QString::fromStdString(file));
    const double x = 1104, y = 2204, z = 15.5;
    p.Corners[0] = {x, y, z};
    p.Corners[1] = {x, y + 1.7, z};
    p.Corners[2] = {x + 1, y + 1.7, z};
    p.Corners[3] = {x + 1, y, z};
    p.CenterPoint = {x + 0.5, y + 0.85, z};
    p.Active = true;
    store.NumPanelsCreated = 1;
    ASSERT_TRUE(WritePanelColladaFile(QString::fromStdString(file), nullptr, 4, 1, 4, false, 0x800000, 0, 100, 0,
                                      nullptr));
    store.NumPanelsCreated = 0;

    AddCompleteModels({QString::fromStdString(file)});
    ASSERT_EQ(store.NumPanelsCreated, 1);
    const std::string layer = layerEndingWith("_geometry");
    ASSERT_FALSE(layer.empty());
    // Map point minus centre and Offset: half a metre above the square's middle (105, 205, 10).
    double low[3] = {1e9, 1e9, 1e9};
    for (int i = 0, n = At3d_VertexCount(layer.c_str()); i < n; ++i) {
        double v[3];
        ASSERT_EQ(At3d_GetVertex(i, layer.c_str(), v), 1);
        for (int a = 0; a < 3; ++a) low[a] = std::min(low[a], v[a]);
    }
    testsupport::expectVec(low, -1, -1, 0.5, 1e-4);
}
