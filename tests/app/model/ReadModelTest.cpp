// The open sequence of the viewer: side files, folders, frames, the comment,
// the home view and the first frame's texts.
#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "ModelOpenFixture.h"
#include "app/model/LayerTable.h"
#include "app/model/ModelComment.h"
#include "app/model/ReadModel.h"
#include "app/model/TextureLimit.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelStore.h"
#include "app/services/SunGlobalLog.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

// A square of 10 m at z 10 to 20, centred on (105, 205, 15) in file coordinates.
const char* SQUARE =
    "# Model\n"
    "v 100 200 10\nv 110 200 10\nv 110 210 20\nv 100 210 20\n"
    "f 1 2 3 4\n";

class ReadModel : public ModelOpenFixture {
protected:
    void open(const std::string& path) {
        startupState().GlobalARGVforDebug = path;
        ReadModelBtnClick();
    }
    bool exists(const std::string& path) { return QFileInfo::exists(QString::fromStdString(path)); }
};

// Records the thumbnails asked of the renderer.
struct ThumbnailRecorder {
    static std::string path;
    static int width, height;
    static int save(void*, const char* p, int w, int h) {
        path = p;
        width = w;
        height = h;
        return 1;
    }
};
std::string ThumbnailRecorder::path;
int ThumbnailRecorder::width = 0;
int ThumbnailRecorder::height = 0;

}  // namespace

TEST_F(ReadModel, OffsetTxtCountsOverZuzAndTheHomeViewIsInTheMapFrame) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    writeTextFile(dir.path("site/m.zuz"), "1 2 3\n");
    writeTextFile(dir.path("site/offset.txt"), "100,200,30\n");
    // An old home view in another case goes before the read.
    writeTextFile(dir.path("site/home.VPT"), "1 30\n0 0 0\n90 0 0\n");
    open(dir.path("site/m.obj"));

    ASSERT_EQ(engineSession().fileLoaded, 1);
    const double* offset = frameState().Offset;
    EXPECT_EQ(offset[0], 100);
    EXPECT_EQ(offset[1], 200);
    EXPECT_EQ(offset[2], 30);
    EXPECT_FALSE(exists(dir.path("site/home.VPT")));
    // The first view: from the top, turned 45 degrees; its view point the
    // model's centre, 105 + 100, 205 + 200, 15 + 30 in the map frame.
    double distance = 0, fov = 0;
    At3d_GetCameraDistance(&distance);
    At3d_GetCameraFieldOfView(&fov);
    char line1[64];
    std::snprintf(line1, sizeof line1, "%lf %lf\n", distance, fov);
    EXPECT_EQ(readTextFile(dir.path("site/Home.vpt")),
              std::string(line1) + "205.000000 405.000000 45.000000\n45.000000 0.000000 0.000000\n");
    EXPECT_GT(distance, 0);
    EXPECT_EQ(mainFormState().statusTexts[3], "Azimuth 0");
    EXPECT_EQ(mainFormState().LabelForHelpCaption, REGULAR_HELP);
}

TEST_F(ReadModel, FoldersBesideTheModelAreMadeAndTheLastFolderKept) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    writeTextFile(dir.path("site/measurements/old.MES"), "");
    writeTextFile(dir.path("site/Panels/old.dae"), "");
    open(dir.path("site/m.obj"));
    const ModelSession& model = modelSession();
    // An existing folder in another case is the one used.
    EXPECT_EQ(model.MEASUREMENTSFOLDER, dir.path("site/measurements/"));
    EXPECT_EQ(model.SCREENSHOTSFOLDER, dir.path("site/Screenshots/"));
    // The window's open points the panel store at the model, as the commands do.
    EXPECT_EQ(panelStore().PANELSFOLDER.toStdString(), dir.path("site/Panels/"));
    EXPECT_EQ(panelStore().SHADINGFOLDER.toStdString(), dir.path("site/Panels/SHADING/"));
    EXPECT_TRUE(exists(model.SCREENSHOTSFOLDER));
    EXPECT_TRUE(exists(panelStore().SHADINGFOLDER.toStdString()));
    EXPECT_EQ(model.GlobalONCFileName, dir.path("site/m.ONC"));
    EXPECT_EQ(model.TodeleteVerticesFile, dir.path("site/m_Todelete.txt"));
    OrvoIni saved;
    saved.load(startupState().ORVOINIFILENAME);
    EXPECT_EQ(saved.readString("Viewer3D", "Last Folder", ""), dir.path("site/"));
}

