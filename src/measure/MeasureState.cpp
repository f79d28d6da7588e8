#include "MeasureState.h"

MeasureState& measureState() {
    static MeasureState state;
    return state;
}

void resetMeasureState() { measureState() = MeasureState{}; }
