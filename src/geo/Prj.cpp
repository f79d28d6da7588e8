#include "Prj.h"

#include <ogr_spatialref.h>

#include <fstream>
#include <sstream>

int EpsgFromWkt(const std::string& wkt) {
    OGRSpatialReference srs;
    if (srs.importFromWkt(wkt.c_str()) != OGRERR_NONE) return -1;
    const char* code = nullptr;
    if (srs.AutoIdentifyEPSG() == OGRERR_NONE) {
        code = srs.GetAuthorityCode(srs.IsProjected() ? "PROJCS" : "GEOGCS");
        if (code) return std::atoi(code);
    }
    // ESRI-flavoured files carry no authority: ask the database for the
    // best match and accept it only when it is certain enough.
    int count = 0;
    int* confidence = nullptr;
    OGRSpatialReferenceH* matches = srs.FindMatches(nullptr, &count, &confidence);
    int epsg = -1;
    if (matches && count > 0 && confidence[0] >= 70) {
        auto* best = OGRSpatialReference::FromHandle(matches[0]);
        const char* authority = best->GetAuthorityName(nullptr);
        const char* bestCode = best->GetAuthorityCode(nullptr);
        if (authority && bestCode && std::string(authority) == "EPSG") epsg = std::atoi(bestCode);
    }
    OSRFreeSRSArray(matches);
    CPLFree(confidence);
    return epsg;
}

int EpsgFromPrjFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return -1;
    std::ostringstream text;
    text << in.rdbuf();
    return EpsgFromWkt(text.str());
}
