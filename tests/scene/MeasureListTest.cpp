// The measure list: order, replacement, deletion, selection, names and the
// distances the engine computes.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

class MeasureListTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;

    // A plain line from (x, 0, 0) to (x, 1, 0).
    static int addLine(const char* id, double x) {
        const double v1[3] = {x, 0, 0}, v2[3] = {x, 1, 0};
        const float rgb[3] = {1, 0, 0};
        return At3d_MeasureList_Add_Item(id, 1, 0, 0, 2, rgb, v1, v2, nullptr, nullptr);
    }

    static std::vector<std::string> ids() {
        std::vector<std::string> out;
        char id[AT3D_NAME_SIZE];
        for (int i = 0; i < At3d_MeasureList_Get_Count(); ++i) {
            EXPECT_EQ(At3d_MeasureList_Get_Item(i, id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                nullptr, nullptr, nullptr),
                      1);
            out.emplace_back(id);
        }
        return out;
    }
};

TEST_F(MeasureListTest, AddStoresEverythingAndComputesDistances) {
    const double v1[3] = {1, 2, 3}, v2[3] = {4, 6, 15};  // (3, 4, 12): 13 m
    const double observer[3] = {1, 1, 1}, obstruction[3] = {4, 5, 1};  // (3, 4, 0) from the observer: 5 m
    const float rgb[3] = {0.1f, 0.2f, 0.3f};
    ASSERT_EQ(At3d_MeasureList_Add_Item("m1", 1, 1, 1, 3.5f, rgb, v1, v2, observer, obstruction), 1);
    // Without an observer the obstruction distance runs from vertex 1: (0, 0, 2).
    const double o2[3] = {1, 2, 5};
    ASSERT_EQ(At3d_MeasureList_Add_Item("m2", 0, 0, 1, 1, rgb, v1, v2, nullptr, o2), 1);
    ASSERT_EQ(At3d_MeasureList_Add_Item("m3", 1, 0, 0, 1, rgb, v1, v2, nullptr, nullptr), 1);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 3);

    const auto& items = engineState().measures;
    EXPECT_DOUBLE_EQ(items[0].distance, 13);
    EXPECT_DOUBLE_EQ(items[0].obstruction_Distance, 5);
    EXPECT_DOUBLE_EQ(items[1].obstruction_Distance, 2);
    EXPECT_EQ(items[2].obstruction_Distance, 0);

    char id[AT3D_NAME_SIZE];
    int visible = -1, obs = -1, obst = -1;
    float width = 0, colour[3] = {};
    double a[3], b[3], c[3], d[3];
    ASSERT_EQ(At3d_MeasureList_Get_Item(0, id, &visible, &obs, &obst, &width, colour, a, b, c, d), 1);
    EXPECT_STREQ(id, "m1");
    EXPECT_EQ(visible, 1);
    EXPECT_EQ(obs, 1);
    EXPECT_EQ(obst, 1);
    EXPECT_EQ(width, 3.5f);
    EXPECT_EQ(colour[2], 0.3f);
    EXPECT_EQ(b[2], 15);
    EXPECT_EQ(c[0], 1);
    EXPECT_EQ(d[1], 5);
}

