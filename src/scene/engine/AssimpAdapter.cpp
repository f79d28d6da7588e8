#include "AssimpAdapter.h"

#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/material.h>
#include <assimp/metadata.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <fcntl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <random>
#include <set>
#include <system_error>

#include "../FileNameCase.h"
#include "../engine_interface.h"
#include "EngineState.h"

// Newer Assimp releases can leave COLLADA's <unit> alone on request; this one
// (5.2.x) always scales the root node, which the reader below undoes itself.
#ifndef AI_CONFIG_IMPORT_COLLADA_IGNORE_UNIT_SIZE
#define AI_CONFIG_IMPORT_COLLADA_IGNORE_UNIT_SIZE "IMPORT_COLLADA_IGNORE_UNIT_SIZE"
#endif

namespace fs = std::filesystem;

namespace engine {
namespace {

constexpr std::size_t kMaxNameBytes = AT3D_NAME_SIZE - 1;

enum class Format { Collada, ThreeDs, Stl, Dxf, Cob, Other };

// ---------------------------------------------------------------- names

std::string lowerCase(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string fileNameOf(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string baseNameOf(const std::string& path) {
    const std::string name = fileNameOf(path);
    const auto dot = name.find_last_of('.');
    return (dot == std::string::npos || dot == 0) ? name : name.substr(0, dot);
}

Format formatOfPath(const std::string& path) {
    const std::string name = fileNameOf(path);
    const auto dot = name.find_last_of('.');
    if (dot == std::string::npos) return Format::Other;
    const std::string ext = lowerCase(name.substr(dot + 1));
    if (ext == "dae") return Format::Collada;
    if (ext == "3ds") return Format::ThreeDs;
    if (ext == "stl") return Format::Stl;
    if (ext == "dxf") return Format::Dxf;
    if (ext == "cob") return Format::Cob;
    return Format::Other;
}

bool allDigits(const std::string& s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The reader Assimp actually used (it looks at the contents when the
// extension says nothing); the extension's guess when the scene does not say.
Format formatOfScene(const aiScene& scene, Format fromExtension) {
    aiString reader;
    if (!scene.mMetaData || !scene.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, reader)) return fromExtension;
    const std::string name = lowerCase(reader.C_Str());
    if (name.rfind("collada", 0) == 0) return Format::Collada;
    if (name.find("3ds") != std::string::npos) return Format::ThreeDs;
    if (name.find("(stl)") != std::string::npos) return Format::Stl;
    if (name.find("(dxf)") != std::string::npos) return Format::Dxf;
    if (name.find("truespace") != std::string::npos) return Format::Cob;
    return Format::Other;
}

// Cuts a string to at most `limit` bytes without splitting a UTF-8 sequence.
std::string cutName(const std::string& s, std::size_t limit) {
    if (s.size() <= limit) return s;
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(s[end]) & 0xC0) == 0x80) --end;
    return s.substr(0, end);
}

// Hands out names unique within one read, "_2", "_3" ... on clashes.
class NamePool {
public:
    std::string take(const std::string& wanted) {
        std::string name = cutName(wanted, kMaxNameBytes);
        for (int n = 2; used_.count(name); ++n) {
            const std::string suffix = "_" + std::to_string(n);
            name = cutName(wanted, kMaxNameBytes - suffix.size()) + suffix;
        }
        used_.insert(name);
        return name;
    }

private:
    std::set<std::string> used_;
};

// Assimp's messages may span lines; the log takes one.
std::string oneLine(const std::string& text) {
    std::string out;
    for (char c : text) {
        const bool space = c == '\n' || c == '\r' || c == '\t';
        if (space) {
            if (!out.empty() && out.back() != ' ') out += ' ';
        } else {
            out += c;
        }
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return out.empty() ? std::string("unknown error") : out;
}

// ---------------------------------------------------------------- transforms

struct Matrix {
    double m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

Matrix fromAssimp(const aiMatrix4x4& t) {
    Matrix r;
    const float* rows[4] = {&t.a1, &t.b1, &t.c1, &t.d1};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = rows[i][j];
    return r;
}

Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            double s = 0;
            for (int k = 0; k < 4; ++k) s += a.m[i][k] * b.m[k][j];
            r.m[i][j] = s;
        }
    return r;
}

void transformPoint(const Matrix& a, const aiVector3D& v, double out[3]) {
    const double x = v.x, y = v.y, z = v.z;
    double w = a.m[3][0] * x + a.m[3][1] * y + a.m[3][2] * z + a.m[3][3];
    if (w == 0) w = 1;
    for (int i = 0; i < 3; ++i) out[i] = (a.m[i][0] * x + a.m[i][1] * y + a.m[i][2] * z + a.m[i][3]) / w;
}

// Normals go through the inverse transpose of the linear part; the
// cofactor matrix is that up to the determinant, whose sign is kept.
struct NormalMatrix {
    double n[3][3];
    explicit NormalMatrix(const Matrix& a) {
        auto at = [&](int i, int j) { return a.m[i][j]; };
        n[0][0] = at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1);
        n[0][1] = at(1, 2) * at(2, 0) - at(1, 0) * at(2, 2);
        n[0][2] = at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0);
        n[1][0] = at(0, 2) * at(2, 1) - at(0, 1) * at(2, 2);
        n[1][1] = at(0, 0) * at(2, 2) - at(0, 2) * at(2, 0);
        n[1][2] = at(0, 1) * at(2, 0) - at(0, 0) * at(2, 1);
        n[2][0] = at(0, 1) * at(1, 2) - at(0, 2) * at(1, 1);
        n[2][1] = at(0, 2) * at(1, 0) - at(0, 0) * at(1, 2);
        n[2][2] = at(0, 0) * at(1, 1) - at(0, 1) * at(1, 0);
        const double det = at(0, 0) * n[0][0] + at(0, 1) * n[0][1] + at(0, 2) * n[0][2];
        if (det < 0)
            for (auto& row : n)
                for (double& v : row) v = -v;
    }
    void apply(const aiVector3D& v, float out[3]) const {
        double r[3];
        for (int i = 0; i < 3; ++i) r[i] = n[i][0] * v.x + n[i][1] * v.y + n[i][2] * v.z;
        const double len = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
        for (int i = 0; i < 3; ++i) out[i] = static_cast<float>(len > 0 ? r[i] / len : 0.0);
    }
};

// Where each mesh is placed: one transform per node that references it.
void collectPlacements(const aiNode* root, bool skipRootTransform,
                       std::vector<std::vector<Matrix>>& placements) {
    struct Pending {
        const aiNode* node;
        Matrix parent;
    };
    std::vector<Pending> stack{{root, Matrix{}}};
    while (!stack.empty()) {
        const Pending item = stack.back();
        stack.pop_back();
        const aiNode* node = item.node;
        if (!node) continue;
        const Matrix world = (node == root && skipRootTransform) ? item.parent
                                                                 : item.parent * fromAssimp(node->mTransformation);
        for (unsigned i = 0; i < node->mNumMeshes; ++i)
            if (node->mMeshes && node->mMeshes[i] < placements.size()) placements[node->mMeshes[i]].push_back(world);
        // Children pushed in reverse so that they come off in file order.
        for (unsigned i = node->mNumChildren; i-- > 0;)
            if (node->mChildren) stack.push_back({node->mChildren[i], world});
    }
}

// ---------------------------------------------------------------- reading

// Ends of text files that Assimp would load half of without complaint.
std::string readTail(const std::string& path, std::size_t bytes, std::string& head) {
    std::string tail;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return tail;
    char buffer[512];
    const std::size_t n = std::fread(buffer, 1, sizeof buffer, f);
    head.assign(buffer, n);
    if (std::fseek(f, 0, SEEK_END) == 0) {
        const long size = std::ftell(f);
        const long start = size > static_cast<long>(bytes) ? size - static_cast<long>(bytes) : 0;
        if (size >= 0 && std::fseek(f, start, SEEK_SET) == 0) {
            tail.resize(static_cast<std::size_t>(size - start));
            tail.resize(std::fread(tail.data(), 1, tail.size(), f));
        }
    }
    std::fclose(f);
    return tail;
}

// "" when the file looks complete, else why not.
std::string truncationProblem(const std::string& path, Format format) {
    std::error_code ec;
    const auto size = fs::file_size(path, ec);
    if (ec) return "";  // Assimp reports missing files itself
    std::string head;
    if (format == Format::Stl) {
        const std::string tail = lowerCase(readTail(path, 512, head));
        std::size_t start = 0;
        while (start < head.size() && std::isspace(static_cast<unsigned char>(head[start]))) ++start;
        const bool asciiStart = lowerCase(head.substr(start, 5)) == "solid";
        // A binary file names its face count at byte 80: 84 + 50 bytes a face.
        bool binarySize = false;
        if (head.size() >= 84) {
            std::uint32_t faces = 0;
            std::memcpy(&faces, head.data() + 80, 4);
            binarySize = size == 84 + 50ull * faces;
        }
        if (asciiStart && !binarySize && tail.find("endsolid") == std::string::npos)
            return "STL text ends before \"endsolid\" (file truncated?)";
    } else if (format == Format::Dxf) {
        std::string tail = readTail(path, 256, head);
        if (head.rfind("AutoCAD Binary DXF", 0) == 0) return "";
        // The last group of a drawing is "0 / EOF"; old files may add a DOS end-of-file byte.
        const auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) || c == '\x1a' || c == 0; };
        while (!tail.empty() && blank(tail.back())) tail.pop_back();
        const auto lineStart = tail.find_last_of("\r\n");
        const std::string last = lineStart == std::string::npos ? tail : tail.substr(lineStart + 1);
        const auto first = last.find_first_not_of(" \t");
        if (first == std::string::npos || lowerCase(last.substr(first)) != "eof")
            return "DXF ends before its EOF group (file truncated?)";
    }
    return "";
}

