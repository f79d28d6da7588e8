#include "StartupState.h"

StartupState& startupState() {
    static StartupState state;
    return state;
}

void resetStartupState() { startupState() = StartupState{}; }
