#include "MeasureForms.h"

MeasureForms& measureForms() {
    static MeasureForms forms;
    return forms;
}

void resetMeasureForms() { measureForms() = MeasureForms{}; }
