#include "TFormAt3.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QLabel>
#include <QMenuBar>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QScreen>
#include <QStatusBar>
#include <QLineEdit>
#include <QToolBar>
#include <QVBoxLayout>
#include <cstdio>
#include <cstdlib>

#include "FormActions.h"
#include "FormInput.h"
#include "MeasureControls.h"
#include "SolarControls.h"
#include "SolarHooks.h"
#include "app/inbox/ClipboardInbox.h"
#include "app/inbox/FolderWatch.h"
#include "catalog/ui/CatalogForms.h"
#include "modeltools/ui/ModelToolsMenu.h"
#include "motion/ui/FlythroughMenu.h"
#include "overlays/ui/OverlaysMenu.h"
#include "photometa/ui/PhotoMetaMenu.h"
#include "ManageLayersForm.h"
#include "ViewPanel.h"
#include "app/dispatch/DigitiseMenu.h"
#include "app/session/DispatchState.h"
#include "app/model/CameraTools.h"
#include "app/model/RenderModeMenu.h"
#include "app/model/AddModels.h"
#include "app/model/ModelSession.h"
#include "app/model/ReadModel.h"
#include "app/model/SceneLayers.h"
#include "app/model/Viewport.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/ToolkitColor.h"
#include "app/session/CleanOrvoT.h"
#include "app/session/SessionSettings.h"
#include "app/session/SessionStart.h"
#include "app/session/SolarConfiguration.h"
#include "geo/PrjMenu.h"
#include "measure/BillboardMenu.h"
#include "measure/PanelLabels.h"
#include "measure/ui/MeasureHooks.h"
#include "oblique/ObliqueOpen.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr int HELP_LABEL_WIDTH = 2222;
// Metres the observer rises or sinks per press of its spin button.
constexpr float OBSERVER_ELEVATION_STEP = 1;

// GL_RENDERER of the card the drawing surface will use.
std::string openGlRendererName() {
    QOpenGLContext context;
    context.setFormat(render::renderSurfaceFormat());
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) return "";
    const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    const std::string result = name ? name : "";
    context.doneCurrent();
    return result;
}

}  // namespace

TFormAt3::TFormAt3(QWidget* parent) : QMainWindow(parent) {
    setObjectName("FormAt3");
    setWindowTitle("Zorvex64");
    SetSessionDefaults();
    ViewPanel_ = new ViewPanel;
    LabelForHelp = new QLabel;
    LabelForHelp->setObjectName("LabelForHelp");
    LabelForHelp->setAutoFillBackground(true);
    // The help label is wider than any screen; its strip shows what fits.
    auto* helpStrip = new QWidget;
    helpStrip->setFixedHeight(LabelForHelp->sizeHint().height() + 4);
    LabelForHelp->setParent(helpStrip);
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(ViewPanel_, 1);
    layout->addWidget(helpStrip);
    setCentralWidget(central);
    createMenus();
    CreateMeasureMenu(this, menuBar());
    createToolButtons();
    createStatusTexts();
    PopupMenu1 = CreatePopupMenu1(this);
    ShiftRightClickPopupmenu = CreateShiftRightClickPopupmenu(this);
    InstallMeasureHooks(this);
    InstallPanelLabels();
    InstallObliqueSearch();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) resize(screen->availableGeometry().size());
    installMainFormHost(this);
    SetControlVisible("ReadModelBtn", false);
    Form_Setup(this, ViewPanel_, ViewPanel_->width(), ViewPanel_->height());
    SetControlChecked("Highaccuracy1", At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU) != 0);
    SetControlChecked("BackfaceCullingBtn", At3d_ReadFlag(LIBFLAG_BACKFACE_CULL) != 0);
    SetControlChecked("Usetexture1", At3d_ReadFlag(LIBFLAG_USE_TEXTURES) != 0);
    input_ = new FormInput(this, ViewPanel_->surface());
    input_->setPopupHandler([this](AppPopup popup, QPoint at) { showPopup(popup, at); });
}

