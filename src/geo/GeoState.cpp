#include "GeoState.h"

GeoState& geoState() {
    static GeoState state;
    return state;
}

void resetGeoState() { geoState() = GeoState{}; }
