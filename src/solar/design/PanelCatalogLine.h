// One line of the module catalogue "Panels.csv": the loose name match, the
// fields with the defaults that stand in for missing or bad values, and the
// texture a model is drawn with.
#pragma once

#include <QString>

#include "PanelStruct.h"

// A line with fewer fields is no module and is skipped.
constexpr int kCatalogFieldCount = 12;

// The values a module takes where its line leaves a field missing or unreadable.
struct CatalogDefaults {
    static constexpr int Length = 2465;                       // mm
    static constexpr int Width = 1134;                        // mm
    static constexpr int Thickness = 35;                      // mm
    static constexpr double Weight_kg = 34.6;
    static constexpr double PowerSTC_W = 590;
    static constexpr double Efficiency = 21;                  // %
    static constexpr double MaxPowerNOCT_W = 444;
    static constexpr double TempCoeff_Pmax_PercentPercent = -0.3;
    static constexpr double NOCT_C = 45;
    static constexpr double BifacialFactor_Percent = 80;
    static constexpr double AnnualDegradation = 0.4;
    static constexpr int Gapmm = 20;                          // every matched module
};

// Trimmed, empty or one of "-", "?", "??".
bool IsMissingCatalogField(const QString& field);

// The trimmed first field of a line.
QString CatalogLineName(const QString& line);

// A file name matches when it contains moduleType, when moduleType contains
// it, or when it contains moduleType without regard to case; so a shortened
// name kept in the settings still finds its module. An empty name on either
// side matches nothing.
bool CatalogNameMatches(const QString& fileName, const QString& moduleType);

// Fills ModuleType, the size, the electrical fields and Gapmm from a line and
// empties Name; false, with the panel untouched, for a line under 12 fields.
bool ApplyCatalogLine(const QString& line, PANEL& panel);

// The two stored panel textures: the dark one and the default one.
inline constexpr const char* kDarkPanelTexture = "PNEG.JPG";
inline constexpr const char* kDefaultPanelTexture = "PDEF.JPG";

// "PNEG.JPG" for models of the makers whose modules are black ("TSM-",
// "AIKO-" in the name, any case), "PDEF.JPG" for all others.
QString PanelTextureForModel(const QString& modelName);
