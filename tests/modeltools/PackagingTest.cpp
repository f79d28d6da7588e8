// "Zip the model" on a small site built here: what each of the four forms
// puts in the archive and under which names, the reduced textures, the
// messages for missing files, and the zip command.
#include <gtest/gtest.h>
#include <turbojpeg.h>
#include <zip.h>

#include <QDir>
#include <QFile>
#include <QString>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "app/session/MainFormState.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/PackageModel.h"
#include "modeltools/TextureReduction.h"
#include "support/CliRunner.h"
#include "ArchiveCheck.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

struct Rgb {
    int r, g, b;
};

void writeJpeg(const std::string& path, int width, int height, const std::function<Rgb(int x, int y)>& colour) {
    std::vector<unsigned char> rgb(std::size_t(width) * height * 3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Rgb c = colour(x, y);
            unsigned char* p = &rgb[(std::size_t(y) * width + x) * 3];
            p[0] = static_cast<unsigned char>(c.r);
            p[1] = static_cast<unsigned char>(c.g);
            p[2] = static_cast<unsigned char>(c.b);
        }
    tjhandle h = tjInitCompress();
    unsigned char* jpeg = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(tjCompress2(h, rgb.data(), width, 0, height, TJPF_RGB, &jpeg, &size, TJSAMP_444, 95, 0), 0);
    writeTextFile(path, std::string(reinterpret_cast<char*>(jpeg), size));
    tjFree(jpeg);
    tjDestroy(h);
}

struct Decoded {
    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
    Rgb at(int x, int y) const {
        const unsigned char* p = &rgb[(std::size_t(y) * width + x) * 3];
        return {p[0], p[1], p[2]};
    }
};

Decoded decodeJpeg(const std::string& bytes) {
    Decoded d;
    tjhandle h = tjInitDecompress();
    int sub = 0, space = 0;
    auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    if (tjDecompressHeader3(h, data, bytes.size(), &d.width, &d.height, &sub, &space) == 0) {
        d.rgb.resize(std::size_t(d.width) * d.height * 3);
        tjDecompress2(h, data, bytes.size(), d.rgb.data(), d.width, 0, d.height, TJPF_RGB, 0);
    }
    tjDestroy(h);
    return d;
}

// The first value of the first quantisation table: the luminance DC step.
// At quality 70 the baseline table's 16 is scaled by 200 - 2 * 70 = 60 %: 10.
int firstQuantStep(const std::string& jpeg) {
    const auto at = jpeg.find("\xFF\xDB");
    return at == std::string::npos ? -1 : static_cast<unsigned char>(jpeg[at + 5]);
}

// A site as photogrammetry hands it over: a two-extension OBJ name, its
// material and picture, a projection, a tactical grid with a companion in
// upper case, and a catalogue of three pictures with its index.
class Packaging : public ::testing::Test {
protected:
    ScratchDir dir;
    ScriptedDialogService dialogs;
    std::string site;

    void SetUp() override {
        resetModelSession();
        resetModelToolHooks();
        resetMainFormState();
        resetSessionPaths();
        sessionPaths().ORVO_T = dir.path("tmp/");
        installDialogService(&dialogs);

        site = dir.path("site/");
        writeTextFile(site + "Site.tile.obj", "# made here\nmtllib Site.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
        writeTextFile(site + "Site.mtl", "newmtl m\nmap_Kd tex.jpg\n");
        writeJpeg(site + "tex.jpg", 16, 8, [](int, int) { return Rgb{90, 90, 90}; });
        writeTextFile(site + "Site.tile.prj", "PROJCS[\"x\"]\n");
        for (const char* ext : {".shp", ".shx", ".dbf", ".PRJ"}) writeTextFile(site + "TacticalG" + ext, ext);
        for (const char* name : {"oblixoblix.shp", "oblixoblix.shx", "a.JPG", "b.jpg", "c.JPG", "oblixoblix.rtree"})
            writeTextFile(site + "obl/c1/" + name, name);
        writeTextFile(site + "OblixOblix.txt", site + "obl/c1/oblixoblix.shp\n");
        modelSession().GlobalModelFileName = site + "Site.tile.obj";
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetModelToolHooks();
        resetSessionPaths();
    }
    QStringList messages() const {
        QStringList texts;
        for (const auto& q : dialogs.questions()) texts << q.text;
        return texts;
    }
};

const std::vector<std::string> kModelFiles{"Site.mtl",      "Site.tile.obj", "Site.tile.prj", "TacticalG.PRJ",
                                           "TacticalG.dbf", "TacticalG.shp", "TacticalG.shx", "tex.jpg"};

}  // namespace

