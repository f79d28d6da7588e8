#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include "GridFiles.h"

bool LoadXmlGrid(const QString& path, GridRows& rows) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement()) return false;
    GridRows read;
    while (xml.readNextStartElement()) {
        QStringList row;
        while (xml.readNextStartElement()) row.append(xml.readElementText(QXmlStreamReader::IncludeChildElements));
        read.append(row);
    }
    if (xml.hasError()) return false;
    rows = read;
    return true;
}

bool SaveXmlGrid(const GridRows& rows, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement("AA");
    for (const QStringList& row : rows) {
        xml.writeStartElement("BB");
        for (qsizetype column = 0; column < row.size(); ++column)
            xml.writeTextElement(QStringLiteral("C%1").arg(column + 1), row[column]);
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError() && file.commit();
}
