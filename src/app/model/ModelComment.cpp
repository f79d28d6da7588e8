#include "ModelComment.h"

#include <QStringDecoder>
#include <cstdio>

QString ModelCommentFromLine(const QByteArray& firstLine) {
    const QByteArray bytes = firstLine.left(79).trimmed();
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString comment = utf8.decode(bytes);
    if (utf8.hasError()) comment = QString::fromLatin1(bytes);
    comment += "  ";
    if (comment.startsWith("#") && comment.contains(". .")) return comment.mid(2);
    return "Model created by Orvo Systems . . ";
}

QString ReadModelComment(const std::string& modelPath) {
    char line[80] = {};
    std::FILE* file = std::fopen(modelPath.c_str(), "r");
    if (file) {
        if (!std::fgets(line, sizeof line, file)) line[0] = '\0';
        std::fclose(file);
    }
    return ModelCommentFromLine(QByteArray(line));
}
