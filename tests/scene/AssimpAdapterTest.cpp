// The Assimp path: COLLADA layer names, the file's own axes and units, node
// transforms, textures, damaged files, and writing DAE/STL/3DS/DXF that read
// back as written. Every fixture is written by the test itself.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "scene/engine/AssimpAdapter.h"
#include "scene/engine/Layer.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

namespace fs = std::filesystem;
using engine::Layer;
using engine::ReadModelWithAssimp;
using engine::WriteModelWithAssimp;
using testsupport::EngineFixtureGuard;
using testsupport::readTextFile;
using testsupport::writeTextFile;

// ---------------------------------------------------------------- COLLADA fixtures

struct Geometry {
    std::string id;
    std::vector<double> positions;  // x y z per vertex
    std::vector<int> triangles;
    std::vector<double> normals;  // optional, per vertex
    std::vector<double> uvs;      // optional, per vertex
    std::string materialSymbol;   // optional
};

std::string numbers(const std::vector<double>& values) {
    std::ostringstream s;
    s.precision(17);
    for (std::size_t i = 0; i < values.size(); ++i) s << (i ? " " : "") << values[i];
    return s.str();
}

std::string source(const std::string& id, const std::vector<double>& values, const std::string& params) {
    const std::size_t stride = params.size();
    std::string out = "<source id=\"" + id + "\"><float_array id=\"" + id + "-array\" count=\"" +
                      std::to_string(values.size()) + "\">" + numbers(values) +
                      "</float_array><technique_common><accessor source=\"#" + id + "-array\" count=\"" +
                      std::to_string(values.size() / stride) + "\" stride=\"" + std::to_string(stride) + "\">";
    for (char p : params) out += std::string("<param name=\"") + p + "\" type=\"float\"/>";
    return out + "</accessor></technique_common></source>\n";
}

// Source ids are "g<n>-..." so that only the geometry id carries odd characters.
std::string geometryXml(const Geometry& g, int n) {
    const std::string key = "g" + std::to_string(n);
    std::string out = "<geometry id=\"" + g.id + "\" name=\"Name" + std::to_string(n) + "\"><mesh>\n";
    out += source(key + "-pos", g.positions, "XYZ");
    if (!g.normals.empty()) out += source(key + "-nrm", g.normals, "XYZ");
    if (!g.uvs.empty()) out += source(key + "-uv", g.uvs, "ST");
    out += "<vertices id=\"" + key + "-vtx\"><input semantic=\"POSITION\" source=\"#" + key + "-pos\"/>";
    if (!g.normals.empty()) out += "<input semantic=\"NORMAL\" source=\"#" + key + "-nrm\"/>";
    out += "</vertices>\n<triangles count=\"" + std::to_string(g.triangles.size() / 3) + "\"";
    if (!g.materialSymbol.empty()) out += " material=\"" + g.materialSymbol + "\"";
    out += "><input semantic=\"VERTEX\" source=\"#" + key + "-vtx\" offset=\"0\"/>";
    if (!g.uvs.empty()) out += "<input semantic=\"TEXCOORD\" source=\"#" + key + "-uv\" offset=\"0\" set=\"0\"/>";
    out += "<p>";
    for (std::size_t i = 0; i < g.triangles.size(); ++i) out += (i ? " " : "") + std::to_string(g.triangles[i]);
    return out + "</p></triangles>\n</mesh></geometry>\n";
}

std::string instance(const std::string& geometryId, const std::string& symbol = "", const std::string& material = "") {
    std::string out = "<instance_geometry url=\"#" + geometryId + "\">";
    if (!symbol.empty())
        out += "<bind_material><technique_common><instance_material symbol=\"" + symbol + "\" target=\"#" + material +
               "\"/></technique_common></bind_material>";
    return out + "</instance_geometry>";
}

std::string node(const std::string& id, const std::string& body) {
    return "<node id=\"" + id + "\">" + body + "</node>\n";
}

std::string collada(const std::string& asset, const std::vector<Geometry>& geometries, const std::string& nodes,
                    const std::string& libraries = "") {
    std::string out =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n"
        "<asset>" +
        asset + "</asset>\n" + libraries + "<library_geometries>\n";
    for (std::size_t i = 0; i < geometries.size(); ++i) out += geometryXml(geometries[i], int(i));
    out += "</library_geometries>\n<library_visual_scenes><visual_scene id=\"VS\" name=\"VS\">\n" + nodes +
           "</visual_scene></library_visual_scenes>\n<scene><instance_visual_scene url=\"#VS\"/></scene>\n"
           "</COLLADA>\n";
    return out;
}

