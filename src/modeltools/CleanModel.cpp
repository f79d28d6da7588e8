#include "CleanModel.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "ModelToolProgress.h"
#include "ObjFacePass.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"

namespace {

constexpr int STATUS_EVERY = 100000;
constexpr int FACE_STATUS_EVERY = 5000;

CleanResult finish(const FacePassResult& pass, const std::string& output) {
    CleanResult result;
    if (!pass.written) {
        if (!pass.error.isEmpty()) MyShowMessage(pass.error);
        return result;
    }
    result.output = output;
    result.faces = pass.faces;
    result.dropped = pass.dropped;
    return result;
}

std::string cleanedName(const QString& name) {
    return WithExtension(modelSession().GlobalModelFileName, "_" + name.toStdString() + "_Cleaned.obj");
}

}  // namespace

CleanResult CleanObjFile(const std::string& input, const std::string& output, const std::vector<CLEAN>& regions,
                         const double center[3]) {
    std::vector<CLEAN> local = regions;
    for (CLEAN& region : local) {
        region.X -= OC(0);
        region.Y -= OC(1);
        region.Z -= OC(2);
    }
    const FacePassResult pass = RunObjFacePass(
        input, output, center, STATUS_EVERY, [&local](const ObjFace& face, const LocalVertices& vertices) {
            int toclean = 0;
            for (int k = 0; k < 3; ++k) {
                if (face.v[k] < 1 || face.v[k] > vertices.count) continue;
                const float* v = &vertices.xyz[static_cast<std::size_t>(face.v[k] - 1) * 3];
                for (const CLEAN& region : local) {
                    const float dx = v[0] - region.X, dy = v[1] - region.Y;
                    if (dx * dx + dy * dy > region.R * region.R) continue;
                    if (region.MA == 2 && region.Z > v[2]) continue;
                    ++toclean;
                }
            }
            return toclean >= 2;
        });
    return finish(pass, output);
}

CleanResult CleanTheModelFromFile() {
    const ModelSession& model = modelSession();
    const std::vector<CLEAN> regions = ReadCleanRegions(model.TodeleteVerticesFile);
    QString name = " ";
    MyInputQuery("Cleaning the model using " + QString::number(regions.size()) + " regions", "Name", name);
    const std::string output = cleanedName(name);
    const CleanResult result = CleanObjFile(model.GlobalModelFileName, output, regions, frameState().OriginalobjectCenter);
    SSetTextAt3(0, "");
    if (result.output.empty()) return result;
    CopyModelPrj(model.GlobalModelFileName, output);
    MyShowMessage(QString::asprintf("%lld faces cleaned out of %lld.\n%s\nCreated", result.dropped, result.faces,
                                    output.c_str()));
    return result;
}

CleanResult CleanTheModel() {
    const ModelSession& model = modelSession();
    std::vector<long long> marked;
    for (const QString& line : ReadTodeleteLines(model.TodeleteVerticesFile)) {
        bool ok = false;
        const long long index = line.toLongLong(&ok);
        if (ok && index > 0) marked.push_back(index);
    }
    std::sort(marked.begin(), marked.end());
    const long long largest = marked.empty() ? 0 : marked.back();
    if (MyMessageBox(QString::asprintf("%d Vertices to delete.\nThe largest index is %lld. Proceed?",
                                       int(marked.size()), largest),
                     QFileInfo(QString::fromStdString(model.TodeleteVerticesFile)).fileName(), MB_YESNO) != IDYES)
        return {};
    QString prefix = "Cleaned";
    if (!MyInputQuery("Cleaning the model", "Please define the output file prefix", prefix)) return {};
    const QFileInfo info(QString::fromStdString(model.GlobalModelFileName));
    const std::string output = (info.path() + "/" + prefix + "_" + info.fileName()).toStdString();
    long long lines = 0, vertexLines = 0, faces = 0;
    CountObjPieces(model.GlobalModelFileName, OBJ_LINE_LIMIT, lines, vertexLines, faces);
    long long faceNumber = 0;
    const FacePassResult pass = RunObjFacePass(
        model.GlobalModelFileName, output, frameState().OriginalobjectCenter, 0,
        [&](const ObjFace& face, const LocalVertices&) {
            if (++faceNumber % FACE_STATUS_EVERY == 0)
                ReportModelToolProgress(QString::asprintf("Processing face%lld of %lld  %.1f%%    ", faceNumber, faces,
                                                          100.0 * faceNumber / std::max(1LL, faces)),
                                        faceNumber, faces);
            int hits = 0;
            for (int k = 0; k < 3; ++k) hits += std::binary_search(marked.begin(), marked.end(), face.v[k]);
            return hits >= 2;
        });
    const CleanResult result = finish(pass, output);
    if (!result.output.empty()) MyShowMessage(QString::asprintf("%lld faces deleted\n", result.dropped));
    return result;
}
