#include "PanelDaeListing.h"

#include <QDateTime>
#include <QStringList>

#include "AdjacencyGrouping.h"
#include "PanelDaeImport.h"
#include "PanelDaeText.h"
#include "PanelLayers.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"

using paneldae::Fmt;

namespace {

QString csvRow(const PANEL& p) {
    const QString layer = GetLayerOfPanel(p);
    const QString grouping = p.GroupingName ? QString(QLatin1Char(p.GroupingName)) : QString();
    return PanelText(p.ModuleType) + QLatin1Char(',') + (layer.isEmpty() ? QStringLiteral("(MISSING)") : layer) +
           QLatin1Char(',') + PanelText(p.Name) + QLatin1Char(',') + PanelText(p.Filename) + QLatin1Char(',') +
           QString::number(p.Row) + QLatin1Char(',') + grouping + QLatin1Char(',') + PanelText(p.TextureName) +
           QLatin1Char(',') + Fmt("%d,%d,", p.Length, p.Width) +
           Fmt("%d,%d,", static_cast<int>(p.DTilt), static_cast<int>(p.DAzimuth)) +
           (p.RoofType == 0 ? QStringLiteral("Tiled") : QStringLiteral("Flat")) +
           Fmt(",%.6f,%.6f,%.6f,%.6f", p.PanelPowerratingKW, p.CenterPoint.X, p.CenterPoint.Y, p.CenterPoint.Z);
}

QString writeCsv(const QString& path, const PANEL* panels, int count) {
    if (count < 1 || count > MAX_PANELS) {
        PrintRunLog("ERROR: Invalid NumPanelsCreated value: %d\n", count);
        return QString();
    }
    QStringList lines{QStringLiteral("ModuleType,Layer,Name,Filename,Row,Grouping,TextureName,Length,Width,DTilt,"
                                     "DAzimuth,RoofType,PanelPowerratingKW,CenterX,CenterY,CenterZ")};
    for (int i = 0; i < count; ++i) lines << csvRow(panels[i]);
    QString error;
    if (!paneldae::WriteLines(path, lines, &error)) {
        PrintRunLog("ERROR: can not write %s (%s)\n", qPrintable(path), qPrintable(error));
        return QString();
    }
    return path;
}

}  // namespace

QString ListPanelsInfo(const QString& DAE) {
    PanelStore& store = panelStore();
    store.NumPanelsCreatedT = 0;
    const int count = GetPanelsFromDae(DAE);
    const qsizetype dot = DAE.lastIndexOf(QLatin1Char('.'));
    const bool hasExtension = dot > DAE.lastIndexOf(QLatin1Char('/'));
    const QString csv = (hasExtension ? DAE.left(dot) : DAE) + QStringLiteral(".csv");
    return writeCsv(csv, store.panelsT.data(), count);
}

QString ListPanelsInfoFromMemory() {
    constructionGroups().groupCount = PerformAdjacencyGrouping(constructionGroups().groups.data());
    const PanelStore& store = panelStore();
    const QString folder = QString::fromStdString(sessionPaths().ORVO_T);
    OrvoCreateDir(folder);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_hhmmss"));
    return writeCsv(folder + QStringLiteral("PanelsInfo_") + stamp + QStringLiteral(".csv"), store.panels.data(),
                    store.NumPanelsCreated);
}
