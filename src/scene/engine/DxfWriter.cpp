#include "DxfWriter.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "../DxfText.h"
#include "LayerNamePool.h"

namespace engine {
namespace {

void dxfGroups(std::string& out, std::initializer_list<std::pair<int, std::string>> groups) {
    for (const auto& [code, value] : groups) DxfGroup(out, code, value);
}

std::string dxfLayerName(const std::string& name) {
    std::string out;
    for (char c : name) {
        const unsigned char u = static_cast<unsigned char>(c);
        out += (u < 32 || std::strchr("<>/\\\":;?*|=,'`", c)) ? '_' : c;
    }
    return out.empty() ? std::string("0") : out;
}

void dxfPoint(std::string& out, int firstCode, const double* p) {
    DxfGroup(out, firstCode, DxfNumber(p[0]));
    DxfGroup(out, firstCode + 10, DxfNumber(p[1]));
    DxfGroup(out, firstCode + 20, DxfNumber(p[2]));
}

}  // namespace

std::string buildDxf(const std::vector<const Layer*>& chosen, const std::string& producedBy) {
    std::string out;
    if (!producedBy.empty()) {
        std::string comment;
        for (char c : producedBy) comment += (c == '\n' || c == '\r') ? ' ' : c;
        DxfGroup(out, 999, comment);
    }
    dxfGroups(out, {{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {0, "ENDSEC"}});

    NamePool pool;
    std::vector<std::string> names;
    for (const Layer* layer : chosen) names.push_back(pool.take(dxfLayerName(layer->name)));

    dxfGroups(out, {{0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {70, std::to_string(names.size())}});
    for (const std::string& name : names)
        dxfGroups(out, {{0, "LAYER"}, {2, name}, {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}});
    dxfGroups(out, {{0, "ENDTAB"}, {0, "ENDSEC"}});

    dxfGroups(out, {{0, "SECTION"}, {2, "ENTITIES"}});
    for (std::size_t l = 0; l < chosen.size(); ++l) {
        const Layer& layer = *chosen[l];
        for (std::size_t f = 0; f < layer.faceCount(); ++f) {
            const double* p[3];
            for (int k = 0; k < 3; ++k) p[k] = &layer.positions[3ull * layer.triangles[3 * f + k]];
            DxfGroup(out, 0, "3DFACE");
            DxfGroup(out, 8, names[l]);
            dxfPoint(out, 10, p[0]);
            dxfPoint(out, 11, p[1]);
            dxfPoint(out, 12, p[2]);
            dxfPoint(out, 13, p[2]);  // a triangle repeats its third corner
        }
        for (std::size_t s = 0; s + 1 < layer.lineSegments.size(); s += 2) {
            DxfGroup(out, 0, "LINE");
            DxfGroup(out, 8, names[l]);
            dxfPoint(out, 10, &layer.lineVertices[3ull * layer.lineSegments[s]]);
            dxfPoint(out, 11, &layer.lineVertices[3ull * layer.lineSegments[s + 1]]);
        }
    }
    dxfGroups(out, {{0, "ENDSEC"}, {0, "EOF"}});
    return out;
}

}  // namespace engine
