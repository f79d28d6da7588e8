// The OBJ reader through the engine's read call.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <string>

#include "scene/engine/EngineState.h"
#include "scene/engine/ObjReader.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

using testsupport::EngineFixtureGuard;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

int readObj(const std::string& path) { return At3d_Read(AT3D_READ_OBJ, path.c_str(), 1); }

std::vector<std::string> layerNames() {
    std::vector<std::string> names;
    char name[AT3D_NAME_SIZE];
    for (void* h = At3d_GetNextLayer(nullptr, name); h; h = At3d_GetNextLayer(h, name)) names.emplace_back(name);
    return names;
}

const char* QUAD =
    "v 3612000.456 663000.125 10.5\n"
    "v 3612010.456 663000.125 10.5\n"
    "v 3612010.456 663010.125 10.5\n"
    "v 3612000.456 663010.125 10.5\n";

}  // namespace

TEST(ObjReader, SevenDigitCoordinatesAreReadExactly) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), std::string(QUAD) + "f 1 2 3 4\n");
    ASSERT_EQ(readObj(dir.path("m.obj")), 1);
    double v[3];
    ASSERT_EQ(At3d_GetVertex(0, "m", v), 1);
    EXPECT_EQ(v[0], 3612000.456);
    EXPECT_EQ(v[1], 663000.125);
    EXPECT_EQ(v[2], 10.5);
    double minMax[6];
    At3d_GetObjectMinMax(minMax);
    EXPECT_EQ(minMax[1], 3612010.456);
}

TEST(ObjReader, GroupsBecomeLayersAndPolygonsBecomeFans) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("site.obj"),
                  std::string(QUAD) +
                      "v 0 0 0\n"
                      "f 1 2 3\n"              // before any group: the file's name
                      "g roof\n"
                      "f 1 2 3 4\n"            // quad: two triangles
                      "g walls\n"
                      "f 1 2 3 4 5\n"          // pentagon: three triangles
                      "g roof\n"
                      "f 1 3 4\n");            // back to roof: same layer
    ASSERT_EQ(readObj(dir.path("site.obj")), 1);
    EXPECT_EQ(layerNames(), (std::vector<std::string>{"site", "roof", "walls"}));
    EXPECT_EQ(At3d_FaceCount("site"), 1);
    EXPECT_EQ(At3d_FaceCount("roof"), 3);
    EXPECT_EQ(At3d_FaceCount("walls"), 3);
    EXPECT_EQ(At3d_VertexCount("roof"), 4);
    EXPECT_EQ(At3d_VertexCount("walls"), 5);
}

TEST(ObjReader, AGroupDrawnWithTwoMaterialsGivesTwoLayers) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"),
                  std::string(QUAD) + "g house\nusemtl tiles\nf 1 2 3\nusemtl plaster\nf 1 3 4\n");
    ASSERT_EQ(readObj(dir.path("m.obj")), 1);
    EXPECT_EQ(layerNames(), (std::vector<std::string>{"house", "house_plaster"}));
}

TEST(ObjReader, CornerFormsNegativeIndicesAndCrLfAreAccepted) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"),
                  "v 0 0 0\r\nv 1 0 0\r\nv 1 1 0\r\nvt 0 0\r\nvt 1 0\r\nvt 1 1\r\nvn 0 0 1\r\n"
                  "f 1/1/1 2/2/1 3/3/1\r\nf -3//1 -2//1 -1//1\r\nf -3/-3 -2/-2 -1/-1\r\n");
    ASSERT_EQ(readObj(dir.path("m.obj")), 1);
    EXPECT_EQ(At3d_FaceCount("m"), 3);
    // (vertex, texcoord) pairs: three with texcoords, three without.
    EXPECT_EQ(At3d_VertexCount("m"), 6);
}