TEST_F(ReadModel, StatusTextAndRunLogTellTheModel) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    writeTextFile(dir.path("site/offset.txt"), "1000 2000 0\n");
    runLog().fp_prt = std::fopen(dir.path("run.log").c_str(), "w");
    open(dir.path("site/m.obj"));
    EXPECT_EQ(StatusStripText(), " 4 vertices and 2 faces in 1 layers   ");
    resetRunLog();
    const std::string log = readTextFile(dir.path("run.log"));
    EXPECT_NE(log.find("Layers 1 Vertices 4 Faces 2\n"), std::string::npos) << log;
    EXPECT_NE(log.find("Xmin, Xmax 1100.00 1110.00\nYmin, Ymax 2200.00 2210.00\nZmin, Zmax 10.00 20.00\n"),
              std::string::npos)
        << log;
}

TEST_F(ReadModel, WithoutAPrjTheOperatorIsAskedForOne) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    open(dir.path("site/m.obj"));
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions()[0].title, "Open a similar (in same coordinate system) PRJ file (input)");
    // Cancelled: the open goes on without a system.
    EXPECT_EQ(engineSession().fileLoaded, 1);
    EXPECT_EQ(geoState().GlobalCS, nullptr);
}

TEST_F(ReadModel, AColladaModelWithItsEpsgNeedsNoPrj) {
    // A COLLADA model written by the engine, then given an EPSG block.
    writeTextFile(dir.path("make/m.obj"), SQUARE);
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(dir.path("site"))));
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, dir.path("make/m.obj").c_str(), 1), 1);
    ASSERT_EQ(At3d_Write(AT3D_WRITE_DAE, dir.path("site/tagged.dae").c_str(), 1), 1);
    ASSERT_EQ(At3d_Write(AT3D_WRITE_DAE, dir.path("site/plain.dae").c_str(), 1), 1);
    ASSERT_TRUE(EmbedEPSGInDAE(QString::fromStdString(dir.path("site/tagged.dae")), 2039));

    open(dir.path("site/tagged.dae"));
    EXPECT_EQ(engineSession().fileLoaded, 1);
    EXPECT_TRUE(dialogs.questions().empty());
    EXPECT_EQ(geoState().EPSG, 2039);
    EXPECT_NE(geoState().GlobalCS, nullptr);

    open(dir.path("site/plain.dae"));
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions()[0].title, "Open a similar (in same coordinate system) PRJ file (input)");
    EXPECT_EQ(geoState().GlobalCS, nullptr);
}

TEST_F(ReadModel, AMissingModelIsReportedAndNothingIsDrawn) {
    writeTextFile(dir.path("site/other.obj"), SQUARE);
    open(dir.path("site/other.obj"));
    ASSERT_GT(At3d_LayerCount(), 0);
    open(dir.path("site/none.obj"));
    const auto& questions = dialogs.questions();
    ASSERT_FALSE(questions.empty());
    EXPECT_EQ(questions.back().text.toStdString(), "Missing\n" + dir.path("site/none.obj"));
    EXPECT_EQ(engineSession().fileLoaded, 0);
    EXPECT_EQ(At3d_LayerCount(), 0);
}

