#include "ObjWriter.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "../FileNameCase.h"
#include "EngineState.h"

namespace engine {

namespace {

// Buffered output to a temporary file, renamed over the target on commit.
class AtomicTextFile {
public:
    explicit AtomicTextFile(std::string path) : path_(std::move(path)), temp_(path_ + ".tmp") {
        file_ = std::fopen(temp_.c_str(), "wb");
        buffer_.reserve(1 << 20);
    }
    ~AtomicTextFile() {
        if (file_) {
            std::fclose(file_);
            std::remove(temp_.c_str());
        }
    }
    bool ok() const { return file_ != nullptr && !failed_; }
    void write(const char* text, std::size_t n) {
        buffer_.append(text, n);
        if (buffer_.size() > (1 << 20)) flush();
    }
    void write(const std::string& text) { write(text.data(), text.size()); }
    void number(double value, int decimals) {
        char digits[64];
        auto result = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
        write(digits, static_cast<std::size_t>(result.ptr - digits));
    }
    void integer(std::size_t value) {
        char digits[32];
        auto result = std::to_chars(digits, digits + sizeof digits, value);
        write(digits, static_cast<std::size_t>(result.ptr - digits));
    }
    bool commit() {
        flush();
        if (!file_) return false;
        const bool closed = std::fclose(file_) == 0;
        file_ = nullptr;
        if (failed_ || !closed || std::rename(temp_.c_str(), path_.c_str()) != 0) {
            std::remove(temp_.c_str());
            return false;
        }
        return true;
    }

private:
    void flush() {
        if (file_ && !buffer_.empty() && std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size())
            failed_ = true;
        buffer_.clear();
    }
    std::string path_;
    std::string temp_;
    std::FILE* file_ = nullptr;
    std::string buffer_;
    bool failed_ = false;
};

std::string fileNameOf(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

std::string withoutExtension(const std::string& path) {
    const auto slash = path.find_last_of('/');
    const auto dot = path.find_last_of('.');
    return dot == std::string::npos || (slash != std::string::npos && dot < slash) ? path : path.substr(0, dot);
}

// An image in the output folder is named by its file name, any other by its full path.
std::string textureReference(const std::string& texturePath, const std::string& outputFolder) {
    if (texturePath.empty()) return "";
    std::error_code ec;
    const auto imageFolder = std::filesystem::weakly_canonical(FolderOf(texturePath), ec);
    const auto targetFolder = std::filesystem::weakly_canonical(outputFolder.empty() ? "." : outputFolder, ec);
    if (!ec && imageFolder == targetFolder) return fileNameOf(texturePath);
    return texturePath;
}

std::string materialNameOf(const Layer& layer) { return layer.name + "_material"; }

bool writeMtl(const std::string& mtlPath, const std::vector<Layer>& layers, const std::string& producedBy) {
    AtomicTextFile out(mtlPath);
    if (!out.ok()) return false;
    out.write("# Produced by " + producedBy + "\n");
    const std::string folder = FolderOf(mtlPath);
    for (const Layer& layer : layers) {
        if (!layer.outputFlag) continue;
        out.write("\nnewmtl " + materialNameOf(layer) + "\nKd ");
        for (int k = 0; k < 3; ++k) {
            out.number(layer.diffuse[k], 6);
            out.write(k < 2 ? " " : "\n", 1);
        }
        const std::string image = textureReference(layer.texturePath, folder);
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
    AtomicTextFile out(path);
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