TEST(ObjReader, TexturePathWithBackslashAndOtherCaseIsFound) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("Textures/Roof_Atlas.JPG"), "not really a jpeg");
    writeTextFile(dir.path("m.MTL"), "newmtl atlas\nKd 0.5 0.25 1\nmap_Kd .\\textures\\roof_atlas.jpg\n");
    writeTextFile(dir.path("m.obj"), std::string("mtllib m.mtl\n") + QUAD + "vt 0 0\nusemtl atlas\nf 1/1 2/1 3/1\n");
    ASSERT_EQ(readObj(dir.path("m.obj")), 1);
    char texture[AT3D_PATH_SIZE];
    ASSERT_EQ(At3d_GetTextureName("m", texture), 1);
    EXPECT_EQ(std::string(texture), dir.path("Textures/Roof_Atlas.JPG"));
    const engine::Layer& layer = engine::engineState().layers.at(0);
    EXPECT_FLOAT_EQ(layer.diffuse[1], 0.25f);
}

TEST(ObjReader, MissingMaterialLibraryOrTextureIsLoggedAndTheModelStillLoads) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("a.obj"), std::string("mtllib gone.mtl\n") + QUAD + "usemtl x\nf 1 2 3\n");
    ASSERT_EQ(readObj(dir.path("a.obj")), 1);
    EXPECT_TRUE(EngineFixtureGuard::logContains("material library not found: gone.mtl"));

    writeTextFile(dir.path("b.mtl"), "newmtl x\nmap_Kd missing.jpg\n");
    writeTextFile(dir.path("b.obj"), std::string("mtllib b.mtl\n") + QUAD + "usemtl x\nf 1 2 3\n");
    ASSERT_EQ(readObj(dir.path("b.obj")), 1);
    EXPECT_TRUE(EngineFixtureGuard::logContains("texture not found: missing.jpg"));
    char texture[AT3D_PATH_SIZE];
    EXPECT_EQ(At3d_GetTextureName("b", texture), 0);
}

TEST(ObjReader, BadFilesGiveZeroAndALogLineAndKeepTheSceneUsable) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    struct Case {
        const char* name;
        std::string text;
        const char* logged;
    };
    const Case cases[] = {
        {"truncated.obj", std::string(QUAD) + "f 1 2 3\nf 2 3 9\n", "refers to vertex 9 of 4"},
        {"cut.obj", std::string(QUAD) + "f 1 2", "fewer than three corners at line 5"},
        {"shortvertex.obj", "v 1 2 3\nv 1.0 2.0\n", "bad vertex at line 2"},
        {"garbage.obj", "v abc def ghi\n", "bad vertex at line 1"},
        // Numbers that parse but stand nowhere: the bounds would become infinite.
        {"nan.obj", std::string(QUAD) + "v 1 nan 3\nf 1 2 3\n", "not a finite number at line 5"},
        {"huge.obj", "v 1e400 2 3\n", "not a finite number at line 1"},
        {"infuv.obj", std::string(QUAD) + "vt 0.5 inf\nf 1 2 3\n", "texture coordinate that is not a finite number"},
        {"empty.obj", "", "no faces or lines"},
        {"zero.obj", std::string(QUAD) + "f 0 1 2\n", "bad face at line 5"},
    };
    for (const Case& c : cases) {
        writeTextFile(dir.path(c.name), c.text);
        EXPECT_EQ(readObj(dir.path(c.name)), 0) << c.name;
        EXPECT_TRUE(EngineFixtureGuard::logContains(c.logged)) << c.name << " should log: " << c.logged;
    }
    EXPECT_EQ(readObj(dir.path("does-not-exist.obj")), 0);
    EXPECT_TRUE(EngineFixtureGuard::logContains("cannot open"));
    writeTextFile(dir.path("good.obj"), std::string(QUAD) + "f 1 2 3\n");
    EXPECT_EQ(readObj(dir.path("good.obj")), 1);
}

