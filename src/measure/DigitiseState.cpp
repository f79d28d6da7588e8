#include "DigitiseState.h"

DigitiseState& digitiseState() {
    static DigitiseState state;
    return state;
}

void resetDigitiseState() { digitiseState() = DigitiseState{}; }
