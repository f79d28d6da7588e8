#include "gen/CityGenerator.h"

#include <QImage>
#include <QImageWriter>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string_view>

namespace benchgen {
namespace {

// ---------------------------------------------------------------------------
// Deterministic randomness: a stateless hash, so every lot and lattice point
// can be revisited in any order and every pass sees the same city.

std::uint64_t mix64(std::uint64_t h)
{
    h ^= h >> 30;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 27;
    h *= 0x94D049BB133111EBull;
    h ^= h >> 31;
    return h;
}

// Uniform in [0, 1) from 53 hashed bits.
double hash01(std::uint64_t a, std::uint64_t b, std::uint64_t salt)
{
    const std::uint64_t h = mix64(a * 0x9E3779B97F4A7C15ull ^ mix64(b * 0xC2B2AE3D27D4EB4Full ^ (salt + 0x165667B19E3779F9ull)));
    return double(h >> 11) * (1.0 / 9007199254740992.0);
}

// Smooth value noise on a hashed lattice, and the ground and district maps
// built from it. Coordinates are metres from the city's south-west corner.
class Relief {
public:
    explicit Relief(unsigned seed) : seed_(std::uint64_t(seed) * 1000003u) {}

    double height(double x, double y) const
    {
        return 32.0 + 0.004 * x - 0.003 * y + 24.0 * (fbm(x / 800.0, y / 800.0, 3, 11) - 0.5) +
               3.0 * (fbm(x / 120.0, y / 120.0, 2, 23) - 0.5);
    }

    // In [0, 1]: high where towers cluster.
    double district(double x, double y) const { return fbm(x / 900.0, y / 900.0, 2, 37); }

private:
    double noise(double x, double y, std::uint64_t salt) const
    {
        const double fx = std::floor(x), fy = std::floor(y);
        const auto i = std::int64_t(fx), j = std::int64_t(fy);
        const double tx = x - fx, ty = y - fy;
        const double sx = tx * tx * (3.0 - 2.0 * tx), sy = ty * ty * (3.0 - 2.0 * ty);
        const auto at = [&](std::int64_t a, std::int64_t b) { return hash01(std::uint64_t(a), std::uint64_t(b), seed_ + salt); };
        const double p = at(i, j) + (at(i + 1, j) - at(i, j)) * sx;
        const double q = at(i, j + 1) + (at(i + 1, j + 1) - at(i, j + 1)) * sx;
        return p + (q - p) * sy;
    }

    double fbm(double x, double y, int octaves, std::uint64_t salt) const
    {
        double sum = 0.0, amplitude = 1.0, norm = 0.0, frequency = 1.0;
        for (int k = 0; k < octaves; ++k) {
            sum += amplitude * noise(x * frequency, y * frequency, salt + k);
            norm += amplitude;
            amplitude *= 0.5;
            frequency *= 2.0;
        }
        return sum / norm;
    }

    std::uint64_t seed_;
};

// ---------------------------------------------------------------------------
// The plan: how many lots, buildings and terrain cells give the target.

constexpr double kLotPitch = 20.0;         // metres between lot centres
constexpr double kBuildingShare = 0.7;     // of the triangles
constexpr double kLotsBuiltOn = 0.85;      // on average
constexpr int kTrianglesPerBuilding = 10;
constexpr std::uint64_t kOccupancySalt = 101;

struct CityPlan {
    int lotsPerSide = 1;
    double occupancy = 1.0;
    std::size_t buildings = 0;
    int cellsX = 1, cellsY = 1; // terrain grid
    double extent = kLotPitch;