// What one read produced: its layers, or why it failed, and its log lines.
struct ReadOutcome {
    bool ok = false;
    std::vector<std::string> log;
    std::vector<Layer> layers;

    template <typename... Args>
    void note(const char* format, Args... args) {
        char line[2048];
        std::snprintf(line, sizeof line, format, args...);
        log.emplace_back(line);
    }
};

struct MaterialLook {
    bool known = false;
    bool hasDiffuse = false;
    float diffuse[3] = {0.8f, 0.8f, 0.8f};
    std::string texture;  // resolved, "" for none
};

const MaterialLook& lookOf(const aiScene& scene, unsigned index, const std::string& modelFolder,
                           std::vector<MaterialLook>& cache, ReadOutcome& outcome) {
    static const MaterialLook none;
    if (index >= cache.size() || !scene.mMaterials || !scene.mMaterials[index]) return none;
    MaterialLook& look = cache[index];
    if (look.known) return look;
    look.known = true;
    const aiMaterial& material = *scene.mMaterials[index];
    aiString name;
    const bool isAssimpDefault =
        material.Get(AI_MATKEY_NAME, name) == AI_SUCCESS && std::strcmp(name.C_Str(), AI_DEFAULT_MATERIAL_NAME) == 0;
    aiColor3D colour;
    if (!isAssimpDefault && material.Get(AI_MATKEY_COLOR_DIFFUSE, colour) == AI_SUCCESS) {
        look.hasDiffuse = true;
        look.diffuse[0] = colour.r;
        look.diffuse[1] = colour.g;
        look.diffuse[2] = colour.b;
    }
    aiString reference;
    if (material.GetTextureCount(aiTextureType_DIFFUSE) > 0 &&
        material.GetTexture(aiTextureType_DIFFUSE, 0, &reference) == AI_SUCCESS && reference.length > 0) {
        const std::string ref = reference.C_Str();
        look.texture = ResolveReferencedFile(modelFolder, ref);
        if (look.texture.empty()) outcome.note("texture not found: %s", ref.c_str());
    }
    return look;
}

