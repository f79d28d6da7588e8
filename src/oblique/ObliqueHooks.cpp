#include "ObliqueHooks.h"

ObliqueHooks& obliqueHooks() {
    static ObliqueHooks hooks;
    return hooks;
}

void resetObliqueHooks() { obliqueHooks() = ObliqueHooks{}; }