// A textured material "tex" whose image is named `reference`, and a plain
// one "red" with diffuse 0.25 0.5 0.75.
std::string materialLibraries(const std::string& reference) {
    return "<library_images><image id=\"img\"><init_from>" + reference +
           "</init_from></image></library_images>\n"
           "<library_effects>"
           "<effect id=\"tex-fx\"><profile_COMMON>"
           "<newparam sid=\"surf\"><surface type=\"2D\"><init_from>img</init_from></surface></newparam>"
           "<newparam sid=\"samp\"><sampler2D><source>surf</source></sampler2D></newparam>"
           "<technique sid=\"common\"><lambert><diffuse><texture texture=\"samp\" texcoord=\"UV0\"/></diffuse>"
           "</lambert></technique></profile_COMMON></effect>"
           "<effect id=\"red-fx\"><profile_COMMON><technique sid=\"common\"><lambert><diffuse>"
           "<color>0.25 0.5 0.75 1</color></diffuse></lambert></technique></profile_COMMON></effect>"
           "</library_effects>\n"
           "<library_materials><material id=\"tex\"><instance_effect url=\"#tex-fx\"/></material>"
           "<material id=\"red\"><instance_effect url=\"#red-fx\"/></material></library_materials>\n";
}

const Geometry kTriangle{"tri", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}, {}, {}, ""};

// ---------------------------------------------------------------- helpers

void expectPositions(const Layer& layer, const std::vector<double>& expected, double tolerance = 0) {
    ASSERT_EQ(layer.positions.size(), expected.size()) << layer.name;
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(layer.positions[i], expected[i], tolerance) << layer.name << " coordinate " << i;
}

const Layer* layerNamed(const std::vector<Layer>& layers, const std::string& name) {
    for (const Layer& layer : layers)
        if (layer.name == name) return &layer;
    return nullptr;
}

std::size_t totalFaces(const std::vector<Layer>& layers) {
    std::size_t n = 0;
    for (const Layer& layer : layers) n += layer.faceCount();
    return n;
}