// Fills a layer from one placement of a mesh; false when the mesh has
// neither triangles nor lines.
bool fillLayer(const aiMesh& mesh, const Matrix& placement, Layer& layer) {
    const unsigned vertexCount = mesh.mVertices ? mesh.mNumVertices : 0;
    auto valid = [&](const aiFace& f) {
        for (unsigned k = 0; k < f.mNumIndices; ++k)
            if (f.mIndices[k] >= vertexCount) return false;
        return true;
    };
    std::vector<std::uint32_t> triangles, segments;
    for (unsigned i = 0; mesh.mFaces && i < mesh.mNumFaces; ++i) {
        const aiFace& f = mesh.mFaces[i];
        if (!f.mIndices || !valid(f)) continue;
        if (f.mNumIndices == 3)
            triangles.insert(triangles.end(), {f.mIndices[0], f.mIndices[1], f.mIndices[2]});
        else if (f.mNumIndices == 2)
            segments.insert(segments.end(), {f.mIndices[0], f.mIndices[1]});
    }
    if (triangles.empty() && segments.empty()) return false;

    std::vector<double> world(3ull * vertexCount);
    for (unsigned v = 0; v < vertexCount; ++v) transformPoint(placement, mesh.mVertices[v], &world[3ull * v]);

    if (!triangles.empty()) {
        layer.positions = world;
        layer.triangles = std::move(triangles);
        if (mesh.mTextureCoords[0]) {
            layer.texCoords.resize(2ull * vertexCount);
            for (unsigned v = 0; v < vertexCount; ++v) {
                layer.texCoords[2ull * v] = mesh.mTextureCoords[0][v].x;
                layer.texCoords[2ull * v + 1] = mesh.mTextureCoords[0][v].y;
            }
        }
        if (mesh.mNormals) {
            const NormalMatrix normalMatrix(placement);
            layer.normals.resize(3ull * vertexCount);
            for (unsigned v = 0; v < vertexCount; ++v) normalMatrix.apply(mesh.mNormals[v], &layer.normals[3ull * v]);
        }
    }
    if (!segments.empty()) {
        layer.lineVertices = std::move(world);
        layer.lineSegments = std::move(segments);
    }
    return true;
}

