// The segment test that measuring and the solar shading stand on.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

using testsupport::addLayer;
using testsupport::makeSquare;

namespace {

class LineMesh : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    void SetUp() override {
        // Three floors stacked at z = 0, 10 and 20 over the same square.
        addLayer(makeSquare("ground", 0, 0, 0, 100));
        addLayer(makeSquare("floor10", 0, 0, 10, 20));
        addLayer(makeSquare("floor20", 0, 0, 20, 20));
    }
};

}  // namespace

TEST_F(LineMesh, WithoutAModelNothingIsHit) {
    At3d_Clear();
    const double v1[3] = {0, 0, 100}, v2[3] = {0, 0, -100};
    double hit[3];
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
}

TEST_F(LineMesh, VerticalSegmentDownFindsTheHighestSurfaceNearestToV1) {
    const double v1[3] = {1, 2, 9999}, v2[3] = {1, 2, -9999};
    double hit[3] = {0, 0, 0};
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[0], 1);
    EXPECT_DOUBLE_EQ(hit[1], 2);
    EXPECT_DOUBLE_EQ(hit[2], 20);
}

TEST_F(LineMesh, UpwardSegmentFindsTheLowestSurface) {
    const double v1[3] = {1, 2, -9999}, v2[3] = {1, 2, 9999};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 0);
}

TEST_F(LineMesh, ZeroLengthSegmentGivesNoHit) {
    const double v[3] = {0, 0, 0};
    double hit[3];
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v, v, 0, hit, 0), 0);
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v, v, 0, hit, 1), 0);
}

TEST_F(LineMesh, SkipLongerThanTheSegmentGivesNoHit) {
    const double v1[3] = {0, 0, 25}, v2[3] = {0, 0, -5};
    double hit[3];
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 31, hit, 0), 0);
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 31, hit, 1), 0);
}

TEST_F(LineMesh, HitsCloserThanTheSkipDistanceAreIgnored) {
    const double v1[3] = {0, 0, 25}, v2[3] = {0, 0, -5};
    double hit[3];
    // 5 m down is the floor at 20; skipping 6 m leaves the floor at 10 first.
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 6, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 10);
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 16, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 0);
}

TEST_F(LineMesh, SegmentEndingAboveASurfaceDoesNotReachIt) {
    const double v1[3] = {0, 0, 25}, v2[3] = {0, 0, 20.5};
    double hit[3];
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_EQ(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 1), 0);
}

TEST_F(LineMesh, FirstHitModeReturnsAPointOnAQualifyingSurface) {
    const double v1[3] = {3, -4, 25}, v2[3] = {3, -4, -5};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 6, hit, 1), 0);
    EXPECT_DOUBLE_EQ(hit[0], 3);
    EXPECT_DOUBLE_EQ(hit[1], -4);
    // Any surface beyond the skip distance qualifies, never the one at 20.
    EXPECT_TRUE(hit[2] == 10 || hit[2] == 0) << hit[2];
}

TEST_F(LineMesh, LayersSwitchedOffAreNotTested) {
    const double v1[3] = {0, 0, 100}, v2[3] = {0, 0, -100};
    double hit[3];
    ASSERT_EQ(At3d_SetLayerOutputFlag("floor20", 0), 1);
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 10);
    At3d_SetLayerOutputFlag("floor20", 1);
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 20);
}

TEST_F(LineMesh, MovedAndDeletedLayersAreSeenAtTheNextQuery) {
    const double v1[3] = {0, 0, 100}, v2[3] = {0, 0, -100};
    double hit[3];
    const double up[3] = {0, 0, 5};
    At3d_Mesh_Static_Translate("floor20", 1, up);
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 25);
    At3d_DeleteLayer("floor20");
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 10);
}

TEST_F(LineMesh, SlantedSegmentHitsWhereTheLineCrossesThePlane) {
    // Along z = 5 - x: height 20 is crossed at x = -15, outside that floor's
    // 20 m square; height 10 at x = -5, inside its square.
    const double v1[3] = {-25, 0, 30}, v2[3] = {35, 0, -30};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_NEAR(hit[0], -5, 1e-9);
    EXPECT_NEAR(hit[1], 0, 1e-9);
    EXPECT_NEAR(hit[2], 10, 1e-9);
}