TEST(StretchRgb, AveragesWhatItShrinksAndInterpolatesWhatItGrows) {
    // Width 4 to 2: pairs averaged. Height 1 to 2: the row repeated.
    const unsigned char row[] = {0, 0, 0, 100, 10, 1, 200, 20, 2, 50, 60, 70};
    EXPECT_EQ(StretchRgb(row, 4, 1, 2, 2),
              (std::vector<unsigned char>{50, 5, 1, 125, 40, 36, 50, 5, 1, 125, 40, 36}));
    // Width 3 to 2: each target covers 1.5 pixels, the middle one split: (0 + 45) / 1.5, (45 + 30) / 1.5.
    const unsigned char three[] = {0, 0, 0, 90, 90, 90, 30, 30, 30};
    EXPECT_EQ(StretchRgb(three, 3, 1, 2, 1), (std::vector<unsigned char>{30, 30, 30, 50, 50, 50}));
    // Height 2 to 4: centres at -0.25, 0.25, 0.75, 1.25 of the source, the ends held.
    const unsigned char column[] = {0, 0, 0, 100, 200, 40};
    EXPECT_EQ(StretchRgb(column, 1, 2, 1, 4),
              (std::vector<unsigned char>{0, 0, 0, 25, 50, 10, 75, 150, 30, 100, 200, 40}));
}

TEST_F(Packaging, NormalFormPacksTheModelsFilesUnderTheNameWithoutTwoExtensions) {
    const QString archive = CompressOBJ(PACK_NORMAL);
    EXPECT_EQ(archive.toStdString(), site + "Site.OBJ.ZIP");
    const auto entries = readArchive(archive.toStdString());
    EXPECT_EQ(entryNames(entries), kModelFiles);
    EXPECT_EQ(entries.at("tex.jpg").data, readTextFile(site + "tex.jpg"));
    EXPECT_TRUE(unzipAccepts(archive.toStdString()));
    EXPECT_EQ(messages(), QStringList{archive + "\nCreated"});
    EXPECT_FALSE(mainFormState().busyCursor);
}

TEST_F(Packaging, AnObjWithoutMtllibInItsFirst100LinesIsPackedAloneWithAMessage) {
    // 98 short lines and one of 120 characters, which the 80-character reads count twice:
    // the "mtllib" on line 100 is the 101st read.
    std::string obj;
    for (int i = 0; i < 98; ++i) obj += "# c\n";
    obj += "# " + std::string(117, 'x') + "\nmtllib Site.mtl\nv 0 0 0\n";
    writeTextFile(dir.path("lone/Lone.obj"), obj);
    writeTextFile(dir.path("lone/Site.mtl"), "map_Kd t.jpg\n");
    modelSession().GlobalModelFileName = dir.path("lone/Lone.obj");

    const QString archive = CompressOBJ(PACK_NORMAL);
    EXPECT_EQ(entryNames(readArchive(archive.toStdString())), std::vector<std::string>{"Lone.obj"});
    EXPECT_EQ(messages(), (QStringList{"Missing\n" + QString::fromStdString(dir.path("lone/")), archive + "\nCreated"}));
}

TEST(MaterialLibraryName, TakesTheLastHitTrimmedAndUnquotedWithin100Reads) {
    ScratchDir dir;
    std::string obj = "mtllib first.mtl\n";
    for (int i = 0; i < 98; ++i) obj += "# c\n";
    obj += "mtllib   \"second one.mtl\"  \nmtllib third.mtl\n";
    writeTextFile(dir.path("m.obj"), obj);
    EXPECT_EQ(MaterialLibraryName(QString::fromStdString(dir.path("m.obj"))), "second one.mtl");
}

TEST_F(Packaging, MissingPicturesAreNamedAndPackingGoesOn) {
    writeTextFile(site + "Site.mtl", "newmtl m\nmap_Kd gone.jpg\nnewmtl n\nmap_Kd tex.jpg\n");
    const QString archive = CompressOBJ(PACK_NORMAL);
    EXPECT_EQ(entryNames(readArchive(archive.toStdString())), kModelFiles);
    EXPECT_EQ(messages(), (QStringList{"Missing\n" + QString::fromStdString(site) + "gone.jpg", archive + "\nCreated"}));
}

