// The end of a measured line: the measure dialog, then the line kept in the
// measure list with its label, or taken as the model's scale, or dropped.
// With the observer tool the line is not kept: the view looks along it.
#pragma once

void DoSaveMeasuring();
