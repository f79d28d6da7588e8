#include "ModelToolsMenu.h"

#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <memory>
#include <tuple>

#include "app/model/ModelSession.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/MainFormState.h"
#include "catalog/ModelBrowser.h"
#include "catalog/ModelDiscovery.h"
#include "modeltools/CleanModel.h"
#include "modeltools/CleanRegions.h"
#include "modeltools/CropModel.h"
#include "modeltools/ExportModel.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/OncFiles.h"
#include "modeltools/PackageModel.h"
#include "modeltools/RectifyMenu.h"
#include "modeltools/ShiftModel.h"
#include "scene/EngineSession.h"

namespace {

// Progress values of a pass may pass the range of an int: the dialog shows per mille.
constexpr int PROGRESS_SCALE = 1000;

QAction* addItem(QWidget* form, QMenu* menu, const char* name, const QString& caption, const QString& hint,
                 std::function<void()> handler) {
    auto* action = new QAction(caption, form);
    action->setObjectName(name);
    if (!hint.isEmpty()) {
        action->setToolTip(hint);
        action->setStatusTip(hint);
    }
    QObject::connect(action, &QAction::triggered, form, [handler = std::move(handler)] { handler(); });
    menu->addAction(action);
    return action;
}

// Items that work on the open model: with none open they say so, rather than
// failing later on an empty file name.
std::function<void()> onOpenModel(std::function<void()> handler) {
    return [handler = std::move(handler)] {
        if (!engineSession().fileLoaded) {
            MyShowMessage("Open a model first");
            return;
        }
        handler();
    };
}

// The new model the operator asked to open (the geocoded copy).
void openNewModel(const std::string& path) {
    if (!path.empty()) OpenThe3DModel(QString::fromStdString(path));
}

}  // namespace

void RunModelToolWithProgress(QWidget* parent, const QString& title, const std::function<void()>& job) {
    std::unique_ptr<QProgressDialog> progress;
    // Made at the first status line, after the questions before the pass.
    modelToolHooks().progress = [&](const QString& text, long long done, long long total) {
        if (!progress) {
            progress = std::make_unique<QProgressDialog>(text, "Cancel", 0, PROGRESS_SCALE, parent);
            progress->setWindowTitle(title);
            progress->setWindowModality(Qt::WindowModal);
            progress->setMinimumDuration(0);
        }
        progress->setLabelText(text.trimmed());
        if (total > 0) progress->setValue(static_cast<int>(PROGRESS_SCALE * done / total));
        QCoreApplication::processEvents();
    };
    modelToolHooks().cancelled = [&progress] { return progress && progress->wasCanceled(); };
    job();
    const bool cancelled = progress && progress->wasCanceled();
    resetModelToolHooks();
    progress.reset();
    if (cancelled) SSetTextAt3(0, title + " cancelled: nothing written");
}

