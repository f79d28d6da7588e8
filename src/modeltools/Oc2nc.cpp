#include "Oc2nc.h"

#include <cmath>

#include "app/services/RunLog.h"

Oc2ncState& oc2ncState() {
    static Oc2ncState state;
    return state;
}

void resetOc2ncState() { oc2ncState() = Oc2ncState{}; }

namespace {

double det3(const double m[3][3]) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

void solve3D(double* fx, double* fy, double* fz, double* tx, double* ty, double* tz, int n) {
    Oc2ncState& s = oc2ncState();
    PrintRunLog(" Frame cordinates \n");
    for (int i = 0; i < n; ++i)
        PrintRunLog("%lf %lf %lf    .... %lf %lf %lf\n", fx[i], fy[i], fz[i], tx[i], ty[i], tz[i]);

    double from[3] = {0, 0, 0}, to[3] = {0, 0, 0};
    for (int i = 0; i < n; ++i) {
        from[0] += fx[i], from[1] += fy[i], from[2] += fz[i];
        to[0] += tx[i], to[1] += ty[i], to[2] += tz[i];
    }
    for (int k = 0; k < 3; ++k) {
        s.originFrom[k] = from[k] / n;
        s.originTo[k] = to[k] / n;
    }
    PrintRunLog(" Origin from %10.2f %10.2f %10.2f \n", s.originFrom[0], s.originFrom[1], s.originFrom[2]);
    PrintRunLog(" Origin   to %10.2f %10.2f %10.2f \n", s.originTo[0], s.originTo[1], s.originTo[2]);

    double S = 0, T = 0;
    for (int i = 0; i < n; ++i) {
        fx[i] -= s.originFrom[0], fy[i] -= s.originFrom[1], fz[i] -= s.originFrom[2];
        tx[i] -= s.originTo[0], ty[i] -= s.originTo[1], tz[i] -= s.originTo[2];
        const double f2 = fx[i] * fx[i] + fy[i] * fy[i] + fz[i] * fz[i];
        const double t2 = tx[i] * tx[i] + ty[i] * ty[i] + tz[i] * tz[i];
        S += std::sqrt(f2 * t2);
        T += t2;
    }
    s.SCALE = S > 0 ? T / S : 1;

    // The rotation's equations below hold for two sets of one size, so the
    // source set is brought to the target's size: the same factor the apply
    // step puts on a point before turning it.
    double N11 = 0, N12 = 0, N13 = 0, N22 = 0, N23 = 0, N33 = 0, r1 = 0, r2 = 0, r3 = 0;
    for (int i = 0; i < n; ++i) {
        fx[i] *= s.SCALE, fy[i] *= s.SCALE, fz[i] *= s.SCALE;
        const double a = fx[i] + tx[i], b = fy[i] + ty[i], c = fz[i] + tz[i];
        const double q = a * a + b * b + c * c;
        N11 += q - c * c;
        N12 -= c * b;
        N13 -= c * a;
        N22 += q - b * b;
        N23 -= b * a;
        N33 += q - a * a;
        r1 += 2 * (tx[i] * fy[i] - ty[i] * fx[i]);
        r2 -= 2 * (tx[i] * fz[i] - tz[i] * fx[i]);
        r3 -= 2 * (tz[i] * fy[i] - ty[i] * fz[i]);
    }

    const double Nm[3][3] = {{N11, N12, N13}, {N12, N22, N23}, {N13, N23, N33}};
    const double D = det3(Nm);
    double a = 0, b = 0, c = 0;
    // Pairs on one line leave the turn about that line open: no turn then.
    if (std::fabs(D) > 1e-300) {
        const double Na[3][3] = {{r1, N12, N13}, {r2, N22, N23}, {r3, N23, N33}};
        const double Nb[3][3] = {{N11, r1, N13}, {N12, r2, N23}, {N13, r3, N33}};
        const double Nc[3][3] = {{N11, N12, r1}, {N12, N22, r2}, {N13, N23, r3}};
        a = det3(Na) / D;
        b = det3(Nb) / D;
        c = det3(Nc) / D;
    }

    const double k = 1 + a * a + b * b + c * c;
    const double m = 2 - k;
    double(&R)[3][3] = s.matrix;
    R[0][0] = (m + 2 * c * c) / k;
    R[0][1] = 2 * (a + b * c) / k;
    R[0][2] = 2 * (a * c - b) / k;
    R[1][0] = 2 * (b * c - a) / k;
    R[1][1] = (m + 2 * b * b) / k;
    R[1][2] = 2 * (c + a * b) / k;
    R[2][0] = 2 * (b + a * c) / k;
    R[2][1] = 2 * (a * b - c) / k;
    R[2][2] = (m + 2 * a * a) / k;

    PrintRunLog(" transform parameter\n ");
    PrintRunLog(" origin from %10.2f %10.2f %10.2f \n", s.originFrom[0], s.originFrom[1], s.originFrom[2]);
    PrintRunLog(" origin   to %10.2f %10.2f %10.2f \n", s.originTo[0], s.originTo[1], s.originTo[2]);
    PrintRunLog(" Scale: %.5lf\n", s.SCALE);
    for (int row = 0; row < 3; ++row) PrintRunLog(" %15.5f %15.5f %15.5f \n", R[row][0], R[row][1], R[row][2]);
}

}  // namespace

