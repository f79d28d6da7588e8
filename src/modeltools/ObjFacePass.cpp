#include "ObjFacePass.h"

#include <QFile>
#include <cstdio>

#include "ModelToolProgress.h"
#include "app/model/ModelPaths.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoFopen.h"
#include "scene/FileNameCase.h"
#include "scene/engine/AtomicFile.h"

namespace {

constexpr long long CANCEL_CHECK_EVERY = 4096;

const char* kindOf(std::string_view piece, const char* previous) {
    if (piece.size() < 2) return previous;
    if (piece[0] == 'f' && piece[1] == ' ') return "Face";
    if (piece[0] != 'v') return previous;
    if (piece[1] == ' ') return "Vertex";
    if (piece[1] == 't') return "Texture";
    if (piece[1] == 'n') return "Normal";
    return previous;
}

}  // namespace

FacePassResult RunObjFacePass(const std::string& input, const std::string& output, const double center[3],
                              int statusEvery,
                              const std::function<bool(const ObjFace&, const LocalVertices&)>& drop) {
    FacePassResult result;
    long long total = 0, vertexLines = 0, faceLines = 0;
    if (!CountObjPieces(input, OBJ_LINE_LIMIT, total, vertexLines, faceLines)) {
        result.error = "Cannot open " + QString::fromStdString(input);
        return result;
    }
    std::FILE* in = ORVOfopen(QString::fromStdString(input), "rb");
    if (!in) {
        result.error = "Cannot open " + QString::fromStdString(input);
        return result;
    }
    engine::AtomicFile out(output);
    LocalVertices vertices;
    vertices.xyz.resize(static_cast<std::size_t>(vertexLines) * 3);
    ObjPieceReader reader(in, OBJ_LINE_LIMIT);
    std::string_view piece;
    std::string text;
    const char* kind = "Normal";
    long long line = 0;
    while (reader.next(piece)) {
        ++line;
        kind = kindOf(piece, kind);
        if (statusEvery > 0 && line % statusEvery == 0)
            ReportModelToolProgress(QString::asprintf("Processing record %lld of %lld  %.1f%%  %s    ", line, total,
                                                      100.0 * line / total, kind),
                                    line, total);
        if (line % CANCEL_CHECK_EVERY == 0 && ModelToolCancelled()) {
            result.cancelled = true;
            break;
        }
        if (piece.size() > 1 && piece[0] == 'v' && piece[1] == ' ') {
            double x = 0, y = 0, z = 0;
            ReadObjVertex(piece, x, y, z);
            float* v = &vertices.xyz[static_cast<std::size_t>(vertices.count) * 3];
            v[0] = static_cast<float>(x - center[0]);
            v[1] = static_cast<float>(y - center[1]);
            v[2] = static_cast<float>(static_cast<float>(z) - center[2]);
            ++vertices.count;
            out.write(piece.data(), piece.size());
            continue;
        }
        ObjFace face;
        if (!ReadObjFace(piece, face)) {
            out.write(piece.data(), piece.size());
            continue;
        }
        ++result.faces;
        if (drop(face, vertices)) {
            ++result.dropped;
            continue;
        }
        text.clear();
        WriteObjFace(text, piece, face);
        out.write(text);
    }
    std::fclose(in);
    if (result.cancelled) return result;
    if (!out.commit()) {
        result.error = "Cannot write " + QString::fromStdString(output) + "\n" + QString::fromStdString(out.error());
        return result;
    }
    result.written = true;
    return result;
}

void CopyModelPrj(const std::string& model, const std::string& output) {
    const std::string prj = FindFileNoCase(WithExtension(model, ".PRJ"));
    if (!prj.empty()) OrvoCopyFile(QString::fromStdString(prj), QString::fromStdString(WithExtension(output, ".PRJ")));
}
