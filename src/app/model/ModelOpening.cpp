#include "ModelOpening.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "ModelGisFiles.h"
#include "ModelPaths.h"
#include "ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"

namespace {

std::string lowerExtension(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    const auto dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string ext = path.substr(dot);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

}  // namespace

int ModelTypeOfExtension(const std::string& path) {
    const std::string ext = lowerExtension(path);
    if (ext == ".obj") return AT3D_READ_OBJ;
    if (ext == ".dae") return AT3D_READ_DAE;
    if (ext == ".3ds") return AT3D_READ_3DS;
    if (ext == ".stl") return AT3D_READ_STL;
    if (ext == ".dxf") return AT3D_READ_DXF;
    if (ext == ".cob") return AT3D_READ_COB;
    if (ext == ".atm") return AT3D_READ_ATM;
    return -1;
}

std::string FindOffsetFile(const std::string& modelPath) {
    const std::string offset = FindFileNoCase(FolderOf(modelPath) + "offset.txt");
    if (!offset.empty()) return offset;
    return FindFileNoCase(WithExtension(modelPath, ".zuz"));
}

bool ReadOffsetFile(const std::string& path, double Offset[3], std::string* problem) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    if (!in || !std::getline(in, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::string words = line;
    std::replace(words.begin(), words.end(), ',', ' ');
    // As a scan of three numbers: it stops at the first word that is not one,
    // and from there the entries keep the offset they had. A number that is
    // not finite stops it too: an infinite shift would throw the model off the map.
    const char* p = words.c_str();
    const char* end = p + words.size();
    for (int k = 0; k < 3; ++k) {
        while (p < end && std::isspace(static_cast<unsigned char>(*p))) ++p;
        if (p == end) return true;
        const char* word = p;
        double value = 0;
        auto [next, ec] = std::from_chars(p + (*p == '+' ? 1 : 0), end, value);
        if (ec == std::errc() && std::isfinite(value)) {
            Offset[k] = value;
            p = next;
            continue;
        }
        const char* wordEnd = word;
        while (wordEnd < end && !std::isspace(static_cast<unsigned char>(*wordEnd))) ++wordEnd;
        if (problem) {
            char text[1024];
            std::snprintf(text, sizeof text,
                          "%s: the line \"%.300s\" holds \"%.100s\", which is not a finite number; the offset is "
                          "%.3f %.3f %.3f",
                          path.c_str(), line.c_str(), std::string(word, wordEnd).c_str(), Offset[0], Offset[1],
                          Offset[2]);
            *problem = text;
        }
        return true;
    }
    return true;
}

std::string FindPrjFile(const std::string& modelPath) { return FindFileNoCase(WithExtension(modelPath, ".prj")); }

void SetUpModelFrame(const std::string& modelPath, bool isObj, const std::string& prjPath) {
    FrameState& frame = frameState();
    At3d_WriteFlag(LIBFLAG_READ_109, 0);
    At3d_WriteFlag(LIBFLAG_ROTATE_181, 1);
    At3d_WriteFlag(LIBFLAG_READ_123, 1);
    At3d_GetObjectCenter(frame.BeforeRotateCenter);
    At3d_GetObjectMinMax(frame.BeforeRotateModelMinMax);
    At3d_GetObjectMinMax(frame.OriginalModelMinMax);
    if (isObj) At3d_RotateObjectX_90Minus();
    At3d_GetObjectCenter(frame.AfterRotateCenter);
    At3d_GetObjectMinMax(frame.AfterRotateModelMinMax);
    for (int i = 0; i < 6; ++i) frame.OriginalModelMinMax[i] += frame.Offset[i / 2];
    const bool centred = frame.OriginalobjectCenter[0] + frame.OriginalobjectCenter[1] + frame.OriginalobjectCenter[2] != 0;
    if (!centred) At3d_GetObjectCenter(frame.OriginalobjectCenter);

    std::string prj = prjPath;
    if (prj.empty()) {
        const QStringList others = Find_Files(QString::fromStdString(FolderOf(modelPath)) + "*.prj", false);
        if (!others.isEmpty()) prj = others.first().toStdString();
    }
    if (!prj.empty()) LoadGlobalCS(prj);

    if (!centred) {
        At3d_WriteFlag(LIBFLAG_ROTATE_181, 0);
        At3d_ViewBottom();
        At3d_GetObjectCenter(frame.OCENTER);
        SetGeographicCentre();
        const std::string& data = sessionPaths().CTQ_Path;
        const std::string world = data.empty() ? "" : FindFileNoCase(data + "worldFromGM.kml");
        if (!world.empty()) modelSession().State = StateAt(world, frame.OCENTERLon, frame.OCENTERLat);
        At3d_SetObject_XYZCenter();
        At3d_GetObjectCenter(frame.LOCALCENTER);
    }
    At3d_VertNormAllCalculate();
}

bool OpenModelHeadless(const std::string& modelPath, OpenedModel& opened) {
    FrameState& frame = frameState();
    opened = OpenedModel{};
    opened.path = modelPath;
    opened.type = ModelTypeOfExtension(modelPath);
    opened.isObj = opened.type == AT3D_READ_OBJ;
    std::fill(frame.OriginalobjectCenter, frame.OriginalobjectCenter + 3, 0.0);

    opened.prjPath = FindPrjFile(modelPath);
    if (opened.prjPath.empty() || !LoadGlobalCS(opened.prjPath)) {
        geoState().GlobalCS.reset();
        geoState().EPSG = -1;
    }
    opened.epsg = geoState().EPSG;
    opened.offsetPath = FindOffsetFile(modelPath);
    if (!opened.offsetPath.empty()) ReadOffsetFile(opened.offsetPath, frame.Offset, &opened.offsetProblem);

    At3d_Clear();
    At3d_WriteFlag(LIBFLAG_READ_134, 0);
    At3d_WriteFlag(LIBFLAG_SCENE_77, 0);
    At3d_WriteFlag(LIBFLAG_READ_296, 1);
    At3d_WriteFlag(LIBFLAG_READ_263, 0);
    At3d_WriteFlag(LIBFLAG_READ_91, 1);
    opened.fileLoaded = opened.type < 0 ? 0 : At3d_Read(opened.type, modelPath.c_str(), 1);
    if (!opened.fileLoaded) return false;

    SetUpModelFrame(modelPath, opened.isObj, opened.prjPath);
    opened.epsg = geoState().EPSG;
    return true;
}