    std::size_t gridPoints() const { return std::size_t(cellsX + 1) * std::size_t(cellsY + 1); }
    std::size_t vertices() const { return gridPoints() + 8 * buildings; }
    std::size_t texCoords() const { return gridPoints() + 14 * buildings; }
    std::size_t triangles() const
    {
        return 2 * std::size_t(cellsX) * std::size_t(cellsY) + kTrianglesPerBuilding * buildings;
    }
};

bool lotBuiltOn(const CityPlan& plan, unsigned seed, int i, int j)
{
    return hash01(std::uint64_t(i), std::uint64_t(j), std::uint64_t(seed) * 7919u + kOccupancySalt) < plan.occupancy;
}

CityPlan makePlan(const CityOptions& options)
{
    const double target = double(std::max<std::size_t>(options.targetTriangles, 12));
    const double wanted = std::floor(target * kBuildingShare / kTrianglesPerBuilding);
    CityPlan plan;
    plan.lotsPerSide = std::max(1, int(std::ceil(std::sqrt(wanted / kLotsBuiltOn))));
    const double lots = double(plan.lotsPerSide) * plan.lotsPerSide;
    plan.occupancy = wanted / lots;
    plan.extent = plan.lotsPerSide * kLotPitch;
    for (int j = 0; j < plan.lotsPerSide; ++j)
        for (int i = 0; i < plan.lotsPerSide; ++i)
            plan.buildings += lotBuiltOn(plan, options.seed, i, j) ? 1 : 0;
    // The terrain takes what the buildings leave: 2 cellsX cellsY triangles,
    // the grid near square with the product closest to the rest.
    const double left = std::max(2.0, target - double(kTrianglesPerBuilding * plan.buildings));
    const double side = std::sqrt(left / 2.0);
    double bestError = 1e300;
    for (int x = std::max(1, int(side * 0.8)); x <= std::max(1, int(std::ceil(side * 1.25))); ++x) {
        const int y = std::max(1, int(std::lround(left / (2.0 * x))));
        const double error = std::abs(2.0 * x * y - left);
        if (error < bestError) {
            bestError = error;
            plan.cellsX = x;
            plan.cellsY = y;
        }
    }
    return plan;
}

struct Box {
    double x0, y0, x1, y1; // local metres
    double zBase, zRoof;
};

Box buildingOnLot(const Relief& relief, unsigned seed, int i, int j)
{
    const auto h = [&](std::uint64_t salt) { return hash01(std::uint64_t(i), std::uint64_t(j), std::uint64_t(seed) * 7919u + salt); };
    const double width = 8.0 + 8.0 * h(2), depth = 8.0 + 8.0 * h(3);
    const double cx = (i + 0.5) * kLotPitch + (h(4) - 0.5) * ((kLotPitch - width) - 3.0);
    const double cy = (j + 0.5) * kLotPitch + (h(5) - 0.5) * ((kLotPitch - depth) - 3.0);
    // Mostly low buildings; towers up to 40 m where the district map is high.
    const double towerBias = relief.district(cx, cy);
    const double height = 5.0 + 35.0 * std::pow(h(6), 3.5 - 2.5 * towerBias);
    Box b{cx - width / 2, cy - depth / 2, cx + width / 2, cy + depth / 2, 0, 0};
    double lo = 1e300, hi = -1e300;
    for (const double x : {b.x0, b.x1})
        for (const double y : {b.y0, b.y1}) {
            lo = std::min(lo, relief.height(x, y));
            hi = std::max(hi, relief.height(x, y));
        }
    b.zBase = lo - 1.0; // walls reach into the ground
    b.zRoof = hi + height;
    return b;
}

// ---------------------------------------------------------------------------
// The generator: one pass over the city, calling a sink for every vertex
// (millimetres), texture coordinate (millionths), triangle (0-based vertex
// and texture indices), group and roof point. Used by every output.

std::int64_t millimetres(double v) { return std::llround(v * 1000.0); }
std::int64_t millionths(double v) { return std::llround(std::clamp(v, 0.0, 1.0) * 1e6); }

template <class Sink>
void generateCity(const CityPlan& plan, const CityOptions& options, const Relief& relief, Sink& sink)
{
    const double extent = plan.extent;
    const int nx = plan.cellsX, ny = plan.cellsY;
    const bool uv = options.withTexCoords;
    const auto vertex = [&](double x, double y, double z) {
        sink.vertex(millimetres(options.originX + x), millimetres(options.originY + y), millimetres(z));
    };

    sink.group("terrain");
    for (int j = 0; j <= ny; ++j) {
        for (int i = 0; i <= nx; ++i) {
            const double x = extent * i / nx, y = extent * j / ny;
            vertex(x, y, relief.height(x, y));
            if (uv)
                sink.texCoord(millionths(x / extent), millionths(y / extent));
        }
    }
    for (int j = 0; j < ny; ++j) {
        for (int i = 0; i < nx; ++i) {
            const auto a = std::uint32_t(j * (nx + 1) + i), b = a + 1;
            const auto d = std::uint32_t(a + (nx + 1)), c = d + 1;
            // Counter-clockwise seen from above; texture indices equal vertex ones.
            sink.triangle(a, b, c, a, b, c);
            sink.triangle(a, c, d, a, c, d);
        }
    }

    sink.group("buildings");
    auto nextVertex = std::uint32_t(plan.gridPoints());
    auto nextTex = uv ? nextVertex : 0u;
    for (int j = 0; j < plan.lotsPerSide; ++j) {
        for (int i = 0; i < plan.lotsPerSide; ++i) {
            if (!lotBuiltOn(plan, options.seed, i, j))
                continue;
            const Box b = buildingOnLot(relief, options.seed, i, j);
            const double xs[4] = {b.x0, b.x1, b.x1, b.x0}; // counter-clockwise from south-west
            const double ys[4] = {b.y0, b.y0, b.y1, b.y1};
            for (int k = 0; k < 4; ++k)
                vertex(xs[k], ys[k], b.zBase);
            for (int k = 0; k < 4; ++k)
                vertex(xs[k], ys[k], b.zRoof);
            if (uv) {
                // Walls unrolled as a strip starting at the roof's own texels,
                // then the roof as seen from above.
                const double u0 = b.x0 / extent, v0 = b.y0 / extent;
                const double direction = u0 > 0.5 ? -1.0 : 1.0;
                double around = 0.0;
                for (int k = 0; k <= 4; ++k) {
                    const double u = u0 + direction * around / extent;
                    sink.texCoord(millionths(u), millionths(v0));
                    sink.texCoord(millionths(u), millionths(v0 + (b.zRoof - b.zBase) / extent));
                    around += std::abs(xs[(k + 1) % 4] - xs[k % 4]) + std::abs(ys[(k + 1) % 4] - ys[k % 4]);
                }
                for (int k = 0; k < 4; ++k)
                    sink.texCoord(millionths(xs[k] / extent), millionths(ys[k] / extent));
            }
            const std::uint32_t v = nextVertex, t = nextTex;
            const auto wallTex = [&](int k, int top) { return uv ? t + std::uint32_t(2 * k + top) : 0u; };
            const auto roofTex = [&](int k) { return uv ? t + 10u + std::uint32_t(k) : 0u; };
            for (int k = 0; k < 4; ++k) {
                const std::uint32_t b0 = v + k, b1 = v + (k + 1) % 4, t0 = v + 4 + k, t1 = v + 4 + (k + 1) % 4;
                sink.triangle(b0, b1, t1, wallTex(k, 0), wallTex(k + 1, 0), wallTex(k + 1, 1));
                sink.triangle(b0, t1, t0, wallTex(k, 0), wallTex(k + 1, 1), wallTex(k, 1));
            }
            sink.triangle(v + 4, v + 5, v + 6, roofTex(0), roofTex(1), roofTex(2));
            sink.triangle(v + 4, v + 6, v + 7, roofTex(0), roofTex(2), roofTex(3));
            sink.roofPoint(options.originX + 0.5 * (b.x0 + b.x1), options.originY + 0.5 * (b.y0 + b.y1),
                           double(millimetres(b.zRoof)) / 1000.0 + 0.3);
            nextVertex += 8;
            nextTex += uv ? 14u : 0u;
        }
    }
}

// Fisher-Yates with a fixed mapping of engine output to an index, so the
// order is the same everywhere.
void shuffleRoofPoints(std::vector<std::array<double, 3>>& points, unsigned seed)
{
    std::mt19937 engine(seed ^ 0x5EEDu);
    for (std::size_t i = points.size(); i > 1; --i) {
        const auto j = std::size_t((std::uint64_t(engine()) * i) >> 32);
        std::swap(points[i - 1], points[j]);
    }
}

// ---------------------------------------------------------------------------
// Buffered text output with exact fixed-point formatting of scaled integers.

class BufferedWriter {
public:
    explicit BufferedWriter(const std::string& path)
        : path_(path), file_(std::fopen(path.c_str(), "wb")), buffer_(new char[kCapacity])
    {
        if (!file_)
            throw std::runtime_error("cannot write " + path);
    }
    ~BufferedWriter()
    {
        if (file_)
            std::fclose(file_);
    }
    BufferedWriter(const BufferedWriter&) = delete;
    BufferedWriter& operator=(const BufferedWriter&) = delete;

