#include "AtlasPainter.h"

#include "AtlasLayout.h"
#include "Random.h"
#include "SiteLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sitegen {
namespace {

struct Rgb {
    double r, g, b;
};
Rgb operator*(Rgb c, double f) { return {c.r * f, c.g * f, c.b * f}; }
Rgb mix(Rgb a, Rgb b, double t) { return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t}; }

double fract(double v) { return v - std::floor(v); }
bool inside(const Rect& r, double x, double y) { return x >= r.x0 && x <= r.x1 && y >= r.y0 && y <= r.y1; }

// Calls colourAt(s, t, px, py) for every pixel of the region, with (s, t)
// the pixel centre in the region's metres (t upwards).
template <class ColourAt>
void paintRegion(QImage& image, Surface surface, ColourAt colourAt)
{
    const AtlasRegion& r = atlasRegion(surface);
    for (int py = r.y; py < r.y + r.height; ++py) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(py));
        const double t = (1.0 - (py - r.y + 0.5) / r.height) * r.metresHigh;
        for (int px = r.x; px < r.x + r.width; ++px) {
            const double s = (px - r.x + 0.5) / r.width * r.metresWide;
            const Rgb c = colourAt(s, t, px, py);
            const auto channel = [](double v) { return int(std::clamp(std::lround(v), 0L, 255L)); };
            line[px] = qRgb(channel(c.r), channel(c.g), channel(c.b));
        }
    }
}

double grain(int px, int py, unsigned salt, double amount)
{
    return 1.0 - amount + 2.0 * amount * hash01(px, py, salt);
}

void paintTerrain(QImage& image, const ValueNoise& noise)
{
    paintRegion(image, Surface::Terrain, [&](double s, double t, int px, int py) {
        const double x = s - kSiteHalfExtent, y = t - kSiteHalfExtent;
        if (inside(kRoad, x, y)) {
            const double centre = kRoad.centreY();
            if (y - kRoad.y0 < 0.25 || kRoad.y1 - y < 0.25)
                return Rgb{192, 190, 184} * grain(px, py, 2, 0.05);
            if (std::abs(y - centre) < 0.09 && fract(x / 6.0) < 0.5)
                return Rgb{232, 232, 226} * grain(px, py, 3, 0.04);
            return Rgb{70, 70, 73} * (0.9 + 0.2 * noise.fbm(x / 3.0, y / 3.0, 3)) * grain(px, py, 4, 0.12);
        }
        if (inside(kFootPath, x, y))
            return Rgb{184, 174, 152} * grain(px, py, 5, 0.14);
        if (inside(kPlaza, x, y)) {
            const double u = fract(x / 0.5), v = fract(y / 0.5);
            if (u < 0.07 || v < 0.07)
                return Rgb{118, 114, 106} * grain(px, py, 6, 0.06);
            const double paver = 0.93 + 0.1 * hash01(std::int64_t(std::floor(x / 0.5)), std::int64_t(std::floor(y / 0.5)), 7);
            return Rgb{178, 172, 160} * paver * grain(px, py, 8, 0.05);
        }
        Rgb c = mix({58, 92, 38}, {110, 140, 62}, noise.fbm(x / 6.0, y / 6.0, 4));
        c = mix(c, {152, 143, 94}, 0.8 * smoothstep(0.55, 0.72, noise.fbm(x / 18.0 + 50.0, y / 18.0 + 50.0, 3)));
        const double soil = smoothstep(0.60, 0.70, noise.fbm(x / 11.0 + 90.0, y / 11.0 + 20.0, 4));
        c = mix(c, Rgb{122, 96, 68} * (0.9 + 0.2 * noise.at(x * 1.5, y * 1.5)), soil);
        return c * grain(px, py, 1, 0.12);
    });
}

void paintRoofTiles(QImage& image, const ValueNoise& noise)
{
    constexpr double rowHeight = 0.32, tileWidth = 0.24;
    paintRegion(image, Surface::RoofTiles, [&](double s, double t, int px, int py) {
        const double rowPos = t / rowHeight;
        const auto row = std::int64_t(std::floor(rowPos));
        const double fv = rowPos - row;
        const double colPos = s / tileWidth + (row % 2 ? 0.5 : 0.0);
        const auto col = std::int64_t(std::floor(colPos));
        const double fu = colPos - col;
        Rgb c = Rgb{170, 74, 50} * (0.82 + 0.3 * hash01(col, row, 9));
        c.g += 14.0 * (hash01(col, row, 10) - 0.5);
        c = c * (0.72 + 0.38 * std::sin(std::numbers::pi * fu));  // rounded tile
        c = c * (1.0 - 0.45 * smoothstep(0.8, 1.0, fv));           // under the next row
        if (fu < 0.04 || fu > 0.96)
            c = c * 0.6;
        c = mix(c, {70, 52, 40}, 0.3 * smoothstep(0.45, 0.8, noise.fbm(s / 2.0, t / 2.0, 4)));
        return c * grain(px, py, 11, 0.08);
    });
}