TEST_F(Packaging, SmallFormStretchesAWideTextureToASquareInTheTemporaryFolder) {
    // Red on the left half, blue on the right: the stretch must keep them where they were.
    writeJpeg(site + "tex.jpg", 4097, 100, [](int x, int) { return x < 2048 ? Rgb{255, 0, 0} : Rgb{0, 0, 255}; });
    writeJpeg(site + "narrow.jpg", 4096, 8, [](int, int) { return Rgb{0, 255, 0}; });
    writeTextFile(site + "Site.mtl", "map_Kd tex.jpg\nmap_Kd narrow.jpg\n");
    const std::string original = readTextFile(site + "tex.jpg");

    const QString archive = CompressOBJ(PACK_SMALL_JPG);
    EXPECT_EQ(archive.toStdString(), site + "Site_small.OBJ.ZIP");
    const std::string reduced = readTextFile(dir.path("tmp/tex.jpg"));
    const Decoded picture = decodeJpeg(reduced);
    EXPECT_EQ(picture.width, 4096);
    EXPECT_EQ(picture.height, 4096);
    EXPECT_EQ(firstQuantStep(reduced), 10);
    for (const auto& [x, red] : std::vector<std::pair<int, bool>>{{10, true}, {1900, true}, {2200, false}, {4090, false}}) {
        const Rgb c = picture.at(x, 3000);
        EXPECT_NEAR(c.r, red ? 255 : 0, 10) << x;
        EXPECT_NEAR(c.b, red ? 0 : 255, 10) << x;
    }
    EXPECT_EQ(readTextFile(site + "tex.jpg"), original);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(dir.path("tmp/narrow.jpg"))));

    const auto entries = readArchive(archive.toStdString());
    EXPECT_EQ(entries.at("tex.jpg").data, reduced);
    EXPECT_EQ(entries.at("narrow.jpg").data, readTextFile(site + "narrow.jpg"));
    EXPECT_TRUE(unzipAccepts(archive.toStdString()));
}

TEST_F(Packaging, ObliquesFormAddsTheCatalogueWithoutItsIndex) {
    const QString archive = CompressOBJ(PACK_WITH_OBLIQUES);
    EXPECT_EQ(archive.toStdString(), site + "Site.OBJ.ZIP");
    std::vector<std::string> expected = kModelFiles;
    for (const char* name : {"a.JPG", "b.jpg", "c.JPG", "oblixoblix.shp", "oblixoblix.shx"})
        expected.push_back(std::string("obl/c1/") + name);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(entryNames(readArchive(archive.toStdString())), expected);
    EXPECT_TRUE(unzipAccepts(archive.toStdString()));
}

TEST_F(Packaging, EverySecondJpgKeepsOneOfThreeCataloguePictures) {
    const QString archive = CompressOBJ(PACK_EVERY_SECOND_JPG);
    std::vector<std::string> expected = kModelFiles;
    for (const char* name : {"b.jpg", "oblixoblix.shp", "oblixoblix.shx"}) expected.push_back(std::string("obl/c1/") + name);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(entryNames(readArchive(archive.toStdString())), expected);
}

TEST_F(Packaging, ACancelledPackLeavesTheOlderArchiveAsItWas) {
    writeTextFile(site + "Site.OBJ.ZIP", "an older archive");
    modelToolHooks().cancelled = [] { return true; };
    EXPECT_EQ(CompressOBJ(PACK_NORMAL), "");
    EXPECT_EQ(readTextFile(site + "Site.OBJ.ZIP"), "an older archive");
    EXPECT_EQ(QDir(QString::fromStdString(site)).entryList({"*.part"}, QDir::Files), QStringList{});
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(Packaging, WithoutAModelItAsksForOneAndACancelPacksNothing) {
    modelSession().GlobalModelFileName.clear();
    EXPECT_EQ(CompressOBJ(PACK_NORMAL), "");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].title, "Please select the OBJ  file (input)");
    EXPECT_EQ(dialogs.questions()[0].text, "OBJ  file(*.OBJ)|*.OBJ");
}

TEST_F(Packaging, TheZipCommandPrintsTheArchiveAndRefusesBadInput) {
    const auto run = [&](const std::string& args) {
        return testsupport::runCli(args, dir, "HOME=" + dir.path("home"));
    };
    const auto packed = run("zip " + site + "Site.tile.obj --form every-second");
    ASSERT_EQ(packed.exitCode, 0) << packed.err;
    EXPECT_EQ(packed.out, site + "Site.OBJ.ZIP\n");
    EXPECT_EQ(readArchive(site + "Site.OBJ.ZIP").count("obl/c1/b.jpg"), 1u);
    EXPECT_EQ(readArchive(site + "Site.OBJ.ZIP").count("obl/c1/a.JPG"), 0u);

    EXPECT_EQ(run("zip " + site + "Site.tile.obj --form tiny").exitCode, 2);
    EXPECT_EQ(run("zip").exitCode, 2);
    const auto missing = run("zip " + dir.path("none.obj"));
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_NE(missing.err.find("Missing\n" + dir.path("none.obj")), std::string::npos);
}
