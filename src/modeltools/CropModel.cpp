#include "CropModel.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "ModelToolProgress.h"
#include "ObjFacePass.h"
#include "PolygonAngles.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"
#include "scene/engine/AtomicFile.h"
#include "scene/engine_interface.h"

namespace {

constexpr int STATUS_EVERY = 25000;
constexpr std::int8_t NOT_TESTED = 2;

// The largest |difference| over the three sides, in X and in Y.
bool tooLong(const float* a, const float* b, const float* c) {
    const auto spread = [](float p, float q, float r) {
        return std::max({std::fabs(p - q), std::fabs(q - r), std::fabs(r - p)});
    };
    return std::max(spread(a[0], b[0], c[0]), spread(a[1], b[1], c[1])) > MAXFACELENGTH;
}

// The outline's ".LIN" list: map points, the first repeated at the end.
bool writeOutline(const std::string& path, const std::vector<double>& x, const std::vector<double>& y,
                  const std::vector<double>& z) {
    std::string text;
    for (std::size_t i = 0; i < x.size(); ++i)
        text += QString::asprintf("%20.1lf%10.1lf%10.2lf%3d%3d\n", x[i] + OC(0), y[i] + OC(1), z[i] + OC(2), 11, 59)
                    .toStdString();
    return engine::WriteFileAtomically(path, text, nullptr);
}

}  // namespace

std::string CroppedModelName(const std::string& model, const std::string& lastPath, const QString& name) {
    const std::string named = WithExtension(lastPath, "_" + name.toStdString() + "_Cropped.obj");
    const auto slash = named.find_last_of('/');
    return WithExtension(model, "_" + (slash == std::string::npos ? named : named.substr(slash + 1)));
}

CropResult CropObjFile(const std::string& input, const std::string& output, const std::vector<double>& polygonX,
                       const std::vector<double>& polygonY, const double center[3]) {
    CropResult result;
    const int np = static_cast<int>(polygonX.size());
    // Each vertex is tested once, however many faces share it.
    std::vector<std::int8_t> outside;
    // Beyond the outline's bounding box the angle sum is zero: no need to add it up.
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    if (np > 0) {
        const auto [loX, hiX] = std::minmax_element(polygonX.begin(), polygonX.end());
        const auto [loY, hiY] = std::minmax_element(polygonY.begin(), polygonY.end());
        minX = *loX, maxX = *hiX, minY = *loY, maxY = *hiY;
    }
    const auto cornerOutside = [&](int index, const LocalVertices& vertices) -> bool {
        const float* v = &vertices.xyz[static_cast<std::size_t>(index) * 3];
        if (outside.empty()) outside.assign(vertices.xyz.size() / 3, NOT_TESTED);
        std::int8_t& known = outside[static_cast<std::size_t>(index)];
        if (known == NOT_TESTED)
            known = v[0] < minX || v[0] > maxX || v[1] < minY || v[1] > maxY ||
                    inpolygon(polygonX.data(), polygonY.data(), np, v[0], v[1]) != 0;
        return known != 0;
    };
    const FacePassResult pass = RunObjFacePass(
        input, output, center, STATUS_EVERY, [&](const ObjFace& face, const LocalVertices& vertices) {
            const float* corner[3];
            for (int k = 0; k < 3; ++k) {
                // A face naming a vertex not (yet) read has no place: it goes.
                if (face.v[k] < 1 || face.v[k] > vertices.count) return true;
                corner[k] = &vertices.xyz[static_cast<std::size_t>(face.v[k] - 1) * 3];
            }
            if (tooLong(corner[0], corner[1], corner[2])) return true;
            if (np == 0) return false;
            for (int k = 0; k < 3; ++k)
                if (!cornerOutside(face.v[k] - 1, vertices)) return false;
            return true;
        });
    if (!pass.written) {
        if (!pass.error.isEmpty()) MyShowMessage(pass.error);
        return result;
    }
    result.output = output;
    result.faces = pass.faces;
    result.kept = pass.faces - pass.dropped;
    return result;
}

CropResult CropTheModelFromFile() {
    const ModelSession& model = modelSession();
    QString name = " ";
    // The name is taken whether or not the box was confirmed.
    MyInputQuery("Cropping", "Name", name);
    const std::string output =
        CroppedModelName(model.GlobalModelFileName, model.LastPathFileName.empty() ? model.GlobalModelFileName
                                                                                     : model.LastPathFileName,
                         name);
    std::vector<double> x, y, z;
    const int measures = At3d_MeasureList_Get_Count();
    if (measures == 0) {
        if (MyMessageBox("No polygon in the Scene\nCrop to margin?", "Crop model", MB_YESNO) != IDYES) return {};
    } else {
        for (int i = 0; i < measures; ++i) {
            char id[AT3D_NAME_SIZE] = {};
            int visible = 0, observer = 0, obstruction = 0;
            float width = 0, rgb[3];
            double v1[3], v2[3], o[3], b[3];
            At3d_MeasureList_Get_Item(i, id, &visible, &observer, &obstruction, &width, rgb, v1, v2, o, b);
            x.push_back(v1[0]);
            y.push_back(v1[1]);
            z.push_back(v1[2]);
        }
        x.push_back(x.front());
        y.push_back(y.front());
        z.push_back(z.front());
    }
    const CropResult result =
        CropObjFile(model.GlobalModelFileName, output, x, y, frameState().OriginalobjectCenter);
    SSetTextAt3(0, "");
    if (result.output.empty()) return result;
    if (!x.empty() && !writeOutline(WithExtension(output, ".LIN"), x, y, z))
        MyShowMessage("Cannot write " + QString::fromStdString(WithExtension(output, ".LIN")));
    CopyModelPrj(model.GlobalModelFileName, output);
    MyShowMessage(QString::fromStdString(output) + "\nCreated");
    return result;
}
