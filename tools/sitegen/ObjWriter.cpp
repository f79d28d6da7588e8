#include "ObjWriter.h"

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace sitegen {
namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

File openForWriting(const std::string& path)
{
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        throw std::runtime_error("cannot write " + path);
    return file;
}

void finish(File file, const std::string& path)
{
    const bool failed = std::ferror(file.get()) != 0;
    if (std::fclose(file.release()) != 0 || failed)
        throw std::runtime_error("error while writing " + path);
}

} // namespace

void writeObj(const std::string& objPath, const Mesh& mesh, const ObjMaterial& material, const std::string& headerComment)
{
    File file = openForWriting(objPath);
    std::FILE* f = file.get();
    std::fprintf(f, "# %s\n", headerComment.c_str());
    std::fprintf(f, "mtllib %s\n", material.mtlFileName.c_str());
    for (const Vec3& p : mesh.positions())
        std::fprintf(f, "v %.3f %.3f %.3f\n", p.x, p.y, p.z);
    for (const Vec2& uv : mesh.texCoords())
        std::fprintf(f, "vt %.6f %.6f\n", uv.u, uv.v);
    for (const Mesh::Group& group : mesh.groups()) {
        // Repeated after each group so readers that reset it per group agree.
        std::fprintf(f, "g %s\nusemtl %s\n", group.name.c_str(), material.materialName.c_str());
        for (const auto& t : group.triangles) {
            // One texture coordinate per vertex: the indices coincide.
            const unsigned a = t[0] + 1, b = t[1] + 1, c = t[2] + 1;
            std::fprintf(f, "f %u/%u %u/%u %u/%u\n", a, a, b, b, c, c);
        }
    }
    finish(std::move(file), objPath);
}

void writeMtl(const std::string& mtlPath, const ObjMaterial& material, const std::string& headerComment)
{
    File file = openForWriting(mtlPath);
    std::fprintf(file.get(),
                 "# %s\n"
                 "newmtl %s\n"
                 "Ka 1.000 1.000 1.000\n"
                 "Kd 1.000 1.000 1.000\n"
                 "Ks 0.000 0.000 0.000\n"
                 "d 1.0\n"
                 "illum 1\n"
                 "map_Kd %s\n",
                 headerComment.c_str(), material.materialName.c_str(), material.textureFileName.c_str());
    finish(std::move(file), mtlPath);
}

} // namespace sitegen