    void put(char c)
    {
        reserve(1);
        buffer_[used_++] = c;
    }
    void put(std::string_view text)
    {
        reserve(text.size());
        if (text.size() > kCapacity) {
            write(text.data(), text.size());
            return;
        }
        std::copy(text.begin(), text.end(), buffer_.get() + used_);
        used_ += text.size();
    }
    void putUnsigned(std::uint64_t value)
    {
        reserve(24);
        char digits[24];
        int count = 0;
        do {
            digits[count++] = char('0' + value % 10);
            value /= 10;
        } while (value != 0);
        while (count > 0)
            buffer_[used_++] = digits[--count];
    }
    // value / 10^decimals printed with exactly `decimals` decimals.
    void putFixed(std::int64_t value, int decimals)
    {
        reserve(32);
        if (value < 0) {
            buffer_[used_++] = '-';
            value = -value;
        }
        std::uint64_t scale = 1;
        for (int k = 0; k < decimals; ++k)
            scale *= 10;
        putUnsigned(std::uint64_t(value) / scale);
        buffer_[used_++] = '.';
        std::uint64_t fraction = std::uint64_t(value) % scale;
        for (int k = decimals - 1; k >= 0; --k) {
            buffer_[used_ + k] = char('0' + fraction % 10);
            fraction /= 10;
        }
        used_ += std::size_t(decimals);
    }
    void close()
    {
        flush();
        const int closed = std::fclose(file_);
        file_ = nullptr;
        if (closed != 0)
            throw std::runtime_error("error while writing " + path_);
    }

private:
    static constexpr std::size_t kCapacity = std::size_t(1) << 20;