// Windows 1.1 m wide every 3 m (centres at 1.5 + 3k), sills below.
void paintPlaster(QImage& image, const ValueNoise& noise)
{
    constexpr double rows[2][2] = {{1.5, 2.9}, {4.5, 5.9}};
    paintRegion(image, Surface::Plaster, [&](double s, double t, int px, int py) {
        if (t < 0.8)
            return Rgb{150, 142, 128} * (t > 0.76 ? 0.8 : 1.0) * grain(px, py, 12, 0.08);
        const double du = s - (1.5 + 3.0 * std::round((s - 1.5) / 3.0));
        const double half = 0.55;
        for (const auto& row : rows) {
            const double r0 = row[0], r1 = row[1];
            if (t >= r0 - 0.08 && t < r0 && std::abs(du) <= half + 0.07)
                return Rgb{204, 202, 196} * grain(px, py, 13, 0.04);
            if (t >= r0 && t <= r1 && std::abs(du) <= half) {
                if (std::abs(du) > half - 0.07 || t < r0 + 0.07 || t > r1 - 0.07 || std::abs(du) < 0.03)
                    return Rgb{238, 238, 232} * grain(px, py, 14, 0.03);
                const double sky = 0.6 * (t - r0) / (r1 - r0) + 0.25 * noise.fbm(s * 2.0, t * 2.0, 2);
                return mix({40, 52, 66}, {112, 132, 152}, sky);
            }
        }
        Rgb c = Rgb{228, 219, 201} * (0.95 + 0.08 * noise.fbm(s * 1.5, t * 1.5, 4));
        for (const auto& row : rows)
            if (t >= row[0] - 0.3 && t < row[0] - 0.08 && std::abs(du) < half)
                c = c * 0.93; // stain under the sill
        return c * grain(px, py, 15, 0.04);
    });
}

void paintGravel(QImage& image, const ValueNoise& noise)
{
    paintRegion(image, Surface::Gravel, [&](double s, double t, int px, int py) {
        const double pebble = hash01(px / 2, py / 2, 16);
        Rgb c{136, 134, 127};
        if (pebble > 0.9)
            c = {188, 182, 170};
        else if (pebble < 0.07)
            c = {92, 90, 86};
        c = c * (0.9 + 0.15 * noise.fbm(s / 3.0, t / 3.0, 3));
        return c * grain(px, py, 17, 0.14);
    });
}

void paintConcrete(QImage& image, const ValueNoise& noise)
{
    paintRegion(image, Surface::Concrete, [&](double s, double t, int px, int py) {
        Rgb c = Rgb{174, 173, 167} * (0.93 + 0.1 * noise.fbm(s * 0.8, t * 0.8, 4));
        if (fract(s / 1.2) < 0.012 || fract(t / 0.6) < 0.015)
            c = c * 0.82;
        return c * grain(px, py, 18, 0.05);
    });
}

// Floors every 3 m from t = 0.6; windows 1.4 m wide every 2.4 m (centres
// at 1.2 + 2.4k), some with blinds half down.
void paintFacade(QImage& image, const ValueNoise& noise)
{
    paintRegion(image, Surface::Facade, [&](double s, double t, int px, int py) {
        if (t < 0.6)
            return Rgb{80, 78, 76} * grain(px, py, 19, 0.06);
        const auto storey = std::int64_t(std::floor((t - 0.6) / 3.0));
        const double ft = t - 0.6 - 3.0 * storey;
        if (ft < 0.18 || ft > 2.88)
            return Rgb{158, 156, 148} * grain(px, py, 20, 0.05);
        const auto column = std::int64_t(std::round((s - 1.2) / 2.4));
        const double du = s - (1.2 + 2.4 * column);
        if (ft >= 0.9 && ft <= 2.4 && std::abs(du) <= 0.7) {
            if (std::abs(du) > 0.64 || ft < 0.96 || ft > 2.34)
                return Rgb{62, 62, 64};
            const double blind = hash01(column, storey, 21);
            if (blind < 0.35 && ft > 2.34 - (0.3 + 2.5 * blind) * 1.4)
                return Rgb{198, 186, 162} * (fract(ft / 0.05) < 0.2 ? 0.85 : 1.0);
            return mix({34, 46, 60}, {98, 116, 136}, 0.7 * (ft - 0.9) / 1.5 + 0.1 * hash01(column, storey, 22));
        }
        return Rgb{108, 100, 94} * (0.92 + 0.12 * noise.fbm(s * 0.6, t * 0.6, 4)) * grain(px, py, 23, 0.05);
    });
}

void paintVegetationAndRoofing(QImage& image, const ValueNoise& noise)
{
    paintRegion(image, Surface::Canopy, [&](double s, double t, int px, int py) {
        Rgb c = mix({34, 64, 28}, {104, 146, 62}, smoothstep(0.3, 0.75, noise.fbm(s * 2.5, t * 2.5, 5)));
        if (noise.fbm(s * 6.0 + 30.0, t * 6.0, 3) < 0.33)
            c = c * 0.6;
        return c * grain(px, py, 24, 0.15);
    });
    paintRegion(image, Surface::Bark, [&](double s, double t, int px, int py) {
        return Rgb{92, 72, 54} * (0.75 + 0.35 * noise.at(s * 30.0, t * 2.0)) * grain(px, py, 25, 0.08);
    });
    paintRegion(image, Surface::Bitumen, [&](double s, double t, int px, int py) {
        Rgb c = Rgb{80, 78, 76} * (0.92 + 0.1 * noise.fbm(s / 2.0, t / 2.0, 3));
        if (fract(t) < 0.03)
            c = c * 1.25;
        return c * grain(px, py, 26, 0.1);
    });
    paintRegion(image, Surface::Spare, [&](double, double, int px, int py) {
        return Rgb{128, 128, 128} * grain(px, py, 27, 0.03);
    });
}

} // namespace

QImage paintAtlas(unsigned seed)
{
    QImage image(kAtlasSize, kAtlasSize, QImage::Format_RGB32);
    image.fill(qRgb(128, 128, 128));
    const ValueNoise noise(seed);
    paintTerrain(image, noise);
    paintRoofTiles(image, noise);
    paintPlaster(image, noise);
    paintGravel(image, noise);
    paintConcrete(image, noise);
    paintFacade(image, noise);
    paintVegetationAndRoofing(image, noise);
    return image;
}

} // namespace sitegen
