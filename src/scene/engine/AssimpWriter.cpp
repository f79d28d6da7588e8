// WriteModelWithAssimp: DAE, 3DS and STL built as an Assimp scene and
// exported; DXF handed to the hand-written DxfWriter.
#include <assimp/Exporter.hpp>
#include <assimp/commonMetaData.h>
#include <assimp/material.h>
#include <assimp/metadata.h>
#include <assimp/scene.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "../engine_interface.h"
#include "AssimpAdapter.h"
#include "AtomicFile.h"
#include "DxfWriter.h"
#include "LogText.h"
#include "ModelFileNames.h"

namespace engine {
namespace {

struct WriteError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

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
    std::string error;
    if (!WriteFileAtomically(path, bytes, &error)) throw WriteError{error};
}

}  // namespace

bool WriteModelWithAssimp(const std::string& path, int writeType, const std::vector<Layer>& layers,
                          const std::string& producedBy) {
    return runOrLog("write", path, [&] {
        writeImpl(path, writeType, layers, producedBy);
        return true;
    });
}

}  // namespace engine
