// The template route's solvers and exporters: a similarity we build
// ourselves, in space and in the plane, solved from pairs and applied to
// other points; and a model with its OPK photo list carried through a turn.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/services/RunLog.h"
#include "modeltools/Oc2nc.h"
#include "modeltools/RectifyExport.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// Rotation by angle about a unit axis (Rodrigues' formula), written out.
void rotation(double ax, double ay, double az, double angle, double R[3][3]) {
    const double n = std::sqrt(ax * ax + ay * ay + az * az);
    ax /= n, ay /= n, az /= n;
    const double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
    const double m[3][3] = {{t * ax * ax + c, t * ax * ay - s * az, t * ax * az + s * ay},
                            {t * ax * ay + s * az, t * ay * ay + c, t * ay * az - s * ax},
                            {t * ax * az - s * ay, t * ay * az + s * ax, t * az * az + c}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) R[i][j] = m[i][j];
}

class Oc2nc : public ::testing::Test {
protected:
    void SetUp() override { resetOc2ncState(); }
    void TearDown() override {
        resetOc2ncState();
        resetRunLog();
    }
};

}  // namespace

TEST_F(Oc2nc, ASevenParameterTransformIsSolvedFromPairsAndAppliedToOtherPoints) {
    double R[3][3];
    rotation(0.3, -0.5, 1.0, 0.7, R);
    const double s = 1.7, t[3] = {650000, 3500000, 50};
    auto place = [&](const double* p, double* w) {
        for (int i = 0; i < 3; ++i) w[i] = s * (R[i][0] * p[0] + R[i][1] * p[1] + R[i][2] * p[2]) + t[i];
    };
    const double local[6][3] = {{0, 0, 0}, {40, 3, 2}, {-12, 35, 8}, {25, -30, -4}, {-33, -20, 15}, {5, 12, 30}};
    double fx[6], fy[6], fz[6], tx[6], ty[6], tz[6];
    for (int i = 0; i < 6; ++i) {
        double w[3];
        place(local[i], w);
        fx[i] = local[i][0], fy[i] = local[i][1], fz[i] = local[i][2];
        tx[i] = w[0], ty[i] = w[1], tz[i] = w[2];
    }
    ScratchDir dir;
    runLog().fp_prt = std::fopen(dir.path("run.log").c_str(), "w");
    EXPECT_NEAR(oc2nc3D(fx, fy, fz, tx, ty, tz, -6), s, 1e-9);
    resetRunLog();
    const std::string log = readTextFile(dir.path("run.log"));
    EXPECT_TRUE(log.starts_with(" Frame cordinates \n0.000000 0.000000 0.000000    .... 650000.000000 3500000.000000 "
                                "50.000000\n"))
        << log;
    EXPECT_NE(log.find(" Origin from       4.17       0.00       8.50 \n"), std::string::npos) << log;
    EXPECT_NE(log.find(" Scale: 1.70000\n"), std::string::npos) << log;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_NEAR(oc2ncState().matrix[i][j], R[i][j], 1e-9);

    const double others[3][3] = {{100, -80, 3}, {-7.5, 2.25, 60}, {0.001, 0.002, -0.003}};
    double px[3], py[3], pz[3], qx[3], qy[3], qz[3];
    for (int i = 0; i < 3; ++i) px[i] = others[i][0], py[i] = others[i][1], pz[i] = others[i][2];
    EXPECT_EQ(oc2nc3D(px, py, pz, qx, qy, qz, 3), 999);
    for (int i = 0; i < 3; ++i) {
        double w[3];
        place(others[i], w);
        EXPECT_NEAR(qx[i], w[0], 1e-6);
        EXPECT_NEAR(qy[i], w[1], 1e-6);
        EXPECT_NEAR(qz[i], w[2], 1e-6);
    }
}

