#include "PanelColladaWriter.h"

#include <QFileInfo>

#include "PanelCatalog.h"
#include "PanelColladaData.h"
#include "PanelColladaModel.h"
#include "PanelDaeImageType.h"
#include "PanelDaeText.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "scene/FileNameCase.h"

using paneldae::Fmt;

namespace {

void logLine(std::FILE* logFile, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    if (logFile) {
        std::fputs(bytes.constData(), logFile);
        std::fflush(logFile);
    } else {
        PrintRunLog("%s", bytes.constData());
    }
}

// The catalogue's texture for a box. Its extension follows the true format of
// the installed picture, and a missing file is made from that picture; the
// file lies beside the panel files, so the model names it by its leaf.
QString boxTextureLeaf() {
    const PanelCatalog& catalog = panelCatalog();
    QString path = catalog.GlobalPanelJPGName;
    if (path.isEmpty()) return QString();
    const QString pictureName =
        catalog.PanelImageTexture.isEmpty() ? paneldae::LeafName(path) : catalog.PanelImageTexture;
    const QString picture = FindInstalledPanelTexture(pictureName);
    const QString kind = picture.isEmpty() ? QString() : GetCorrectFileExtensionFromImageFile(picture);
    if (kind == QLatin1String(".bmp") || kind == QLatin1String(".png")) {
        const QFileInfo info(path);
        path = info.path() + QLatin1Char('/') + info.completeBaseName() + kind.toUpper();
    }
    if (FindFileNoCase(path.toStdString()).empty() && !picture.isEmpty()) OrvoCopyFile(picture, path);
    return paneldae::LeafName(path);
}

void specsBlock(QStringList& lines, const char* profile, const QStringList& elements) {
    lines << QStringLiteral("        <extra>") << Fmt("          <technique profile=\"%s\">", profile);
    for (const QString& element : elements) lines << QStringLiteral("            ") + element;
    lines << QStringLiteral("          </technique>") << QStringLiteral("        </extra>");
}

QString element(const char* tag, const QString& text) {
    return Fmt("<%s>", tag) + text + Fmt("</%s>", tag);
}

QString precise(const char* tag, double value) { return element(tag, Fmt("%.12f", value)); }

}  // namespace

bool WritePanelColladaFile(const QString& DAE, const TGIS_Point3D* allPoints, int totalVertices, int totalPolys,
                           int NP, bool createBox, TColor Color1, TColor Color2, int Opacity, int panelIndex,
                           std::FILE* logFile) {
    PanelStore& store = panelStore();
    if (panelIndex < 0 || panelIndex >= store.NumPanelsCreated) {
        logLine(logFile, Fmt("ERROR saving DAE file: %s (no panel %d)\n", qPrintable(DAE), panelIndex));
        return false;
    }
    PANEL& panel = store.panels[panelIndex];

    PanelModelShape shape;
    shape.box = createBox;
    shape.color = Color1;
    shape.opacity = Opacity;
    shape.author = QStringLiteral("Zorvex64 Solar Panel Exporter");
    shape.sceneName = QStringLiteral("Solar Panel Array");
    if (createBox) {
        shape.textureLeaf = boxTextureLeaf();
        SetPanelText(panel.TextureName, shape.textureLeaf);
    }

    QStringList data;
    specsBlock(data, "solar_panel_specs", {element("module_type", paneldae::XmlText(store.ModuleType))});
    specsBlock(data, "panel_metadata",
               {element("epsg", QString::number(panel.EPSG)),
                element("path", paneldae::XmlText(PanelText(panel.Filename)))});
    specsBlock(data, "panel_specs",
               {precise("Efficiency", panel.Efficiency), precise("PanelPowerratingKW", panel.PanelPowerratingKW),
                precise("Weight_kg", panel.Weight_kg), precise("MaxPowerNOCT_W", panel.MaxPowerNOCT_W),
                precise("TempCoeff_Pmax_PercentPercent", panel.TempCoeff_Pmax_PercentPercent),
                precise("NOCT_C", panel.NOCT_C), precise("BifacialFactor_Percent", panel.BifacialFactor_Percent),
                precise("AnnualDegradation", panel.AnnualDegradation), precise("Annual_kWh", panel.Annual_kWh),
                precise("Shadingloss_kWh", panel.Shadingloss_kWh)});
    EmbedPanelDataInCollada(data, panel);

    QString error;
    if (!paneldae::WriteLines(DAE, PanelModelLines(panel, shape, data), &error)) {
        logLine(logFile, Fmt("ERROR saving DAE file: %s\n", qPrintable(DAE + QStringLiteral(" (") + error + ')')));
        return false;
    }
    return true;
}

bool SaveThePanel(const PANEL& panel) {
    PanelModelShape shape;
    shape.box = panel.Thickness > 0;
    shape.textureLeaf = paneldae::LeafName(PanelText(panel.TextureName));
    shape.color = panel.Color1;
    shape.opacity = panel.Opacity;
    shape.author = QStringLiteral("Exported by SavePanel");
    shape.sceneName = QStringLiteral("Solar Panel");
    shape.printedForm = true;

    QStringList data;
    EmbedPanelDataInCollada(data, panel);
    const QString path = PanelText(panel.Filename);
    QString error;
    if (!paneldae::WriteLines(path, PanelModelLines(panel, shape, data), &error)) {
        PrintRunLog("ERROR saving DAE file: %s (%s)\n", qPrintable(path), qPrintable(error));
        return false;
    }
    return true;
}
