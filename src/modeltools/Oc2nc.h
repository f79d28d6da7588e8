// The two similarity solvers of the template route: oc2nc3D (seven
// parameters: scale, rotation in space, shift) and oc2nc (four, in the
// plane). Both take the same convention: N negative solves from -N pairs,
// N positive applies what was solved to N points. What a solve finds stays
// in Oc2ncState for the calls that apply it.
#pragma once

struct Oc2ncState {
    // Space: the centroids of the two sets, the scale and the rotation.
    double originFrom[3] = {0, 0, 0};
    double originTo[3] = {0, 0, 0};
    double SCALE = 1;
    double matrix[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    // Plane: the centroids and the coefficients cos * scale, sin * scale.
    double fromMeanX = 0, fromMeanY = 0;
    double toMeanX = 0, toMeanY = 0;
    double a = 1, b = 0;
};

Oc2ncState& oc2ncState();
void resetOc2ncState();

// Solving (N < 0) centres both sets in place, logs the frames and the
// parameters to the run log and returns the scale; applying (N > 0) writes
// the to_ arrays from the from_ arrays and returns 999.
double oc2nc3D(double* from_x, double* from_y, double* from_z, double* to_x, double* to_y, double* to_z, int N);

// Solving (N < 0) fits IX, IY onto XA, YA; applying (N > 0) writes XA, YA
// from IX, IY.
void oc2nc(double* IX, double* IY, double* XA, double* YA, int N);
