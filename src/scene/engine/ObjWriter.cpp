#include "ObjWriter.h"

#include "AtomicFile.h"
#include "EngineState.h"
#include "ModelFileNames.h"

namespace engine {

namespace {

std::string withoutExtension(const std::string& path) {
    const auto slash = path.find_last_of('/');
    const auto dot = path.find_last_of('.');
    return dot == std::string::npos || (slash != std::string::npos && dot < slash) ? path : path.substr(0, dot);
}

std::string materialNameOf(const Layer& layer) { return layer.name + "_material"; }

bool writeMtl(const std::string& mtlPath, const std::vector<Layer>& layers, const std::string& producedBy) {
    AtomicFile out(mtlPath);
    if (!out.ok()) return false;
    out.write("# Produced by " + producedBy + "\n");
    for (const Layer& layer : layers) {
        if (!layer.outputFlag) continue;
        out.write("\nnewmtl " + materialNameOf(layer) + "\nKd ");
        for (int k = 0; k < 3; ++k) {
            out.number(layer.diffuse[k], 6);
            out.write(k < 2 ? " " : "\n", 1);
        }
        const std::string image = textureReference(layer.texturePath, mtlPath);
        if (!image.empty()) out.write("map_Kd " + image + "\n");
    }
    return out.commit();
}

}  // namespace

bool WriteObjFile(const std::string& path, const std::vector<Layer>& layers, const std::string& producedBy) {
    const std::string mtlPath = withoutExtension(path) + ".mtl";
    if (!writeMtl(mtlPath, layers, producedBy)) {
        engineLog("OBJ write failed: cannot write %s", mtlPath.c_str());
        return false;
    }
    AtomicFile out(path);
    if (!out.ok()) {
        engineLog("OBJ write failed: cannot write %s", path.c_str());
        return false;
    }
    out.write("# Produced by " + producedBy + "\nmtllib " + fileNameOf(mtlPath) + "\n");
    std::size_t vBase = 1, tBase = 1;
    for (const Layer& layer : layers) {
        if (!layer.outputFlag) continue;
        out.write("g " + layer.name + "\nusemtl " + materialNameOf(layer) + "\n");
        for (std::size_t i = 0; i < layer.vertexCount(); ++i) {
            out.write("v ", 2);
            for (int k = 0; k < 3; ++k) {
                out.number(layer.positions[i * 3 + k], 6);
                out.write(k < 2 ? " " : "\n", 1);
            }
        }
        for (std::size_t i = 0; i < layer.lineVertexCount(); ++i) {
            out.write("v ", 2);
            for (int k = 0; k < 3; ++k) {
                out.number(layer.lineVertices[i * 3 + k], 6);
                out.write(k < 2 ? " " : "\n", 1);
            }
        }
        const bool textured = layer.texCoords.size() == layer.vertexCount() * 2 && !layer.texCoords.empty();
        if (textured) {
            for (std::size_t i = 0; i < layer.vertexCount(); ++i) {
                out.write("vt ", 3);
                out.number(layer.texCoords[i * 2], 6);
                out.write(" ", 1);
                out.number(layer.texCoords[i * 2 + 1], 6);
                out.write("\n", 1);
            }
        }
        for (std::size_t f = 0; f < layer.faceCount(); ++f) {
            out.write("f", 1);
            for (int k = 0; k < 3; ++k) {
                const std::size_t index = layer.triangles[f * 3 + k];
                out.write(" ", 1);
                out.integer(vBase + index);
                if (textured) {
                    out.write("/", 1);
                    out.integer(tBase + index);
                }
            }
            out.write("\n", 1);
        }
        const std::size_t lineBase = vBase + layer.vertexCount();
        for (std::size_t s = 0; s + 1 < layer.lineSegments.size(); s += 2) {
            out.write("l ", 2);
            out.integer(lineBase + layer.lineSegments[s]);
            out.write(" ", 1);
            out.integer(lineBase + layer.lineSegments[s + 1]);
            out.write("\n", 1);
        }
        vBase += layer.vertexCount() + layer.lineVertexCount();
        if (textured) tBase += layer.vertexCount();
    }
    if (!out.commit()) {
        engineLog("OBJ write failed: cannot write %s", path.c_str());
        return false;
    }
    return true;
}

}  // namespace engine
