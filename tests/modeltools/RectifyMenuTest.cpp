// "Rectify" and "Rectify by ONC" as the window calls them: ConvertOBJ's
// scale and shift worked out by hand with its question and messages, the
// template route's target points, and the file dialogs of both items.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/session/DispatchState.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/RectifyConvert.h"
#include "modeltools/RectifyMenu.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;
using Question = ScriptedDialogService::Question;

namespace {

// Twice the size, moved to (500, 600, 10); both scales agree.
const char* kOnc = "0 0 0 500 600 10\n10 0 0 520 600 10\n0 10 0 500 620 10\n0 0 1 500 600 12\n";
const char* kObj = "# site\nv 1 2 3\nvt 0.5 0.5\nv -1.25 0 0\nf 1/1 2/1 1/1\n";
const char* kConverted = "# site\nv 502.00 604.00 16.00\nvt 0.5 0.5\nv 497.50 600.00 10.00\nf 1/1 2/1 1/1\n";

class RectifyMenu : public ::testing::Test {
protected:
    ScratchDir dir;
    ScriptedDialogService dialogs;
    std::string model = dir.path("site/Site.obj");
    std::string onc = dir.path("site/Site.ONC");
    QStringList statuses;

    void SetUp() override {
        installDialogService(&dialogs);
        modelToolHooks().progress = [this](const QString& text, long long, long long) { statuses << text; };
        writeTextFile(model, kObj);
        writeTextFile(onc, kOnc);
        modelSession().GlobalModelFileName = model;
        modelSession().GlobalONCFileName = onc;
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetModelToolHooks();
        resetModelSession();
        resetDispatchState();
        resetRectifyState();
    }
    std::vector<QString> messages() const {
        std::vector<QString> out;
        for (const Question& q : dialogs.questions())
            if (q.kind == Question::Message) out.push_back(q.text);
        return out;
    }
};

}  // namespace

TEST_F(RectifyMenu, ConvertScalesAndShiftsEveryVertexAfterAskingWithTheScalesFound) {
    const std::string out = dir.path("site/out.obj");
    dialogs.pushButton(1);  // Yes
    ASSERT_TRUE(ConvertOBJ(model, out, onc));
    EXPECT_EQ(readTextFile(out), kConverted);
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].kind, Question::Ask);
    EXPECT_EQ(dialogs.questions()[0].text,
              "Transformation Analysis:\n\nControl Points Read: 3\nScale Factor 1: 2.000000\nScale Factor 2: 2.000000\n"
              "Average Scale: 2.000000\nScale Difference: 0.000000\n\nContinue with transformation?");
    EXPECT_EQ(dialogs.questions()[0].buttons, QStringList({"Yes", "No"}));
    EXPECT_EQ(messages(), std::vector<QString>{"Transformation completed!\nVertices: 2\nFaces: 1"});
    EXPECT_TRUE(statuses.contains("Found 2 vertices, 1 faces"));
    EXPECT_EQ(statuses.last(), "Transformation completed! 2 vertices, 1 faces processed");
}

TEST_F(RectifyMenu, ConvertStopsOnBadPairsOnNoAndOnCancelWithoutOutput) {
    const std::string out = dir.path("site/out.obj");
    const std::string pairs = dir.path("p.onc");

    EXPECT_FALSE(ConvertOBJ(model, out, dir.path("none.onc")));
    writeTextFile(pairs, "0 0 0 1 1 1\n1 0 0 2 1\n");
    EXPECT_FALSE(ConvertOBJ(model, out, pairs));
    EXPECT_EQ(messages(), (std::vector<QString>{"Cannot open ONC file: " + QString::fromStdString(dir.path("none.onc")),
                                               "Error reading control point 2 from ONC file"}));

    // On one line, and the two scales 2 and 3 differ: both warned of, then No.
    writeTextFile(pairs, "0 0 0 0 0 0\n10 0 0 20 0 0\n20 0 0 0 60 0\n");
    dialogs.pushButton(2);
    EXPECT_FALSE(ConvertOBJ(model, out, pairs));
    EXPECT_EQ(messages().back(), "Warning: Control points are collinear!\nTransformation may be unreliable.");
    EXPECT_TRUE(dialogs.questions().back().text.contains(
        "Average Scale: 2.500000\nScale Difference: 1.000000\nWARNING: Scale factors differ significantly!\n"));
    EXPECT_EQ(statuses.last(), "Operation cancelled by user");

    // Stopped by the operator half way.
    std::string big;
    for (int i = 0; i < 10000; ++i) big += "v 1 2 3\n";
    writeTextFile(model, big);
    dialogs.pushButton(1);
    modelToolHooks().cancelled = [] { return true; };
    EXPECT_FALSE(ConvertOBJ(model, out, onc));
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path("site")), {}), 2);
}