void TFormAt3::showPopup(AppPopup popup, QPoint at) {
    if (popup == AppPopup::PopupMenu1) {
        PreparePopupMenu1(PopupMenu1);
        PopupMenu1->popup(at);
    } else if (popup == AppPopup::ShiftRightClickPopupmenu) {
        ShiftRightClickPopupmenu->popup(at);
    }
}

TFormAt3::~TFormAt3() {
    RemoveWatches();
    Stop_DLL();
    installMainFormHost(nullptr);
}

bool TFormAt3::FormCreate(const std::string& executablePath) {
    LabelForHelp->setGeometry(0, 2, HELP_LABEL_WIDTH, LabelForHelp->sizeHint().height());
    mainFormState().OriginalLabelForHelpColor = ToolkitFromQColor(LabelForHelp->palette().color(QPalette::Window));
    // The planner's forms open over this window, whoever made it.
    InstallSolarHooks(this);
    InstallCatalogForms(this);
    StartClipboardMonitoring(this);
    if (!FormCreateSession(executablePath, openGlRendererName())) return false;
    AddWatches();
    ReadModelBtnClick();
    return true;
}

void TFormAt3::createMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    AddMenuItem(this, file, "OpenFrommenu", "Open", OpenFrommenuClick);
    AddMenuItem(this, file, "Addmodels", "Add model(s)", AddmodelsMenuClick);
    file->addSeparator();
    AddMenuItem(this, file, "AddPRJ1", "Add PRJ", [] { AddPRJ1Click(modelSession().GlobalModelFileName); });
    AddMenuItem(this, file, "ShowPRJ1", "Show PRJ", [this] { ShowPRJ1Click(); });
    file->addSeparator();
    AddMenuItem(this, file, "Cleantemporaryfiles1", "Clean temporary files", [] {
        SSetTextAt3(0, QString::number(Clean_ORVO_T()) + " temporary files deleted");
    });
    file->addSeparator();
    AddMenuItem(this, file, "Exit1", "Exit", [this] { close(); });

    QMenu* view = menuBar()->addMenu("&View");
    AddMenuItem(this, view, "FullView1", "Full view", FullViewBtnClick);
    QAction* renderMode = AddMenuItem(this, view, "Togglerendermode1", "Toggle render mode", [] {
        Togglerendermode1Click();
        At3d_RenderOpenGLScene();
    });
    renderMode->setShortcut(QKeySequence("Ctrl+R"));
    view->addSeparator();
    AddMenuItem(this, view, "Listlayers1", "List layers", ListlayersClick);
    AddMenuItem(this, view, "Managelayers1", "Manage layers", [this] { Managelayers(this); });
    AddMenuItem(this, view, "Listmodelsimported1", "List models imported",
            [] { MyShowMessage(modelSession().TSImportedFiles.join("\n")); });

    QMenu* options = menuBar()->addMenu("&Options");
    AddCheckMenuItem(this, options, "Imperialunits1", "Imperial units", Imperialunits1Click);
    AddCheckMenuItem(this, options, "Openallmodels1", "Open all models", Openallmodels1Click);
    AddCheckMenuItem(this, options, "CofigireforSolarPlanning1", "Configure for solar planning", [] {
        SetControlChecked("CofigireforSolarPlanning1", !ControlChecked("CofigireforSolarPlanning1"));
        CofigireforSolarPlanning1Click();
    });
    QMenu* textures = options->addMenu("Texture size");
    auto* group = new QActionGroup(this);
    for (int size : TEXTURE_LIMITS) {
        const std::string name = "M" + std::to_string(size);
        QAction* item = AddCheckMenuItem(this, textures, name.c_str(), QString("%1 x %1").arg(size), [size] { SetTextureLimit(size); });
        group->addAction(item);
    }
    AddCheckMenuItem(this, options, "Highaccuracy1", "High accuracy", ::Highaccuracy1Click);

    view->addSeparator();
    AddMenuItem(this, view, "ZoomIn1", "Zoom in", ZoomInBtnClick);
    AddMenuItem(this, view, "ZoomOut1", "Zoom out", ZoomOutBtnClick);
    AddMenuItem(this, view, "MyViewTop", "View from the top", MyViewTopClick);
    QMenu* modes = view->addMenu("Render mode");
    AddMenuItem(this, modes, "Normal1", "Normal", Normal1Click);
    AddMenuItem(this, modes, "Gray1", "Gray", Gray1Click);
    AddMenuItem(this, modes, "Sepia1", "Sepia", Sepia1Click);
    AddCheckMenuItem(this, view, "Usetexture1", "Use texture", Usetexture1Click);
    view->addSeparator();
    AddMenuItem(this, view, "SaveViewport1", "Save viewport", SaveViewportClick);
    AddMenuItem(this, view, "RestoreViewport1", "Restore viewport", RestoreViewportClick);
    AddFlythroughMenuItems(this, view);
    AddOverlaysMenu(this);

    QMenu* digitize = menuBar()->addMenu("&Digitize");
    digitize->setObjectName("DigitizeDropdownMnu");
    AddMenuItem(this, digitize, "Roofs1", "Roofs", Roofs1Click);
    AddMenuItem(this, digitize, "Line1", "Line", Line1Click);
    AddMenuItem(this, digitize, "Eelevatedpolygon1", "Elevated  polygon", Eelevatedpolygon1Click);
    AddMenuItem(this, digitize, "PolygonMnu", "Polygon ", PolygonMnuClick);
    AddMenuItem(this, digitize, "Polygonwiththickness1", "Polygon with thickness", Polygonwiththickness1Click);
    AddMenuItem(this, digitize, "FlytrroughDigitize", "Fly trrough", FlytrroughDigitizeClick);
    AddMenuItem(this, digitize, "AreaMnu", "3D Area/Block", AreaMnuClick);
    AddMenuItem(this, digitize, "BlockMenu", "Block", BlockMenuClick);
    AddMenuItem(this, digitize, "Facade1", "Facade", Facade1Click);
    digitize->addSeparator();
    AddMenuItem(this, digitize, "Abortpopup", "Abort", AbortpopupClick);

    CreateModelMenu(this, menuBar());
    CreatePhotosMenu(this, menuBar());
    CreateSolarMenu(this, menuBar());
}

