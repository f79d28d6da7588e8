// The oblique catalogues that travel with a packed model.
#pragma once

#include <QString>
#include <QStringList>

// Every file of each catalogue folder named in the list file (one line a
// folder, or the path of a file in it such as its "oblixoblix.shp"; relative
// lines are taken below the list's folder, case ignored), subfolders
// included, sorted within each folder. ".rtree" index files are left out, as
// the viewer rebuilds them. With everySecondJpg a folder's ".JPG" pictures are
// counted from 1 and only the even ones kept, so the set thins out evenly
// and stays usable. Lines naming nothing that exists are passed over.
QStringList CatalogueFilesToPack(const QString& oblixList, bool everySecondJpg);
