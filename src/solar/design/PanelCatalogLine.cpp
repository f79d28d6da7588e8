#include "PanelCatalogLine.h"

#include <QStringList>
#include <cmath>

#include "PanelText.h"

namespace {

int intField(const QStringList& fields, int column, int fallback) {
    const QString text = fields[column].trimmed();
    if (IsMissingCatalogField(text)) return fallback;
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? value : fallback;
}

// QString::toDouble reads the C locale whatever the user's is.
double doubleField(const QStringList& fields, int column, double fallback) {
    const QString text = fields[column].trimmed();
    if (IsMissingCatalogField(text)) return fallback;
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value) ? value : fallback;
}

}  // namespace

bool IsMissingCatalogField(const QString& field) {
    const QString text = field.trimmed();
    return text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("?") ||
           text == QLatin1String("??");
}

QString CatalogLineName(const QString& line) { return line.section(QLatin1Char(','), 0, 0).trimmed(); }

bool CatalogNameMatches(const QString& fileName, const QString& moduleType) {
    if (fileName.isEmpty() || moduleType.isEmpty()) return false;
    return fileName.contains(moduleType) || moduleType.contains(fileName) ||
           fileName.toUpper().contains(moduleType.toUpper());
}

bool ApplyCatalogLine(const QString& line, PANEL& panel) {
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() < kCatalogFieldCount) return false;
    using D = CatalogDefaults;
    SetPanelText(panel.Name, QString());
    SetPanelText(panel.ModuleType, fields[0].trimmed());
    panel.Length = intField(fields, 1, D::Length);
    panel.Width = intField(fields, 2, D::Width);
    panel.Thickness = intField(fields, 3, D::Thickness);
    panel.Weight_kg = doubleField(fields, 4, D::Weight_kg);
    panel.PanelPowerratingKW = doubleField(fields, 5, D::PowerSTC_W) / 1000.0;
    panel.Efficiency = doubleField(fields, 6, D::Efficiency);
    panel.MaxPowerNOCT_W = doubleField(fields, 7, D::MaxPowerNOCT_W);
    panel.TempCoeff_Pmax_PercentPercent = doubleField(fields, 8, D::TempCoeff_Pmax_PercentPercent);
    panel.NOCT_C = doubleField(fields, 9, D::NOCT_C);
    panel.BifacialFactor_Percent = doubleField(fields, 10, D::BifacialFactor_Percent);
    panel.AnnualDegradation = doubleField(fields, 11, D::AnnualDegradation);
    panel.Gapmm = D::Gapmm;
    return true;
}

QString PanelTextureForModel(const QString& modelName) {
    const QString upper = modelName.toUpper();
    const bool dark = upper.contains(QLatin1String("TSM-")) || upper.contains(QLatin1String("AIKO-"));
    return QString::fromLatin1(dark ? kDarkPanelTexture : kDefaultPanelTexture);
}
