// Small number helpers: the first integer in a text, and the float range
// and colour-byte conversions the engine's float fields need.
#pragma once

#include <QString>

// Every character that is no digit counts as a blank; the first integer is
// the result, 0 when there is none (and INT_MAX for a longer run of digits).
int GetFirstNumber(const QString& S);
// Keeps a double within the float range: 0 stays 0, a magnitude above 3e38
// becomes 3e38 and one below 3e-37 becomes 3e-37, the sign kept.
float my_double_to_float(double value);
// A colour byte, limited to 255, as value / 255.
float my_change_256_int_to_float(int value);
// Back to a colour byte: value * 255, floored.
int my_change_float_to_256_int(float value);