void readImpl(const std::string& path, ReadOutcome& outcome) {
    const std::string truncated = truncationProblem(path, formatOfPath(path));
    if (!truncated.empty()) {
        outcome.note("cannot read %s: %s", path.c_str(), truncated.c_str());
        return;
    }

    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_IGNORE_UP_DIRECTION, true);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_IGNORE_UNIT_SIZE, true);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, false);  // mesh names = geometry ids
    const aiScene* scene =
        importer.ReadFile(path, aiProcess_Triangulate | aiProcess_JoinIdenticalVertices | aiProcess_SortByPType);
    if (!scene || !scene->mRootNode) {
        outcome.note("cannot read %s: %s", path.c_str(), oneLine(importer.GetErrorString()).c_str());
        return;
    }

    // The root node of a COLLADA scene is the <visual_scene>, which has no
    // transform of its own: what Assimp puts there is its unit scaling (and
    // up-axis turn). The roots its 3DS and DXF readers make up carry only the
    // turn from Z-up to Y-up (and 3DS's master scale). Dropping those keeps
    // the file's own axes and units.
    const Format format = formatOfScene(*scene, formatOfPath(path));
    const std::string rootName = scene->mRootNode->mName.C_Str();
    const bool skipRoot = format == Format::Collada ||
                          (format == Format::ThreeDs && (rootName == "<3DSRoot>" || rootName == "<3DSDummyRoot>")) ||
                          (format == Format::Dxf && rootName == "<DXF_ROOT>");
    std::vector<std::vector<Matrix>> placements(scene->mMeshes ? scene->mNumMeshes : 0);
    collectPlacements(scene->mRootNode, skipRoot, placements);

    const std::string base = baseNameOf(path);
    const std::string folder = FolderOf(path);
    std::vector<MaterialLook> looks(scene->mMaterials ? scene->mNumMaterials : 0);
    NamePool names;
    std::vector<Layer> read;
    for (unsigned i = 0; i < placements.size(); ++i) {
        const aiMesh* mesh = scene->mMeshes[i];
        if (!mesh) continue;
        if (placements[i].empty()) placements[i].push_back(Matrix{});  // not placed by any node
        std::string wanted;
        const std::string meshName = mesh->mName.C_Str();
        if (format == Format::Collada && !meshName.empty()) {
            std::string id = meshName;
            std::replace(id.begin(), id.end(), '/', '_');
            wanted = base + "_" + id;
        } else if (!meshName.empty() && !(format == Format::ThreeDs && allDigits(meshName))) {
            // (Assimp's 3DS reader names its meshes by number: that is no name.)
            wanted = meshName;
        } else {
            wanted = base + "_" + std::to_string(i);
        }
        for (const Matrix& placement : placements[i]) {
            Layer layer;
            if (!fillLayer(*mesh, placement, layer)) break;  // points only
            const MaterialLook& look = lookOf(*scene, mesh->mMaterialIndex, folder, looks, outcome);
            if (look.hasDiffuse) std::copy(look.diffuse, look.diffuse + 3, layer.diffuse);
            layer.texturePath = look.texture;
            layer.name = names.take(wanted);
            read.push_back(std::move(layer));
        }
    }
    if (read.empty()) {
        outcome.note("cannot read %s: no triangles or lines in it", path.c_str());
        return;
    }
    outcome.layers = std::move(read);
    outcome.ok = true;
}

void readGuarded(const std::string& path, ReadOutcome& outcome) {
    try {
        readImpl(path, outcome);
    } catch (const std::exception& e) {
        outcome.ok = false;
        outcome.layers.clear();
        outcome.note("cannot read %s: %s", path.c_str(), oneLine(e.what()).c_str());
    } catch (...) {
        outcome.ok = false;
        outcome.layers.clear();
        outcome.note("cannot read %s: unexpected error", path.c_str());
    }
}

// ---------------------------------------------------------------- isolation
//
// Assimp 5.2 dereferences bad indices in some damaged files (a COLLADA
// <float_array> without its count, a COB chunk with a broken id) and dies
// with SIGSEGV. The read therefore runs in a forked child that sends the
// outcome back through a pipe; a child that dies costs one log line.

constexpr std::uint64_t kOutcomeMagic = 0x5A56'4153'5349'4D50ull;  // start and end marks

class PipeWriter {
public:
    explicit PipeWriter(int fd) : fd_(fd) { buffer_.reserve(kChunk); }
    void raw(const void* data, std::size_t size) {
        const char* p = static_cast<const char*>(data);
        if (size >= kChunk) {
            flush();
            put(p, size);
            return;
        }
        if (buffer_.size() + size > kChunk) flush();
        buffer_.insert(buffer_.end(), p, p + size);
    }
    void u64(std::uint64_t v) { raw(&v, sizeof v); }
    void text(const std::string& s) {
        u64(s.size());
        raw(s.data(), s.size());
    }
    template <typename T>
    void array(const std::vector<T>& v) {
        u64(v.size());
        raw(v.data(), v.size() * sizeof(T));
    }
    bool flush() {
        put(buffer_.data(), buffer_.size());
        buffer_.clear();
        return ok_;
    }

private:
    static constexpr std::size_t kChunk = 1 << 20;
    void put(const char* p, std::size_t size) {
        while (ok_ && size > 0) {
            const ssize_t n = ::write(fd_, p, size);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                ok_ = false;
                break;
            }
            p += n;
            size -= static_cast<std::size_t>(n);
        }
    }
    int fd_;
    bool ok_ = true;
    std::vector<char> buffer_;
};

class PipeReader {
public:
    explicit PipeReader(int fd) : fd_(fd) {}
    bool raw(void* data, std::size_t size) {
        char* p = static_cast<char*>(data);
        while (ok_ && size > 0) {
            const ssize_t n = ::read(fd_, p, size);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                ok_ = false;
                break;
            }
            p += n;
            size -= static_cast<std::size_t>(n);
        }
        return ok_;
    }
    std::uint64_t u64() {
        std::uint64_t v = 0;
        raw(&v, sizeof v);
        return v;
    }
    // Sizes come from our own child; the cap only guards against a mangled stream.
    bool text(std::string& s) {
        const std::uint64_t n = u64();
        if (!ok_ || n > (1ull << 32)) return ok_ = false;
        s.resize(n);
        return raw(s.data(), n);
    }
    template <typename T>
    bool array(std::vector<T>& v) {
        const std::uint64_t n = u64();
        if (!ok_ || n > (1ull << 36) / sizeof(T)) return ok_ = false;
        v.resize(n);
        return raw(v.data(), n * sizeof(T));
    }
    bool ok() const { return ok_; }
    // Reads what is left so that the child never blocks on a full pipe.
    void drain() {
        char sink[4096];
        while (true) {
            const ssize_t n = ::read(fd_, sink, sizeof sink);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
        }
    }

