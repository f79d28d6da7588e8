#include "ObjReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>
#include <unordered_map>

#include "../FileNameCase.h"
#include "EngineState.h"
#include "MtlReader.h"

namespace engine {

namespace {

constexpr std::int64_t NO_TEXCOORD = INT64_MIN;
constexpr std::int64_t RELATIVE_BIAS = std::int64_t(1) << 40;

// A change of group or material before the triangle with that index.
struct StateEvent {
    std::size_t triangle;
    bool isGroup;
    std::string name;
};

struct LineElement {
    std::size_t triangle;                // faces of the chunk read before it
    std::vector<std::int64_t> vertices;  // encoded as the face corners
};

// What one thread made of its share of the file. Vertex references are
// encoded: >= 0 is an absolute 0-based index; below 0 is a relative
// reference, kept as its chunk-local index minus RELATIVE_BIAS and resolved
// once the vertex counts of earlier chunks are known.
struct Chunk {
    std::vector<double> v;
    std::vector<float> vt;
    std::vector<std::int64_t> cornerV;  // three per triangle
    std::vector<std::int64_t> cornerT;
    std::vector<StateEvent> events;
    std::vector<LineElement> lines;
    std::vector<std::string> mtllibs;
    std::size_t lineCount = 0;
    std::string error;
    std::size_t errorLine = 0;  // chunk-local line number of the error
    int readFault = 0;          // 0, or the errno of a failed read (ENODATA: the file ended early)
};

inline const char* skipBlanks(const char* p, const char* end) {
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    return p;
}

enum class Number { Read, Missing, NotFinite };

// "nan", "inf" and numbers beyond the double range parse, but no point of a
// model can stand there: they would make the bounds and the centre infinite.
inline Number parseDouble(const char*& p, const char* end, double& out) {
    p = skipBlanks(p, end);
    if (p < end && *p == '+') ++p;
    auto [next, ec] = std::from_chars(p, end, out);
    if (ec == std::errc::result_out_of_range) {
        // Below the smallest double it is 0; above the largest it is no number at all.
        const char* e = std::find_if(p, next, [](char c) { return c == 'e' || c == 'E'; });
        if (e + 1 >= next || e[1] != '-') return Number::NotFinite;
        out = 0;
        p = next;
        return Number::Read;
    }
    if (ec != std::errc()) return Number::Missing;
    p = next;
    return std::isfinite(out) ? Number::Read : Number::NotFinite;
}

inline bool parseInt(const char*& p, const char* end, long& out) {
    if (p < end && *p == '+') ++p;
    auto [next, ec] = std::from_chars(p, end, out);
    if (ec != std::errc()) return false;
    p = next;
    return true;
}

std::string restOfLine(const char* p, const char* end) {
    p = skipBlanks(p, end);
    const char* e = end;
    while (e > p && (e[-1] == ' ' || e[-1] == '\t' || e[-1] == '\r')) --e;
    return std::string(p, e);
}

// Turns a 1-based or negative reference into the encoded form; false when 0.
inline bool encodeReference(long raw, std::size_t localCount, std::int64_t& encoded) {
    if (raw > 0) {
        encoded = raw - 1;
        return true;
    }
    if (raw < 0 && -raw < RELATIVE_BIAS) {
        encoded = static_cast<std::int64_t>(localCount) + raw - RELATIVE_BIAS;
        return true;
    }
    return false;
}

class ChunkParser {
public:
    explicit ChunkParser(Chunk& chunk) : c_(chunk) {}

    void parse(const char* begin, const char* end) {
        const char* p = begin;
        while (p < end && c_.error.empty()) {
            const char* nl = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
            const char* lineEnd = nl ? nl : end;
            ++c_.lineCount;
            parseLine(p, lineEnd);
            p = nl ? nl + 1 : end;
        }
    }

private:
    void fail(const char* what) {
        c_.error = what;
        c_.errorLine = c_.lineCount;
    }

    void parseLine(const char* p, const char* end) {
        p = skipBlanks(p, end);
        if (p >= end || *p == '#' || *p == '\r') return;
        const char* key = p;
        while (p < end && *p != ' ' && *p != '\t' && *p != '\r') ++p;
        const std::size_t keyLen = static_cast<std::size_t>(p - key);
        if (keyLen == 1 && key[0] == 'v') return parseVertex(p, end);
        if (keyLen == 2 && key[0] == 'v' && key[1] == 't') return parseTexCoord(p, end);
        if (keyLen == 1 && key[0] == 'f') return parseFace(p, end);
        if (keyLen == 1 && (key[0] == 'g' || key[0] == 'o'))
            return c_.events.push_back({c_.cornerV.size() / 3, true, restOfLine(p, end)});
        if (keyLen == 6 && std::memcmp(key, "usemtl", 6) == 0)
            return c_.events.push_back({c_.cornerV.size() / 3, false, restOfLine(p, end)});
        if (keyLen == 6 && std::memcmp(key, "mtllib", 6) == 0) return c_.mtllibs.push_back(restOfLine(p, end));
        if (keyLen == 1 && key[0] == 'l') return parseLineElement(p, end);
        // vn, s, vp and the rest carry nothing the engine keeps.
    }