void TFormAt3::createToolButtons() {
    QToolBar* tools = addToolBar("Tools");
    tools->setObjectName("ToolBar1");
    QAction* read = tools->addAction("Open model");
    read->setObjectName("ReadModelBtn");
    connect(read, &QAction::triggered, this, [] { OpenFrommenuClick(); });
    QAction* full = tools->addAction("Full view");
    full->setObjectName("FullViewBtn");
    connect(full, &QAction::triggered, this, [] { FullViewBtnClick(); });
    const auto button = [this, tools](const char* name, const QString& text, bool checkable,
                                      std::function<void()> handler) {
        return AddToolButton(this, tools, name, text, checkable, std::move(handler));
    };
    button("ZoomInBtn", "Zoom in", false, ZoomInBtnClick);
    button("ZoomOutBtn", "Zoom out", false, ZoomOutBtnClick);
    button("LookAtBtn", cameraToolState().LookAtCaption, true, LookAtBtnClick);
    button("InvertObserverTarget", "Invert", false, InvertObserverTargetClick);
    button("ObsElevUp", "Observer +", false, [] { SetObserverElevation(OBSERVER_ELEVATION_STEP); });
    button("ObsElevDown", "Observer -", false, [] { SetObserverElevation(-OBSERVER_ELEVATION_STEP); });
    ObserverElevationlabel = new QLabel(cameraToolState().ObserverElevationText);
    ObserverElevationlabel->setObjectName("ObserverElevationlabel");
    tools->addWidget(ObserverElevationlabel);
    // The camera's steps, read by the navigation at each press and key.
    for (const auto& [name, caption] : {std::pair{CAMERA_STEP_ANGLE_EDIT, "Step angle"},
                                        std::pair{CAMERA_STEP_FOV_EDIT, "Step FOV"},
                                        std::pair{CAMERA_ROTATE_SPEED_EDIT, "Rotate speed"}}) {
        tools->addWidget(new QLabel(caption));
        auto* edit = new QLineEdit(EditText(name));
        edit->setObjectName(name);
        edit->setMaximumWidth(48);
        connect(edit, &QLineEdit::textEdited, this, [name = std::string(name)](const QString& text) {
            EditTextTyped(name, text);
        });
        tools->addWidget(edit);
    }
    button("SelectMeasuringBtn", "Select", true, SelectMeasuringBtnClick);
    button("DigitizeBtn", "Digitize", false, [this] {
        DigitizeBtnClick();
        if (auto* menu = findChild<QMenu*>("DigitizeDropdownMnu")) menu->popup(QCursor::pos() + QPoint(30, 30));
    });
    button("DepthFlagBtn", "Depth", true, DepthFlagBtnClick);
    button("BackfaceCullingBtn", "Backface culling", true, BackfaceCullingBtnClick);
    CreateMeasureToolButtons(this, tools);
}