std::vector<std::string> folderEntries(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class AssimpAdapterTest : public ::testing::Test {
protected:
    EngineFixtureGuard guard;
    testsupport::ScratchDir dir;

    std::vector<Layer> read(const std::string& name) {
        std::vector<Layer> layers;
        EXPECT_TRUE(ReadModelWithAssimp(dir.path(name), layers)) << name;
        return layers;
    }

    // A failed read leaves what the caller had, and says why naming the file.
    void expectReadFails(const std::string& name) {
        std::vector<Layer> layers(1);
        layers[0].name = "kept";
        const std::size_t logBefore = EngineFixtureGuard::logLines().size();
        EXPECT_FALSE(ReadModelWithAssimp(dir.path(name), layers)) << name;
        ASSERT_EQ(layers.size(), 1u) << name;
        EXPECT_EQ(layers[0].name, "kept");
        ASSERT_EQ(EngineFixtureGuard::logLines().size(), logBefore + 1) << name;
        EXPECT_NE(EngineFixtureGuard::logLines().back().find(name), std::string::npos)
            << EngineFixtureGuard::logLines().back();
    }
};

// ---------------------------------------------------------------- reading COLLADA

TEST_F(AssimpAdapterTest, ColladaLayersAreNamedAfterFileAndGeometryId) {
    Geometry a = kTriangle, b = kTriangle, c = kTriangle, d = kTriangle;
    a.id = "12_417_geometry";
    b.id = "12/417_roof";
    c.id = "x/y";  // turns into "x_y", which the next one already is
    d.id = "x_y";
    b.positions = {5, 6, 7, 8, 6, 7, 5, 9, 7};
    writeTextFile(dir.path("Panel-12_417.dae"), collada("", {a, b, c, d},
                                                        node("n1", instance(a.id)) + node("n2", instance(b.id)) +
                                                            node("n3", instance(c.id)) + node("n4", instance(d.id))));
    const std::vector<Layer> layers = read("Panel-12_417.dae");
    ASSERT_EQ(layers.size(), 4u);
    EXPECT_EQ(layers[0].name, "Panel-12_417_12_417_geometry");
    EXPECT_EQ(layers[1].name, "Panel-12_417_12_417_roof");
    EXPECT_EQ(layers[2].name, "Panel-12_417_x_y");
    EXPECT_EQ(layers[3].name, "Panel-12_417_x_y_2");
    expectPositions(layers[1], {5, 6, 7, 8, 6, 7, 5, 9, 7});
    EXPECT_EQ(layers[1].triangles, (std::vector<std::uint32_t>{0, 1, 2}));
    EXPECT_TRUE(layers[1].texCoords.empty());
    EXPECT_TRUE(layers[1].texturePath.empty());
}

TEST_F(AssimpAdapterTest, AGeometryWithoutASceneLoadsItsLinesWherePlaced) {
    // The layout of a panel's shading ray file: lines in a geometry library and no scene.
    writeTextFile(dir.path("Panel-3_40_Shading.dae"),
                  "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                  "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">\n"
                  "<asset><unit name=\"meter\" meter=\"1\"/><up_axis>Z_UP</up_axis></asset>\n"
                  "<library_geometries>\n<geometry id=\"ShadingRays-geo\" name=\"3_40_Shading\">\n"
                  "<mesh><source id=\"ShadingRays-positions\">\n"
                  "<float_array id=\"ShadingRays-positions-array\" count=\"99999\">\n"
                  "178500.25 663500.50 50.00 178510.25 663500.50 60.00 178500.25 663500.50 50.00 178500.25 663490.50 55.00\n"
                  "</float_array>\n<technique_common><accessor source=\"#ShadingRays-positions-array\" count=\"4\" stride=\"3\">\n"
                  "<param name=\"X\" type=\"float\"/><param name=\"Y\" type=\"float\"/><param name=\"Z\" type=\"float\"/>\n"
                  "</accessor></technique_common></source>\n"
                  "<vertices id=\"ShadingRays-vertices\"><input semantic=\"POSITION\" source=\"#ShadingRays-positions\"/></vertices>\n"
                  "<lines count=\"2\"><input semantic=\"VERTEX\" source=\"#ShadingRays-vertices\" offset=\"0\"/><p>\n 0 1 2 3\n</p></lines>\n"
                  "</mesh></geometry>\n</library_geometries>\n</COLLADA>\n");
    const std::vector<Layer> layers = read("Panel-3_40_Shading.dae");
    ASSERT_EQ(layers.size(), 1u);
    EXPECT_EQ(layers[0].name, "Panel-3_40_Shading_ShadingRays-geo");
    EXPECT_TRUE(layers[0].triangles.empty());
    ASSERT_EQ(layers[0].lineSegments.size(), 4u);
    // The rays' ends stand where the file has them (a float file: to a few centimetres).
    const std::size_t end = layers[0].lineSegments[1];
    EXPECT_NEAR(layers[0].lineVertices[3 * end], 178510.25, 0.05);
    EXPECT_NEAR(layers[0].lineVertices[3 * end + 2], 60, 1e-4);
}

TEST_F(AssimpAdapterTest, LongNamesAreCutTo79BytesAndStayUnique) {
    Geometry a = kTriangle, b = kTriangle;
    a.id = std::string(100, 'a') + "1";
    b.id = std::string(100, 'a') + "2";  // same first 79 bytes once cut
    writeTextFile(dir.path("m.dae"), collada("", {a, b}, node("n1", instance(a.id)) + node("n2", instance(b.id))));
    const std::vector<Layer> layers = read("m.dae");
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_EQ(layers[0].name, "m_" + std::string(77, 'a'));
    EXPECT_EQ(layers[1].name, "m_" + std::string(75, 'a') + "_2");
    EXPECT_EQ(layers[1].name.size(), 79u);
}

TEST_F(AssimpAdapterTest, ColladaKeepsItsOwnAxesAndUnitsAndAppliesNodeTransforms) {
    // Z_UP and centimetres: Assimp would turn the model to Y-up and scale it by 0.01.
    Geometry g = kTriangle;
    g.positions = {1, 2, 3, 4, 2, 3, 1, 5, 3};
    g.normals = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    // outer: translate (1000, 2000, 300); inner: quarter turn about z, then (10, 0, 0);
    // mirror: x -> -x, then <translate> (0, 0, 1)
    const std::string nodes =
        node("outer", "<matrix>1 0 0 1000 0 1 0 2000 0 0 1 300 0 0 0 1</matrix>" + instance("tri") +
                          node("inner", "<matrix>0 -1 0 10 1 0 0 0 0 0 1 0 0 0 0 1</matrix>" + instance("tri"))) +
        node("mirror", "<translate>0 0 1</translate><scale>-1 1 1</scale>" + instance("tri"));
    writeTextFile(dir.path("site.dae"),
                  collada("<unit name=\"centimeter\" meter=\"0.01\"/><up_axis>Z_UP</up_axis>", {g}, nodes));
    const std::vector<Layer> layers = read("site.dae");
    ASSERT_EQ(layers.size(), 3u);
    EXPECT_EQ(layers[0].name, "site_tri");
    EXPECT_EQ(layers[1].name, "site_tri_2");
    EXPECT_EQ(layers[2].name, "site_tri_3");
    expectPositions(layers[0], {1001, 2002, 303, 1004, 2002, 303, 1001, 2005, 303});
    // (x, y, z) -> (10 - y, x, z), then + (1000, 2000, 300)
    expectPositions(layers[1], {1008, 2001, 303, 1008, 2004, 303, 1005, 2001, 303});
    expectPositions(layers[2], {-1, 2, 4, -4, 2, 4, -1, 5, 4});
    // Named otherwise, the file is still known for COLLADA by its contents.
    fs::copy_file(dir.path("site.dae"), dir.path("site.xml"));
    const std::vector<Layer> again = read("site.xml");
    ASSERT_EQ(again.size(), 3u);
    EXPECT_EQ(again[0].name, "site_tri");
    expectPositions(again[0], {1001, 2002, 303, 1004, 2002, 303, 1001, 2005, 303});
    // Normals turn with the node (inverse transpose), mirrored ones included.
    const std::vector<std::vector<float>> normals = {
        {1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 1, 0, -1, 0, 0, 0, 0, 1}, {-1, 0, 0, 0, 1, 0, 0, 0, 1}};
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(layers[i].normals.size(), 9u);
        for (int c = 0; c < 9; ++c) EXPECT_NEAR(layers[i].normals[c], normals[i][c], 1e-6) << i << " " << c;
    }
}

