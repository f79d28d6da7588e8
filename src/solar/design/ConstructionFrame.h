// The mounting frame's side view as a drawing CSV: panels, spans, verticals,
// blocks and a brace in the vertical plane across the rows, in centimetres.
#pragma once

#include <QString>

// The frame's lines as the CSV text (roof at y = 0, x up the slope).
QString ConstructionFrameText(float L1_mm, float L2_mm, float tiltDeg, float aboveRoof_mm, float blockHeight_mm,
                              float blockLength_mm);

// Writes ModelFolder + "Reports/" + ConstructionName + ".csv" (folder made);
// its path, or "" when it can't be written.
QString Panel2CSV(const QString& ConstructionName, float L1_mm, float L2_mm, float tiltDeg, float aboveRoof_mm,
                  float blockHeight_mm, float blockLength_mm);