    void parseVertex(const char* p, const char* end) {
        double xyz[3];
        for (double& value : xyz) {
            const Number n = parseDouble(p, end, value);
            if (n == Number::NotFinite) return fail("vertex coordinate that is not a finite number");
            if (n == Number::Missing) return fail("bad vertex");
        }
        c_.v.insert(c_.v.end(), xyz, xyz + 3);
    }

    void parseTexCoord(const char* p, const char* end) {
        double u = 0, v = 0;
        Number n = parseDouble(p, end, u);
        if (n == Number::Read) {
            const char* save = p;
            n = parseDouble(p, end, v);
            if (n == Number::Missing) {
                p = save;
                v = 0;
                n = Number::Read;
            }
        }
        if (n == Number::NotFinite) return fail("texture coordinate that is not a finite number");
        if (n == Number::Missing) return fail("bad texture coordinate");
        c_.vt.push_back(static_cast<float>(u));
        c_.vt.push_back(static_cast<float>(v));
    }

    // One corner "v", "v/t", "v//n" or "v/t/n".
    bool parseCorner(const char*& p, const char* end, std::int64_t& vi, std::int64_t& ti) {
        long raw;
        if (!parseInt(p, end, raw) || !encodeReference(raw, c_.v.size() / 3, vi)) return false;
        ti = NO_TEXCOORD;
        if (p < end && *p == '/') {
            ++p;
            if (p < end && *p != '/') {
                if (!parseInt(p, end, raw) || !encodeReference(raw, c_.vt.size() / 2, ti)) return false;
            }
            if (p < end && *p == '/') {
                ++p;
                long normal;
                if (p < end && *p != ' ' && *p != '\t' && *p != '\r' && !parseInt(p, end, normal)) return false;
            }
        }
        return p >= end || *p == ' ' || *p == '\t' || *p == '\r';
    }

    void parseFace(const char* p, const char* end) {
        std::int64_t firstV = 0, firstT = 0, prevV = 0, prevT = 0;
        int corners = 0;
        while (true) {
            p = skipBlanks(p, end);
            if (p >= end || *p == '\r') break;
            std::int64_t vi, ti;
            if (!parseCorner(p, end, vi, ti)) return fail("bad face");
            if (corners == 0) {
                firstV = vi;
                firstT = ti;
            } else if (corners >= 2) {
                // Polygons become fans around their first corner.
                c_.cornerV.insert(c_.cornerV.end(), {firstV, prevV, vi});
                c_.cornerT.insert(c_.cornerT.end(), {firstT, prevT, ti});
            }
            prevV = vi;
            prevT = ti;
            ++corners;
        }
        if (corners < 3) fail("face with fewer than three corners");
    }

    void parseLineElement(const char* p, const char* end) {
        LineElement element;
        element.triangle = c_.cornerV.size() / 3;
        while (true) {
            p = skipBlanks(p, end);
            if (p >= end || *p == '\r') break;
            std::int64_t vi, ti;
            if (!parseCorner(p, end, vi, ti)) return fail("bad line element");
            element.vertices.push_back(vi);
        }
        if (element.vertices.size() < 2) return fail("line element with fewer than two points");
        c_.lines.push_back(std::move(element));
    }