TEST_F(AssimpAdapterTest, ColladaTextureIsFoundWithBackslashAndOtherCase) {
    writeTextFile(dir.path("WALL.JPG"), "not really a jpeg");
    Geometry textured = kTriangle, plain = kTriangle;
    textured.id = "textured";
    textured.uvs = {0, 0, 1, 0, 0.25, 0.75};
    textured.materialSymbol = "m";
    plain.id = "plain";
    plain.materialSymbol = "m";
    writeTextFile(dir.path("house.dae"),
                  collada("", {textured, plain},
                          node("a", instance("textured", "m", "tex")) + node("b", instance("plain", "m", "red")),
                          materialLibraries(".\\wall.jpg")));
    const std::vector<Layer> layers = read("house.dae");
    ASSERT_EQ(layers.size(), 2u);
    EXPECT_EQ(layers[0].texturePath, dir.path("WALL.JPG"));
    EXPECT_EQ(layers[0].texCoords, (std::vector<float>{0, 0, 1, 0, 0.25f, 0.75f}));
    EXPECT_TRUE(layers[1].texturePath.empty());
    EXPECT_FLOAT_EQ(layers[1].diffuse[0], 0.25f);
    EXPECT_FLOAT_EQ(layers[1].diffuse[1], 0.5f);
    EXPECT_FLOAT_EQ(layers[1].diffuse[2], 0.75f);
    EXPECT_FALSE(EngineFixtureGuard::logContains("texture not found"));
}

TEST_F(AssimpAdapterTest, MissingTextureIsLoggedAndTheLayerLoadsUntextured) {
    Geometry g = kTriangle;
    g.uvs = {0, 0, 1, 0, 0, 1};
    g.materialSymbol = "m";
    writeTextFile(dir.path("house.dae"),
                  collada("", {g}, node("a", instance("tri", "m", "tex")), materialLibraries("textures/gone.png")));
    const std::vector<Layer> layers = read("house.dae");
    ASSERT_EQ(layers.size(), 1u);
    EXPECT_TRUE(layers[0].texturePath.empty());
    EXPECT_EQ(layers[0].faceCount(), 1u);
    ASSERT_EQ(EngineFixtureGuard::logLines().size(), 1u);
    EXPECT_EQ(EngineFixtureGuard::logLines()[0], "texture not found: textures/gone.png");
}

// ---------------------------------------------------------------- reading other formats

