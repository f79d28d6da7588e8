// Colours as the system keeps them: a toolkit colour is an integer with red
// in the lowest byte (0xFF red, 0xFF0000 blue); the engine takes three
// floats from 0 to 1.
#pragma once

#include <QColor>

QColor QColorFromToolkit(int color);
int ToolkitFromQColor(const QColor& color);
// Red, green and blue bytes divided by 255, for the engine.
void ToolkitColorToRgb(int color, float rgb[3]);
