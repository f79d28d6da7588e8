#include "ToolkitColor.h"

#include "NumberHelpers.h"

QColor QColorFromToolkit(int color) { return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF); }

int ToolkitFromQColor(const QColor& color) { return color.red() | color.green() << 8 | color.blue() << 16; }

void ToolkitColorToRgb(int color, float rgb[3]) {
    for (int i = 0; i < 3; ++i) rgb[i] = my_change_256_int_to_float((color >> (8 * i)) & 0xFF);
}