private:
    int fd_;
    bool ok_ = true;
};

void sendOutcome(PipeWriter& out, const ReadOutcome& outcome) {
    out.u64(kOutcomeMagic);
    out.u64(outcome.ok ? 1 : 0);
    out.u64(outcome.log.size());
    for (const std::string& line : outcome.log) out.text(line);
    out.u64(outcome.layers.size());
    for (const Layer& layer : outcome.layers) {
        out.text(layer.name);
        out.array(layer.positions);
        out.array(layer.texCoords);
        out.array(layer.normals);
        out.array(layer.triangles);
        out.array(layer.lineVertices);
        out.array(layer.lineSegments);
        out.text(layer.texturePath);
        out.raw(layer.diffuse, sizeof layer.diffuse);
    }
    out.u64(kOutcomeMagic);
}

bool receiveOutcome(PipeReader& in, ReadOutcome& outcome) {
    if (in.u64() != kOutcomeMagic || !in.ok()) return false;
    outcome.ok = in.u64() == 1;
    const std::uint64_t lines = in.u64();
    for (std::uint64_t i = 0; in.ok() && i < lines && i < 100000; ++i) {
        std::string line;
        if (in.text(line)) outcome.log.push_back(std::move(line));
    }
    const std::uint64_t count = in.u64();
    for (std::uint64_t i = 0; in.ok() && i < count && i < 10'000'000; ++i) {
        Layer layer;
        in.text(layer.name);
        in.array(layer.positions);
        in.array(layer.texCoords);
        in.array(layer.normals);
        in.array(layer.triangles);
        in.array(layer.lineVertices);
        in.array(layer.lineSegments);
        in.text(layer.texturePath);
        in.raw(layer.diffuse, sizeof layer.diffuse);
        outcome.layers.push_back(std::move(layer));
    }
    return in.ok() && outcome.layers.size() == count && in.u64() == kOutcomeMagic && in.ok();
}

// Runs the read in a child process; false when no child could be started.
bool readInChild(const std::string& path, ReadOutcome& outcome) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return false;
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        return false;
    }
    if (pid == 0) {
        ::close(fds[0]);
        ReadOutcome result;
        readGuarded(path, result);
        PipeWriter out(fds[1]);
        sendOutcome(out, result);
        const bool sent = out.flush();
        ::_exit(sent ? 0 : 3);  // no atexit handlers, no static destructors
    }
    ::close(fds[1]);
    PipeReader in(fds[0]);
    ReadOutcome received;
    const bool complete = receiveOutcome(in, received);
    in.drain();
    ::close(fds[0]);
    int status = 0;
    pid_t waited;
    do {
        waited = ::waitpid(pid, &status, 0);
    } while (waited < 0 && errno == EINTR);

    if (complete) {
        outcome = std::move(received);
    } else {
        outcome = ReadOutcome{};
        if (waited == pid && WIFSIGNALED(status))
            outcome.note("cannot read %s: Assimp crashed on it (signal %d); the file is damaged or not supported",
                         path.c_str(), WTERMSIG(status));
        else
            outcome.note("cannot read %s: the reader stopped before finishing", path.c_str());
    }
    return true;
}

// ---------------------------------------------------------------- writing

struct WriteError {
    std::string message;
};

std::string hexTag() {
    std::random_device rd;
    char text[20];
    std::snprintf(text, sizeof text, "%08x%08x", rd(), rd());
    return text;
}

// Writes `bytes` to a temporary file beside `target`, then renames it over
// the target. Throws WriteError; no temporary file is left behind.
void writeFileAtomically(const std::string& target, const std::string& bytes) {
    const fs::path targetPath(target);
    fs::path folder = targetPath.parent_path();
    if (folder.empty()) folder = ".";
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) throw WriteError{"folder " + folder.string() + " does not exist"};

    const std::string temporary = target + ".part-" + hexTag();
    std::FILE* f = std::fopen(temporary.c_str(), "wb");
    if (!f) throw WriteError{std::string("cannot create ") + temporary + ": " + std::strerror(errno)};
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    int savedErrno = ok ? 0 : errno;
    ok = ok && std::fflush(f) == 0 && ::fsync(fileno(f)) == 0;
    if (!ok && !savedErrno) savedErrno = errno;
    if (std::fclose(f) != 0 && ok) {
        ok = false;
        savedErrno = errno;
    }
    if (ok) {
        fs::rename(temporary, targetPath, ec);
        if (ec) {
            ok = false;
            savedErrno = ec.value();
        }
    }
    if (!ok) {
        fs::remove(temporary, ec);
        throw WriteError{std::string("cannot write ") + target + ": " + std::strerror(savedErrno)};
    }
}

