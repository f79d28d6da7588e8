// The two file dialogs every Part uses. The file variable comes in as the
// proposal and goes out as the choice; a cancelled dialog leaves it alone.
#pragma once

#include <QString>
#include <QStringList>

// 1 when the dialog ended with OK and the file exists, else 0. The initial
// folder is DefDir when it exists, else the folder of thefile; ext (may be
// empty) is added to a chosen name without extension.
int OrvoOpenFile(QString& thefile, const QString& ext, const QString& szFilter, const QString& szTitle,
                 const QString& DefDir);

// An open dialog that takes several files; the files chosen, none on cancel.
QStringList OrvoOpenFiles(const QString& Title, const QString& Filter, const QString& DefDir);

// The 1-based index of the filter chosen, 0 on cancel. A chosen name without
// extension gets the extension of the chosen filter entry (ext when the
// entry has none). A new file is tried for writing at once: where it can't
// be written, thefile becomes the same name in ORVO_T.
int OrvoSaveFile(QString& thefile, const QString& ext, const QString& Filter, const QString& Title, int filterindex);

// The extension of filter entry index (1-based) of "Text|*.txt|All|*.*":
// the first pattern's text after its ".", "" for a wildcard or a missing entry.
QString FilterEntryExtension(const QString& filter, int index);