    void reserve(std::size_t bytes)
    {
        if (used_ + bytes > kCapacity)
            flush();
    }
    void flush()
    {
        write(buffer_.get(), used_);
        used_ = 0;
    }
    void write(const char* data, std::size_t size)
    {
        if (size != 0 && std::fwrite(data, 1, size, file_) != size)
            throw std::runtime_error("error while writing " + path_);
    }

    std::string path_;
    std::FILE* file_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
};

// ---------------------------------------------------------------------------
// Sinks.

// One pass of the OBJ: vertex lines, texture lines or face lines.
class ObjPassSink {
public:
    enum class Pass { Vertices, TexCoords, Faces };

    ObjPassSink(BufferedWriter& out, Pass pass, bool withTexCoords, const std::string& material, CityInfo& info)
        : out_(out), pass_(pass), uv_(withTexCoords), material_(material), info_(info)
    {
    }

    void group(const char* name)
    {
        if (pass_ != Pass::Faces)
            return;
        out_.put("g ");
        out_.put(name);
        out_.put('\n');
        if (!material_.empty()) {
            out_.put("usemtl ");
            out_.put(material_);
            out_.put('\n');
        }
    }
    void vertex(std::int64_t x, std::int64_t y, std::int64_t z)
    {
        ++vertices_;
        if (pass_ != Pass::Vertices)
            return;
        const std::int64_t p[3] = {x, y, z};
        for (int k = 0; k < 3; ++k) {
            lo_[k] = std::min(lo_[k], p[k]);
            hi_[k] = std::max(hi_[k], p[k]);
        }
        out_.put("v ");
        out_.putFixed(x, 3);
        out_.put(' ');
        out_.putFixed(y, 3);
        out_.put(' ');
        out_.putFixed(z, 3);
        out_.put('\n');
    }
    void texCoord(std::int64_t u, std::int64_t v)
    {
        ++texCoords_;
        if (pass_ != Pass::TexCoords)
            return;
        out_.put("vt ");
        out_.putFixed(u, 6);
        out_.put(' ');
        out_.putFixed(v, 6);
        out_.put('\n');
    }
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t ta, std::uint32_t tb, std::uint32_t tc)
    {
        ++triangles_;
        if (pass_ != Pass::Faces)
            return;
        out_.put('f');
        const std::uint32_t v[3] = {a, b, c}, t[3] = {ta, tb, tc};
        for (int k = 0; k < 3; ++k) {
            out_.put(' ');
            out_.putUnsigned(std::uint64_t(v[k]) + 1);
            if (uv_) {
                out_.put('/');
                out_.putUnsigned(std::uint64_t(t[k]) + 1);
            }
        }
        out_.put('\n');
    }
    void roofPoint(double x, double y, double z)
    {
        if (pass_ == Pass::Vertices)
            info_.roofPoints.push_back({x, y, z});
    }