TEST_F(ReadModel, AModelThatCannotBeReadStillEndsTheOpen) {
    writeTextFile(dir.path("site/m.obj"), "v 1 2\n");
    open(dir.path("site/m.obj"));
    EXPECT_EQ(engineSession().fileLoaded, 0);
    EXPECT_EQ(modelSession().INPUTFILENAME, dir.path("site/m.obj"));
    // The steps after the read ran: the north arrow is drawn and the indoor help set.
    EXPECT_TRUE(exists(startupState().NORTHARROW));
    EXPECT_EQ(modelSession().ShowObliques, ", Alt+LClick for INDOOR");
    EXPECT_TRUE(modelSession().INDOOR);
    EXPECT_TRUE(ControlVisible("ReadModelBtn"));
}

TEST_F(ReadModel, AnOffsetThatIsNotFiniteIsShownAndTheEarlierOneKept) {
    writeTextFile(dir.path("a/m.obj"), SQUARE);
    writeTextFile(dir.path("a/offset.txt"), "100,200,30\n");
    open(dir.path("a/m.obj"));
    writeTextFile(dir.path("b/m.obj"), SQUARE);
    writeTextFile(dir.path("b/offset.txt"), "7,inf,9\n");
    open(dir.path("b/m.obj"));
    EXPECT_EQ(engineSession().fileLoaded, 1);
    EXPECT_EQ(frameState().Offset[0], 7);
    EXPECT_EQ(frameState().Offset[1], 200);
    EXPECT_EQ(frameState().Offset[2], 30);
    bool shown = false;
    for (const auto& q : dialogs.questions())
        shown = shown || q.text.toStdString() == dir.path("b/offset.txt") +
                                                     ": the line \"7,inf,9\" holds \"inf\", which is not a finite "
                                                     "number; the offset is 7.000 200.000 30.000";
    EXPECT_TRUE(shown);
}

TEST_F(ReadModel, ACancelledDialogLeavesAnEmptySceneAndTheOpenButton) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    open(dir.path("site/m.obj"));
    dialogs.pushCancel();
    OpenFrommenuClick();
    EXPECT_EQ(modelSession().INPUTFILENAME, "");
    EXPECT_EQ(At3d_LayerCount(), 0);
    EXPECT_TRUE(ControlVisible("ReadModelBtn"));
    EXPECT_EQ(dialogs.questions().back().folder.toStdString(), dir.path("site/"));
}

TEST_F(ReadModel, SeveralModelsChosenOpenTheFirstAndAddTheRest) {
    writeTextFile(dir.path("site/a.obj"), SQUARE);
    writeTextFile(dir.path("site/b.obj"), std::string(SQUARE) + "# padding so the file passes the size test of added models\n"
                                                                "# padding so the file passes the size test of added models\n"
                                                                "# padding so the file passes the size test of added models\n");
    startupState().GlobalARGVforDebug.clear();
    dialogs.pushFile(QString::fromStdString(dir.path("site/a.obj") + "\n" + dir.path("site/b.obj")));
    ReadModelBtnClick();
    EXPECT_EQ(modelSession().INPUTFILENAME, dir.path("site/a.obj"));
    ASSERT_EQ(modelSession().INPUTFILES.size(), 2);
    EXPECT_EQ(At3d_LayerCount(), 2);
}

TEST_F(ReadModel, AnUntexturedModelGetsAThumbnail) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    const At3d_RendererHooks hooks{nullptr, nullptr, &ThumbnailRecorder::save};
    At3d_Set_Renderer(&hooks);
    open(dir.path("site/m.obj"));
    At3d_Set_Renderer(nullptr);
    EXPECT_EQ(ThumbnailRecorder::path, dir.path("site/m.jpg"));
    EXPECT_EQ(ThumbnailRecorder::width, 250);
    EXPECT_EQ(ThumbnailRecorder::height, 200);
}

