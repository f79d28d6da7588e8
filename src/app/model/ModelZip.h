// Zipped models: the archive is unpacked beside it and its OBJ files opened.
#pragma once

#include <QStringList>
#include <string>

// Unpacks every entry of zipPath below destFolder (made as needed); entries
// that would land outside it are skipped. Each file is written through a
// temporary file. False when the archive can't be read.
bool UnzipFile(const std::string& zipPath, const std::string& destFolder);

// Unpacks into the model's folder + "Unzipped/" and gives every "*.obj"
// found below it, sorted; empty when none or the archive is bad.
QStringList UnzipModel(const std::string& zipPath);
