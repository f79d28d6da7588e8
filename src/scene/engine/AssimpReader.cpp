// Reading a model through Assimp into layers, in this process: format
// detection, truncation checks, node transforms, names and materials.
#include <assimp/Importer.hpp>
#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/material.h>
#include <assimp/metadata.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <system_error>

#include "../FileNameCase.h"
#include "AssimpReadOutcome.h"
#include "LayerNamePool.h"
#include "LogText.h"
#include "ModelFileNames.h"

// Newer Assimp releases can leave COLLADA's <unit> alone on request; this one
// (5.2.x) always scales the root node, which the reader below undoes itself.
#ifndef AI_CONFIG_IMPORT_COLLADA_IGNORE_UNIT_SIZE
#define AI_CONFIG_IMPORT_COLLADA_IGNORE_UNIT_SIZE "IMPORT_COLLADA_IGNORE_UNIT_SIZE"
#endif

namespace fs = std::filesystem;

namespace engine {
namespace {

enum class Format { Collada, ThreeDs, Stl, Dxf, Cob, Other };

// ---------------------------------------------------------------- formats

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

// The shading ray files hold geometries but no scene, and a placeholder for
// the number of their coordinates. Such a file is read as if a scene placed
// each geometry once and its arrays told their true sizes; "" when the file
// has a scene (it is read as it is) or can't be read.
std::string colladaWithScene(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return "";
    std::string text;
    char buffer[1 << 16];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) text.append(buffer, n);
    std::fclose(file);
    if (text.find("<scene") != std::string::npos || text.rfind("</COLLADA>") == std::string::npos) return "";
    std::string nodes;
    for (std::size_t at = text.find("<geometry "); at != std::string::npos; at = text.find("<geometry ", at + 1)) {
        const std::size_t idAt = text.find("id=\"", at);
        const std::size_t close = text.find('>', at);
        if (idAt == std::string::npos || idAt > close) continue;
        const std::size_t idEnd = text.find('"', idAt + 4);
        const std::string id = text.substr(idAt + 4, idEnd - idAt - 4);
        nodes += "<node id=\"" + id + "-node\"><instance_geometry url=\"#" + id + "\"/></node>\n";
    }
    if (nodes.empty()) return "";
    for (std::size_t at = text.find("<float_array"); at != std::string::npos; at = text.find("<float_array", at + 1)) {
        const std::size_t open = text.find('>', at), close = text.find("</float_array>", at);
        const std::size_t countAt = text.find("count=\"", at);
        if (open == std::string::npos || close == std::string::npos || countAt == std::string::npos || countAt > open)
            continue;
        std::size_t values = 0;
        bool inValue = false;
        for (std::size_t i = open + 1; i < close; ++i) {
            const bool blank = std::isspace(static_cast<unsigned char>(text[i])) != 0;
            if (!blank && !inValue) ++values;
            inValue = !blank;
        }
        const std::size_t countEnd = text.find('"', countAt + 7);
        text.replace(countAt + 7, countEnd - countAt - 7, std::to_string(values));
    }
    text.insert(text.rfind("</COLLADA>"),
                "<library_visual_scenes><visual_scene id=\"placed\">\n" + nodes +
                    "</visual_scene></library_visual_scenes>\n<scene><instance_visual_scene url=\"#placed\"/></scene>\n");
    return text;
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
    const unsigned flags = aiProcess_Triangulate | aiProcess_JoinIdenticalVertices | aiProcess_SortByPType;
    const std::string placed = formatOfPath(path) == Format::Collada ? colladaWithScene(path) : std::string();
    const aiScene* scene = placed.empty() ? importer.ReadFile(path, flags)
                                          : importer.ReadFileFromMemory(placed.data(), placed.size(), flags, "dae");
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

}  // namespace

void readModelInProcess(const std::string& path, ReadOutcome& outcome) {
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

}  // namespace engine
