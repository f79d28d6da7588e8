// The model's comment: the first line of the model file when the program
// wrote it (it starts with "#" and holds ". ."), else the program's own.
#pragma once

#include <QByteArray>
#include <QString>
#include <string>

// The comment from the first line's bytes (at most 79 of them): UTF-8, or
// Latin-1 when they are no UTF-8; trimmed, two blanks appended.
QString ModelCommentFromLine(const QByteArray& firstLine);

// The same from the model file.
QString ReadModelComment(const std::string& modelPath);