// The name a written file uses for a texture: relative to the output
// folder when the image lies inside it, else absolute.
std::string textureReference(const std::string& texturePath, const std::string& outputPath) {
    std::error_code ec;
    const fs::path image = fs::weakly_canonical(fs::absolute(texturePath, ec), ec);
    fs::path folder = fs::absolute(outputPath, ec).parent_path();
    folder = fs::weakly_canonical(folder, ec);
    const fs::path relative = image.lexically_relative(folder);
    if (!relative.empty() && *relative.begin() != ".." && relative.is_relative()) return relative.generic_string();
    return image.generic_string();
}

void checkLayer(const Layer& layer) {
    const auto bad = [&](const char* what) { throw WriteError{"layer \"" + layer.name + "\" has " + what}; };
    if (layer.positions.size() % 3 || layer.triangles.size() % 3) bad("a broken vertex or face list");
    if (layer.lineVertices.size() % 3 || layer.lineSegments.size() % 2) bad("a broken line list");
    for (std::uint32_t i : layer.triangles)
        if (i >= layer.vertexCount()) bad("a face index out of range");
    for (std::uint32_t i : layer.lineSegments)
        if (i >= layer.lineVertexCount()) bad("a line index out of range");
}

// The layer's triangles as an indexed Assimp mesh (arrays with new[], which
// aiMesh's destructor frees).
void fillMesh(const Layer& layer, aiMesh& mesh) {
    const unsigned vc = static_cast<unsigned>(layer.vertexCount());
    const unsigned fc = static_cast<unsigned>(layer.faceCount());
    mesh.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh.mNumVertices = vc;
    mesh.mVertices = new aiVector3D[vc];
    for (unsigned v = 0; v < vc; ++v)
        mesh.mVertices[v] = aiVector3D(static_cast<ai_real>(layer.positions[3ull * v]),
                                       static_cast<ai_real>(layer.positions[3ull * v + 1]),
                                       static_cast<ai_real>(layer.positions[3ull * v + 2]));
    if (layer.normals.size() == 3ull * vc) {
        mesh.mNormals = new aiVector3D[vc];
        for (unsigned v = 0; v < vc; ++v)
            mesh.mNormals[v] =
                aiVector3D(layer.normals[3ull * v], layer.normals[3ull * v + 1], layer.normals[3ull * v + 2]);
    }
    if (layer.texCoords.size() == 2ull * vc) {
        mesh.mTextureCoords[0] = new aiVector3D[vc];
        mesh.mNumUVComponents[0] = 2;
        for (unsigned v = 0; v < vc; ++v)
            mesh.mTextureCoords[0][v] = aiVector3D(layer.texCoords[2ull * v], layer.texCoords[2ull * v + 1], 0);
    }
    mesh.mNumFaces = fc;
    mesh.mFaces = new aiFace[fc];
    for (unsigned f = 0; f < fc; ++f) {
        aiFace& face = mesh.mFaces[f];
        face.mNumIndices = 3;
        face.mIndices = new unsigned[3];
        for (int k = 0; k < 3; ++k) face.mIndices[k] = layer.triangles[3ull * f + k];
    }
}

