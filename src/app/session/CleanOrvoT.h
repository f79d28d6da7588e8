// "Clean temporary files": the files of ORVO_T from other days go.
#pragma once

#include <QDate>
#include <QString>

// Deletes each file directly in folder (not below it) whose date is not
// today; the number deleted.
int CleanFolderOfOtherDays(const QString& folder, const QDate& today);

// The same for ORVO_T and the present date.
int Clean_ORVO_T();