    std::size_t vertices() const { return vertices_; }
    std::size_t texCoords() const { return texCoords_; }
    std::size_t triangles() const { return triangles_; }
    void storeBounds(CityInfo& info) const
    {
        for (int k = 0; k < 3; ++k) {
            info.minMax[k] = double(lo_[k]) / 1000.0;
            info.minMax[3 + k] = double(hi_[k]) / 1000.0;
        }
    }

private:
    BufferedWriter& out_;
    Pass pass_;
    bool uv_;
    std::string material_;
    CityInfo& info_;
    std::size_t vertices_ = 0, texCoords_ = 0, triangles_ = 0;
    std::int64_t lo_[3] = {INT64_MAX, INT64_MAX, INT64_MAX};
    std::int64_t hi_[3] = {INT64_MIN, INT64_MIN, INT64_MIN};
};

class MemorySink {
public:
    explicit MemorySink(CityMesh& mesh) : mesh_(mesh) {}

    void group(const char*) {}
    void vertex(std::int64_t x, std::int64_t y, std::int64_t z)
    {
        mesh_.positions.push_back(double(x) / 1000.0);
        mesh_.positions.push_back(double(y) / 1000.0);
        mesh_.positions.push_back(double(z) / 1000.0);
    }
    void texCoord(std::int64_t, std::int64_t) {}
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t, std::uint32_t, std::uint32_t)
    {
        mesh_.triangles.insert(mesh_.triangles.end(), {a, b, c});
    }
    void roofPoint(double x, double y, double z) { mesh_.roofPoints.push_back({x, y, z}); }

private:
    CityMesh& mesh_;
};

void writeMtl(const std::filesystem::path& path, const std::string& material, const std::string& texturePath)
{
    std::ofstream out(path, std::ios::binary);
    out << "# zv-citygen synthetic city material\n"
        << "newmtl " << material << "\n"
        << "Ka 1.000 1.000 1.000\nKd 1.000 1.000 1.000\nKs 0.000 0.000 0.000\nd 1.0\nillum 1\n"
        << "map_Kd " << texturePath << "\n";
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + path.string());
}

} // namespace

