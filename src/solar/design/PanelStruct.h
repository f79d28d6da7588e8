// The panel record and its small companion list. A PANEL is copied whole
// (also byte by byte) wherever it moves, so it holds no pointers and no
// owned memory; strings are zero-terminated 8-bit arrays.
#pragma once

#include <type_traits>

#include "geo/GisTypes.h"

// 0x00BBGGRR, red in the lowest byte.
using TColor = int;

constexpr int MAX_PANELS = 500;
constexpr int MAX_PANEL_LIST = 100;

struct PANEL {
    char ModuleType[30] = {};   // catalogue name, at most 29 characters kept
    char Name[10] = {};         // "N/G", at most 9 characters kept
    char Filename[256] = {};    // full path of the panel's own COLLADA file
    char TextureName[256] = {}; // leaf name once the panel is written
    int Row = 0;                // row inside its construction group, from 1; 0 before grouping
    char GroupingName = 0;      // construction group letter 'A'..'Z'; 0 when unassigned
    TGIS_Point3D PP[3] = {};    // roof reference points of the layout (m)
    TGIS_Point3D CenterPoint = {};  // mean of the four corners (m)
    double CenterLat = 0;       // degrees
    double CenterLon = 0;       // degrees
    int EPSG = 0;
    double RawEnergy = 0;       // kWh/year before shading
    double AdjustedEnergy = 0;  // kWh/year after shading
    double MonthlyRadiation[12] = {};  // kWh/m2, January to December
    int Shaded_Hours = 0;       // h/year, 0 to 4360
    int DirectSun_Hours = 0;    // h/year
    double Shading_Percent = 0;
    int Length = 0;             // mm, the long side whatever the orientation
    int Width = 0;              // mm
    int Thickness = 0;          // mm
    double DTilt = 0;           // degrees from horizontal, measured on the corners
    double DAzimuth = 0;        // degrees from north, clockwise, of the normal
    double Lift = 0;            // m above the roof along the normal
    int Opacity = 0;            // %, 0 to 100
    int Gapmm = 0;              // mm between neighbours in a row
    int Repeat = 0;             // panels requested along a row
    bool Landscape = false;     // long side along the row
    bool Active = false;        // false takes the panel out of picking
    TGIS_Point3D Corners[4] = {};  // LL, UL, UR, LR; LL-LR along the row, LL-UL up the panel
    TColor Color1 = 0;          // material colour
    TColor Color2 = 0;
    double Cleaningfactor = 0;  // % soiling loss
    int RoofType = 0;           // 0 tiled ("RED_TILE"), 1 flat ("WHITE_FLAT ")
    double Efficiency = 0;      // %
    double PanelPowerratingKW = 0;  // kW at STC (the catalogue holds watts)
    double Weight_kg = 0;
    double MaxPowerNOCT_W = 0;
    double TempCoeff_Pmax_PercentPercent = 0;  // %/degC, e.g. -0.3
    double NOCT_C = 0;
    double BifacialFactor_Percent = 0;  // 0 for a monofacial module
    double AnnualDegradation = 0;       // per year, as in the catalogue
    double Annual_kWh = 0;
    double Shadingloss_kWh = 0;
};

static_assert(std::is_trivially_copyable_v<PANEL>, "PANEL moves by byte copy");

// A small library container of panels; nothing in the application fills it.
struct PANEL_LIST {
    PANEL list[MAX_PANEL_LIST] = {};
    int count = 0;
};