// A file cut short, or grown, between its opening and the reading of its
// text is refused with a log line; read through a mapping, the cut one
// would have killed the process with SIGBUS.
TEST(ObjReader, AFileThatChangesSizeWhileItIsReadIsRefused) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    std::string text(QUAD);
    for (int k = 0; k < 2000; ++k) text += "f 1 2 3\n";
    writeTextFile(dir.path("m.obj"), text);
    struct Restore {
        ~Restore() { engine::objReadHooks() = {}; }
    } restore;
    engine::objReadHooks().opened = [](const std::string& path) { ASSERT_EQ(::truncate(path.c_str(), 90), 0); };
    EXPECT_EQ(readObj(dir.path("m.obj")), 0);
    EXPECT_TRUE(EngineFixtureGuard::logContains(dir.path("m.obj") + " changed size while it was read"));
    writeTextFile(dir.path("n.obj"), text);
    engine::objReadHooks().opened = [](const std::string& path) {
        std::FILE* f = std::fopen(path.c_str(), "a");
        std::fputs("f 1 2 3\n", f);
        std::fclose(f);
    };
    EXPECT_EQ(readObj(dir.path("n.obj")), 0);
    EXPECT_TRUE(EngineFixtureGuard::logContains(dir.path("n.obj") + " changed size while it was read"));
    engine::objReadHooks() = {};
    EXPECT_EQ(readObj(dir.path("n.obj")), 1);
}

TEST(ObjReader, LineElementsBecomeTwoDimensionalVertices) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), std::string(QUAD) + "g outline\nl 1 2 3 4 1\n");
    ASSERT_EQ(readObj(dir.path("m.obj")), 1);
    EXPECT_EQ(At3d_2DVertexCount("outline"), 5);
    EXPECT_EQ(At3d_FaceCount("outline"), 0);
    double v[3];
    ASSERT_EQ(At3d_2DGetVertex(2, "outline", v), 1);
    EXPECT_EQ(v[0], 3612010.456);
}

// A file large enough to be parsed in several shares, with relative
// references and a group change around the middle, must read as one.
TEST(ObjReader, LargeFileSplitAcrossThreadsReadsAsOne) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    std::string text;
    const int quads = 40000;
    char line[128];
    for (int q = 0; q < quads; ++q) {
        if (q == quads / 2) text += "g second\n";
        const double x = q * 2.0;
        for (int c = 0; c < 4; ++c) {
            std::snprintf(line, sizeof line, "v %.3f %.3f %.3f\nvt %.2f %.2f\n", 178000.0 + x + (c == 1 || c == 2),
                          663000.0 + (c >= 2), 50.0 + q * 0.001, c * 0.25, q * 1e-5);
            text += line;
        }
        text += "f -4/-4 -3/-3 -2/-2 -1/-1\n";
    }
    ASSERT_GT(text.size(), 2u << 20);
    writeTextFile(dir.path("big.obj"), text);
    ASSERT_EQ(readObj(dir.path("big.obj")), 1);
    EXPECT_EQ(At3d_LayerCount(), 2);
    EXPECT_EQ(At3d_FaceCount("big") + At3d_FaceCount("second"), quads * 2);
    EXPECT_EQ(At3d_FaceCount("second"), quads);
    double minMax[6];
    At3d_GetObjectMinMax(minMax);
    EXPECT_DOUBLE_EQ(minMax[0], 178000.0);
    EXPECT_DOUBLE_EQ(minMax[1], 178000.0 + (quads - 1) * 2.0 + 1);
    EXPECT_NEAR(minMax[5], 50.0 + (quads - 1) * 0.001, 1e-9);
    // Every quad stays a unit square: its first triangle spans x..x+1.
    const engine::Layer& second = engine::engineState().layers.at(1);
    for (std::size_t f = 0; f < second.faceCount(); f += 2) {
        const double* a = &second.positions[second.triangles[f * 3] * 3];
        const double* b = &second.positions[second.triangles[f * 3 + 1] * 3];
        ASSERT_DOUBLE_EQ(b[0] - a[0], 1.0) << "face " << f;
        ASSERT_DOUBLE_EQ(b[2], a[2]) << "face " << f;
    }
}