TEST_F(MeasureListTest, MissingPointsAreRejected) {
    const double v[3] = {0, 0, 0};
    EXPECT_EQ(At3d_MeasureList_Add_Item("x", 1, 0, 0, 1, nullptr, v, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(At3d_MeasureList_Add_Item("x", 1, 1, 0, 1, nullptr, v, v, nullptr, nullptr), 0);  // observer on, no point
    EXPECT_EQ(At3d_MeasureList_Add_Item("x", 1, 0, 1, 1, nullptr, v, v, nullptr, nullptr), 0);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
}

TEST_F(MeasureListTest, DeleteShiftsReplaceKeepsOrderBadIndexChangesNothing) {
    for (const char* id : {"a", "b", "c", "d"}) ASSERT_EQ(addLine(id, 0), 1);

    ASSERT_EQ(At3d_MeasureList_Delete_Item(1, 0), 1);
    EXPECT_EQ(ids(), (std::vector<std::string>{"a", "c", "d"}));

    const double v1[3] = {0, 0, 0}, v2[3] = {0, 0, 7};
    ASSERT_EQ(At3d_MeasureList_Replace_Item(1, "C", 1, 0, 0, 1, nullptr, v1, v2, nullptr, nullptr), 1);
    EXPECT_EQ(ids(), (std::vector<std::string>{"a", "C", "d"}));
    EXPECT_DOUBLE_EQ(engineState().measures[1].distance, 7);

    EXPECT_EQ(At3d_MeasureList_Delete_Item(3, 0), 0);
    EXPECT_EQ(At3d_MeasureList_Delete_Item(-1, 0), 0);
    EXPECT_EQ(At3d_MeasureList_Replace_Item(3, "z", 1, 0, 0, 1, nullptr, v1, v2, nullptr, nullptr), 0);
    char id[AT3D_NAME_SIZE] = "untouched";
    EXPECT_EQ(At3d_MeasureList_Get_Item(5, id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr),
              0);
    EXPECT_STREQ(id, "untouched");
    EXPECT_EQ(ids(), (std::vector<std::string>{"a", "C", "d"}));

    ASSERT_EQ(At3d_MeasureList_Clear(), 1);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
}

TEST_F(MeasureListTest, IdIsCutAt79Bytes) {
    const std::string longId(100, 'q');
    ASSERT_EQ(addLine((longId + "tail").c_str(), 0), 1);
    char id[AT3D_NAME_SIZE];
    std::memset(id, 'x', sizeof id);
    At3d_MeasureList_Get_Item(0, id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr);
    EXPECT_EQ(std::string(id), std::string(79, 'q'));
}

TEST_F(MeasureListTest, SelectionFollowsDeletesAndClear) {
    for (const char* id : {"a", "b", "c"}) addLine(id, 0);
    auto& state = engineState();
    state.selectedMeasure = 2;
    At3d_MeasureList_Delete_Item(0, 0);  // earlier item: selection moves down
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), 1);
    At3d_MeasureList_Delete_Item(1, 0);  // the selected one
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), -1);

    addLine("d", 0);
    state.selectedMeasure = 0;
    At3d_MeasureList_Delete_Item(1, 0);  // later item: selection stays
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), 0);
    ASSERT_EQ(At3d_MeasureList_Cancel_Selected_Line(), 1);
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), -1);
    state.selectedMeasure = 0;
    At3d_MeasureList_Clear();
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), -1);
}

TEST_F(MeasureListTest, AddCurrentTakesTheRubberband) {
    auto& rb = engineState().rubberband;
    const float rgb[3] = {0, 1, 0};
    EXPECT_EQ(At3d_MeasureList_Add_Current("cur", 2, rgb), 0);  // no ends
    rb[1].hitFlag = AT3D_HIT;
    rb[1].xyz[0] = 1;
    rb[2].hitFlag = 1;  // not a mesh hit
    EXPECT_EQ(At3d_MeasureList_Add_Current("cur", 2, rgb), 0);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);

    rb[2].hitFlag = AT3D_HIT;
    rb[2].xyz[0] = 1;
    rb[2].xyz[1] = 8;  // 8 m north of point 1
    ASSERT_EQ(At3d_MeasureList_Add_Current("plain", 2, rgb), 1);

    // With an observer 6 m above point 1 and an obstruction 8 m from it.
    const double delta[3] = {0, 0, 6};
    ASSERT_EQ(At3d_Add_Mesh_Location_Observer(delta, 1), 1);
    rb[3].hitFlag = AT3D_HIT;
    rb[3].xyz[0] = 1;
    rb[3].xyz[1] = 8;
    ASSERT_EQ(At3d_MeasureList_Add_Current("seen", 2, rgb), 1);

    const auto& items = engineState().measures;
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].observer_Flag, 0);
    EXPECT_EQ(items[0].obstruction_Flag, 0);
    EXPECT_DOUBLE_EQ(items[0].distance, 8);
    EXPECT_EQ(items[1].observer_Flag, 1);
    EXPECT_EQ(items[1].obstruction_Flag, 1);
    EXPECT_EQ(items[1].observer[2], 6);
    EXPECT_DOUBLE_EQ(items[1].obstruction_Distance, 10);  // (0, 8, -6)
    EXPECT_STREQ(items[1].id, "seen");
}

}  // namespace
