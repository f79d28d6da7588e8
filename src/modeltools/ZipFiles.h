// Writing zip archives of model files: deflated entries named relative to
// the shortest folder of the list, so that folders below the model's folder
// stay folders in the archive. UnzipFile (app/model/ModelZip.h) reads them back.
#pragma once

#include <QString>
#include <QStringList>

// The name each file of TS gets in the archive: its bare name with nopaths,
// otherwise its path after the last "/" of the shortest folder prefix (the
// smallest last-"/" position over the list, 999 at most). "\" counts as "/".
QStringList ZipEntryNames(const QStringList& TS, bool nopaths);

// Writes ZipFilename from the files of TS under ZipEntryNames(TS, nopaths).
// Missing files are passed over. The archive is built in a temporary file
// beside it and renamed over ZipFilename only when complete: a failed or
// cancelled run leaves an older archive of that name as it was. With
// showmessagewhendone the operator is told "<name>\nCreated". True when
// the archive was written.
bool ZipFiles(const QStringList& TS, const QString& ZipFilename, bool nopaths, bool showmessagewhendone);

// The same with an entry name given for each source (names.size() must equal
// sources.size()): a packer that substitutes a file (a reduced picture) keeps
// the name the original would have had.
bool ZipNamedFiles(const QStringList& sources, const QStringList& names, const QString& ZipFilename,
                   bool showmessagewhendone);
