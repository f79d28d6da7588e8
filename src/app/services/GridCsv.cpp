#include <QFile>
#include <QSaveFile>

#include "GridFiles.h"

GridRows ParseCsvText(const QString& text) {
    GridRows rows;
    QStringList row;
    QString cell;
    bool quoted = false;
    bool rowStarted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                cell += '"';
                ++i;
            } else if (c == '"') {
                quoted = false;
            } else {
                cell += c;
            }
            continue;
        }
        if (c == '"') {
            quoted = true;
            rowStarted = true;
        } else if (c == ',') {
            row.append(cell);
            cell.clear();
            rowStarted = true;
        } else if (c == '\n' || c == '\r') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
            if (rowStarted || !cell.isEmpty()) {
                row.append(cell);
                rows.append(row);
            } else {
                rows.append(QStringList{});
            }
            row.clear();
            cell.clear();
            rowStarted = false;
        } else {
            cell += c;
            rowStarted = true;
        }
    }
    if (rowStarted || !cell.isEmpty()) {
        row.append(cell);
        rows.append(row);
    }
    return rows;
}

QString CsvLine(const QStringList& cells) {
    QStringList out;
    for (const QString& cell : cells) {
        if (cell.contains(',') || cell.contains('"') || cell.contains('\n') || cell.contains('\r')) {
            QString escaped = cell;
            escaped.replace("\"", "\"\"");
            out.append("\"" + escaped + "\"");
        } else {
            out.append(cell);
        }
    }
    return out.join(',');
}

bool LoadCsvGrid(const QString& path, GridRows& rows) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    rows = ParseCsvText(QString::fromUtf8(file.readAll()));
    return true;
}

bool SaveCsvGrid(const GridRows& rows, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    for (const QStringList& row : rows) file.write((CsvLine(row) + "\n").toUtf8());
    return file.commit();
}