void TFormAt3::createStatusTexts() {
    for (int field = 0; field < STATUS_TEXT_COUNT; ++field) {
        statusLabels_[field] = new QLabel;
        statusLabels_[field]->setObjectName(QString("StatusText%1").arg(field));
        statusBar()->addWidget(statusLabels_[field], field == 0 ? 2 : 1);
    }
}

void TFormAt3::ShowPRJ1Click() {
    std::string textCopy;
    ::ShowPRJ1Click(modelSession().GlobalModelFileName, textCopy);
}

QString TFormAt3::statusText(int field) const {
    return field >= 0 && field < STATUS_TEXT_COUNT ? statusLabels_[field]->text() : QString();
}

QString TFormAt3::helpText() const { return LabelForHelp->text(); }

void TFormAt3::statusTextChanged(int field) { statusLabels_[field]->setText(mainFormState().statusTexts[field]); }

void TFormAt3::helpLabelChanged() {
    const MainFormState& state = mainFormState();
    LabelForHelp->setText(state.LabelForHelpCaption);
    QPalette palette = LabelForHelp->palette();
    palette.setColor(QPalette::Window, state.helpLabelColor < 0 ? palette.color(QPalette::Button)
                                                                : QColorFromToolkit(state.helpLabelColor));
    LabelForHelp->setPalette(palette);
}

void TFormAt3::controlChanged(const std::string& name) {
    const CameraToolState& tools = cameraToolState();
    if (name == "FormAt3") {
        // The form's own colour unless a roaming camera is drawn.
        setPalette(tools.formColor < 0 ? QPalette() : QPalette(QColorFromToolkit(tools.formColor)));
        return;
    }
    if (name == "ObserverElevationlabel") {
        ObserverElevationlabel->setText(tools.ObserverElevationText);
        return;
    }
    if (name == "LookAtBtn")
        for (QAction* action : findChildren<QAction*>("LookAtBtn")) action->setText(tools.LookAtCaption);
    const QString objectName = QString::fromStdString(name);
    for (QLineEdit* edit : findChildren<QLineEdit*>(objectName))
        if (edit->text() != EditText(name)) edit->setText(EditText(name));
    for (QAction* action : findChildren<QAction*>(objectName)) {
        action->setVisible(ControlVisible(name));
        if (action->isCheckable()) action->setChecked(ControlChecked(name));
    }
    for (QWidget* widget : findChildren<QWidget*>(objectName)) widget->setVisible(ControlVisible(name));
}

void TFormAt3::cursorChanged() {
    const bool busy = mainFormState().busyCursor;
    if (busy == busyCursorShown_) return;
    busyCursorShown_ = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void TFormAt3::showMainForm() {
    if (!isVisible()) showMaximized();
}

void TFormAt3::processPendingEvents() { QCoreApplication::processEvents(); }

int TFormAt3::viewPanelWidth() const { return ViewPanel_->width(); }
int TFormAt3::viewPanelHeight() const { return ViewPanel_->height(); }

void TFormAt3::customEvent(QEvent* event) {
    if (event->type() == ENGINE_NOTIFY_EVENT) input_->engineNotification(*static_cast<EngineNotifyEvent*>(event));
}

void TFormAt3::closeEvent(QCloseEvent* event) {
    if (!AskToExit()) {
        event->ignore();
        return;
    }
    EndSession();
    std::fflush(nullptr);
    std::_Exit(0);
}

void TFormAt3::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !isMaximized()) showMaximized();
    QMainWindow::changeEvent(event);
}