TEST_F(AssimpAdapterTest, StlSolidNameOrFileNameNamesTheLayer) {
    const std::string facets =
        "facet normal 0 0 1\n outer loop\n  vertex 0 0 5\n  vertex 2 0 5\n  vertex 0 3 5\n"
        " endloop\nendfacet\n"
        "facet normal 0 0 1\n outer loop\n  vertex 2 0 5\n  vertex 2 3 5\n  vertex 0 3 5\n"
        " endloop\nendfacet\n";
    writeTextFile(dir.path("named.stl"), "solid roof\n" + facets + "endsolid roof\n");
    writeTextFile(dir.path("Nameless.stl"), "solid\n" + facets + "endsolid\n");
    const std::vector<Layer> named = read("named.stl");
    ASSERT_EQ(named.size(), 1u);
    EXPECT_EQ(named[0].name, "roof");
    EXPECT_EQ(named[0].faceCount(), 2u);
    // Z stays up: an STL is not turned.
    for (std::size_t v = 0; v < named[0].vertexCount(); ++v) EXPECT_EQ(named[0].positions[3 * v + 2], 5.0);
    const std::vector<Layer> nameless = read("Nameless.stl");
    ASSERT_EQ(nameless.size(), 1u);
    EXPECT_EQ(nameless[0].name, "Nameless_0");
}

