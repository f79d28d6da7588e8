#include "PanelDaeEmbed.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include "PanelColladaData.h"
#include "PanelDaeText.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/RunLog.h"

namespace {

bool allDigits(const QString& text) {
    if (text.isEmpty()) return false;
    for (QChar c : text)
        if (!c.isDigit()) return false;
    return true;
}

// The store index of the panel behind a node id, -1 for none.
int panelOfNode(QString id, const QHash<QString, int>& bySafeName) {
    if (id.contains(QLatin1String("roof_polygon"))) return -1;
    // The engine's COLLADA export names each node after its layer plus "-node".
    if (id.endsWith(QLatin1String("-node"))) id.chop(5);
    const QLatin1String tail("_geometry");
    if (id.toLower().endsWith(tail))
        id.chop(tail.size());
    else
        PrintRunLog("  WARNING: node id '%s' has no '_geometry' tail; used whole.\n", qPrintable(id));
    const QStringList parts = id.split(QLatin1Char('_'));
    QString key;
    if (parts.size() >= 2 && allDigits(parts[parts.size() - 2]) && allDigits(parts.last()))
        key = parts[parts.size() - 2] + QLatin1Char('_') + parts.last();
    const auto found = bySafeName.constFind(key);
    if (key.isEmpty() || found == bySafeName.constEnd()) {
        PrintRunLog("  NO MATCH: safeKey '%s' did not map to any panel.\n", qPrintable(key.isEmpty() ? id : key));
        return -1;
    }
    return found.value();
}

// Drops the <extra> blocks that end the node's lines so far (from `first` on):
// what an earlier run put in front of </node>.
void dropTrailingExtras(QStringList& out, qsizetype first) {
    while (out.size() > first && out.last().trimmed() == QLatin1String("</extra>")) {
        qsizetype open = out.size() - 2;
        while (open >= first && !out[open].trimmed().startsWith(QLatin1String("<extra"))) --open;
        if (open < first) return;
        out.erase(out.begin() + open, out.end());
    }
}

void logOutcome(int embedded, int total) {
    if (embedded == total)
        PrintRunLog("SUCCESS: Embedded data for all %d panels\n", total);
    else if (embedded > 0)
        PrintRunLog("PARTIAL: Embedded data for %d of %d panels\n", embedded, total);
    else
        PrintRunLog("WARNING: No panel data was embedded - check log for details\n");
    if (embedded == 0)
        PrintRunLog("HINT: If this is 0, check that node ids look like '..._<N>_<G>_geometry' and panel names like 'N/G'.\n");
}

}  // namespace

bool EmbedPanelsToDaeFile(const QString& DaeFile, int* embeddedCount) {
    if (embeddedCount) *embeddedCount = 0;
    if (!QFileInfo(DaeFile).isFile()) {
        PrintRunLog("ERROR: DAE file does not exist: %s\n", qPrintable(DaeFile));
        return false;
    }
    const PanelStore& store = panelStore();
    const int total = store.NumPanelsCreated;
    if (total < 1 || total > MAX_PANELS) {
        PrintRunLog("ERROR: Invalid NumPanelsCreated value: %d\n", total);
        return false;
    }
    QHash<QString, int> bySafeName;
    for (int i = 0; i < total; ++i) {
        const QString safe = paneldae::SafeName(PanelText(store.panels[i].Name));
        if (!bySafeName.contains(safe)) bySafeName.insert(safe, i);
    }

    QStringList lines;
    if (!paneldae::ReadLines(DaeFile, lines)) {
        PrintRunLog("ERROR: DAE file can not be read: %s\n", qPrintable(DaeFile));
        return false;
    }
    QStringList out;
    out.reserve(lines.size());
    QSet<int> embedded;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString& line = lines[i];
        const bool nodeLine = line.contains(QLatin1String("<node ")) && line.contains(QLatin1String(" id=\""));
        const int panel = nodeLine ? panelOfNode(paneldae::AttributeValue(line, QStringLiteral("id")), bySafeName) : -1;
        qsizetype end = -1;
        if (panel >= 0 && !line.contains(QLatin1String("</node>")))
            for (qsizetype j = i + 1; j < lines.size() && end < 0; ++j)
                if (lines[j].contains(QLatin1String("</node>"))) end = j;
        if (end < 0) {
            if (panel >= 0) PrintRunLog("  node of panel %s has no end; skipped.\n", store.panels[panel].Name);
            out << line;
            continue;
        }
        const qsizetype nodeStart = out.size();
        for (qsizetype k = i; k < end; ++k) out << lines[k];
        dropTrailingExtras(out, nodeStart + 1);
        AddPanelDataToStringList(out, store.panels[panel], panel);
        out << lines[end];
        embedded.insert(panel);
        i = end;
    }

    const int count = static_cast<int>(embedded.size());
    logOutcome(count, total);
    if (count == 0) return false;
    QString error;
    if (!paneldae::WriteLines(DaeFile, out, &error)) {
        PrintRunLog("ERROR saving DAE file: %s (%s)\n", qPrintable(DaeFile), qPrintable(error));
        return false;
    }
    if (embeddedCount) *embeddedCount = count;
    return true;
}