TEST_F(LineMesh, BatchCallAgreesWithSingleCalls) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-60, 60);
    const int count = 3000;
    std::vector<double> v1s(count * 3), v2s(count * 3);
    for (int i = 0; i < count * 3; ++i) {
        v1s[i] = coordinate(random);
        v2s[i] = coordinate(random);
    }
    for (int exitFirst : {0, 1}) {
        std::vector<double> points(count * 3, 0.0);
        std::vector<int> results(count, -1);
        const int hits = At3d_Get_Line_Mesh_Intersection_Points(count, v1s.data(), v2s.data(), 0.5, points.data(),
                                                                results.data(), exitFirst);
        int expectedHits = 0;
        for (int i = 0; i < count; ++i) {
            double hit[3];
            const int single =
                At3d_Get_Line_Mesh_Intersection_Point(&v1s[3 * i], &v2s[3 * i], 0.5, hit, exitFirst) > 0 ? 1 : 0;
            expectedHits += single;
            ASSERT_EQ(results[i], single) << "segment " << i;
            if (single && exitFirst == 0) {
                for (int k = 0; k < 3; ++k) EXPECT_NEAR(points[3 * i + k], hit[k], 1e-6);
            }
        }
        EXPECT_EQ(hits, expectedHits);
        EXPECT_GT(hits, 100);
    }
}

TEST_F(LineMesh, ThreadsGetTheSameAnswersAsOneThread) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> coordinate(-60, 60);
    const int count = 20000;
    std::vector<double> v1s(count * 3), v2s(count * 3);
    for (int i = 0; i < count * 3; ++i) {
        v1s[i] = coordinate(random);
        v2s[i] = coordinate(random);
    }
    auto run = [&](int begin, int end, std::vector<double>& out) {
        for (int i = begin; i < end; ++i) {
            double hit[3] = {-1, -1, -1};
            if (At3d_Get_Line_Mesh_Intersection_Point(&v1s[3 * i], &v2s[3 * i], 0.5, hit, 0) <= 0)
                hit[0] = hit[1] = hit[2] = -9999;
            for (int k = 0; k < 3; ++k) out[3 * i + k] = hit[k];
        }
    };
    std::vector<double> single(count * 3), threaded(count * 3);
    run(0, count, single);
    At3d_SetLayerOutputFlag("ground", 0);  // forces a rebuild the threads race to
    At3d_SetLayerOutputFlag("ground", 1);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) threads.emplace_back(run, t * count / 4, (t + 1) * count / 4, std::ref(threaded));
    for (auto& t : threads) t.join();
    EXPECT_EQ(single, threaded);
}

TEST(LineMeshPrecision, MapSizedCoordinatesKeepMillimetres) {
    testsupport::EngineFixtureGuard engine;
    addLayer(makeSquare("far", 3612000.456, 663000.125, 47.123, 4));
    const double v1[3] = {3612000.789, 663000.321, 100}, v2[3] = {3612000.789, 663000.321, 0};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_NEAR(hit[0], 3612000.789, 1e-6);
    EXPECT_NEAR(hit[1], 663000.321, 1e-6);
    EXPECT_NEAR(hit[2], 47.123, 1e-6);
}

TEST(LineMeshSeams, RaysThroughTheSharedEdgesAndCornersOfATiledRoofAllHitIt) {
    testsupport::EngineFixtureGuard engine;
    // A roof tiled as a demo site's is: 0.25 m cells, each cut into two
    // triangles, lying at a height that floats don't hold exactly.
    engine::Layer roof;
    roof.name = "tiles";
    const int cells = 40;
    const double cell = 0.25, z = -2.412;
    for (int j = 0; j <= cells; ++j)
        for (int i = 0; i <= cells; ++i) roof.positions.insert(roof.positions.end(), {i * cell - 5, j * cell - 5, z});
    for (int j = 0; j < cells; ++j)
        for (int i = 0; i < cells; ++i) {
            const std::uint32_t a = j * (cells + 1) + i, b = a + 1, c = a + cells + 2, d = a + cells + 1;
            roof.triangles.insert(roof.triangles.end(), {a, b, c, a, c, d});
        }
    addLayer(roof);
    // Every ray aims exactly at a corner or the middle of an edge, from a
    // point up and to the south-west as a view tilted 45 degrees sees it.
    int missed = 0, cast = 0;
    for (int j = 1; j < cells; ++j)
        for (int i = 1; i < cells; ++i)
            for (const double half : {0.0, 0.5}) {
                const double x = (i + half) * cell - 5, y = j * cell - 5;
                const double v1[3] = {x - 13.7, y - 29.3, z + 29.3}, v2[3] = {x + 13.7, y + 29.3, z - 29.3};
                double hit[3];
                ++cast;
                if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0) <= 0) ++missed;
            }
    EXPECT_EQ(missed, 0) << "of " << cast;
}

