// Billboards: the engine's own copy of each image, its row layout, copying
// back within the caller's capacity, and the list operations.
#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

class BillboardListTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;

    static int add(const char* name, const UInt8* image, int width, int height, int alpha, double x = 0) {
        const double position[3] = {x, 2, 3}, pivot[3] = {0, 0, 1}, rotation[3] = {0, 0, 45};
        const float rgb[3] = {1, 1, 0};
        return At3d_Measure_Billboard_Add_Item(name, image, width, height, alpha, 1, 0, 1, 0, 0, rgb, 2, 5,
                                               position, pivot, rotation);
    }

    static std::string idAt(int index) {
        char name[AT3D_NAME_SIZE] = "";
        EXPECT_EQ(At3d_Measure_Billboard_Get_ID(index, name), 1);
        return name;
    }

    static std::vector<UInt8> image(int index, int capacity) {
        std::vector<UInt8> out(std::size_t(capacity), 0xEE);
        EXPECT_EQ(At3d_Measure_Billboard_Get_Item(index, nullptr, out.data(), capacity, nullptr, nullptr, nullptr,
                                                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                  nullptr, nullptr),
                  1);
        return out;
    }
};

TEST_F(BillboardListTest, ImageIsCopiedWithPaddedRows) {
    // 3 x 2 without alpha: 9 bytes a row, padded to 12; 24 bytes in all.
    std::vector<UInt8> pixels(24);
    std::iota(pixels.begin(), pixels.end(), UInt8(1));
    const std::vector<UInt8> original = pixels;
    ASSERT_EQ(add("rgb", pixels.data(), 3, 2, 0), 1);
    std::fill(pixels.begin(), pixels.end(), UInt8(0));  // the caller reuses its buffer

    const BILLBOARD_DATA& data = engineState().billboards[0].data;
    EXPECT_EQ(data.imageSize, 24);
    EXPECT_EQ(data.imagePtr, nullptr);
    EXPECT_EQ(image(0, 24), original);

    char name[AT3D_NAME_SIZE];
    int w = 0, h = 0, alpha = -1;
    ASSERT_EQ(At3d_Measure_Billboard_Get_Image_Size(0, name, &w, &h, &alpha), 1);
    EXPECT_STREQ(name, "rgb");
    EXPECT_EQ(w, 3);
    EXPECT_EQ(h, 2);
    EXPECT_EQ(alpha, 0);

    // With alpha: 4 bytes a pixel, no padding.
    std::vector<UInt8> rgba(3 * 2 * 4, 9);
    ASSERT_EQ(add("rgba", rgba.data(), 3, 2, 1), 1);
    EXPECT_EQ(engineState().billboards[1].data.imageSize, 24);
    std::vector<UInt8> wide(5 * 1 * 3 + 1, 7);  // 5 px: 15 bytes padded to 16
    ASSERT_EQ(add("wide", wide.data(), 5, 1, 0), 1);
    EXPECT_EQ(engineState().billboards[2].data.imageSize, 16);
    EXPECT_EQ(add("bad", wide.data(), 0, 1, 0), 0);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 3);
}

TEST_F(BillboardListTest, CopyBackNeverPassesTheCapacity) {
    std::vector<UInt8> pixels(16);
    std::iota(pixels.begin(), pixels.end(), UInt8(100));
    ASSERT_EQ(add("a", pixels.data(), 2, 2, 1), 1);
    const std::vector<UInt8> got = image(0, 10);
    ASSERT_EQ(got.size(), 10u);
    EXPECT_TRUE(std::equal(got.begin(), got.end(), pixels.begin()));

    // A larger buffer: the image fills its start and the rest stays as it was.
    std::vector<UInt8> big(20, 0xEE);
    At3d_Measure_Billboard_Get_Item(0, nullptr, big.data(), 20, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), big.begin()));
    EXPECT_EQ(big[16], 0xEE);
    EXPECT_EQ(big[19], 0xEE);
}

TEST_F(BillboardListTest, ReplaceWithoutImageKeepsTheOldOne) {
    std::vector<UInt8> pixels(16, 42);
    ASSERT_EQ(add("a", pixels.data(), 2, 2, 1), 1);
    ASSERT_EQ(add("b", pixels.data(), 2, 2, 1), 1);
    const double position[3] = {9, 9, 9};
    ASSERT_EQ(At3d_Measure_Billboard_Replace_Item(0, "a2", nullptr, 0, 0, 0, 0, 0, 1, 0, 0, nullptr, 1, 1,
                                                  position, nullptr, nullptr),
              1);
    EXPECT_EQ(idAt(0), "a2");
    EXPECT_EQ(idAt(1), "b");
    const BILLBOARD_DATA& data = engineState().billboards[0].data;
    EXPECT_EQ(data.imageWidth, 2);
    EXPECT_EQ(data.alphaFlag, 1);
    EXPECT_EQ(data.position[0], 9);
    EXPECT_EQ(image(0, 16), pixels);

    // A new image replaces the old one, row layout included.
    std::vector<UInt8> rgb(8, 5);  // 1 x 2 without alpha: 3 padded to 4 per row
    ASSERT_EQ(At3d_Measure_Billboard_Replace_Item(0, "a3", rgb.data(), 1, 2, 0, 0, 0, 1, 0, 0, nullptr, 1, 1,
                                                  position, nullptr, nullptr),
              1);
    EXPECT_EQ(engineState().billboards[0].data.imageSize, 8);
    EXPECT_EQ(engineState().billboards[0].image, rgb);
    EXPECT_EQ(At3d_Measure_Billboard_Replace_Item(2, "c", nullptr, 0, 0, 0, 0, 0, 1, 0, 0, nullptr, 1, 1,
                                                  position, nullptr, nullptr),
              0);
}

TEST_F(BillboardListTest, DeleteShiftsAndSelectionFollows) {
    UInt8 px[4] = {};
    for (const char* id : {"a", "b", "c"}) ASSERT_EQ(add(id, px, 1, 1, 1), 1);
    engineState().selectedBillboard = 2;
    ASSERT_EQ(At3d_Measure_Billboard_Delete_Item(0, 0), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 2);
    EXPECT_EQ(idAt(0), "b");
    EXPECT_EQ(idAt(1), "c");
    EXPECT_EQ(At3d_Measure_Billboard_Get_Selected(), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Delete_Item(2, 0), 0);
    ASSERT_EQ(At3d_Measure_Billboard_Delete_Item(1, 0), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Selected(), -1);

    ASSERT_EQ(At3d_Measure_Billboard_Set_Visible_One(0, 0, 0), 1);
    EXPECT_EQ(engineState().billboards[0].data.visibleFlag, 0);
    EXPECT_EQ(At3d_Measure_Billboard_Set_Visible_One(4, 0, 0), 0);
    At3d_Measure_Billboard_Set_Visible_All(1);
    EXPECT_EQ(engineState().billboards[0].data.visibleFlag, 1);

    engineState().selectedBillboard = 0;
    ASSERT_EQ(At3d_Measure_Billboard_Cancel_Selected(), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Selected(), -1);
    engineState().selectedBillboard = 0;
    ASSERT_EQ(At3d_Measure_Billboard_Delete_All(), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Selected(), -1);
}

}  // namespace