CityInfo writeCityObj(const std::string& objPath, const CityOptions& options, const std::string& texturePathOrEmpty)
{
    const CityPlan plan = makePlan(options);
    const Relief relief(options.seed);
    const std::string material = texturePathOrEmpty.empty() ? std::string() : std::string("city_texture");

    BufferedWriter out(objPath);
    char header[256];
    std::snprintf(header, sizeof header, "# zv-citygen synthetic city: seed %u, %zu buildings, %zu triangles, origin %.3f %.3f\n",
                  options.seed, plan.buildings, plan.triangles(), options.originX, options.originY);
    out.put(header);
    if (!material.empty()) {
        std::filesystem::path mtlPath(objPath);
        mtlPath.replace_extension(".mtl");
        writeMtl(mtlPath, material, texturePathOrEmpty);
        out.put("mtllib ");
        out.put(mtlPath.filename().string());
        out.put('\n');
    }

    CityInfo info;
    info.roofPoints.reserve(plan.buildings);
    using Pass = ObjPassSink::Pass;
    ObjPassSink vertices(out, Pass::Vertices, options.withTexCoords, material, info);
    generateCity(plan, options, relief, vertices);
    if (options.withTexCoords) {
        ObjPassSink texCoords(out, Pass::TexCoords, options.withTexCoords, material, info);
        generateCity(plan, options, relief, texCoords);
    }
    ObjPassSink faces(out, Pass::Faces, options.withTexCoords, material, info);
    generateCity(plan, options, relief, faces);
    out.close();

    if (vertices.vertices() != plan.vertices() || faces.triangles() != plan.triangles() ||
        (options.withTexCoords && vertices.texCoords() != plan.texCoords()))
        throw std::logic_error("city generator passes disagree");
    info.vertices = vertices.vertices();
    info.texCoords = options.withTexCoords ? vertices.texCoords() : 0;
    info.triangles = faces.triangles();
    vertices.storeBounds(info);
    shuffleRoofPoints(info.roofPoints, options.seed);
    return info;
}

CityMesh makeCityMesh(const CityOptions& options)
{
    const CityPlan plan = makePlan(options);
    CityOptions geometryOnly = options;
    geometryOnly.withTexCoords = false;
    CityMesh mesh;
    mesh.positions.reserve(3 * plan.vertices());
    mesh.triangles.reserve(3 * plan.triangles());
    mesh.roofPoints.reserve(plan.buildings);
    MemorySink sink(mesh);
    generateCity(plan, geometryOnly, Relief(options.seed), sink);
    shuffleRoofPoints(mesh.roofPoints, options.seed);
    return mesh;
}

bool writeTextureJpeg(const std::string& path, int size, unsigned seed)
{
    if (size <= 0)
        return false;
    QImage image(size, size, QImage::Format_RGB888);
    if (image.isNull())
        return false;
    // Square blocks of size/128 pixels in a few colours, streets between
    // them, and per-pixel grain.
    const int tile = std::max(8, size / 128);
    const int street = std::max(1, tile / 10);
    static constexpr unsigned char palette[6][3] = {{168, 84, 62}, {150, 148, 140}, {92, 118, 66},
                                                    {186, 176, 156}, {120, 112, 104}, {70, 96, 58}};
    for (int y = 0; y < size; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < size; ++x) {
            const std::uint64_t grainBits = mix64((std::uint64_t(x) << 32 | std::uint32_t(y)) ^ seed);
            const int grain = int(grainBits & 31) - 16;
            int r, g, b;
            if (x % tile < street || y % tile < street) {
                r = g = b = 82;
            } else {
                const auto pick = std::size_t(hash01(std::uint64_t(x / tile), std::uint64_t(y / tile), seed) * 6.0);
                r = palette[pick][0];
                g = palette[pick][1];
                b = palette[pick][2];
            }
            line[3 * x + 0] = uchar(std::clamp(r + grain, 0, 255));
            line[3 * x + 1] = uchar(std::clamp(g + grain, 0, 255));
            line[3 * x + 2] = uchar(std::clamp(b + grain, 0, 255));
        }
    }
    QImageWriter writer(QString::fromStdString(path), "jpg");
    writer.setQuality(85);
    return writer.write(image);
}

} // namespace benchgen
