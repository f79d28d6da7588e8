// EnterLatLonAlt driven by the scripted answerer in each input form.
#include <gtest/gtest.h>

#include "app/services/DialogService.h"
#include "geo/CoordinateSystem.h"
#include "geo/EnterLatLonAlt.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

// The model's centre at E 178500, N 663500 (EPSG:2039), ground at map Z 50.
class EnterLatLonAltTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    ScriptedDialogService answers;
    void SetUp() override {
        resetFrameState();
        resetGeoState();
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = 178500;
        f.OriginalobjectCenter[1] = 663500;
        f.OriginalobjectCenter[2] = 50;
        testsupport::addLayer(testsupport::makeSquare("ground", 0, 0, 0, 400));
        geoState().GlobalCS = GlobalCSFactory::ByEPSG(2039);
        installDialogService(&answers);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetGeoState();
        resetFrameState();
    }
};

}  // namespace

// echo "178500 663500" | cs2cs -f %.9f EPSG:2039 EPSG:4326 gives 32.064021933 34.770714629.
TEST_F(EnterLatLonAltTest, TwoDegreeValuesInOneAnswer) {
    answers.pushText("32.064021933 34.770714629");
    const TGIS_Point3D p = EnterLatLonAlt();
    EXPECT_NEAR(p.X, 178500, 1e-3);
    EXPECT_NEAR(p.Y, 663500, 1e-3);
    EXPECT_DOUBLE_EQ(p.Z, 50);
    ASSERT_EQ(answers.questions().size(), 1u);
    EXPECT_EQ(answers.questions()[0].value, "32/15/48.92274");
}

TEST_F(EnterLatLonAltTest, EastAndNorthAreTakenAsTheyStand) {
    answers.pushText("178510.25 663490.5");
    const TGIS_Point3D p = EnterLatLonAlt();
    EXPECT_EQ(p.X, 178510.25);
    EXPECT_EQ(p.Y, 663490.5);
    EXPECT_DOUBLE_EQ(p.Z, 50);
    answers.pushText("345678 32345678");
    const TGIS_Point3D far = EnterLatLonAlt();
    EXPECT_EQ(far.X, 345678);
    EXPECT_EQ(far.Y, 32345678);
    EXPECT_EQ(far.Z, -9999);
}

// 32.064021933° = 32/3/50.4789588 and 34.770714629° = 34/46/14.5726644.
TEST_F(EnterLatLonAltTest, DegreesMinutesSecondsInTwoQuestions) {
    answers.pushText("32/3/50.4789588");
    answers.pushText("34/46/14.5726644");
    const TGIS_Point3D p = EnterLatLonAlt();
    EXPECT_NEAR(p.X, 178500, 1e-2);
    EXPECT_NEAR(p.Y, 663500, 1e-2);
    EXPECT_DOUBLE_EQ(p.Z, 50);
    ASSERT_EQ(answers.questions().size(), 2u);
    EXPECT_EQ(answers.questions()[1].value, "34/57/2.58040");
    // The text EastNorth2String writes goes in one answer.
    answers.pushText("32°03'50.4790\"N 34°46'14.5727\"E");
    const TGIS_Point3D q = EnterLatLonAlt();
    EXPECT_NEAR(q.X, 178500, 1e-2);
    EXPECT_NEAR(q.Y, 663500, 1e-2);
    EXPECT_EQ(answers.questions().size(), 3u);
}

// echo "32.1 34.9" | cs2cs -f %.4f EPSG:4326 EPSG:2039 gives 190719.6036 667447.8740.
TEST_F(EnterLatLonAltTest, SmallNumbersAreDegreesEvenFarFromTheModel) {
    answers.pushText("32.1 34.9");
    const TGIS_Point3D p = EnterLatLonAlt();
    EXPECT_NEAR(p.X, 190719.6036, 2e-4);
    EXPECT_NEAR(p.Y, 667447.8740, 2e-4);
    EXPECT_EQ(p.Z, -9999);
}

TEST_F(EnterLatLonAltTest, CancelUnreadableOrNoSystemGiveAPointOfZeros) {
    const auto expectZeros = [](const TGIS_Point3D& p) {
        EXPECT_EQ(p.X, 0);
        EXPECT_EQ(p.Y, 0);
        EXPECT_EQ(p.Z, 0);
    };
    answers.pushCancel();
    expectZeros(EnterLatLonAlt());
    answers.pushText("32/3/50");
    answers.pushCancel();
    expectZeros(EnterLatLonAlt());
    answers.pushText("north");
    answers.pushText("34");
    expectZeros(EnterLatLonAlt());
    geoState().GlobalCS.reset();
    answers.pushText("32.06 34.77");
    expectZeros(EnterLatLonAlt());
    EXPECT_TRUE(answers.scriptDone());
}
