// zv-sitegen OUTFOLDER: writes the procedural demo site (DemoSite.obj/.mtl/.jpg,
// offset.txt, DemoSite.prj, Customer.TXT) into OUTFOLDER.

#include "AtlasPainter.h"
#include "Buildings.h"
#include "Mesh.h"
#include "ObjWriter.h"
#include "SiteFiles.h"
#include "SiteLayout.h"
#include "Terrain.h"
#include "Trees.h"

#include <QCoreApplication>
#include <QDir>
#include <QImageWriter>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

using namespace sitegen;

namespace {

void printLevels(const char* name, const BuildingLevels& l)
{
    std::printf("  %-18s pad %.3f  floor %.3f  roof %.3f  top %.3f\n", name, l.padZ, l.floorZ, l.roofZ, l.topZ);
}

void printBounds(const Mesh& mesh)
{
    Vec3 lo = mesh.positions().front(), hi = lo;
    for (const Vec3& p : mesh.positions()) {
        lo = {std::min(lo.x, p.x), std::min(lo.y, p.y), std::min(lo.z, p.z)};
        hi = {std::max(hi.x, p.x), std::max(hi.y, p.y), std::max(hi.z, p.z)};
    }
    std::printf("  bounds x %.3f..%.3f  y %.3f..%.3f  z %.3f..%.3f\n", lo.x, hi.x, lo.y, hi.y, lo.z, hi.z);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // lets Qt find its image format plugins
    if (argc != 2) {
        std::fprintf(stderr, "usage: zv-sitegen OUTFOLDER\n");
        return 2;
    }
    const std::string folder = argv[1];
    if (!QDir().mkpath(QString::fromStdString(folder))) {
        std::fprintf(stderr, "zv-sitegen: cannot create %s\n", folder.c_str());
        return 1;
    }
    const auto in = [&](const char* name) { return folder + "/" + name; };

    try {
        const TerrainModel terrain;
        Mesh mesh;
        buildTerrain(mesh, terrain);
        const BuildingLevels house = buildHouse(mesh, terrain);
        const BuildingLevels flat = buildFlatRoofBuilding(mesh, terrain);
        const BuildingLevels block = buildTallBlock(mesh, terrain);
        unsigned treeSeed = kSiteSeed + 10;
        for (const TreeSpec& tree : kTrees)
            std::printf("  %-18s canopy top %.3f\n", tree.group, buildTree(mesh, terrain, tree, treeSeed++));

        const std::string header = "Zorvex64 demo site generator (zv-sitegen), seed " + std::to_string(kSiteSeed);
        const ObjMaterial material{"DemoSite.mtl", "DemoSite_atlas", "DemoSite.jpg"};
        writeObj(in("DemoSite.obj"), mesh, material, header);
        writeMtl(in("DemoSite.mtl"), material, header);

        QImageWriter writer(QString::fromStdString(in("DemoSite.jpg")), "jpg");
        writer.setQuality(85);
        if (!writer.write(paintAtlas(kSiteSeed + 2))) {
            std::fprintf(stderr, "zv-sitegen: cannot write the atlas: %s\n", writer.errorString().toUtf8().constData());
            return 1;
        }

        writeOffsetFile(in("offset.txt"), 178500.0, 663500.0, 0.0);
        writeProjectionFile(in("DemoSite.prj"), 2039);
        writeCustomerFile(in("Customer.TXT"));

        std::printf("zv-sitegen: %zu vertices, %zu triangles in %zu groups\n", mesh.positions().size(),
                    mesh.triangleCount(), mesh.groups().size());
        printBounds(mesh);
        printLevels("house", house);
        printLevels("flatroof_building", flat);
        printLevels("tall_block", block);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zv-sitegen: %s\n", e.what());
        return 1;
    }
    return 0;
}