    Chunk& c_;
};

// The file is read, not mapped: a mapped file cut short while it is open
// kills the process with SIGBUS on the first page past its new end, where a
// read just comes up short. Each thread reads its own share through a
// buffer that stays in the cache, so nothing of the size of the file is
// allocated and the copy costs less than the page faults of a mapping.
constexpr std::size_t kReadPiece = 256 << 10;

// One pread of up to `size` bytes at `offset`, across interruptions; the
// bytes read, or -1 with the fault in `fault` (ENODATA where the file ends first).
long readAt(int fd, char* to, std::size_t size, std::size_t offset, int& fault) {
    while (true) {
        const ssize_t n = ::pread(fd, to, size, static_cast<off_t>(offset));
        if (n < 0 && errno == EINTR) continue;
        if (n > 0) return static_cast<long>(n);
        fault = n == 0 ? ENODATA : errno;
        return -1;
    }
}

// Bytes [begin, end) of the file, both at line starts, through the parser:
// whole lines go to it, the start of a line cut by the buffer's end moves to
// the buffer's front for the next read.
void parseShare(int fd, std::size_t begin, std::size_t end, Chunk& chunk) {
    std::vector<char> buffer(std::min(kReadPiece, std::max<std::size_t>(end - begin, 1)));
    ChunkParser parser(chunk);
    std::size_t offset = begin, kept = 0;
    while (offset < end && chunk.error.empty()) {
        if (kept == buffer.size()) buffer.resize(buffer.size() * 2);  // a line longer than the buffer
        const long n = readAt(fd, buffer.data() + kept, std::min(buffer.size() - kept, end - offset), offset,
                              chunk.readFault);
        if (n < 0) return;
        offset += static_cast<std::size_t>(n);
        const std::size_t filled = kept + static_cast<std::size_t>(n);
        std::size_t whole = filled;
        if (offset < end) {
            const void* last = ::memrchr(buffer.data(), '\n', filled);
            whole = last ? static_cast<std::size_t>(static_cast<const char*>(last) - buffer.data()) + 1 : 0;
        }
        parser.parse(buffer.data(), buffer.data() + whole);
        kept = filled - whole;
        std::memmove(buffer.data(), buffer.data() + whole, kept);
    }
}

// One past the first newline at or after `pos`, or `size` when there is none.
std::size_t lineStartFrom(int fd, std::size_t pos, std::size_t size, int& fault) {
    char window[4096];
    while (pos < size) {
        const long n = readAt(fd, window, std::min(sizeof window, size - pos), pos, fault);
        if (n < 0) return size;
        if (const void* nl = std::memchr(window, '\n', static_cast<std::size_t>(n)))
            return pos + static_cast<std::size_t>(static_cast<const char*>(nl) - window) + 1;
        pos += static_cast<std::size_t>(n);
    }
    return size;
}

// Resolves an encoded reference of a chunk whose first vertex has index base.
inline long resolveReference(std::int64_t encoded, std::size_t base) {
    if (encoded >= 0) return encoded;
    return static_cast<long>(base) + (encoded + RELATIVE_BIAS);
}

// Per-layer map from (vertex, texcoord) pairs to layer vertices: open
// addressing, because a million-face model asks it three million times.
class CornerMap {
public:
    void reserve(std::size_t n) {
        std::size_t cap = 16;
        while (cap < n * 2) cap <<= 1;
        keys_.assign(cap, EMPTY);
        values_.assign(cap, 0);
        mask_ = cap - 1;
        size_ = 0;
    }
    // Returns the value for key, inserting next when absent (inserted = true).
    std::uint32_t findOrInsert(std::uint64_t key, std::uint32_t next, bool& inserted) {
        if ((size_ + 1) * 2 > keys_.size()) grow();
        std::size_t i = hash(key) & mask_;
        while (true) {
            if (keys_[i] == key) {
                inserted = false;
                return values_[i];
            }
            if (keys_[i] == EMPTY) {
                keys_[i] = key;
                values_[i] = next;
                ++size_;
                inserted = true;
                return next;
            }
            i = (i + 1) & mask_;
        }
    }

private:
    static constexpr std::uint64_t EMPTY = ~0ull;
    static std::size_t hash(std::uint64_t k) {
        k ^= k >> 33;
        k *= 0xff51afd7ed558ccdull;
        k ^= k >> 33;
        return static_cast<std::size_t>(k);
    }
    void grow() {
        std::vector<std::uint64_t> oldKeys = std::move(keys_);
        std::vector<std::uint32_t> oldValues = std::move(values_);
        reserve(oldKeys.size());
        for (std::size_t i = 0; i < oldKeys.size(); ++i) {
            if (oldKeys[i] == EMPTY) continue;
            bool inserted;
            findOrInsert(oldKeys[i], oldValues[i], inserted);
        }
    }
    std::vector<std::uint64_t> keys_;
    std::vector<std::uint32_t> values_;
    std::size_t mask_ = 0;
    std::size_t size_ = 0;
};

struct LayerBuild {
    Layer layer;
    std::string material;
    CornerMap corners;
    bool hasTexCoords = false;
};

std::string baseNameOf(const std::string& path) {
    std::string name = path.substr(path.find_last_of("/\\") + 1);
    const auto dot = name.find_last_of('.');
    return dot == std::string::npos ? name : name.substr(0, dot);
}

std::string layerNameFor(const std::string& group, const std::string& material, bool groupHasOtherMaterial) {
    std::string name = groupHasOtherMaterial && !material.empty() ? group + "_" + material : group;
    if (name.size() > AT3D_NAME_SIZE - 1) name.resize(AT3D_NAME_SIZE - 1);
    return name;
}

}  // namespace

ObjReadHooks& objReadHooks() {
    static ObjReadHooks hooks;
    return hooks;
}

bool ReadObjFile(const std::string& path, std::vector<Layer>& layersOut) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat st {};
    if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        if (fd >= 0) ::close(fd);
        engineLog("OBJ read failed: cannot open %s", path.c_str());
        return false;
    }
    if (objReadHooks().opened) objReadHooks().opened(path);
    const auto size = static_cast<std::size_t>(st.st_size);

    // Split at line ends into one share per core.
    unsigned threads = std::max(1u, std::min(8u, std::thread::hardware_concurrency()));
    if (size < (1u << 20)) threads = 1;
    int fault = 0;
    std::vector<std::size_t> cuts{0};
    for (unsigned t = 1; t < threads; ++t)
        cuts.push_back(lineStartFrom(fd, std::max(size * t / threads, cuts.back()), size, fault));
    cuts.push_back(size);
    const std::size_t chunkCount = cuts.size() - 1;
    std::vector<Chunk> chunks(chunkCount);
    {
        std::vector<std::thread> workers;
        for (std::size_t i = 1; i < chunkCount; ++i)
            workers.emplace_back([&, i] { parseShare(fd, cuts[i], cuts[i + 1], chunks[i]); });
        parseShare(fd, cuts[0], cuts[1], chunks[0]);
        for (auto& w : workers) w.join();
    }
    // A byte past the announced end: the file grew while it was read.
    char beyond;
    if (!fault && ::pread(fd, &beyond, 1, static_cast<off_t>(size)) > 0) fault = EFBIG;
    ::close(fd);
    for (const Chunk& c : chunks) fault = fault ? fault : c.readFault;
    if (fault == ENODATA || fault == EFBIG) {
        engineLog("OBJ read failed: %s changed size while it was read", path.c_str());
        return false;
    }
    if (fault) {
        engineLog("OBJ read failed: cannot read %s: %s", path.c_str(), std::strerror(fault));
        return false;
    }

    std::size_t lineBase = 0;
    for (const Chunk& c : chunks) {
        if (!c.error.empty()) {
            engineLog("OBJ read failed: %s at line %zu of %s", c.error.c_str(), lineBase + c.errorLine, path.c_str());
            return false;
        }
        lineBase += c.lineCount;
    }

    // One vertex and texcoord table for the whole file.
    std::vector<std::size_t> vBase(chunkCount), tBase(chunkCount);
    std::size_t vCount = 0, tCount = 0;
    for (std::size_t i = 0; i < chunkCount; ++i) {
        vBase[i] = vCount;
        tBase[i] = tCount;
        vCount += chunks[i].v.size() / 3;
        tCount += chunks[i].vt.size() / 2;
    }
    std::vector<double> positions;
    std::vector<float> texCoords;
    positions.reserve(vCount * 3);
    texCoords.reserve(tCount * 2);
    for (Chunk& c : chunks) {
        positions.insert(positions.end(), c.v.begin(), c.v.end());
        texCoords.insert(texCoords.end(), c.vt.begin(), c.vt.end());
        std::vector<double>().swap(c.v);
        std::vector<float>().swap(c.vt);
    }

    const std::string folder = FolderOf(path);
    std::unordered_map<std::string, ObjMaterial> materials;
    for (const Chunk& c : chunks)
        for (const std::string& lib : c.mtllibs) ReadMtlLibrary(folder, lib, materials);

    // Assemble layers in the order the groups first appear.
    const std::string defaultGroup = baseNameOf(path);
    std::vector<LayerBuild> builds;
    std::unordered_map<std::string, std::size_t> buildByKey;
    std::unordered_map<std::string, std::string> firstMaterialOfGroup;
    std::string group = defaultGroup, material;
    std::size_t current = SIZE_MAX;
    bool stateChanged = false;
    auto selectLayer = [&]() {
        const std::string key = group + '\x1f' + material;
        auto found = buildByKey.find(key);
        if (found != buildByKey.end()) {
            current = found->second;
            return;
        }
        auto first = firstMaterialOfGroup.emplace(group, material);
        const bool otherMaterial = !first.second && first.first->second != material;
        LayerBuild b;
        b.layer.name = layerNameFor(group, material, otherMaterial);
        b.material = material;
        b.corners.reserve(1024);
        builds.push_back(std::move(b));
        current = builds.size() - 1;
        buildByKey.emplace(key, current);
    };

    // Polylines ("l") become the line geometry of the layer of their group.
    auto addLineElement = [&](const LineElement& element, std::size_t base) {
        Layer& layer = builds[current].layer;
        const auto first = static_cast<std::uint32_t>(layer.lineVertices.size() / 3);
        for (std::size_t k = 0; k < element.vertices.size(); ++k) {
            const long vi = resolveReference(element.vertices[k], base);
            if (vi < 0 || static_cast<std::size_t>(vi) >= vCount) {
                engineLog("OBJ read failed: a line refers to vertex %ld of %zu in %s", vi + 1, vCount, path.c_str());
                return false;
            }
            layer.lineVertices.insert(layer.lineVertices.end(), &positions[vi * 3], &positions[vi * 3] + 3);
            if (k > 0) {
                layer.lineSegments.push_back(first + static_cast<std::uint32_t>(k) - 1);
                layer.lineSegments.push_back(first + static_cast<std::uint32_t>(k));
            }
        }
        return true;
    };

    for (std::size_t ci = 0; ci < chunkCount; ++ci) {
        Chunk& c = chunks[ci];
        std::size_t nextEvent = 0, nextLine = 0;
        const std::size_t triangles = c.cornerV.size() / 3;
        for (std::size_t tri = 0; tri <= triangles; ++tri) {
            while (nextEvent < c.events.size() && c.events[nextEvent].triangle == tri) {
                const StateEvent& e = c.events[nextEvent++];
                if (e.isGroup)
                    group = e.name.empty() ? defaultGroup : e.name;
                else
                    material = e.name;
                stateChanged = true;
            }
            const bool lineHere = nextLine < c.lines.size() && c.lines[nextLine].triangle == tri;
            if ((tri < triangles || lineHere) && (stateChanged || current == SIZE_MAX)) {
                selectLayer();
                stateChanged = false;
            }
            while (nextLine < c.lines.size() && c.lines[nextLine].triangle == tri)
                if (!addLineElement(c.lines[nextLine++], vBase[ci])) return false;
            if (tri == triangles) break;
            LayerBuild& b = builds[current];
            for (int k = 0; k < 3; ++k) {
                const long vi = resolveReference(c.cornerV[tri * 3 + k], vBase[ci]);
                const std::int64_t rawT = c.cornerT[tri * 3 + k];
                const long ti = rawT == NO_TEXCOORD ? -1 : resolveReference(rawT, tBase[ci]);
                if (vi < 0 || static_cast<std::size_t>(vi) >= vCount) {
                    engineLog("OBJ read failed: a face refers to vertex %ld of %zu in %s", vi + 1, vCount,
                              path.c_str());
                    return false;
                }
                if (ti >= 0 && static_cast<std::size_t>(ti) >= tCount) {
                    engineLog("OBJ read failed: a face refers to texture coordinate %ld of %zu in %s", ti + 1,
                              tCount, path.c_str());
                    return false;
                }
                const std::uint64_t key = (static_cast<std::uint64_t>(vi) << 32) | static_cast<std::uint32_t>(ti + 1);
                bool inserted;
                const auto next = static_cast<std::uint32_t>(b.layer.positions.size() / 3);
                const std::uint32_t index = b.corners.findOrInsert(key, next, inserted);
                if (inserted) {
                    b.layer.positions.insert(b.layer.positions.end(), &positions[vi * 3], &positions[vi * 3] + 3);
                    if (ti >= 0) {
                        b.hasTexCoords = true;
                        b.layer.texCoords.push_back(texCoords[ti * 2]);
                        b.layer.texCoords.push_back(texCoords[ti * 2 + 1]);
                    } else {
                        b.layer.texCoords.push_back(0);
                        b.layer.texCoords.push_back(0);
                    }
                }
                b.layer.triangles.push_back(index);
            }
        }
        std::vector<std::int64_t>().swap(c.cornerV);
        std::vector<std::int64_t>().swap(c.cornerT);
    }

    if (builds.empty()) {
        engineLog("OBJ read failed: no faces or lines in %s", path.c_str());
        return false;
    }

    for (LayerBuild& b : builds) {
        if (!b.hasTexCoords) b.layer.texCoords.clear();
        auto m = materials.find(b.material);
        if (m != materials.end()) {
            std::copy(m->second.diffuse, m->second.diffuse + 3, b.layer.diffuse);
            b.layer.texturePath = m->second.texturePath;
        } else if (!b.material.empty()) {
            engineLog("OBJ read: material %s not found for %s", b.material.c_str(), path.c_str());
        }
        layersOut.push_back(std::move(b.layer));
    }
    return true;
}

}  // namespace engine
