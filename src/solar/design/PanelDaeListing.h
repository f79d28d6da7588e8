// CSV overviews of panels, one row a panel, for people and spreadsheets.
#pragma once

#include <QString>

// The panels of a COLLADA file (read afresh into panelsT) as a CSV next to
// it, named like it with ".csv"; the CSV's path, or "" when the file holds no
// panels or the CSV can't be written.
QString ListPanelsInfo(const QString& DAE);

// The live panels as "PanelsInfo_yyyymmdd_hhnnss.csv" in ORVO_T; its path,
// or "" when there are none or it can't be written.
QString ListPanelsInfoFromMemory();