void CreateModelMenu(QWidget* form, QMenuBar* bar) {
    QMenu* menu = bar->addMenu("&Model");
    menu->setObjectName("ModelMnu");
    const auto long_job = [form](const QString& title, std::function<void()> job) {
        return [form, title, job = std::move(job)] { RunModelToolWithProgress(form, title, job); };
    };
    addItem(form, menu, "Cropthemodel1", "Crop the model", "", onOpenModel(long_job("Crop the model", [] { CropTheModelFromFile(); })));
    addItem(form, menu, "Markclosevertices1", "Mark close vertices", "Mark all vertices clser then 2 m horizontally",
            onOpenModel([] { SSetTextAt3(0, QString::number(MarkCloseVertices()) + " regions to clean"); }));
    addItem(form, menu, "Markabovetheclickedz1", "Mark above the clicked Z", "", onOpenModel([] {
                if (const int regions = MarkAboveClickedZ())
                    SSetTextAt3(0, QString::number(regions) + " regions to clean");
            }));
    QAction* clean = addItem(form, menu, "Cleanthemodel1", "Clean the model", "",
                             onOpenModel(long_job("Clean the model", [] { CleanTheModelFromFile(); })));
    // Cleaning needs marked regions: the item shows only when their list exists
    // (and the solar configuration has not hidden it).
    QObject::connect(menu, &QMenu::aboutToShow, form, [clean] {
        const std::string& list = modelSession().TodeleteVerticesFile;
        clean->setVisible(ControlVisible("Cleanthemodel1") && !list.empty() &&
                          QFileInfo::exists(QString::fromStdString(list)));
    });
    menu->addSeparator();

    QMenu* geocode = menu->addMenu("Geocode model");
    geocode->setObjectName("GeocodeMnu");
    // Shown for OBJ models only, like crop and shift (the open sets it by this name).
    geocode->menuAction()->setObjectName("Rectifymodel1");
    geocode->menuAction()->setStatusTip("Use 3 points to geocode the model to righthand coordinates");
    addItem(form, geocode, "RectifybyONC1", "Rectify by ONC", "", [form] {
        std::string output;
        RunModelToolWithProgress(form, "Rectify by ONC", [&output] { output = RectifybyONC1Click(); });
        if (!output.empty()) MyShowMessage(QString::fromStdString(output) + "\nCreated");
    });
    addItem(form, geocode, "Rectify1", "Rectify", "", [form] {
        std::string output;
        RunModelToolWithProgress(form, "Rectify", [&output] { output = Rectify1Click(); });
        openNewModel(output);
    });
    addItem(form, geocode, "ExportONC1", "Export GCP", "Export points to prepare data for model geocoding",
            onOpenModel([] { ExportONC(); }));
    addItem(form, geocode, "HelpONC1", "Help", "", [] { MyShowMessage(OncHelpText()); });
    menu->addSeparator();

    addItem(form, menu, "Exportthemodel1", "Export the model", "", onOpenModel([] { SaveTheModel(QString()); }));
    addItem(form, menu, "SaveLocalizedModel", "Save  localized model", "Export the model with small coordinates",
            onOpenModel([] { SaveLocalizedModelClick(); }));
    QAction* shift = addItem(form, menu, "Shiftthemodel1", "Shift the model", "",
                             onOpenModel(long_job("Shift the model", [] { Shiftthemodel1Click(); })));
    shift->setVisible(false);
    addItem(form, menu, "ShiftRotatethemodel1", "Shif/Rotate the model",
            "Shift and rotate the model (meters and degrees CW)",
            onOpenModel(long_job("Shif/Rotate the model", [] { ShiftRotatethemodel1Click(); })));
    addItem(form, menu, "Findmodelshift1", "Find model shift", "Find the requested model shift",
            onOpenModel([] { Findmodelshift1Click(); }));
    addItem(form, menu, "Restoreshifted1", "Restore shifted", "", [] { Restoreshifted1Click(); });
    menu->addSeparator();

    QMenu* zip = menu->addMenu("Zip the model");
    zip->setObjectName("Zipthemodel1");
    // The solar configuration hides the submenu by this name.
    zip->menuAction()->setObjectName("Compressthemodel1");
    zip->menuAction()->setStatusTip("Create a ZIP file from all relevant files");
    for (const auto& [name, caption, hint, form_] :
         {std::tuple{"Asis1", "Normal", "", PACK_NORMAL}, std::tuple{"ReduceJPJ1", "With small JPG", "", PACK_SMALL_JPG},
          std::tuple{"Withobliques1", "With obliques", "", PACK_WITH_OBLIQUES},
          std::tuple{"WitheverysecondJPG1", "With every second JPG", "Keep only every seconf image, to save storage",
                     PACK_EVERY_SECOND_JPG}})
        addItem(form, zip, name, caption, hint, onOpenModel(long_job("Zip the model", [ma = form_] { CompressOBJ(ma); })));
    menu->addSeparator();

    addItem(form, menu, "Explore3Dmodels1", "Explore 3D models", "", [] { DoExploreModels(); });
    addItem(form, menu, "Findunanalyzedmodels1", "Find unanalyzed models", "", [] { Findunanalyzedmodels1Click(); });
}
