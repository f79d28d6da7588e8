#include "Random.h"

#include <algorithm>
#include <cmath>

namespace sitegen {

double hash01(std::int64_t x, std::int64_t y, std::uint32_t salt)
{
    std::uint64_t h = std::uint64_t(x) * 0x9E3779B97F4A7C15ull;
    h ^= std::uint64_t(y) * 0xC2B2AE3D27D4EB4Full + salt * 0x165667B19E3779F9ull;
    h ^= h >> 31;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 29;
    h *= 0x94D049BB133111EBull;
    h ^= h >> 32;
    return double(h >> 40) * (1.0 / 16777216.0);
}

ValueNoise::ValueNoise(std::uint32_t seed, int period) : period_(period)
{
    SeededRandom random(seed);
    lattice_.resize(std::size_t(period) * std::size_t(period));
    for (double& value : lattice_)
        value = random.uniform();
}

double ValueNoise::at(double x, double y) const
{
    const double fx = std::floor(x), fy = std::floor(y);
    const double tx = x - fx, ty = y - fy;
    const auto wrap = [this](double v) {
        const long long i = static_cast<long long>(v) % period_;
        return int(i < 0 ? i + period_ : i);
    };
    const int x0 = wrap(fx), y0 = wrap(fy);
    const int x1 = (x0 + 1) % period_, y1 = (y0 + 1) % period_;
    const auto cell = [this](int i, int j) { return lattice_[std::size_t(j) * period_ + i]; };
    const double sx = tx * tx * (3.0 - 2.0 * tx);
    const double sy = ty * ty * (3.0 - 2.0 * ty);
    const double a = cell(x0, y0) + (cell(x1, y0) - cell(x0, y0)) * sx;
    const double b = cell(x0, y1) + (cell(x1, y1) - cell(x0, y1)) * sx;
    return a + (b - a) * sy;
}

double ValueNoise::fbm(double x, double y, int octaves, double gain) const
{
    double sum = 0.0, amplitude = 1.0, norm = 0.0, frequency = 1.0;
    for (int i = 0; i < octaves; ++i) {
        // Offset each octave so lattice points do not line up.
        sum += amplitude * at(x * frequency + 17.3 * i, y * frequency + 31.7 * i);
        norm += amplitude;
        amplitude *= gain;
        frequency *= 2.0;
    }
    return sum / norm;
}

double smoothstep(double edge0, double edge1, double x)
{
    const double t = std::clamp((x - edge0) / (edge1 - edge0), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

} // namespace sitegen