// Three vertices of its own per triangle, each carrying the face normal:
// Assimp's STL writer averages the corners' normals into the facet normal.
void fillFacetMesh(const Layer& layer, aiMesh& mesh) {
    const unsigned fc = static_cast<unsigned>(layer.faceCount());
    mesh.mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh.mNumVertices = 3 * fc;
    mesh.mVertices = new aiVector3D[3ull * fc];
    mesh.mNormals = new aiVector3D[3ull * fc];
    mesh.mNumFaces = fc;
    mesh.mFaces = new aiFace[fc];
    for (unsigned f = 0; f < fc; ++f) {
        const double* p[3];
        for (int k = 0; k < 3; ++k) p[k] = &layer.positions[3ull * layer.triangles[3ull * f + k]];
        const double a[3] = {p[1][0] - p[0][0], p[1][1] - p[0][1], p[1][2] - p[0][2]};
        const double b[3] = {p[2][0] - p[0][0], p[2][1] - p[0][1], p[2][2] - p[0][2]};
        double n[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
        const double len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        for (double& c : n) c = len > 0 ? c / len : 0;
        aiFace& face = mesh.mFaces[f];
        face.mNumIndices = 3;
        face.mIndices = new unsigned[3];
        for (unsigned k = 0; k < 3; ++k) {
            const unsigned v = 3 * f + k;
            mesh.mVertices[v] = aiVector3D(static_cast<ai_real>(p[k][0]), static_cast<ai_real>(p[k][1]),
                                           static_cast<ai_real>(p[k][2]));
            mesh.mNormals[v] = aiVector3D(static_cast<ai_real>(n[0]), static_cast<ai_real>(n[1]),
                                          static_cast<ai_real>(n[2]));
            face.mIndices[k] = v;
        }
    }
}

// One mesh, node and material per layer. COLLADA keeps node and geometry ids
// in one space and Assimp gives the node first pick, so there the node takes
// `nodeSuffix` and the geometry id stays the layer's name.
std::unique_ptr<aiScene> buildScene(const std::vector<const Layer*>& chosen, const std::string& outputPath,
                                    const std::string& producedBy, const std::string& nodeSuffix,
                                    bool facetNormals) {
    auto scene = std::make_unique<aiScene>();
    const unsigned count = static_cast<unsigned>(chosen.size());
    std::set<std::string> taken;
    for (const Layer* layer : chosen) {
        taken.insert(layer->name);
        taken.insert(layer->name + nodeSuffix);
    }
    std::string rootName = "Scene";
    while (taken.count(rootName)) rootName += "_root";
    scene->mRootNode = new aiNode(rootName);
    scene->mRootNode->mNumChildren = count;
    scene->mRootNode->mChildren = new aiNode*[count]();
    scene->mNumMeshes = count;
    scene->mMeshes = new aiMesh*[count]();
    scene->mNumMaterials = count;
    scene->mMaterials = new aiMaterial*[count]();

    for (unsigned i = 0; i < count; ++i) {
        const Layer& layer = *chosen[i];
        aiMesh* mesh = new aiMesh();
        scene->mMeshes[i] = mesh;
        mesh->mName = aiString(layer.name);
        mesh->mMaterialIndex = i;
        if (facetNormals)
            fillFacetMesh(layer, *mesh);
        else
            fillMesh(layer, *mesh);

        aiMaterial* material = new aiMaterial();
        scene->mMaterials[i] = material;
        const aiString materialName(layer.name + "-material");
        material->AddProperty(&materialName, AI_MATKEY_NAME);
        const aiColor3D colour(layer.diffuse[0], layer.diffuse[1], layer.diffuse[2]);
        material->AddProperty(&colour, 1, AI_MATKEY_COLOR_DIFFUSE);
        const int shading = aiShadingMode_Gouraud;
        material->AddProperty(&shading, 1, AI_MATKEY_SHADING_MODEL);
        if (!layer.texturePath.empty()) {
            const aiString texture(textureReference(layer.texturePath, outputPath));
            material->AddProperty(&texture, AI_MATKEY_TEXTURE_DIFFUSE(0));
        }

        aiNode* node = new aiNode(layer.name + nodeSuffix);
        node->mParent = scene->mRootNode;
        node->mNumMeshes = 1;
        node->mMeshes = new unsigned[1]{i};
        scene->mRootNode->mChildren[i] = node;
    }

    // Assimp's COLLADA writer takes its <authoring_tool> from here ("Assimp Exporter" without it).
    if (!producedBy.empty()) {
        scene->mMetaData = aiMetadata::Alloc(1);
        scene->mMetaData->Set(0, AI_METADATA_SOURCE_GENERATOR, aiString(producedBy));
    }
    return scene;
}

// Assimp's STL writer calls every solid "AssimpScene"; the solid's name is
// where the producer goes.
std::string renameSolid(const std::string& stl, const std::string& solidName) {
    std::string name;
    for (char c : solidName) name += (c == '\n' || c == '\r') ? ' ' : c;
    std::string out = stl;
    const auto firstEnd = out.find('\n');
    if (out.rfind("solid", 0) == 0 && firstEnd != std::string::npos)
        out.replace(0, firstEnd, name.empty() ? std::string("solid") : "solid " + name);
    auto last = out.rfind("endsolid");
    if (last != std::string::npos) {
        const auto end = out.find('\n', last);
        out.replace(last, (end == std::string::npos ? out.size() : end) - last,
                    name.empty() ? std::string("endsolid") : "endsolid " + name);
    }
    return out;
}

std::string exportThroughAssimp(const std::vector<const Layer*>& chosen, const std::string& outputPath,
                                const char* formatId, const std::string& producedBy) {
    const std::string nodeSuffix = std::strcmp(formatId, "collada") == 0 ? "-node" : "";
    std::unique_ptr<aiScene> scene =
        buildScene(chosen, outputPath, producedBy, nodeSuffix, std::strcmp(formatId, "stl") == 0);
    Assimp::Exporter exporter;
    const aiExportDataBlob* blob = exporter.ExportToBlob(scene.get(), formatId, 0u);
    if (!blob || !blob->data) throw WriteError{"Assimp: " + oneLine(exporter.GetErrorString())};
    return std::string(static_cast<const char*>(blob->data), blob->size);
}

// ---- DXF, by hand: R12 text with a LAYER table, 3DFACE and LINE entities.

std::string dxfNumber(double v) {
    if (!std::isfinite(v)) v = 0;
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, v);
    return std::string(text, result.ptr);
}

void dxfGroup(std::string& out, int code, const std::string& value) {
    char head[8];
    std::snprintf(head, sizeof head, "%3d\n", code);
    out += head;
    out += value;
    out += '\n';
}

std::string dxfLayerName(const std::string& name) {
    std::string out;
    for (char c : name) {
        const unsigned char u = static_cast<unsigned char>(c);
        out += (u < 32 || std::strchr("<>/\\\":;?*|=,'`", c)) ? '_' : c;
    }
    return out.empty() ? std::string("0") : out;
}

void dxfPoint(std::string& out, int firstCode, const double* p) {
    dxfGroup(out, firstCode, dxfNumber(p[0]));
    dxfGroup(out, firstCode + 10, dxfNumber(p[1]));
    dxfGroup(out, firstCode + 20, dxfNumber(p[2]));
}

