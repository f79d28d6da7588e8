// A general drawing tool: a line-based CSV of filled strips and measure lines
// becomes a dimensioned, printable SVG page fitted to the paper.
#pragma once

#include <QString>
#include <QStringList>
#include <cmath>

constexpr double DIM_DIVISOR = 1.0;
constexpr double FONT_PX = 6.0;
constexpr double PX_TO_MM = 0.26;
constexpr double GAP_MIN_VERT_MM = 7.0;
constexpr double GAP_FACT_VERT = 0.8;
constexpr double GAP_MIN_ANG_MM = 12.0;
constexpr double GAP_FACT_ANG = 1.1;
constexpr double GAP_PAD_MM = 3.0;
constexpr double TEXT_OFFSET_MM = 0.6;
constexpr double AUTO_OFFSET_SCALE = 0.6;
constexpr double NEAR_ZERO = 0.0001;
constexpr double INT_TOL = 1e-9;
constexpr double edgeClearMm = 3.9;

// Page settings from the "@" line.
struct CSVU_Meta {
    double pageWmm = 297;
    double pageHmm = 210;
    double rotateDeg = 0;
    double margin = 10;
    double dimOffsetMm = 8;  // drawing units added above and below the content
    double dimFactor = 1;
    int dimDec = 1;
    int interactive = 1;
};

struct CSVU_P {
    double x = 0, y = 0;
    CSVU_P operator+(CSVU_P o) const { return {x + o.x, y + o.y}; }
    CSVU_P operator-(CSVU_P o) const { return {x - o.x, y - o.y}; }
    CSVU_P operator*(double s) const { return {x * s, y * s}; }
    double length() const { return std::sqrt(x * x + y * y); }
    CSVU_P unit() const {
        const double l = length();
        return l > 0 ? CSVU_P{x / l, y / l} : CSVU_P{};
    }
    CSVU_P normal() const { return {-y, x}; }
};

// Applies one "@key=value, ..." line to meta; unknown keys are ignored.
void ParseCsvuMeta(const QString& line, CSVU_Meta& meta);
// A row's fields, split at commas outside parentheses, trimmed.
QStringList SplitCsvuRow(const QString& line);
// "RGB(r,g,b)" or a plain integer as a TColor; false when it is neither.
bool ParseCsvuColour(const QString& field, int& colour);
// A number of the file where an int is wanted: beyond the int range it
// stops at the nearest end, and NaN reads as 0.
int CsvuInt(double value);

// Draws CSV into the CSV's name with ".svg" and logs next to it with ".log";
// the SVG's path, or "" when the file has no data rows or can't be written.
QString CSV2SVG(const QString& CSV, const QString& Header, const QString& Footer);
