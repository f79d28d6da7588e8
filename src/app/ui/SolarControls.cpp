#include "SolarControls.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <memory>
#include <tuple>

#include "FormActions.h"
#include "app/model/DefineCustomer.h"
#include "app/model/ModelSession.h"
#include "app/model/ReadModel.h"
#include "app/model/ReportSiteOfSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SunGlobalLog.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "solar/analysis/ClimateDownload.h"
#include "solar/analysis/ReportRun.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/SolkManual.h"
#include "solar/design/ConstructionChain.h"
#include "solar/design/ConstructionHelperDae.h"
#include "solar/design/PanelEditing.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelStoreOps.h"
#include "solar/design/PanelsModelFile.h"
#include "solar/design/RoofVisibility.h"
#include "solar/design/VolumeShapes.h"

namespace {

QString modelFolder() { return QString::fromStdString(ModelFolder()); }

// The scene's panels changed wholesale: the imported files no longer tell what is there.
void forgetImportedPanels() { modelSession().TSImportedFiles.clear(); }

}  // namespace

void RunReportWithProgress(QWidget* parent, bool onlyCenter, int optimizerType) {
    // A model opened before the planner was set up has no run log yet; the report names its files after it.
    const ModelSession& model = modelSession();
    if (!OpenSolarRunLog(model.INPUTFILENAME, startupState().PROCESSPID)) {
        MyShowMessage("Cannot write the run log\n" + QString::fromStdString(sunGlobalLog().SunGlobalLogfileName));
        return;
    }
    const ReportHooks saved = reportHooks();
    std::unique_ptr<QProgressDialog> progress;
    bool cancelled = false;
    // Made at the first progress line, after the questions before the run.
    reportHooks().statusLine = [&](const QString& text) {
        if (!progress) {
            progress = std::make_unique<QProgressDialog>(text, "Cancel", 0, std::max(1, panelStore().NumPanelsCreated),
                                                         parent);
            progress->setWindowTitle("Detailed report");
            progress->setWindowModality(Qt::WindowModal);
            progress->setMinimumDuration(0);
            QObject::connect(progress.get(), &QProgressDialog::canceled, [&cancelled] { cancelled = true; });
        }
        progress->setLabelText(text);
        progress->setValue(reportRun().GlobatPanelHandled);
        SSetTextAt3(3, text);
    };
    reportHooks().processMessages = [] { QCoreApplication::processEvents(); };
    reportHooks().cancelled = [&cancelled] { return cancelled; };
    DoReport(CurrentReportSite(), onlyCenter, optimizerType);
    reportHooks() = saved;
}

void CreateSolarMenu(QWidget* form, QMenuBar* bar) {
    QMenu* solar = bar->addMenu("Solar panels");
    solar->setObjectName("SolarMnu");
    QMenu* report = solar->addMenu("Detailed  report");
    // Center alone or with the four corners; a modern optimizer (1) or a string inverter (0).
    for (const auto& [name, caption, onlyCenter, optimizer] :
         {std::tuple{"N5pointsOptimizer1", "5 points +Optimizer", false, 1},
          std::tuple{"CenterOptimizer1", "Center + Optimizer", true, 1},
          std::tuple{"N5points1", "5 points + String Inverter", false, 0},
          std::tuple{"CenterStringInverter1", "Center + String Inverter", true, 0}})
        AddMenuItem(form, report, name, caption,
                    [form, onlyCenter, optimizer] { RunReportWithProgress(form, onlyCenter, optimizer); });
    AddMenuItem(form, solar, "DefineCustomer1", "Define Customer", DefineCustomer1Click);
    AddMenuItem(form, solar, "DownloadPVGISTcsv1", "Download PVGIST csv", [] {
        const std::string climate = DownloadPVGISTdata(ModelFolder());
        if (!climate.empty()) SSetTextAt3(3, "Climate year: " + QString::fromStdString(climate));
    });
    solar->addSeparator();
    AddCheckMenuItem(form, solar, "ShowpanelsNamesMnu", "Show panels names", [] {
        const bool show = !panelEditState().labelsShown;
        ShowpanelsNamesMnuClick(show);
        SetControlChecked("ShowpanelsNamesMnu", show);
    });
    QAction* roofs = AddCheckMenuItem(form, solar, "Showroofplanes1", "Show roof planes", [] {
        const bool show = !ControlChecked("Showroofplanes1");
        ShowHideroofplanes(show ? 1 : 0);
        SetControlChecked("Showroofplanes1", show);
    });
    roofs->setChecked(true);
    SetControlChecked("Showroofplanes1", true);
    AddMenuItem(form, solar, "Sortpanels1", "Sort panels", [] {
        SortPanels();
        SSetTextAt3(3, QString("%1 panels sorted").arg(panelStore().NumPanelsCreated));
    });
    AddMenuItem(form, solar, "Listpanels1", "List panels", ListPanels);
    solar->addSeparator();
    AddMenuItem(form, solar, "CreateConstructionMnu", "Create construction", [] {
        CreateConstructionMnuClick(QString::fromStdString(modelSession().GlobalModelFileName), modelSession().Customer);
    });
    AddMenuItem(form, solar, "Createplane1", "Create plane", Createplane1Click);
    AddMenuItem(form, solar, "CreateautoDAEhelper1", "Create auto DAE helper",
                [] { CreateautoDAEhelper1Click(modelFolder()); });
    solar->addSeparator();
    AddMenuItem(form, solar, "Save3", "Save panels", [] {
        const QString file = Save3Click(modelFolder());
        if (!file.isEmpty()) SSetTextAt3(3, "Saved " + file);
    });
    AddMenuItem(form, solar, "Restore1", "Restore panels", [] {
        const QString file = Restore1Click(modelFolder());
        if (file.isEmpty()) return;
        forgetImportedPanels();
        modelSession().TSImportedFiles << file;
    });
    AddMenuItem(form, solar, "DeleteAllPanels1", "Delete all panels", [] {
        SSetTextAt3(3, QString("%1 panels taken out of the scene").arg(DeleteAllPanels()));
        forgetImportedPanels();
    });
    solar->addSeparator();
    AddMenuItem(form, solar, "CreateManualMnu", "Create SOLK manual", CreateManualMnuClick);
}
