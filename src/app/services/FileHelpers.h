// File and folder helpers. Folders given and returned end with "/".
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>

// The lines of File, each followed by a line feed; "" when it is missing or unreadable.
QString StringFromFile(const QString& File);
// Writes text as UTF-8 through a temporary file; true on success.
bool StringToFile(const QString& text, const QString& FileName);
// Size in bytes, and whole mebibytes in MB; -1 in both when the file is missing.
std::int64_t OrvoFileSize(const QString& infile, std::int64_t& MB);
// Makes the folder with its parents; true when it is there afterwards.
bool OrvoCreateDir(const QString& DIR);
// Copies over an existing target, through a temporary file beside it.
bool OrvoCopyFile(const QString& from, const QString& to);
// Makes To when missing and copies the whole tree of From into it.
bool OrvoCopyDirectory(const QString& From, const QString& To);
// Deletes the folder with its contents; true when it is gone.
bool ORVODeleteDirectory(const QString& path);
// Replaces every From by To; case counts.
QString OrvoStringReplace(const QString& S, const QString& From, const QString& To);
// The folder of a file, ending with "/"; "" for a bare name. Linux has no
// mapped drive letters, so nothing is resolved beyond that.
QString OrvoExtractLocalFilePath(const QString& filename);
// Full paths of the files matching the mask of Path_WildCard ("dir/*.obj"),
// whatever their case, sorted; with usesubdirectories in all folders below
// too. An empty list for a missing folder.
QStringList Find_Files(const QString& Path_WildCard, bool usesubdirectories);
// The same for folders under Path matching Mask; each ends with "/".
QStringList Find_Directories(const QString& Path, bool usesubdirectories, const QString& Mask);
// The link time of a Windows program file ("MZ" with a "PE" header), else
// the file's modification time; invalid for a missing file. Linux programs
// (ELF) carry no link time, so they get their file time.
QDateTime GetTimeStamp(const QString& FN);
