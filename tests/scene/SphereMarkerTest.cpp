// Sphere markers: addressed by name, listed by index.
#include <gtest/gtest.h>

#include <string>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

class SphereMarkerTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;

    static int add(const char* name, double x, double diameter = 2) {
        const double position[3] = {x, 1, 2};
        const float rgb1[3] = {1, 0, 0}, rgb2[3] = {0, 0, 1};
        return At3d_Sphere_Marker_Add(name, diameter, position, rgb1, rgb2, 1, 250, 1, 1);
    }

    static std::string nameAt(int index) {
        char name[AT3D_NAME_SIZE] = "";
        EXPECT_EQ(At3d_Sphere_Marker_Get_Name(index, name), 1);
        return name;
    }
};

TEST_F(SphereMarkerTest, AddGetByNameAndList) {
    ASSERT_EQ(add("north", 5), 1);
    ASSERT_EQ(add("south", -5, 3), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Count(), 2);
    EXPECT_EQ(nameAt(1), "south");

    double diameter = 0, location[3];
    float rgb1[3], rgb2[3];
    int color2 = 0, interval = 0, strobe = 0, visible = 0;
    ASSERT_EQ(At3d_Sphere_Marker_Get_Data("south", &diameter, location, rgb1, rgb2, &color2, &interval, &strobe,
                                          &visible),
              1);
    EXPECT_EQ(diameter, 3);
    EXPECT_EQ(location[0], -5);
    EXPECT_EQ(location[2], 2);
    EXPECT_EQ(rgb2[2], 1.0f);
    EXPECT_EQ(interval, 250);
    EXPECT_EQ(strobe, 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Data("west", &diameter, location, rgb1, rgb2, &color2, &interval, &strobe,
                                          &visible),
              0);
    char name[AT3D_NAME_SIZE] = "kept";
    EXPECT_EQ(At3d_Sphere_Marker_Get_Name(2, name), 0);
    EXPECT_STREQ(name, "kept");

    // The same name again updates that marker in place.
    ASSERT_EQ(add("north", 50), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Count(), 2);
    EXPECT_EQ(nameAt(0), "north");
    EXPECT_EQ(engineState().spheres[0].position[0], 50);

    EXPECT_EQ(add("", 0), 0);
    EXPECT_EQ(add("flat", 0, 0), 0);
}

TEST_F(SphereMarkerTest, DeleteByNameShiftsAndSelectionFollows) {
    for (const char* n : {"a", "b", "c"}) ASSERT_EQ(add(n, 0), 1);
    engineState().selectedSphere = 2;
    ASSERT_EQ(At3d_Sphere_Marker_Delete_One("a"), 1);
    EXPECT_EQ(nameAt(0), "b");
    EXPECT_EQ(nameAt(1), "c");
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Delete_One("a"), 0);
    ASSERT_EQ(At3d_Sphere_Marker_Delete_One("c"), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), -1);

    engineState().selectedSphere = 0;
    ASSERT_EQ(At3d_Sphere_Marker_Cancel_Selected(), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), -1);
    engineState().selectedSphere = 0;
    ASSERT_EQ(At3d_Sphere_Marker_Delete_All(), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Count(), 0);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), -1);
}

TEST_F(SphereMarkerTest, LongNamesAreCutAndStillFound) {
    const std::string longName(85, 's');
    ASSERT_EQ(add(longName.c_str(), 1), 1);
    EXPECT_EQ(nameAt(0), std::string(79, 's'));
    double diameter = 0;
    EXPECT_EQ(At3d_Sphere_Marker_Get_Data(std::string(79, 's').c_str(), &diameter, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, nullptr, nullptr),
              1);
    EXPECT_EQ(At3d_Sphere_Marker_Delete_One(longName.c_str()), 1);
}

}  // namespace
