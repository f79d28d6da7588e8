#pragma once
// Seeded randomness with a fixed mapping, so every platform produces the
// same numbers (std::mt19937 is fully defined; the distributions are not).

#include <cstdint>
#include <random>
#include <vector>

namespace sitegen {

class SeededRandom {
public:
    explicit SeededRandom(std::uint32_t seed) : engine_(seed) {}

    // Uniform in [0, 1): the top 24 bits of one draw, exact in a double.
    double uniform() { return double(engine_() >> 8) * (1.0 / 16777216.0); }
    double uniform(double lo, double hi) { return lo + (hi - lo) * uniform(); }

private:
    std::mt19937 engine_;
};

// Integer hash of a pixel or cell position to [0, 1); stateless grain.
double hash01(std::int64_t x, std::int64_t y, std::uint32_t salt = 0);

// Smooth 2D value noise on a periodic lattice filled from a seeded engine.
class ValueNoise {
public:
    explicit ValueNoise(std::uint32_t seed, int period = 256);

    // Smooth noise in [0, 1]; one lattice cell per unit.
    double at(double x, double y) const;
    // Sum of octaves (doubling frequency, amplitude times gain), in [0, 1].
    double fbm(double x, double y, int octaves, double gain = 0.5) const;

private:
    int period_;
    std::vector<double> lattice_;
};

double smoothstep(double edge0, double edge1, double x);

} // namespace sitegen