TEST_F(AssimpAdapterTest, DxfFacesAndLinesKeepTheirAxes) {
    // A LINE on layer "Edges", a 3DFACE triangle and a 3DFACE quad on "Roof", all at heights AutoCAD keeps in z.
    const std::string plan =
        "0\nSECTION\n2\nENTITIES\n"
        "0\nLINE\n8\nEdges\n10\n1\n20\n2\n30\n3\n11\n4\n21\n5\n31\n6\n"
        "0\n3DFACE\n8\nRoof\n10\n0\n20\n0\n30\n7\n11\n10\n21\n0\n31\n7\n12\n10\n22\n10\n32\n7\n"
        "13\n10\n23\n10\n33\n7\n"
        "0\n3DFACE\n8\nRoof\n10\n20\n20\n0\n30\n7\n11\n30\n21\n0\n31\n7\n12\n30\n22\n10\n32\n7\n"
        "13\n20\n23\n10\n33\n7\n"
        "0\nENDSEC\n0\nEOF\n";
    writeTextFile(dir.path("plan.dxf"), plan);
    const std::vector<Layer> layers = read("plan.dxf");
    ASSERT_EQ(layers.size(), 2u);
    const Layer* edges = layerNamed(layers, "Edges");
    const Layer* roof = layerNamed(layers, "Roof");
    ASSERT_NE(edges, nullptr);
    ASSERT_NE(roof, nullptr);
    EXPECT_EQ(edges->faceCount(), 0u);
    EXPECT_EQ(edges->lineVertices, (std::vector<double>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(edges->lineSegments, (std::vector<std::uint32_t>{0, 1}));
    EXPECT_EQ(roof->faceCount(), 3u);  // the triangle and the quad's two halves
    for (std::size_t v = 0; v < roof->vertexCount(); ++v) EXPECT_EQ(roof->positions[3 * v + 2], 7.0);

    // The same drawing from an old DOS program: CR LF line ends and a ^Z after EOF.
    std::string dos;
    for (char c : plan) dos += c == '\n' ? std::string("\r\n") : std::string(1, c);
    writeTextFile(dir.path("dos.dxf"), dos + "\x1a");
    const std::vector<Layer> fromDos = read("dos.dxf");
    EXPECT_EQ(fromDos.size(), 2u);
    EXPECT_EQ(totalFaces(fromDos), 3u);
}

TEST_F(AssimpAdapterTest, CobNodeTransformIsApplied) {
    writeTextFile(dir.path("t.cob"),
                  "Caligari V00.01ALH             \n"
                  "PolH V0.08 Id 18879604 Parent 0 Size 00000300\nName Tri\ncenter 0 0 0\n"
                  "x axis 1 0 0\ny axis 0 1 0\nz axis 0 0 1\nTransform\n1 0 0 5\n0 1 0 6\n0 0 1 7\n0 0 0 1\n"
                  "World Vertices 3\n0 0 0\n1 0 0\n0 1 0\nTexture Vertices 1\n0 0\nFaces 1\n"
                  "Face verts 3 flags 0 mat 0\n<0,0> <1,0> <2,0>\n"
                  "Mat1 V0.06 Id 1 Parent 18879604 Size 00000100\nmat# 0\nshader: phong facet: auto32\n"
                  "rgb 1,0,0\nalpha 1 ka 0.1 ks 0.1 exp 0 ior 1\n"
                  "END V1.00 Id 0 Parent 0 Size 0\n");
    const std::vector<Layer> layers = read("t.cob");
    ASSERT_EQ(layers.size(), 1u);
    EXPECT_EQ(layers[0].name, "t_0");  // its mesh has no name
    expectPositions(layers[0], {5, 6, 7, 6, 6, 7, 5, 7, 7});
}

TEST_F(AssimpAdapterTest, DamagedFilesFailWithOneLogLine) {
    writeTextFile(dir.path("garbage.dae"), "<<<this is > not <COLLADA at all");
    writeTextFile(dir.path("empty.dae"), "");
    writeTextFile(dir.path("noscene.dae"), "<?xml version=\"1.0\"?><COLLADA version=\"1.4.1\"><asset/></COLLADA>");
    // Cut inside a facet, and cut after a whole facet (no "endsolid").
    const std::string stl =
        "solid cut\nfacet normal 0 0 1\n outer loop\n  vertex 0 0 0\n  vertex 1 0 0\n"
        "  vertex 0 1 0\n endloop\nendfacet\n";
    writeTextFile(dir.path("cut1.stl"), stl.substr(0, 60));
    writeTextFile(dir.path("cut2.stl"), stl);
    // A binary STL announcing two faces and holding one.
    writeTextFile(dir.path("cut3.stl"), std::string(80, 'b') + std::string("\x02\0\0\0", 4) + std::string(50, '\0'));
    // A whole LINE, then a cut inside the next entity: Assimp would keep the line.
    writeTextFile(dir.path("cut.dxf"),
                  "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nL\n10\n1\n20\n2\n30\n3\n11\n4\n21\n5\n"
                  "31\n6\n0\nLINE\n8\nL\n10\n1\n");
    // Assimp 5.2 dies on a float_array without its count: the read must survive it.
    std::string noCount = collada("", {kTriangle}, node("n", instance("tri")));
    const std::string counted = "<float_array id=\"g0-pos-array\" count=\"9\">";
    ASSERT_NE(noCount.find(counted), std::string::npos);
    noCount.replace(noCount.find(counted), counted.size(), "<float_array id=\"g0-pos-array\">");
    writeTextFile(dir.path("nocount.dae"), noCount);

    for (const char* name : {"garbage.dae", "empty.dae", "noscene.dae", "cut1.stl", "cut2.stl", "cut3.stl", "cut.dxf",
                             "nocount.dae", "missing.dae"}) {
        SCOPED_TRACE(name);
        expectReadFails(name);
    }
    EXPECT_TRUE(EngineFixtureGuard::logContains("endsolid"));
}

TEST_F(AssimpAdapterTest, AReadStillRunningAtItsTimeLimitIsStoppedAndFails) {
    writeTextFile(dir.path("tri.dae"), collada("", {kTriangle}, node("n", instance("tri"))));
    struct Hang {
        Hang() {
            engine::assimpReadHooks().timeLimitSeconds = 0.5;
            engine::assimpReadHooks().inChild = [] {
                while (true) ::pause();
            };
        }
        ~Hang() { engine::assimpReadHooks() = {}; }
    } hang;
    const auto start = std::chrono::steady_clock::now();
    expectReadFails("tri.dae");
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_GE(seconds, 0.5);
    EXPECT_LT(seconds, 5);
    EXPECT_TRUE(EngineFixtureGuard::logContains("did not finish it within 0.5 s and was stopped"))
        << EngineFixtureGuard::logLines().back();
    // The child was killed and reaped: none is left behind.
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

// ---------------------------------------------------------------- writing

class AssimpWriteTest : public AssimpAdapterTest {
protected:
    std::vector<Layer> layers;

    void SetUp() override {
        layers.resize(4);
        Layer& roof = layers[0];
        roof.name = "Roof_1";
        roof.positions = {0, 0, 10, 4, 0, 10, 4, 3, 12, 0, 3, 12};
        roof.triangles = {0, 1, 2, 0, 2, 3};
        roof.texCoords = {0, 0, 1, 0, 1, 1, 0, 1};
        roof.texturePath = dir.path("Roof.png");
        writeTextFile(roof.texturePath, "png");
        Layer& wall = layers[1];
        wall.name = "Wall";
        wall.positions = {0, 0, 0, 4, 0, 0, 4, 0, 10};
        wall.triangles = {0, 1, 2};
        wall.diffuse[0] = 0.5f;
        wall.diffuse[1] = 0.25f;
        wall.diffuse[2] = 1.0f;
        Layer& hidden = layers[2];
        hidden.name = "Hidden";
        hidden.positions = {9, 9, 9, 8, 9, 9, 9, 8, 9};
        hidden.triangles = {0, 1, 2};
        hidden.outputFlag = false;
        Layer& edges = layers[3];
        edges.name = "Edges";
        edges.lineVertices = {3612000.456, 700000.125, 1, 3612001.5, 700000.125, 1, 3612001.5, 700002.25, 1};
        edges.lineSegments = {0, 1, 1, 2};
    }
};

TEST_F(AssimpWriteTest, DaeReadsBackAsWritten) {
    const std::string out = dir.path("out.dae");
    ASSERT_TRUE(WriteModelWithAssimp(out, AT3D_WRITE_DAE, layers, "Zorvex64 test"));
    const std::string text = readTextFile(out);
    EXPECT_NE(text.find("<authoring_tool>Zorvex64 test</authoring_tool>"), std::string::npos);
    EXPECT_NE(text.find("<init_from>Roof.png</init_from>"), std::string::npos);  // beside the file: relative
    EXPECT_EQ(text.find("Hidden"), std::string::npos);                           // output flag off
    EXPECT_EQ(text.find("Edges"), std::string::npos);                            // lines only: no place for them here

    const std::vector<Layer> back = read("out.dae");
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(back[0].name, "out_Roof_1");
    EXPECT_EQ(back[1].name, "out_Wall");
    for (int i = 0; i < 2; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(back[i].faceCount(), layers[i].faceCount());
        // Joined vertices may come back in another order: compare the corners face by face.
        for (std::size_t f = 0; f < layers[i].faceCount(); ++f)
            for (int k = 0; k < 3; ++k)
                for (int c = 0; c < 3; ++c)
                    EXPECT_NEAR(back[i].positions[3 * back[i].triangles[3 * f + k] + c],
                                layers[i].positions[3 * layers[i].triangles[3 * f + k] + c], 1e-4);
    }
    EXPECT_EQ(back[0].texturePath, dir.path("Roof.png"));
    EXPECT_EQ(back[0].texCoords.size(), 2 * back[0].vertexCount());
    EXPECT_FLOAT_EQ(back[1].diffuse[0], 0.5f);
    EXPECT_FLOAT_EQ(back[1].diffuse[1], 0.25f);
    EXPECT_FLOAT_EQ(back[1].diffuse[2], 1.0f);
}

TEST_F(AssimpWriteTest, TextureOutsideTheOutputFolderIsNamedAbsolutely) {
    fs::create_directories(dir.path("export"));
    const std::string out = dir.path("export/out.dae");
    ASSERT_TRUE(WriteModelWithAssimp(out, AT3D_WRITE_DAE, layers, "p"));
    EXPECT_NE(
        readTextFile(out).find("<init_from>" + fs::weakly_canonical(dir.path("Roof.png")).string() + "</init_from>"),
        std::string::npos);
    std::vector<Layer> back;
    ASSERT_TRUE(ReadModelWithAssimp(out, back));
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(fs::weakly_canonical(back[0].texturePath), fs::weakly_canonical(dir.path("Roof.png")));
}

TEST_F(AssimpWriteTest, StlThreeDsAndDxfKeepTheTriangleCount) {
    ASSERT_TRUE(WriteModelWithAssimp(dir.path("out.stl"), AT3D_WRITE_STL, layers, "Zorvex64"));
    ASSERT_TRUE(WriteModelWithAssimp(dir.path("out.3ds"), AT3D_WRITE_3DS, layers, "Zorvex64"));
    ASSERT_TRUE(WriteModelWithAssimp(dir.path("out.dxf"), AT3D_WRITE_DXF, layers, "Zorvex64 test"));

    const std::string stl = readTextFile(dir.path("out.stl"));
    EXPECT_EQ(stl.rfind("solid Zorvex64\n", 0), 0u);
    EXPECT_NE(stl.find("endsolid Zorvex64"), std::string::npos);
    // The wall stands in the x-z plane: its facet normal is exactly -y.
    EXPECT_NE(stl.find("facet normal 0 -1 0\n"), std::string::npos);
    EXPECT_EQ(stl.find("vertex 9 9 9"), std::string::npos);
    // Two faces folded at a shared edge keep their own normals (no smoothing across the fold).
    Layer fold;
    fold.name = "Fold";
    fold.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    fold.triangles = {0, 1, 2, 0, 3, 1};
    ASSERT_TRUE(WriteModelWithAssimp(dir.path("fold.stl"), AT3D_WRITE_STL, {fold}, "fold"));
    const std::string foldText = readTextFile(dir.path("fold.stl"));
    EXPECT_NE(foldText.find("facet normal 0 0 1\n"), std::string::npos) << foldText;
    EXPECT_NE(foldText.find("facet normal 0 1 0\n"), std::string::npos) << foldText;

    const std::vector<Layer> fromStl = read("out.stl");
    EXPECT_EQ(totalFaces(fromStl), 3u);
    const std::vector<Layer> from3ds = read("out.3ds");
    EXPECT_EQ(totalFaces(from3ds), 3u);
    // 3DS is read without Assimp's turn to Y-up: the roof stays at z 10..12.
    ASSERT_EQ(from3ds.size(), 2u);
    EXPECT_EQ(from3ds[0].name, "out_0");  // Assimp names 3DS meshes by number only
    for (std::size_t v = 0; v < from3ds[0].vertexCount(); ++v) {
        EXPECT_GE(from3ds[0].positions[3 * v + 2], 10.0);
        EXPECT_LE(from3ds[0].positions[3 * v + 2], 12.0);
    }

    const std::string dxf = readTextFile(dir.path("out.dxf"));
    EXPECT_EQ(dxf.rfind("999\nZorvex64 test\n", 0), 0u);
    EXPECT_NE(dxf.find("\n 10\n3612000.456\n"), std::string::npos);  // written in double
    EXPECT_EQ(dxf.find("Hidden"), std::string::npos);
    const std::vector<Layer> fromDxf = read("out.dxf");
    EXPECT_EQ(totalFaces(fromDxf), 3u);
    const Layer* edges = layerNamed(fromDxf, "Edges");
    ASSERT_NE(edges, nullptr);
    EXPECT_EQ(edges->lineSegments.size(), 4u);
    const Layer* wall = layerNamed(fromDxf, "Wall");
    ASSERT_NE(wall, nullptr);
    expectPositions(*wall, {0, 0, 0, 4, 0, 0, 4, 0, 10});
}

TEST_F(AssimpWriteTest, FailedWritesLeaveNoFileBehind) {
    // A folder that does not exist.
    const std::string nowhere = dir.path("no/such/folder/out.dae");
    EXPECT_FALSE(WriteModelWithAssimp(nowhere, AT3D_WRITE_DAE, layers, "p"));
    EXPECT_FALSE(fs::exists(dir.path("no")));
    EXPECT_TRUE(EngineFixtureGuard::logContains(nowhere));

    // Nothing to write, a type not written here, a broken layer: the old file stays as it was.
    const std::string target = dir.path("keep.dae");
    writeTextFile(target, "old contents");
    std::vector<Layer> allOff = layers;
    for (Layer& layer : allOff) layer.outputFlag = false;
    std::vector<Layer> broken = layers;
    broken[1].triangles = {0, 1, 3};  // index 3 of 3 vertices
    const std::size_t logBefore = EngineFixtureGuard::logLines().size();
    EXPECT_FALSE(WriteModelWithAssimp(target, AT3D_WRITE_DAE, allOff, "p"));
    EXPECT_FALSE(WriteModelWithAssimp(target, AT3D_WRITE_OBJ, layers, "p"));
    EXPECT_FALSE(WriteModelWithAssimp(target, AT3D_WRITE_DAE, broken, "p"));
    EXPECT_EQ(EngineFixtureGuard::logLines().size(), logBefore + 3);
    EXPECT_EQ(readTextFile(target), "old contents");

    // The last step fails (a folder cannot be replaced by a file): the temporary file goes.
    fs::create_directories(dir.path("folder.dae"));
    EXPECT_FALSE(WriteModelWithAssimp(dir.path("folder.dae"), AT3D_WRITE_DAE, layers, "p"));
    EXPECT_TRUE(fs::is_directory(dir.path("folder.dae")));
    EXPECT_EQ(folderEntries(dir.root()), (std::vector<std::string>{"Roof.png", "folder.dae", "keep.dae"}));
    fs::remove(dir.path("folder.dae"));

    // A good write puts a new file in place (a second name of the old file keeps the old
    // contents, so it was not rewritten in place) and leaves no temporary file beside it.
    fs::create_hard_link(target, dir.path("link.dae"));
    EXPECT_TRUE(WriteModelWithAssimp(target, AT3D_WRITE_STL, layers, "p"));
    EXPECT_EQ(readTextFile(target).rfind("solid p\n", 0), 0u);
    EXPECT_EQ(readTextFile(dir.path("link.dae")), "old contents");
    EXPECT_EQ(folderEntries(dir.root()), (std::vector<std::string>{"Roof.png", "keep.dae", "link.dae"}));
}

}  // namespace
