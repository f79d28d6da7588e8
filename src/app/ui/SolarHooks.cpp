#include "SolarHooks.h"

#include <QCoreApplication>

#include "app/model/AddModels.h"
#include "solar/analysis/EnergyModel.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/SunPosition.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/RowSpacing.h"
#include "solar/design/ui/TFormPanels.h"

void InstallSolarHooks(QWidget* parent) {
    rowSpacingSunModel() = RowSpacingSunModel{DoSunPosition, IncidentAngle, IAMFactor};
    placementHooks().openPanelForm = [parent] {
        TFormPanels form(parent);
        return form.exec() == QDialog::Accepted;
    };
    placementHooks().addModels = [](const QStringList& files) { AddmodelsClick(files); };
    reportHooks().processMessages = [] { QCoreApplication::processEvents(); };
}
