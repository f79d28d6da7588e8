#include "NumberHelpers.h"

#include <climits>
#include <cmath>

int GetFirstNumber(const QString& S) {
    int at = 0;
    while (at < S.size() && !(S[at] >= '0' && S[at] <= '9')) ++at;
    long long value = 0;
    for (; at < S.size() && S[at] >= '0' && S[at] <= '9'; ++at) {
        value = value * 10 + (S[at].unicode() - '0');
        if (value > INT_MAX) return INT_MAX;
    }
    return static_cast<int>(value);
}

float my_double_to_float(double value) {
    if (value == 0.0) return 0.0f;
    const double magnitude = std::fabs(value);
    const double sign = value < 0 ? -1.0 : 1.0;
    if (magnitude > 3e38) return static_cast<float>(sign * 3e38);
    if (magnitude < 3e-37) return static_cast<float>(sign * 3e-37);
    return static_cast<float>(value);
}

float my_change_256_int_to_float(int value) {
    if (value > 255) value = 255;
    return static_cast<float>(value) / 255.0f;
}

int my_change_float_to_256_int(float value) { return static_cast<int>(std::floor(value * 255.0f)); }
