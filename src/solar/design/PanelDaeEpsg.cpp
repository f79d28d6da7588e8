#include "PanelDaeEpsg.h"

#include <cstdio>

#include "PanelDaeText.h"
#include "app/services/RunLog.h"

namespace {

QStringList epsgBlock(int EPSG) {
    return {QStringLiteral("    <extra id=\"epsg_data\">"), QStringLiteral("      <technique profile=\"GIS\">"),
            QStringLiteral("        <epsg_code>%1</epsg_code>").arg(EPSG),
            QStringLiteral("        <description>EPSG:%1</description>").arg(EPSG),
            QStringLiteral("      </technique>"), QStringLiteral("    </extra>")};
}

qsizetype firstLineWith(const QStringList& lines, const QString& text, qsizetype from = 0) {
    for (qsizetype i = from; i < lines.size(); ++i)
        if (lines[i].contains(text)) return i;
    return -1;
}

// Where the block goes: an earlier block is replaced, otherwise it closes the asset.
bool placeBlock(QStringList& lines, int EPSG) {
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!lines[i].contains(QLatin1String("<extra")) || !lines[i].contains(QLatin1String("id=\"epsg_data\"")))
            continue;
        const qsizetype end = firstLineWith(lines, QStringLiteral("</extra>"), i);
        if (end < 0) return false;
        lines.erase(lines.begin() + i, lines.begin() + end + 1);
        for (const QString& line : epsgBlock(EPSG)) lines.insert(i++, line);
        return true;
    }
    if (firstLineWith(lines, QStringLiteral("<asset")) >= 0) {
        const qsizetype close = firstLineWith(lines, QStringLiteral("</asset>"));
        if (close < 0) return false;
        // An asset written on one line is opened up around the block.
        const QString line = lines[close];
        const qsizetype at = line.indexOf(QLatin1String("</asset>"));
        QStringList replacement;
        if (!line.left(at).trimmed().isEmpty()) replacement << line.left(at);
        replacement << epsgBlock(EPSG);
        replacement << (line.left(at).trimmed().isEmpty() ? line : QStringLiteral("  ") + line.mid(at));
        lines.erase(lines.begin() + close);
        for (qsizetype k = 0; k < replacement.size(); ++k) lines.insert(close + k, replacement[k]);
        return true;
    }
    qsizetype before = -1;
    for (qsizetype i = 0; i < lines.size() && before < 0; ++i)
        if (lines[i].contains(QLatin1String("<library_")) || lines[i].contains(QLatin1String("<scene"))) before = i;
    if (before < 0) return false;
    QStringList asset{QStringLiteral("  <asset>")};
    asset << epsgBlock(EPSG) << QStringLiteral("  </asset>");
    for (qsizetype k = 0; k < asset.size(); ++k) lines.insert(before + k, asset[k]);
    return true;
}

}  // namespace

bool EmbedEPSGInDAE(const QString& DAE, int EPSG) {
    QStringList lines;
    if (!paneldae::ReadLines(DAE, lines)) {
        PrintRunLog("EmbedEPSGInDAE: can not read %s\n", qPrintable(DAE));
        return false;
    }
    if (!placeBlock(lines, EPSG)) {
        PrintRunLog("EmbedEPSGInDAE: no place for the EPSG block in %s\n", qPrintable(DAE));
        return false;
    }
    QString error;
    if (!paneldae::WriteLines(DAE, lines, &error)) {
        PrintRunLog("EmbedEPSGInDAE: can not write %s (%s)\n", qPrintable(DAE), qPrintable(error));
        return false;
    }
    return true;
}

int GetEPSGFromDAE(const QString& DAE) {
    QString text;
    if (!paneldae::ReadText(DAE, text) || !text.contains(QLatin1String("<COLLADA"))) {
        std::fprintf(stderr, "Error: Not a valid COLLADA file\n");
        return 0;
    }
    const qsizetype block = text.indexOf(QLatin1String("id=\"epsg_data\""));
    const qsizetype profile = block < 0 ? -1 : text.indexOf(QLatin1String("profile=\"GIS\""), block);
    if (profile < 0) return -1;
    const QString code = paneldae::TagText(text, QStringLiteral("epsg_code"), profile);
    if (code.isNull()) return -1;
    bool ok = false;
    const int EPSG = code.trimmed().toInt(&ok);
    if (!ok) {
        std::fprintf(stderr, "Error: Invalid EPSG code format: %s\n", qPrintable(code));
        return 0;
    }
    return EPSG;
}
