// The file dialogs take filters as "Text file (*.TXT)|*.txt|All (*.*)|*.*";
// Qt's dialog wants "Text file (*.txt *.TXT)" per entry.
#pragma once

#include <QString>
#include <QStringList>

// One Qt name filter per entry; each pattern also in lower and upper case,
// since the operator's files come in either.
QStringList QtNameFilters(const QString& filter);
