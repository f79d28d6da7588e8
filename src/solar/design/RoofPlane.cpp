#include "RoofPlane.h"

RoofState& roofState() {
    static RoofState state;
    return state;
}

void resetRoofState() { roofState() = RoofState{}; }
