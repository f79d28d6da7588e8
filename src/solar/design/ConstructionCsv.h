// The group tables: one small CSV per construction group listing the store
// indices of its panels row by row, left to right.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "AdjacencyGrouping.h"

// True when another of candidates (store indices) lies against idx's left edge (0.3 m in plan).
bool HasLeftNeighbor(int idx, const std::vector<int>& candidates);
// The first candidate not used whose left edge lies at most 0.3 m from
// current's right edge; -1 when none.
int FindNextPanel(int current, const std::vector<int>& candidates, const std::vector<bool>& used);

// The group's rows in order, each a list of store indices from left to right.
std::vector<std::vector<int>> OrderGroupRows(const CONSTRUCTION_GROUP& group);

// Deletes the old "*_group*" files of the model's folder, groups the panels
// and writes modelFile's name with "_Group<letter>_<type>.csv" per group;
// the paths written.
QStringList GenerateConstructionCSVs(const QString& modelFile);