TEST_F(Oc2nc, AFourParameterTransformInThePlaneIsSolvedAndApplied) {
    // Scale 0.8, a turn of 25 degrees to the left, a shift.
    const double s = 0.8, a = 25 * M_PI / 180, sx = 178000, sy = 663000;
    auto place = [&](double x, double y, double& X, double& Y) {
        X = s * (std::cos(a) * x - std::sin(a) * y) + sx;
        Y = s * (std::sin(a) * x + std::cos(a) * y) + sy;
    };
    double IX[4] = {0, 30, 28, -4}, IY[4] = {0, 2, 25, 22}, XA[4], YA[4];
    for (int i = 0; i < 4; ++i) place(IX[i], IY[i], XA[i], YA[i]);
    oc2nc(IX, IY, XA, YA, -4);
    EXPECT_NEAR(oc2ncState().a, s * std::cos(a), 1e-12);
    EXPECT_NEAR(oc2ncState().b, s * std::sin(a), 1e-12);

    double PX[2] = {-50, 12.5}, PY[2] = {80, -3}, QX[2], QY[2];
    oc2nc(PX, PY, QX, QY, 2);
    for (int i = 0; i < 2; ++i) {
        double X, Y;
        place(PX[i], PY[i], X, Y);
        EXPECT_NEAR(QX[i], X, 1e-6);
        EXPECT_NEAR(QY[i], Y, 1e-6);
    }
}

TEST_F(Oc2nc, TheExportCarriesTheModelAndItsPhotoListThroughTheTransform) {
    // A quarter turn to the left, then a shift to (100, 200, 10):
    // (x, y, z) -> (100 - y, 200 + x, z + 10); in the plane Z stays.
    Oc2ncState& st = oc2ncState();
    const double turn[3][3] = {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) st.matrix[i][j] = turn[i][j];
    st.originTo[0] = st.toMeanX = 100;
    st.originTo[1] = st.toMeanY = 200;
    st.originTo[2] = 10;
    st.a = 0, st.b = 1;

    ScratchDir dir;
    writeTextFile(dir.path("site/Site.obj"), "mtllib Site.mtl\nv 0 0 5\nvt 0 0\nv 2.5 -1 0\nf 1/1 2/1 1/1\n");
    // A camera looking along local X down at its target, one looking along -Y.
    writeTextFile(dir.path("site/OBLIXS/Site.OPK"),
                  "IMG_1 0.000000 0.000000 5.000000 10.000000 0.000000 0.000000 90 -27 1.00   10.00 0.00 -5.00 10.00 90\n"
                  "IMG_2 0.000000 0.000000 0.000000 0.000000 -10.000000 0.000000 180 0 1.00   0.00 -10.00 0.00 10.00 0\n");

    std::filesystem::create_directories(dir.path("out"));
    ASSERT_TRUE(ExportRectifiedModel(dir.path("site/Site.obj"), dir.path("out/Geo.obj"), true));
    EXPECT_EQ(readTextFile(dir.path("out/Geo.obj")),
              "mtllib Site.mtl\nv 100.000000 200.000000 15.000000\nvt 0 0\nv 101.000000 202.500000 10.000000\n"
              "f 1/1 2/1 1/1\n");
    // Looking north 10 m and 5 m down: azimuth 0, pitch atan(-5 / 10.01); looking east: azimuth 90.
    EXPECT_EQ(readTextFile(dir.path("out/OBLIXS/Geo.CSV")),
              "Image,X1,Y1,Z1,Z2,Y2,Z2,Azimuth,Pitch,fpc,DX,DY,DZ,DIST,Rotation\n"
              "IMG_1,100.000000,200.000000,15.000000,100.000000,210.000000,10.000000,0.0,-26.5,1.00,0.00,10.00,-5.00,"
              "10.00, 90\n"
              "IMG_2,100.000000,200.000000,10.000000,110.000000,200.000000,10.000000,90.0,0.0,1.00,10.00,0.00,0.00,"
              "10.00, 0\n");
    EXPECT_EQ(readTextFile(dir.path("out/OBLIXS/Geo.OPK")),
              "IMG_1 100.000000 200.000000 15.000000 100.000000 210.000000 10.000000 0.0 -26.5 1.00 0.00 10.00 -5.00 "
              "10.00  90\n"
              "IMG_2 100.000000 200.000000 10.000000 110.000000 200.000000 10.000000 90.0 0.0 1.00 10.00 0.00 0.00 "
              "10.00  0\n");

    ASSERT_TRUE(ExportRectifiedModelUse2D(dir.path("site/Site.obj"), dir.path("out/Plane.obj"), false));
    EXPECT_EQ(readTextFile(dir.path("out/Plane.obj")),
              "mtllib Site.mtl\nv 100.000000 200.000000 5.000000\nvt 0 0\nv 101.000000 202.500000 0.000000\n"
              "f 1/1 2/1 1/1\n");
    EXPECT_FALSE(ExportRectifiedModel(dir.path("site/None.obj"), dir.path("out/None.obj"), false));
    EXPECT_FALSE(std::filesystem::exists(dir.path("out/None.obj")));
}