TEST_F(RectifyMenu, RectifyOnCancelConvertsTheOpenModelWithTheChosenPairs) {
    dialogs.pushCancel();
    dialogs.pushFile(QString::fromStdString(onc));
    dialogs.pushButton(1);
    EXPECT_EQ(Rectify1Click(), dir.path("site/Site_converted.OBJ"));
    EXPECT_EQ(readTextFile(dir.path("site/Site_converted.OBJ")), kConverted);
    const Question& query = dialogs.questions()[0];
    EXPECT_EQ(query.title, "Defining template size.");
    EXPECT_EQ(query.text, "Template size in cm.  Cancel for OC2NC");
    EXPECT_EQ(query.value, "100");
    const Question& file = dialogs.questions()[1];
    EXPECT_EQ(file.title, "Please select the transformation file (output)");
    EXPECT_EQ(file.text, "Transformation  file(*.ONC)|*.ONC");
    EXPECT_EQ(file.value, "Site.ONC");

    // Three lines are too few, and a typed 0 is a Cancel.
    writeTextFile(onc, "0 0 0 500 600 10\n10 0 0 520 600 10\n0 10 0 500 620 10\n");
    dialogs.pushText("0");
    dialogs.pushFile(QString::fromStdString(onc));
    EXPECT_EQ(RectifyModel(), "");
    EXPECT_EQ(messages().back(), "4 point pairs needed");
}

TEST_F(RectifyMenu, TheTemplateRouteKeepsTargetsAtTheTemplateSizeTurnedAsTheCornerLies) {
    // P1 to P2 runs 3 east and 4 north (5 m); the 1 m template's first side
    // ends 0.6, 0.8 from P1, its second turns right or left as P3 lies.
    QStringList& points = dispatchState().TDigitizedPoints;
    points = {"0 0 0", "10 10 1", "13 14 1", "17 11 1"};
    dialogs.pushText("100");
    EXPECT_EQ(RectifyModel(), "");
    RectifyTemplate t = rectifyState().templatePairs;
    ASSERT_TRUE(t.valid);
    EXPECT_DOUBLE_EQ(t.perpendicular, 1);
    testsupport::expectVec(t.from[0], 10, 10, 1);
    testsupport::expectVec(t.to[0], 10, 10, 0);
    testsupport::expectVec(t.to[1], 10.6, 10.8, 0, 1e-12);
    testsupport::expectVec(t.to[2], 11.4, 10.2, 0, 1e-12);
    EXPECT_NEAR(t.fromDistance2D[0], 5, 1e-12);
    EXPECT_NEAR(t.toDistance2D[1], 1, 1e-12);
    EXPECT_NEAR(t.toDistance3D[2], std::sqrt(2.0), 1e-12);

    points.last() = "9 17 1";
    dialogs.pushText("100");
    EXPECT_EQ(Rectify1Click(), "");
    t = rectifyState().templatePairs;
    EXPECT_DOUBLE_EQ(t.perpendicular, -1);
    testsupport::expectVec(t.to[2], 9.8, 11.4, 0, 1e-12);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path("site")), {}), 2);

    points = {"10 10 1", "13 14 1"};
    dialogs.pushText("50");
    EXPECT_EQ(RectifyModel(), "");
    EXPECT_EQ(messages().back(), "You need at least 3 digitized points.");
}

TEST_F(RectifyMenu, RectifyByOncAsksForBothFilesAndCarriesTheProjectionOver) {
    // A square 10 m model turned a quarter, doubled and moved; all within 35 m.
    writeTextFile(onc, "0 0 0 1000 2000 50\n10 0 0 1000 2020 50\n10 10 2 980 2020 54\n0 10 2 980 2000 54\n");
    writeTextFile(model, "v 0 0 0\nv 10 0 0\nv 10 10 2\nf 1 2 3\n");
    writeTextFile(dir.path("site/site.prj"), "PROJCS[\"local\"]\n");
    dialogs.pushFile(QString::fromStdString(model));
    dialogs.pushFile(QString::fromStdString(onc));
    const std::string out = dir.path("site/Site_rectified.OBJ");
    EXPECT_EQ(RectifybyONC1Click(), out);
    EXPECT_EQ(readTextFile(out), "# Transformed using full 3D Procrustes (uniform scale + 3D rotation + translation)\n"
                                 "v 1000 2000 50\nv 1000 2020 50\nv 980 2020 54\nf 1 2 3\n");
    EXPECT_EQ(readTextFile(dir.path("site/Site_rectified.PRJ")), "PROJCS[\"local\"]\n");
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].title, "Open the OBJ file (input)");
    EXPECT_EQ(dialogs.questions()[0].text, "OBJ file (*.OBJ|*.OBJ");
    EXPECT_EQ(dialogs.questions()[0].value, "Site.obj");
    EXPECT_EQ(dialogs.questions()[1].title, "Open the ONC file (input)");
    EXPECT_EQ(dialogs.questions()[1].text, "ONC file (*.ONC|*.ONC");
    EXPECT_EQ(dialogs.questions()[1].value, "Site.ONC");

    dialogs.pushCancel();
    EXPECT_EQ(RectifybyONC1Click(), "");
}
