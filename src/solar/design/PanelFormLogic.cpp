#include "PanelFormLogic.h"

#include <algorithm>
#include <cmath>

#include "PanelCatalog.h"
#include "PanelCatalogSettings.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/OrvoDialogs.h"
#include "geo/GeoState.h"
#include "scene/engine_interface.h"

PanelFormState& panelFormState() {
    static PanelFormState state;
    return state;
}

void resetPanelFormState() { panelFormState() = PanelFormState{}; }

void UpdateGlobalPanel() {
    PanelFormState& form = panelFormState();
    PanelStore& store = panelStore();
    PANEL& panel = store.GlobalPanel;
    WriteModuleTypeSetting(store.ModuleType);
    AddPanelSpecsFromCSV(panel, store.ModuleType);
    panel.EPSG = geoState().EPSG > 0 ? geoState().EPSG : 0;
    panel.RoofType = form.RooftypeRG;
    SetPanelText(panel.Name, QString());
    panel.Lift = form.LiftEdit;
    panel.DTilt = form.TiltEdit;
    form.GlobalRowsGap = static_cast<float>(form.RowsGap);
    WriteLandscapeSetting(form.LandscapeCB);
    panel.Landscape = form.LandscapeCB;
}

bool ParseFloatEdit(const QString& text, const panelform::FloatEditField& field, double& value) {
    bool ok = false;
    const double parsed = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(parsed)) return false;
    if (!field.isSigned && parsed < 0) return false;
    if (field.maxValue > 0 && std::fabs(parsed) > field.maxValue) return false;
    value = parsed;
    return true;
}

QString FormatFloatEdit(double value, const panelform::FloatEditField& field) {
    return QString::asprintf("%.*f", field.decimals, value);
}

QString PanelCountCaption(const PANEL& panel) {
    const double dx = panel.PP[1].X - panel.PP[0].X;
    const double dy = panel.PP[1].Y - panel.PP[0].Y;
    const double dist = std::sqrt(dx * dx + dy * dy) * 1000.0;
    const int along = (panel.Landscape ? panel.Length : panel.Width) + panel.Gapmm;
    const int count = along > 0 ? std::max(1, static_cast<int>(dist / along)) : 1;
    return QString::asprintf("%d Solar panel(s). Panels azimuth and tilt  %.1lf  %.1lf at: [%.0lf,%.0lf,%.2lf]", count,
                             panel.DAzimuth, panel.DTilt, panel.PP[0].X, panel.PP[0].Y, panel.PP[0].Z);
}

QString PanelSizeStatus(const PANEL& panel) {
    return QString::asprintf("Length %d   Width %d  ", panel.Length, panel.Width);
}

QString TiltRefusal(double tilt, int roofType, int roofTilt) {
    if (roofType != panelform::kRoofTiled || tilt >= roofTilt) return {};
    return QStringLiteral("For redtiled roof tilt has to be at least ") + QString::number(roofTilt);
}

namespace panelform {

namespace {

void showModule() {
    PanelFormState& form = panelFormState();
    PanelStore& store = panelStore();
    AddPanelSpecsFromCSV(store.GlobalPanel, store.ModuleType);
    form.StatusBar1 = PanelSizeStatus(store.GlobalPanel);
}

}  // namespace

bool FormActivate() {
    PanelFormState& form = panelFormState();
    PanelStore& store = panelStore();
    if (!InitializePanels()) return false;
    form.RowsGap = 0;
    if (form.LandscapeCB) form.RowsPairingRG = kRowsPairingSingle;
    // The file is read afresh, so a catalogue edited while the program runs is offered at once.
    LoadPanelSpecifications(panelCatalog().GlobalPanelsCSV);
    form.PanelsRGItems = CatalogModelNames();
    if (store.ModuleType.isEmpty() && !form.PanelsRGItems.isEmpty()) store.ModuleType = form.PanelsRGItems.first();
    form.PanelsRGIndex = CatalogModelIndex(form.PanelsRGItems, store.ModuleType);
    showModule();
    WriteModuleTypeSetting(store.ModuleType);
    LandscapeCBClick(ReadLandscapeSetting());
    store.GlobalPanel.Landscape = form.LandscapeCB;
    form.Caption = PanelCountCaption(store.GlobalPanel);
    return true;
}

void PanelsRGClick(int index) {
    PanelFormState& form = panelFormState();
    if (index < 0 || index >= form.PanelsRGItems.size()) return;
    form.PanelsRGIndex = index;
    panelStore().ModuleType = form.PanelsRGItems[index];
    form.MainStatusText = QStringLiteral("  ") + panelStore().ModuleType;
    showModule();
}

void LandscapeCBClick(bool checked) {
    PanelFormState& form = panelFormState();
    form.LandscapeCB = checked;
    if (checked) form.RowsPairingRG = kRowsPairingSingle;
}

void RowsPairingRGClick(int index) {
    PanelFormState& form = panelFormState();
    form.RowsPairingRG = index;
    if (index != kRowsPairingSingle) form.LandscapeCB = false;
}

bool GapHelpClick() {
    PanelFormState& form = panelFormState();
    PANEL& panel = panelStore().GlobalPanel;
    panel.DTilt = form.TiltEdit;
    if (!form.rowSpacingHelp) return false;
    form.RowsGap = form.rowSpacingHelp(panel);
    return true;
}

void OKClick() {
    PanelFormState& form = panelFormState();
    form.GlobalPanelsOK = true;
    form.GlobalRowpairing = form.RowsPairingRG;
    UpdateGlobalPanel();
}

void CancelClick() {
    PanelFormState& form = panelFormState();
    form.GlobalPanelsOK = false;
    At3d_MeasureList_Clear();
    form.BlockDepth = 0;
}

bool FormCloseQuery() {
    const PanelFormState& form = panelFormState();
    if (!form.GlobalPanelsOK) return true;
    const QString refusal = TiltRefusal(form.TiltEdit, form.RooftypeRG, form.GlobalRoofTilt);
    if (refusal.isEmpty()) return true;
    MyShowMessage(refusal);
    return false;
}

}  // namespace panelform
