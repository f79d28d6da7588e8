#include "TFormAt3.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <cstdio>
#include <cstdlib>

#include "ViewPanel.h"
#include "app/model/AddModels.h"
#include "app/model/ModelSession.h"
#include "app/model/ReadModel.h"
#include "app/model/SceneLayers.h"
#include "app/model/Viewport.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/CleanOrvoT.h"
#include "app/session/SessionSettings.h"
#include "app/session/SessionStart.h"
#include "app/session/SolarConfiguration.h"
#include "geo/PrjMenu.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr int HELP_LABEL_WIDTH = 2222;
// The help label's colour while high accuracy drawing is on.
constexpr int HIGH_ACCURACY_COLOR = 0xf0caa6;

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

// Toolkit colours keep red in the lowest byte.
QColor fromToolkitColor(int color) { return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF); }
int toToolkitColor(const QColor& color) { return color.red() | color.green() << 8 | color.blue() << 16; }

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
    createToolButtons();
    createStatusTexts();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) resize(screen->availableGeometry().size());
    installMainFormHost(this);
    SetControlVisible("ReadModelBtn", false);
    Form_Setup(this, ViewPanel_, ViewPanel_->width(), ViewPanel_->height());
    SetControlChecked("Highaccuracy1", At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU) != 0);
}

TFormAt3::~TFormAt3() {
    Stop_DLL();
    installMainFormHost(nullptr);
}

bool TFormAt3::FormCreate(const std::string& executablePath) {
    LabelForHelp->setGeometry(0, 2, HELP_LABEL_WIDTH, LabelForHelp->sizeHint().height());
    mainFormState().OriginalLabelForHelpColor = toToolkitColor(LabelForHelp->palette().color(QPalette::Window));
    if (!FormCreateSession(executablePath, openGlRendererName())) return false;
    ReadModelBtnClick();
    return true;
}

QAction* TFormAt3::addItem(QMenu* menu, const char* name, const QString& text, std::function<void()> handler) {
    QAction* item = menu->addAction(text);
    item->setObjectName(name);
    connect(item, &QAction::triggered, this, [handler] { handler(); });
    return item;
}

QAction* TFormAt3::addCheckItem(QMenu* menu, const char* name, const QString& text, std::function<void()> handler) {
    QAction* item = addItem(menu, name, text, std::move(handler));
    item->setCheckable(true);
    return item;
}

void TFormAt3::createMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    addItem(file, "OpenFrommenu", "Open", OpenFrommenuClick);
    addItem(file, "Addmodels", "Add model(s)", AddmodelsMenuClick);
    file->addSeparator();
    addItem(file, "AddPRJ1", "Add PRJ", [] { AddPRJ1Click(modelSession().GlobalModelFileName); });
    addItem(file, "ShowPRJ1", "Show PRJ", [this] { ShowPRJ1Click(); });
    file->addSeparator();
    addItem(file, "Cleantemporaryfiles1", "Clean temporary files", [] {
        SSetTextAt3(0, QString::number(Clean_ORVO_T()) + " temporary files deleted");
    });
    file->addSeparator();
    addItem(file, "Exit1", "Exit", [this] { close(); });

    QMenu* view = menuBar()->addMenu("&View");
    addItem(view, "FullView1", "Full view", FullViewBtnClick);
    QAction* renderMode = addItem(view, "Togglerendermode1", "Toggle render mode", [] {
        Togglerendermode1Click();
        At3d_RenderOpenGLScene();
    });
    renderMode->setShortcut(QKeySequence("Ctrl+R"));
    view->addSeparator();
    addItem(view, "Listlayers1", "List layers", ListlayersClick);
    addItem(view, "Listmodelsimported1", "List models imported",
            [] { MyShowMessage(modelSession().TSImportedFiles.join("\n")); });

    QMenu* options = menuBar()->addMenu("&Options");
    addCheckItem(options, "Imperialunits1", "Imperial units", Imperialunits1Click);
    addCheckItem(options, "Openallmodels1", "Open all models", Openallmodels1Click);
    addCheckItem(options, "CofigireforSolarPlanning1", "Configure for solar planning", [] {
        SetControlChecked("CofigireforSolarPlanning1", !ControlChecked("CofigireforSolarPlanning1"));
        CofigireforSolarPlanning1Click();
    });
    QMenu* textures = options->addMenu("Texture size");
    auto* group = new QActionGroup(this);
    for (int size : TEXTURE_LIMITS) {
        const std::string name = "M" + std::to_string(size);
        QAction* item = addCheckItem(textures, name.c_str(), QString("%1 x %1").arg(size), [size] { SetTextureLimit(size); });
        group->addAction(item);
    }
    addCheckItem(options, "Highaccuracy1", "High accuracy", [this] { Highaccuracy1Click(); });
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
}

void TFormAt3::createStatusTexts() {
    for (int field = 0; field < STATUS_TEXT_COUNT; ++field) {
        statusLabels_[field] = new QLabel;
        statusLabels_[field]->setObjectName(QString("StatusText%1").arg(field));
        statusBar()->addWidget(statusLabels_[field], field == 0 ? 2 : 1);
    }
}

void TFormAt3::Highaccuracy1Click() {
    const bool on = !At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU);
    At3d_WriteFlag(LIBFLAG_INTEGRATED_GPU, on ? 1 : 0);
    SetControlChecked("Highaccuracy1", on);
    SetHelpLabelColor(on ? HIGH_ACCURACY_COLOR : mainFormState().OriginalLabelForHelpColor);
    At3d_RenderOpenGLScene();
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
                                                                : fromToolkitColor(state.helpLabelColor));
    LabelForHelp->setPalette(palette);
}

void TFormAt3::controlChanged(const std::string& name) {
    const QString objectName = QString::fromStdString(name);
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
