#include "DxfText.h"

#include <charconv>
#include <cmath>
#include <cstdio>

std::string DxfNumber(double v) {
    if (!std::isfinite(v)) v = 0;
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, v);
    return std::string(text, result.ptr);
}

void DxfGroup(std::string& out, int code, const std::string& value) {
    char head[8];
    std::snprintf(head, sizeof head, "%3d\n", code);
    out += head;
    out += value;
    out += '\n';
}
