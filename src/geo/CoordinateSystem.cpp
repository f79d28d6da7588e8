#include "CoordinateSystem.h"

#include <ogr_spatialref.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <sstream>

struct CoordinateSystem::Impl {
    OGRSpatialReference srs;
    std::unique_ptr<OGRCoordinateTransformation> toWgs84;
    std::unique_ptr<OGRCoordinateTransformation> fromWgs84;
    // A transformation object keeps scratch state between calls.
    std::mutex lock;
};

namespace {

// ESRI-flavoured texts carry no authority: when AutoIdentifyEPSG cannot name
// the code, the database's best match is accepted only when it is certain enough.
int identifyEpsg(OGRSpatialReference& srs) {
    if (srs.AutoIdentifyEPSG() == OGRERR_NONE) {
        const char* code = srs.GetAuthorityCode(srs.IsProjected() ? "PROJCS" : "GEOGCS");
        if (code) return std::atoi(code);
    }
    int count = 0;
    int* confidence = nullptr;
    OGRSpatialReferenceH* matches = srs.FindMatches(nullptr, &count, &confidence);
    int epsg = -1;
    if (matches && count > 0 && confidence[0] >= 70) {
        auto* best = OGRSpatialReference::FromHandle(matches[0]);
        const char* authority = best->GetAuthorityName(nullptr);
        const char* code = best->GetAuthorityCode(nullptr);
        if (authority && code && std::string(authority) == "EPSG") epsg = std::atoi(code);
    }
    OSRFreeSRSArray(matches);
    CPLFree(confidence);
    return epsg;
}

bool transformPoint(OGRCoordinateTransformation& transformation, std::mutex& lock, const TGIS_Point& in,
                    TGIS_Point& out) {
    double x = in.X, y = in.Y;
    {
        std::lock_guard<std::mutex> guard(lock);
        if (!transformation.Transform(1, &x, &y)) return false;
    }
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    out = TGIS_Point{x, y};
    return true;
}

}  // namespace

CoordinateSystem::CoordinateSystem(std::unique_ptr<Impl> impl, int epsg) : impl_(std::move(impl)), epsg_(epsg) {}
CoordinateSystem::~CoordinateSystem() = default;

bool CoordinateSystem::project(const TGIS_Point& lonLat, TGIS_Point& xy) const {
    return transformPoint(*impl_->fromWgs84, impl_->lock, lonLat, xy);
}

bool CoordinateSystem::unproject(const TGIS_Point& xy, TGIS_Point& lonLat) const {
    return transformPoint(*impl_->toWgs84, impl_->lock, xy, lonLat);
}

std::shared_ptr<const CoordinateSystem> GlobalCSFactory::Make(const OGRSpatialReference& srs, int epsg) {
    auto impl = std::make_unique<CoordinateSystem::Impl>();
    impl->srs = srs;
    impl->srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    OGRSpatialReference wgs84;
    wgs84.importFromEPSG(4326);
    wgs84.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    impl->toWgs84.reset(OGRCreateCoordinateTransformation(&impl->srs, &wgs84));
    impl->fromWgs84.reset(OGRCreateCoordinateTransformation(&wgs84, &impl->srs));
    if (!impl->toWgs84 || !impl->fromWgs84) return nullptr;
    return std::shared_ptr<const CoordinateSystem>(new CoordinateSystem(std::move(impl), epsg));
}

std::shared_ptr<const CoordinateSystem> GlobalCSFactory::ByEPSG(int code) {
    OGRSpatialReference srs;
    if (code <= 0 || srs.importFromEPSG(code) != OGRERR_NONE) return nullptr;
    return Make(srs, code);
}

std::shared_ptr<const CoordinateSystem> GlobalCSFactory::ByWKT(const std::string& wkt) {
    OGRSpatialReference srs;
    if (srs.importFromWkt(wkt.c_str()) != OGRERR_NONE) return nullptr;
    return Make(srs, identifyEpsg(srs));
}

std::shared_ptr<const CoordinateSystem> GlobalCSFactory::ByWKTFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return nullptr;
    std::ostringstream text;
    text << in.rdbuf();
    return ByWKT(text.str());
}
