// Scores and grades of panels and of the system.
#pragma once

#include <string>

// 85 - 0.5 × shading percent, then the clamp as it stands: above 0 gives
// 100, exactly 0 stays 0, anything else (negative, not a number) gives 0.
double PanelScoreFromShading(double shadingPercent);
// "A+ EXCELLENT" from 90 ... "D  NEEDS IMPROVEMENT" below 60 or not a number.
std::string PanelGrade(double score);

// Energy ratio × orientation × (1 - shading), clamped as the panel score.
double CalculatePerformanceScore(double actualEnergy, double theoreticalEnergy, double shadingLossPercent,
                                 double tilt, double azimuth);
// "A+" from 90 down to "F" below 40.
std::string CalculateGrade(double score);
