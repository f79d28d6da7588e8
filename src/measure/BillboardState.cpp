#include "BillboardState.h"

BillboardState& billboardState() {
    static BillboardState state;
    return state;
}

void resetBillboardState() { billboardState() = BillboardState{}; }
