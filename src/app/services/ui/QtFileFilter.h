// The file dialogs take filters as "Text file (*.TXT)|*.txt|All (*.*)|*.*";
// Qt's dialog wants "Text file (*.[tT][xX][tT])" per entry.
#pragma once

#include <QString>
#include <QStringList>

// One Qt name filter per entry; each pattern takes either case of each of
// its letters, since the operator's files come in any. The dialog hides the
// patterns and shows the description.
QStringList QtNameFilters(const QString& filter);