std::string buildDxf(const std::vector<const Layer*>& chosen, const std::string& producedBy) {
    std::string out;
    if (!producedBy.empty()) {
        std::string comment;
        for (char c : producedBy) comment += (c == '\n' || c == '\r') ? ' ' : c;
        dxfGroup(out, 999, comment);
    }
    dxfGroup(out, 0, "SECTION");
    dxfGroup(out, 2, "HEADER");
    dxfGroup(out, 9, "$ACADVER");
    dxfGroup(out, 1, "AC1009");
    dxfGroup(out, 0, "ENDSEC");

    NamePool pool;
    std::vector<std::string> names;
    for (const Layer* layer : chosen) names.push_back(pool.take(dxfLayerName(layer->name)));

    dxfGroup(out, 0, "SECTION");
    dxfGroup(out, 2, "TABLES");
    dxfGroup(out, 0, "TABLE");
    dxfGroup(out, 2, "LAYER");
    dxfGroup(out, 70, std::to_string(names.size()));
    for (const std::string& name : names) {
        dxfGroup(out, 0, "LAYER");
        dxfGroup(out, 2, name);
        dxfGroup(out, 70, "0");
        dxfGroup(out, 62, "7");
        dxfGroup(out, 6, "CONTINUOUS");
    }
    dxfGroup(out, 0, "ENDTAB");
    dxfGroup(out, 0, "ENDSEC");

    dxfGroup(out, 0, "SECTION");
    dxfGroup(out, 2, "ENTITIES");
    for (std::size_t l = 0; l < chosen.size(); ++l) {
        const Layer& layer = *chosen[l];
        for (std::size_t f = 0; f < layer.faceCount(); ++f) {
            const double* p[3];
            for (int k = 0; k < 3; ++k) p[k] = &layer.positions[3ull * layer.triangles[3 * f + k]];
            dxfGroup(out, 0, "3DFACE");
            dxfGroup(out, 8, names[l]);
            dxfPoint(out, 10, p[0]);
            dxfPoint(out, 11, p[1]);
            dxfPoint(out, 12, p[2]);
            dxfPoint(out, 13, p[2]);  // a triangle repeats its third corner
        }
        for (std::size_t s = 0; s + 1 < layer.lineSegments.size(); s += 2) {
            dxfGroup(out, 0, "LINE");
            dxfGroup(out, 8, names[l]);
            dxfPoint(out, 10, &layer.lineVertices[3ull * layer.lineSegments[s]]);
            dxfPoint(out, 11, &layer.lineVertices[3ull * layer.lineSegments[s + 1]]);
        }
    }
    dxfGroup(out, 0, "ENDSEC");
    dxfGroup(out, 0, "EOF");
    return out;
}

void writeImpl(const std::string& path, int writeType, const std::vector<Layer>& layers,
               const std::string& producedBy) {
    const char* formatId = nullptr;
    switch (writeType) {
        case AT3D_WRITE_DAE: formatId = "collada"; break;
        case AT3D_WRITE_3DS: formatId = "3ds"; break;
        case AT3D_WRITE_STL: formatId = "stl"; break;  // the text form, which has a solid name
        case AT3D_WRITE_DXF: break;
        default: throw WriteError{"file type " + std::to_string(writeType) + " is not written here"};
    }
    const bool dxf = writeType == AT3D_WRITE_DXF;

    std::vector<const Layer*> chosen;
    for (const Layer& layer : layers) {
        if (!layer.outputFlag) continue;
        checkLayer(layer);
        if (!layer.triangles.empty() || (dxf && !layer.lineSegments.empty())) chosen.push_back(&layer);
    }
    if (chosen.empty()) throw WriteError{"no layer to write"};

    std::string bytes;
    if (dxf) {
        bytes = buildDxf(chosen, producedBy);
    } else {
        bytes = exportThroughAssimp(chosen, path, formatId, producedBy);
        if (writeType == AT3D_WRITE_STL) bytes = renameSolid(bytes, producedBy);
    }
    writeFileAtomically(path, bytes);
}

}  // namespace

bool ReadModelWithAssimp(const std::string& path, std::vector<Layer>& layers) {
    try {
        ReadOutcome outcome;
        if (!readInChild(path, outcome)) readGuarded(path, outcome);  // no process to spare: read here
        for (const std::string& line : outcome.log) engineLog("%s", line.c_str());
        if (!outcome.ok) return false;
        layers.reserve(layers.size() + outcome.layers.size());
        for (Layer& layer : outcome.layers) layers.push_back(std::move(layer));
        return true;
    } catch (const std::exception& e) {
        engineLog("cannot read %s: %s", path.c_str(), oneLine(e.what()).c_str());
    } catch (...) {
        engineLog("cannot read %s: unexpected error", path.c_str());
    }
    return false;
}

bool WriteModelWithAssimp(const std::string& path, int writeType, const std::vector<Layer>& layers,
                          const std::string& producedBy) {
    try {
        writeImpl(path, writeType, layers, producedBy);
        return true;
    } catch (const WriteError& e) {
        engineLog("cannot write %s: %s", path.c_str(), oneLine(e.message).c_str());
    } catch (const std::exception& e) {
        engineLog("cannot write %s: %s", path.c_str(), oneLine(e.what()).c_str());
    } catch (...) {
        engineLog("cannot write %s: unexpected error", path.c_str());
    }
    return false;
}

}  // namespace engine