double oc2nc3D(double* from_x, double* from_y, double* from_z, double* to_x, double* to_y, double* to_z, int N) {
    if (N < 0) {
        solve3D(from_x, from_y, from_z, to_x, to_y, to_z, -N);
        return oc2ncState().SCALE;
    }
    const Oc2ncState& s = oc2ncState();
    for (int i = 0; i < N; ++i) {
        const double p[3] = {(from_x[i] - s.originFrom[0]) * s.SCALE, (from_y[i] - s.originFrom[1]) * s.SCALE,
                             (from_z[i] - s.originFrom[2]) * s.SCALE};
        double* out[3] = {&to_x[i], &to_y[i], &to_z[i]};
        for (int row = 0; row < 3; ++row)
            *out[row] = s.matrix[row][0] * p[0] + s.matrix[row][1] * p[1] + s.matrix[row][2] * p[2] + s.originTo[row];
    }
    return 999;
}

void oc2nc(double* IX, double* IY, double* XA, double* YA, int N) {
    Oc2ncState& s = oc2ncState();
    if (N > 0) {
        for (int i = 0; i < N; ++i) {
            const double XX = IX[i] - s.fromMeanX, XY = IY[i] - s.fromMeanY;
            XA[i] = XX * s.a - XY * s.b + s.toMeanX;
            YA[i] = XX * s.b + XY * s.a + s.toMeanY;
        }
        return;
    }
    const int n = -N;
    if (n == 0) return;
    double fx = 0, fy = 0, tx = 0, ty = 0;
    for (int i = 0; i < n; ++i) fx += IX[i], fy += IY[i], tx += XA[i], ty += YA[i];
    s.fromMeanX = fx / n, s.fromMeanY = fy / n, s.toMeanX = tx / n, s.toMeanY = ty / n;
    double sine = 0, cosine = 0, scale = 0;
    int used = 0;
    for (int i = 0; i < n; ++i) {
        const double DX = IX[i] - s.fromMeanX, DY = IY[i] - s.fromMeanY;
        const double GX = XA[i] - s.toMeanX, GY = YA[i] - s.toMeanY;
        const double SD = std::hypot(DX, DY), SG = std::hypot(GX, GY);
        // A pair standing on the centroid has no direction to tell a turn.
        if (SD <= 0 || SG <= 0) continue;
        sine += (GY * DX - GX * DY) / (SG * SD);
        cosine += (GX * DX + GY * DY) / (SG * SD);
        scale += SG / SD;
        ++used;
    }
    if (used == 0) {
        s.a = 1, s.b = 0;
        return;
    }
    sine /= used, cosine /= used, scale /= used;
    s.a = cosine * scale;
    s.b = sine * scale;
}
