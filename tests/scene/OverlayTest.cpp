// Status bar and view decals.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

class OverlayTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;
};

TEST_F(OverlayTest, StatusBarTextRespectsTheBuffer) {
    ASSERT_EQ(At3d_StatusBar_Show(1, 24), 1);
    EXPECT_EQ(engineState().statusBar.shown, 1);
    EXPECT_EQ(engineState().statusBar.height, 24);
    ASSERT_EQ(At3d_StatusBar_Set_Text("Hello world"), 1);

    char buffer[16];
    std::memset(buffer, 'x', sizeof buffer);
    ASSERT_EQ(At3d_StatusBar_Get_Text(buffer, 6), 1);
    EXPECT_STREQ(buffer, "Hello");
    EXPECT_EQ(buffer[6], 'x');  // nothing written past the size
    ASSERT_EQ(At3d_StatusBar_Get_Text(buffer, sizeof buffer), 1);
    EXPECT_STREQ(buffer, "Hello world");
    EXPECT_EQ(At3d_StatusBar_Get_Text(buffer, 0), 0);
    EXPECT_EQ(At3d_StatusBar_Get_Text(nullptr, 10), 0);

    ASSERT_EQ(At3d_StatusBar_Set_Font_Color(0x00FF00), 1);
    EXPECT_EQ(engineState().statusBar.fontColor, 0x00FF00);
    ASSERT_EQ(At3d_StatusBar_Set_Font_Size(18), 1);
    EXPECT_EQ(At3d_StatusBar_Set_Font_Size(0), 0);
    EXPECT_EQ(engineState().statusBar.fontSize, 18);
    ASSERT_EQ(At3d_StatusBar_Show(0, 24), 1);
    EXPECT_EQ(engineState().statusBar.shown, 0);
}

TEST_F(OverlayTest, DecalsAddReplaceAndUpdateByName) {
    const auto& decals = engineState().decals;
    ASSERT_EQ(At3d_View_Decal_Add("logo", "/a.png", "Top_Left", 10, 0, 0, 0, 0, 1), 1);
    ASSERT_EQ(At3d_View_Decal_Add("north", "/n.png", "Anywhere", 5, 1, 30, 80, 20, 1), 1);
    ASSERT_EQ(decals.size(), 2u);
    EXPECT_EQ(decals[1].screenX, 80);
    EXPECT_EQ(decals[1].rotateAngle, 30);

    // Same name: replaced, not appended.
    ASSERT_EQ(At3d_View_Decal_Add("logo", "/b.png", "Top_Right", 12, 0, 0, 0, 0, 0), 1);
    ASSERT_EQ(decals.size(), 2u);
    EXPECT_EQ(decals[0].path, "/b.png");
    EXPECT_EQ(decals[0].typeName, "Top_Right");
    EXPECT_EQ(decals[0].visible, 0);

    ASSERT_EQ(At3d_View_Decal_Set_Data("north", "/n2.png", "Anywhere", 6, 0, 90, 50, 50, 1), 1);
    EXPECT_EQ(decals[1].path, "/n2.png");
    EXPECT_EQ(decals[1].rotateAngle, 90);
    EXPECT_EQ(At3d_View_Decal_Set_Data("south", "/s.png", "Anywhere", 6, 0, 0, 0, 0, 1), 0);

    // Unknown placement: refused, nothing changes.
    EXPECT_EQ(At3d_View_Decal_Add("extra", "/x.png", "Bottom_Left", 5, 0, 0, 0, 0, 1), 0);
    EXPECT_EQ(At3d_View_Decal_Add("extra", "/x.png", nullptr, 5, 0, 0, 0, 0, 1), 0);
    EXPECT_EQ(At3d_View_Decal_Set_Data("north", "/zz.png", "top_left", 6, 0, 0, 0, 0, 1), 0);
    EXPECT_EQ(decals.size(), 2u);
    EXPECT_EQ(decals[1].path, "/n2.png");
}

}  // namespace