namespace {

// A generated terrain at map coordinates: 4 m cells over 480 x 480 m, each
// cut into two triangles, its heights from a few long waves.
engine::Layer makeTerrain(double x0, double y0) {
    engine::Layer terrain;
    terrain.name = "terrain";
    const int cells = 120;
    for (int j = 0; j <= cells; ++j)
        for (int i = 0; i <= cells; ++i) {
            const double x = i * 4.0, y = j * 4.0;
            const double z = 41.3 + 12 * std::sin(x / 39.7) * std::cos(y / 53.1) + 3.2 * std::sin((x + 2 * y) / 17.3);
            terrain.positions.insert(terrain.positions.end(), {x0 + x, y0 + y, z});
        }
    for (int j = 0; j < cells; ++j)
        for (int i = 0; i < cells; ++i) {
            const std::uint32_t a = j * (cells + 1) + i, b = a + 1, c = a + cells + 2, d = a + cells + 1;
            terrain.triangles.insert(terrain.triangles.end(), {a, b, c, a, c, d});
        }
    return terrain;
}

// The nearest crossing of segment v1-v2 with the mesh, triangle by triangle:
// where the segment meets each triangle's plane, kept when that point lies
// on the inner side of all three edges.
bool bruteForceHit(const engine::Layer& mesh, const double* v1, const double* v2, double* point) {
    const double d[3] = {v2[0] - v1[0], v2[1] - v1[1], v2[2] - v1[2]};
    double best = 2;  // as a fraction of the segment
    for (std::size_t f = 0; f < mesh.triangles.size(); f += 3) {
        const double* p[3] = {&mesh.positions[mesh.triangles[f] * 3], &mesh.positions[mesh.triangles[f + 1] * 3],
                              &mesh.positions[mesh.triangles[f + 2] * 3]};
        const double a[3] = {p[1][0] - p[0][0], p[1][1] - p[0][1], p[1][2] - p[0][2]};
        const double b[3] = {p[2][0] - p[0][0], p[2][1] - p[0][1], p[2][2] - p[0][2]};
        const double n[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
        const double towards = n[0] * d[0] + n[1] * d[1] + n[2] * d[2];
        if (towards == 0) continue;
        const double s = (n[0] * (p[0][0] - v1[0]) + n[1] * (p[0][1] - v1[1]) + n[2] * (p[0][2] - v1[2])) / towards;
        if (s < 0 || s > 1 || s >= best) continue;
        const double q[3] = {v1[0] + s * d[0], v1[1] + s * d[1], v1[2] + s * d[2]};
        bool inside = true;
        for (int e = 0; e < 3 && inside; ++e) {
            const double* from = p[e];
            const double* to = p[(e + 1) % 3];
            const double edge[3] = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
            const double w[3] = {q[0] - from[0], q[1] - from[1], q[2] - from[2]};
            const double c[3] = {edge[1] * w[2] - edge[2] * w[1], edge[2] * w[0] - edge[0] * w[2],
                                 edge[0] * w[1] - edge[1] * w[0]};
            inside = c[0] * n[0] + c[1] * n[1] + c[2] * n[2] >= 0;
        }
        if (!inside) continue;
        best = s;
        for (int k = 0; k < 3; ++k) point[k] = q[k];
    }
    return best <= 1;
}

}  // namespace

// Half the segments cross the terrain anywhere; the other half graze one of
// its triangles: they run in its plane, dipping into it at 1e-6 to 1e-2
// radians through a point inside it, where float hits stray centimetres
// along the segment or miss a dip under a ridge altogether.
TEST(LineMeshExactness, SegmentHitsOnATerrainAgreeWithATriangleByTriangleTest) {
    testsupport::EngineFixtureGuard engine;
    const double x0 = 178440, y0 = 663440;
    const engine::Layer terrain = makeTerrain(x0, y0);
    addLayer(terrain);
    std::mt19937 random(2024);
    std::uniform_real_distribution<double> unit(0, 1);
    const int count = 800;
    std::vector<double> v1s(3 * count), v2s(3 * count);
    for (int s = 0; s < count; ++s) {
        double* v1 = &v1s[3 * s];
        double* v2 = &v2s[3 * s];
        if (s % 2 == 0) {
            for (double* v : {v1, v2}) {
                v[0] = x0 - 20 + 520 * unit(random);
                v[1] = y0 - 20 + 520 * unit(random);
                v[2] = 20 + 60 * unit(random);
            }
            continue;
        }
        const std::size_t f = static_cast<std::size_t>(unit(random) * (terrain.triangles.size() / 3));
        const double* p[3] = {&terrain.positions[terrain.triangles[3 * f] * 3],
                              &terrain.positions[terrain.triangles[3 * f + 1] * 3],
                              &terrain.positions[terrain.triangles[3 * f + 2] * 3]};
        double a = unit(random), b = unit(random);
        if (a + b > 1) a = 1 - a, b = 1 - b;
        double e1[3], e2[3], at[3];
        for (int k = 0; k < 3; ++k) {
            e1[k] = p[1][k] - p[0][k];
            e2[k] = p[2][k] - p[0][k];
            at[k] = p[0][k] + a * e1[k] + b * e2[k];
        }
        double n[3] = {e1[1] * e2[2] - e1[2] * e2[1], e1[2] * e2[0] - e1[0] * e2[2], e1[0] * e2[1] - e1[1] * e2[0]};
        const double nLength = std::hypot(n[0], n[1], n[2]), e1Length = std::hypot(e1[0], e1[1], e1[2]);
        for (int k = 0; k < 3; ++k) {
            n[k] /= nLength;
            e1[k] /= e1Length;
        }
        const double side[3] = {n[1] * e1[2] - n[2] * e1[1], n[2] * e1[0] - n[0] * e1[2], n[0] * e1[1] - n[1] * e1[0]};
        const double heading = 2 * M_PI * unit(random), dip = std::pow(10.0, -6 + 4 * unit(random));
        const double before = 2 + 100 * unit(random), after = 2 + 100 * unit(random);
        for (int k = 0; k < 3; ++k) {
            const double d =
                (std::cos(heading) * e1[k] + std::sin(heading) * side[k]) * std::cos(dip) - n[k] * std::sin(dip);
            v1[k] = at[k] - before * d;
            v2[k] = at[k] + after * d;
        }
    }
    std::vector<double> batchPoints(3 * count), firstPoints(3 * count);
    std::vector<int> batchHits(count), firstHits(count);
    At3d_Get_Line_Mesh_Intersection_Points(count, v1s.data(), v2s.data(), 0, batchPoints.data(), batchHits.data(), 0);
    At3d_Get_Line_Mesh_Intersection_Points(count, v1s.data(), v2s.data(), 0, firstPoints.data(), firstHits.data(), 1);
    int hits = 0;
    for (int s = 0; s < count; ++s) {
        SCOPED_TRACE("segment " + std::to_string(s));
        double expected[3], single[3];
        const bool exact = bruteForceHit(terrain, &v1s[3 * s], &v2s[3 * s], expected);
        ASSERT_EQ(At3d_Get_Line_Mesh_Intersection_Point(&v1s[3 * s], &v2s[3 * s], 0, single, 0) > 0, exact);
        ASSERT_EQ(batchHits[s] == 1, exact);
        ASSERT_EQ(firstHits[s] == 1, exact);
        if (!exact) continue;
        ++hits;
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(single[k], expected[k], 1e-6);
            EXPECT_NEAR(batchPoints[3 * s + k], expected[k], 1e-6);
        }
    }
    EXPECT_GT(hits, count / 2);
}
