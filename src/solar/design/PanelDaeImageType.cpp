#include "PanelDaeImageType.h"

#include <QFile>

QString GetCorrectFileExtensionFromImageFile(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return QStringLiteral(".error");
    const QByteArray head = file.read(12);
    if (head.size() < 12) return QStringLiteral(".error");
    if (head.startsWith("\xFF\xD8\xFF")) return QStringLiteral(".jpg");
    if (head.startsWith("\x89PNG\r\n\x1A\n")) return QStringLiteral(".png");
    if (head.startsWith("BM")) return QStringLiteral(".bmp");
    if (head.startsWith("GIF8")) return QStringLiteral(".gif");
    // Intel and Motorola byte orders; the second also as "MM*" without the zero byte.
    if (head.startsWith(QByteArray("II*", 3)) || head.startsWith(QByteArray("MM\0*", 4)) || head.startsWith("MM*"))
        return QStringLiteral(".tif");
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP") return QStringLiteral(".webp");
    return QStringLiteral(".unknown");
}
