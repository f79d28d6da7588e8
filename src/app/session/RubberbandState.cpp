#include "RubberbandState.h"

RubberbandState& rubberbandState() {
    static RubberbandState state;
    return state;
}

void resetRubberbandState() { rubberbandState() = RubberbandState{}; }