TEST_F(ReadModel, ATexturedModelNamesItsRenderModeFiles) {
    const std::string site = std::string(ZV_SOURCE_DIR) + "/samples/site/DemoSite.obj";
    int NL = 0, NF = 0;
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, site.c_str(), 1), 1);
    GetTotalVertices(NL, NF);
    const ModelSession& model = modelSession();
    EXPECT_EQ(model.JPG, std::string(ZV_SOURCE_DIR) + "/samples/site/DemoSite.jpg");
    EXPECT_EQ(model.GRAY, std::string(ZV_SOURCE_DIR) + "/samples/site/DemoSite_GRAY.JPG");
    EXPECT_EQ(model.SEPIA, std::string(ZV_SOURCE_DIR) + "/samples/site/DemoSite_SEPIA.JPG");
    EXPECT_EQ(NL, 7);
    // Running vertex numbers: each layer starts where the one before ended.
    const LayerTable& table = layerTable();
    EXPECT_EQ(table.LayerFirstVertex[0], 0);
    for (int k = 1; k < NL; ++k) EXPECT_EQ(table.LayerFirstVertex[k], table.LayerLastVertex[k - 1]);
    EXPECT_EQ(table.LayerLastVertex[NL - 1], 13819);
}

TEST_F(ReadModel, AChosenModuleOpensTheSolarLog) {
    writeTextFile(dir.path("site/m.obj"), SQUARE);
    ORVOINI().writeString("Solvane3D", "ModuleType", "TSM-440");
    startupState().PROCESSPID = 4242;
    open(dir.path("site/m.obj"));
    const std::string log = dir.path("site/Reports/4242_m_ComprehensiveLog.LOG");
    EXPECT_EQ(sunGlobalLog().SunGlobalLogfileName, log);
    resetSunGlobalLog();
    EXPECT_EQ(readTextFile(log), " ++++++ Initialized log file ++++++++++++\n");
}

TEST(ModelComment, OnlyTheProgramsOwnFirstLineIsKept) {
    EXPECT_EQ(ModelCommentFromLine("# Model created by Orvo Systems . . shifted 2 m\n"),
              "Model created by Orvo Systems . . shifted 2 m  ");
    EXPECT_EQ(ModelCommentFromLine("# Blender 3.6 OBJ\n"), "Model created by Orvo Systems . . ");
    EXPECT_EQ(ModelCommentFromLine("v 1 2 3\n"), "Model created by Orvo Systems . . ");
    // Only the first 79 bytes count: ". ." beyond them is not seen.
    EXPECT_EQ(ModelCommentFromLine("#" + QByteArray(78, 'x') + ". .\n"), "Model created by Orvo Systems . . ");
    // A first line in Latin-1 reads as Latin-1.
    EXPECT_EQ(ModelCommentFromLine("# Caf\xe9 . .\n"), QString::fromUtf8("Caf\xc3\xa9 . .  "));
}

TEST(TextureLimit, TheExponentFollowsTheCapMemoryAndCard) {
    EXPECT_EQ(TextureLimitFor(2048, 16, false).exponent, 11);
    EXPECT_EQ(TextureLimitFor(32768, 16, false).exponent, 15);
    EXPECT_FALSE(TextureLimitFor(16384, 16, false).warn);
    EXPECT_TRUE(TextureLimitFor(8192, 16, false).warn);

    const TextureLimit four = TextureLimitFor(16384, 4, false);
    EXPECT_EQ(four.exponent, 12);
    EXPECT_TRUE(four.warn);
    EXPECT_EQ(four.ResolutionRemark, "Resolution reduced to 4096X4096\n");
    EXPECT_EQ(four.ResolutionReason, "Not enough memory");
    EXPECT_EQ(TextureLimitFor(16384, 5, false).exponent, 14);

    const TextureLimit intel = TextureLimitFor(16384, 4, true);
    EXPECT_EQ(intel.exponent, 12);
    EXPECT_EQ(intel.ResolutionReason, "Not enough memoryNo NVIDIA GPU");
    EXPECT_EQ(TextureLimitFor(2048, 16, true).exponent, 12);
}
