#include "PanelCatalog.h"

#include <QFile>
#include <algorithm>

#include "PanelCatalogLine.h"
#include "PanelCatalogSettings.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "scene/FileNameCase.h"

PanelCatalog& panelCatalog() {
    static PanelCatalog catalog;
    return catalog;
}

void resetPanelCatalog() { panelCatalog() = PanelCatalog{}; }

namespace {

const char* const kCatalogName = "Panels.csv";

bool isModuleLine(const QString& line) { return line.count(QLatin1Char(',')) + 1 >= kCatalogFieldCount; }

// The first matching line of the catalogue in memory, -1 when none.
int matchingLine(const QString& moduleType) {
    const QStringList& lines = panelCatalog().g_panelSpecs;
    for (int i = 1; i < lines.size(); ++i) {
        if (!isModuleLine(lines[i])) continue;
        if (CatalogNameMatches(CatalogLineName(lines[i]), moduleType)) return i;
    }
    return -1;
}

}  // namespace

QString FindPanelsCsv(const QString& root) {
    QString folder = root;
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    const std::string direct = FindFileNoCase((folder + kCatalogName).toStdString());
    if (!direct.empty()) return QString::fromStdString(direct);
    const QStringList below = Find_Files(folder + kCatalogName, true);
    return below.isEmpty() ? QString() : below.first();
}

bool InitializePanels() {
    PanelCatalog& catalog = panelCatalog();
    if (catalog.PanelsInitialized) return true;
    panelStore().ModuleType = ReadModuleTypeSetting();
    catalog.GlobalPanelsCSV = FindPanelsCsv(QString::fromStdString(sessionPaths().CTQ_Path));
    if (catalog.GlobalPanelsCSV.isEmpty()) {
        PrintRunLog("No Panels.csv found\n");
        MyShowMessage(QStringLiteral("No Panels.csv found"));
        return false;
    }
    if (!LoadPanelSpecifications(catalog.GlobalPanelsCSV)) {
        MyShowMessage(QStringLiteral("ERROR: Could not load panel specifications"));
        return false;
    }
    catalog.PanelsInitialized = true;
    return true;
}

bool LoadPanelSpecifications(const QString& csvPath) {
    PanelCatalog& catalog = panelCatalog();
    catalog.g_panelSpecs.clear();
    catalog.g_specCount = 0;
    QFile file(csvPath);
    if (!file.open(QIODevice::ReadOnly)) {
        PrintRunLog("ERROR: Failed to load panel specs from %s\n", qPrintable(csvPath));
        return false;
    }
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    // A final line feed ends the last line; it opens no empty one.
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    for (QString& line : lines)
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
    catalog.g_panelSpecs = lines;
    catalog.g_specCount = static_cast<int>(lines.size());
    PrintRunLog("Loaded %d panel specifications from %s\n", catalog.g_specCount, qPrintable(csvPath));
    return true;
}

void AddPanelSpecsFromCSV(PANEL& panel, const QString& moduleType) {
    const int line = matchingLine(moduleType);
    if (line < 0) return;
    PanelCatalog& catalog = panelCatalog();
    ApplyCatalogLine(catalog.g_panelSpecs[line], panel);
    catalog.PanelImageTexture = PanelTextureForModel(PanelText(panel.ModuleType));
    catalog.GlobalPanelJPGName = panelStore().ModelFolder + QStringLiteral("PANELS/") + catalog.PanelImageTexture;
    SetPanelText(panel.TextureName, catalog.GlobalPanelJPGName);
}

QStringList CatalogModelNames() {
    QStringList names;
    const QStringList& lines = panelCatalog().g_panelSpecs;
    for (int i = 1; i < lines.size(); ++i) {
        const QString name = CatalogLineName(lines[i]);
        if (name.isEmpty() || !isModuleLine(lines[i])) continue;
        if (!names.contains(name, Qt::CaseInsensitive)) names.append(name);
    }
    std::sort(names.begin(), names.end(),
              [](const QString& a, const QString& b) { return QString::compare(a, b, Qt::CaseInsensitive) < 0; });
    return names;
}

int CatalogModelIndex(const QStringList& names, const QString& moduleType) {
    const auto indexOf = [&names](const QString& name) {
        for (int i = 0; i < names.size(); ++i)
            if (QString::compare(names[i], name, Qt::CaseInsensitive) == 0) return i;
        return -1;
    };
    const int own = indexOf(moduleType);
    if (own >= 0 || moduleType.isEmpty()) return own;
    const int line = matchingLine(moduleType);
    return line < 0 ? -1 : indexOf(CatalogLineName(panelCatalog().g_panelSpecs[line]));
}

QString FindInstalledPanelTexture(const QString& name) {
    return QString::fromStdString(FindFileNoCase(sessionPaths().CTQ_Path + name.toStdString()));
}
