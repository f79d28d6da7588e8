#include "TFormOBLI.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <cmath>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/ToolkitColor.h"
#include "app/session/MainFormState.h"
#include "oblique/ObliqueGeometry.h"
#include "oblique/ObliqueHooks.h"
#include "oblique/ObliqueRecords.h"
#include "oblique/ObliqueWindow.h"

namespace {

constexpr int FIRST_WIDTH = 900;
constexpr int FIRST_HEIGHT = 700;
// Room to pan around the picture, as a raster viewer gives.
constexpr double PAN_MARGIN = 10;
constexpr int MARK_SIZE_YELLOW = 15;
constexpr int MARK_SIZE_RED = 8;

QPointer<TFormOBLI>& theForm() {
    static QPointer<TFormOBLI> form;
    return form;
}

// Picture Y grows upwards, the scene's downwards.
QPointF sceneOf(const TGIS_Point& p) { return {p.X, -p.Y}; }
TGIS_Point pictureOf(const QPointF& s) { return {s.x(), -s.y()}; }

QToolButton* stepButton(QWidget* parent, const char* name, Qt::ArrowType arrow) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setAccessibleName(name);
    button->setArrowType(arrow);
    button->setToolTip("Change oblique imges");
    return button;
}

}  // namespace

TFormOBLI::TFormOBLI(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName("FormOBLI");
    setAttribute(Qt::WA_DeleteOnClose);
    scene_ = new QGraphicsScene(this);
    GIS = new QGraphicsView(scene_, this);
    GIS->setObjectName("GIS");
    GIS->setBackgroundBrush(QColorFromToolkit(65793));
    GIS->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    GIS->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    GIS->setTransformationAnchor(QGraphicsView::NoAnchor);
    GIS->setResizeAnchor(QGraphicsView::NoAnchor);
    GIS->setFocusPolicy(Qt::NoFocus);
    GIS->viewport()->installEventFilter(this);
    connect(GIS, &QGraphicsView::rubberBandChanged, this, [this](QRect rect, QPointF, QPointF) {
        if (!rect.isEmpty()) rubberBand_ = rect;
    });

    // Keeps the keyboard focus so that keys reach the form, out of sight.
    KeyTrap = new QLineEdit(this);
    KeyTrap->setObjectName("KeyTrap");
    KeyTrap->setGeometry(-200, -200, 20, 20);
    KeyTrap->installEventFilter(this);

    for (int i = 0; i < 2; ++i) {
        StatusBar1[i] = new QLabel(this);
        StatusBar1[i]->setObjectName(QString("StatusBar1_%1").arg(i));
    }
    StatusBar1[1]->setMinimumWidth(50);

    BrowswObliques = new QWidget(this);
    BrowswObliques->setObjectName("BrowswObliques");
    BrowswObliques->setToolTip("Change oblique imges");
    auto* back = stepButton(BrowswObliques, "BrowswObliquesBack", Qt::LeftArrow);
    auto* next = stepButton(BrowswObliques, "BrowswObliquesNext", Qt::RightArrow);
    auto* pair = new QHBoxLayout(BrowswObliques);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(0);
    pair->addWidget(back);
    pair->addWidget(next);
    connect(back, &QToolButton::clicked, this, [this] { BrowswObliquesClick(-1); });
    connect(next, &QToolButton::clicked, this, [this] { BrowswObliquesClick(1); });

    ObliiGisPopmenu = new QMenu(this);
    ObliiGisPopmenu->setObjectName("ObliiGisPopmenu");
    auto item = [this](const char* name, const QString& caption, auto slot) {
        QAction* action = ObliiGisPopmenu->addAction(caption, this, slot);
        action->setObjectName(name);
        return action;
    };
    item("Distance1", "Distance", [this] { DistanceClick(); });
    Report1 = item("Report1", "Report", [this] { ReportClick(); });
    item("Saveimage1", "Save image", [this] { SaveImageClick(); });
    item("Exportthefile1", "Export the file", [this] { ExportTheFileClick(); });
    item("Clear1", "Clear", [this] { ClearClick(); });
    ObliiGisPopmenu->addSeparator();
    item("Zoomwindowmode1", "Zoom window mode", [this] { setMode(Mode::ZoomWindow); });
    item("Zoomdynamicmode1", "Zoom dynamic mode", [this] { setMode(Mode::ZoomDynamic); });
    item("Zoomtoextent1", "Zoom to extent", [this] { FullExtent(); });
    ObliiGisPopmenu->addSeparator();
    item("Close1", "Close", [this] { close(); });

    auto* bottom = new QHBoxLayout;
    bottom->setContentsMargins(4, 0, 4, 0);
    bottom->addWidget(StatusBar1[0], 10);
    bottom->addWidget(StatusBar1[1]);
    bottom->addWidget(BrowswObliques);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(GIS, 1);
    layout->addLayout(bottom);
    resize(FIRST_WIDTH, FIRST_HEIGHT);
}

TFormOBLI::~TFormOBLI() {
    // The marks belong to the photograph that was on screen.
    obliqueStore()._Oblisimun.clear();
}

bool TFormOBLI::ShowObliqueBigWindow(int Ifound, double Zoom) {
    const ObliqueStore& store = obliqueStore();
    if (Ifound < 0 || Ifound >= MAX_OOO) return false;
    const OBLIQUE& O = store.OOO[Ifound];
    if (O.Proj.isEmpty() || !QFileInfo::exists(O.Proj)) return false;
    const QImage image = LoadObliquePicture(O.Proj);
    if (image.isNull()) return false;
    ObliqueWindowState& s = obliqueWindowState();
    s.OBLI_O = O;

    GIS->setUpdatesEnabled(false);
    // Opening a picture drops every layer: the marks go with it.
    scene_->clear();
    layers_.clear();
    _Oblisimun = _OblisimunL = nullptr;
    picture_ = scene_->addPixmap(QPixmap::fromImage(image));
    picture_->setPos(0, 0);
    picture_->setTransformationMode(Qt::SmoothTransformation);
    layers_.push_back({QFileInfo(O.Proj).completeBaseName(), true, picture_});
    const QRectF extent = picture_->sceneBoundingRect();
    const double margin = PAN_MARGIN * std::max(extent.width(), extent.height());
    scene_->setSceneRect(extent.adjusted(-margin, -margin, margin, margin));
    rotation_ = O.RotationDeg;

    const double factor = double(image.width()) / image.height();
    setWindowTitle(ObliqueCaption(O, store.relevants));

    if (isMaximized() || isMinimized()) showNormal();
    int WW = width(), HH = height();
    FitToAspect(WW, HH, factor);
    resize(WW, HH);
    show();
    if (layout()) layout()->activate();
    FullExtent();

    if (ObliqueHasMatrix(O)) {
        double px, py;
        Ob_World2Pic(store.ForOBLIpoint.X, store.ForOBLIpoint.Y, store.ForOBLIpoint.Z, O, px, py);
        AddSimun(TGIS_Point{px, py}, OBLI_YELLOW, MARK_SIZE_YELLOW);
        centreOn(sceneOf({px, py}));
    }
    // Cameras of an OPK list have no matrix: nothing to place a report point with.
    Report1->setVisible(ObliqueHasMatrix(O));
    if (Zoom > 0) SetZoom(Zoom);
    GIS->setUpdatesEnabled(true);
    REPAINT2();
    FormActivate();
    return true;
}

void TFormOBLI::FormActivate() {
    ObliqueWindowState& s = obliqueWindowState();
    s.LastObliMouseDownptg = {-99999, -99999};
    KeyTrap->setFocus();
    const QString proj = s.OBLI_O.Proj;
    const QString suffix = QFileInfo(proj).suffix();
    s.OBLIIMAGE = suffix.isEmpty() ? proj : proj.left(proj.size() - suffix.size() - 1);
    BrowswObliques->setVisible(obliqueStore().relevants > 1);
}

void TFormOBLI::BrowswObliquesClick(int step) {
    ObliqueWindowState& s = obliqueWindowState();
    const int relevants = obliqueStore().relevants;
    if (relevants <= 0) return;
    obliqueStore()._Oblisimun.clear();
    s.Serial = NextSerial(s.Serial, step, relevants);
    ShowObliqueBigWindow(s.Serial, Zoom());
}

QGraphicsItem* TFormOBLI::vectorLayer(QGraphicsItem*& layer, const QString& name) {
    if (!layer) {
        layer = new QGraphicsRectItem();
        static_cast<QGraphicsRectItem*>(layer)->setPen(Qt::NoPen);
        scene_->addItem(layer);
        layers_.push_back({name, false, layer});
    }
    return layer;
}

void TFormOBLI::AddSimun(const TGIS_Point& point, int colour, int size) {
    QGraphicsItem* layer = vectorLayer(_Oblisimun, "_Oblisimun");
    // A size in screen pixels: the mark keeps it at any zoom.
    auto* mark = new QGraphicsEllipseItem(-size / 2.0, -size / 2.0, size, size, layer);
    mark->setFlag(QGraphicsItem::ItemIgnoresTransformations);
    mark->setPos(sceneOf(point));
    mark->setBrush(QColorFromToolkit(colour));
    QPen pen(Qt::black);
    pen.setCosmetic(true);
    mark->setPen(pen);
    obliqueStore()._Oblisimun << QString::asprintf("%.3f %.3f %d %d", point.X, point.Y, colour, size);
    SetZorder();
    REPAINT2();
}

void TFormOBLI::AddSimun(const TGIS_Point& point1, const TGIS_Point& point2, int colour, int width) {
    QGraphicsItem* layer = vectorLayer(_OblisimunL, "_OblisimunL");
    auto* line = new QGraphicsLineItem(QLineF(sceneOf(point1), sceneOf(point2)), layer);
    QPen pen(QColorFromToolkit(colour));
    pen.setWidth(width);
    pen.setCosmetic(true);
    line->setPen(pen);
    SetZorder();
    REPAINT2();
}

void TFormOBLI::SetZorder() {
    if (layers_.empty()) return;
    std::vector<ZLayerInfo> info;
    for (int i = 0; i < static_cast<int>(layers_.size()); ++i)
        info.push_back({layers_[i].Name, layers_[i].raster, false, 0, i});
    std::vector<Layer> sorted;
    const std::vector<ZORDER> rows = SortZorder(info);
    for (const ZORDER& row : rows) sorted.push_back(layers_[row.layer]);
    layers_ = sorted;
    // The end of the list is drawn first, behind the rest.
    for (int i = 0; i < static_cast<int>(layers_.size()); ++i) layers_[i].item->setZValue(-i);
}

std::vector<QGraphicsItem*> TFormOBLI::marks() const {
    std::vector<QGraphicsItem*> items;
    for (const Layer& layer : layers_)
        if (!layer.raster)
            for (QGraphicsItem* child : layer.item->childItems()) items.push_back(child);
    return items;
}

TGIS_Point TFormOBLI::Screen2Map(int X, int Y) const { return pictureOf(GIS->mapToScene(QPoint(X, Y))); }

QPoint TFormOBLI::Map2Screen(const TGIS_Point& point) const {
    const QPointF v = GIS->viewportTransform().map(sceneOf(point));
    return {static_cast<int>(v.x()), static_cast<int>(v.y())};
}

void TFormOBLI::GL2Text(int i, const QString& text) {
    if (i < 0 || i > 1) return;
    StatusBar1[i]->setText(text);
}

void TFormOBLI::REPAINT2() { GIS->viewport()->update(); }

double TFormOBLI::Zoom() const {
    const QTransform t = GIS->transform();
    return std::hypot(t.m11(), t.m12());
}

QPointF TFormOBLI::viewCentre() const {
    return GIS->viewportTransform().inverted().map(QRectF(GIS->viewport()->rect()).center());
}

void TFormOBLI::centreOn(const QPointF& scenePoint) { GIS->centerOn(scenePoint); }

void TFormOBLI::applyTransform(double zoom) {
    QTransform t;
    t.rotate(rotation_);
    t.scale(zoom, zoom);
    GIS->setTransform(t);
}

void TFormOBLI::SetZoom(double zoom) {
    if (zoom <= 0) return;
    const QPointF centre = viewCentre();
    applyTransform(zoom);
    centreOn(centre);
}

void TFormOBLI::ZoomBy(double factor, const QPointF& at) {
    if (factor <= 0) return;
    const QPointF fixed = GIS->viewportTransform().inverted().map(at);
    const QPointF centre = viewCentre();
    applyTransform(Zoom() * factor);
    centreOn(fixed + (centre - fixed) / factor);
}

void TFormOBLI::FullExtent() {
    if (!picture_) return;
    const QRectF extent = picture_->sceneBoundingRect();
    QTransform turn;
    turn.rotate(rotation_);
    const QRectF turned = turn.mapRect(extent);
    const QSize view = GIS->viewport()->size();
    if (turned.isEmpty() || view.isEmpty()) return;
    applyTransform(std::min(view.width() / turned.width(), view.height() / turned.height()));
    centreOn(extent.center());
}

QString TFormOBLI::ScaleAsText() const {
    const double zoom = Zoom();
    return zoom > 0 ? QString::asprintf("1:%.2f", 1 / zoom) : QString();
}

void TFormOBLI::SetShifts2(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons) {
    ObliqueWindowState& s = obliqueWindowState();
    s.shift2 = modifiers & Qt::ShiftModifier;
    s.ctrl2 = modifiers & Qt::ControlModifier;
    s.alt2 = modifiers & Qt::AltModifier;
    s.Ldown2 = buttons & Qt::LeftButton;
    s.Rdown2 = buttons & Qt::RightButton;
}

void TFormOBLI::ResetShifts2() {
    ObliqueWindowState& s = obliqueWindowState();
    s.shift2 = s.ctrl2 = s.alt2 = s.Ldown2 = s.Rdown2 = false;
}

void TFormOBLI::setMode(Mode mode) {
    mode_ = mode;
    GIS->setDragMode(mode == Mode::Drag         ? QGraphicsView::ScrollHandDrag
                     : mode == Mode::ZoomWindow ? QGraphicsView::RubberBandDrag
                                                : QGraphicsView::NoDrag);
    rubberBand_ = QRect();
}

bool TFormOBLI::mousePress(QMouseEvent* event) {
    ObliqueWindowState& s = obliqueWindowState();
    s.PrevObliMouseDownptg = s.LastObliMouseDownptg;
    s.LastObliMouseDownptg = Screen2Map(event->position().toPoint().x(), event->position().toPoint().y());
    if (s.INDISTANCE) {
        ObliqueDistanceFinish(s.LastObliMouseDownptg);
        AddSimun(s.LastObliMouseDownptg, OBLI_RED, MARK_SIZE_RED);
        AddSimun(s.PrevObliMouseDownptg, s.LastObliMouseDownptg, OBLI_RED, 1);
        setWindowTitle(s.CAPREM);
    }
    SetShifts2(event->modifiers(), event->buttons());
    if (event->button() == Qt::LeftButton && !(event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier |
                                                                     Qt::AltModifier))) {
        if (mode_ == Mode::Select) setMode(Mode::Drag);
    }
    if (mode_ == Mode::ZoomDynamic) dynamicFrom_ = event->position().toPoint();
    return false;
}

void TFormOBLI::mouseRelease(QMouseEvent* event) {
    if (mode_ == Mode::ZoomWindow && rubberBand_.width() > 2 && rubberBand_.height() > 2) {
        const QRectF wanted = GIS->mapToScene(rubberBand_).boundingRect();
        const QSize view = GIS->viewport()->size();
        QTransform turn;
        turn.rotate(rotation_);
        const QRectF turned = turn.mapRect(wanted);
        applyTransform(std::min(view.width() / turned.width(), view.height() / turned.height()));
        centreOn(wanted.center());
    }
    (void)event;
    ResetShifts2();
    setMode(Mode::Select);
}

bool TFormOBLI::eventFilter(QObject* watched, QEvent* event) {
    if (watched == KeyTrap && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape) {
            obliqueWindowState().INOBLIDIGITIZE = false;
            ResetShifts2();
        } else {
            SetShifts2(key->modifiers(), QApplication::mouseButtons());
        }
        REPAINT2();
        return true;
    }
    if (watched != GIS->viewport()) return false;
    switch (event->type()) {
        case QEvent::Wheel: {
            auto* wheel = static_cast<QWheelEvent*>(event);
            // Towards the user (a negative delta) brings the picture nearer.
            const int delta = wheel->angleDelta().y();
            if (delta != 0) ZoomBy(delta < 0 ? ZOOMFACTOR : 1 / ZOOMFACTOR, wheel->position());
            GL2Text(1, "Scale " + ScaleAsText());
            event->accept();
            return true;
        }
        case QEvent::MouseButtonPress:
            return mousePress(static_cast<QMouseEvent*>(event));
        case QEvent::MouseMove:
            if (mode_ == Mode::ZoomDynamic && (static_cast<QMouseEvent*>(event)->buttons() & Qt::LeftButton)) {
                const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
                ZoomBy(std::pow(1.01, dynamicFrom_.y() - at.y()), dynamicFrom_);
                dynamicFrom_.setY(at.y());
                return true;
            }
            return false;
        case QEvent::MouseButtonRelease:
            mouseRelease(static_cast<QMouseEvent*>(event));
            return false;
        case QEvent::ContextMenu:
            ObliiGisPopmenu->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
            return true;
        default:
            return false;
    }
}

void TFormOBLI::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (layout()) layout()->activate();
    FullExtent();
}

void TFormOBLI::DistanceClick() {
    ObliqueWindowState& s = obliqueWindowState();
    ObliqueDistanceStart(s.LastObliMouseDownptg);
    AddSimun(s.LastObliMouseDownptg, OBLI_RED, MARK_SIZE_RED);
    s.CAPREM = windowTitle();
    setWindowTitle("Click on the second point");
}

void TFormOBLI::ReportClick() {
    ObliqueReportClick();
    REPAINT2();
}

void TFormOBLI::SaveImageClick() {
    FileDialogRequest request;
    request.save = true;
    request.title = "Specify the output file";
    request.filter = "Raster files (*.JPG;*.BMP)|*.jpg;*.bmp|JPEG files (*.JPG)|*.jpg|BMP files (*.BMP)|*.bmp";
    const QString working = QDir::currentPath();
    QString chosen;
    int filter = 1;
    const bool accepted = dialogService().chooseFile(request, chosen, filter);
    QDir::setCurrent(working);
    if (!accepted) return;
    if (!ObliqueImageExtensionAccepted(chosen)) {
        SaveObliqueImage(QImage(), chosen);
        return;
    }
    // The picture is taken at the largest size the screen gives, then the window is put back.
    const QRectF extent = GIS->mapToScene(GIS->viewport()->rect()).boundingRect();
    const Qt::WindowStates states = windowState();
    const QRect geometry = this->geometry();
    const double zoom = Zoom();
    const QPointF centre = viewCentre();
    if (!isMaximized()) {
        showMaximized();
        if (layout()) layout()->activate();
        QTransform turn;
        turn.rotate(rotation_);
        const QRectF turned = turn.mapRect(extent);
        const QSize view = GIS->viewport()->size();
        if (!turned.isEmpty())
            applyTransform(std::min(view.width() / turned.width(), view.height() / turned.height()));
        centreOn(extent.center());
    }
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 200) QApplication::processEvents(QEventLoop::AllEvents, 20);
    const QImage image = GIS->viewport()->grab().toImage();
    if (!(states & Qt::WindowMaximized)) {
        setWindowState(states);
        setGeometry(geometry);
        if (layout()) layout()->activate();
        applyTransform(zoom);
        centreOn(centre);
    }
    SaveObliqueImage(image, chosen);
}

void TFormOBLI::ExportTheFileClick() {
    QString folder = QString::fromStdString(ModelFolder());
    if (!MyInputQuery("Select the folder", "Select the folder", folder)) return;
    ExportObliqueFile(obliqueWindowState().OBLI_O.Proj, folder.trimmed());
}

void TFormOBLI::ClearClick() {
    // Only the photograph stays, wherever the layer sort put it.
    std::vector<Layer> kept;
    for (const Layer& layer : layers_) {
        if (layer.item == picture_)
            kept.push_back(layer);
        else
            delete layer.item;
    }
    layers_ = kept;
    _Oblisimun = _OblisimunL = nullptr;
    obliqueStore()._Oblisimun.clear();
    REPAINT2();
}

TFormOBLI* FormOBLI() { return theForm().data(); }

void ShowObliqueBigWindow(int Ifound, double Zoom, QWidget* owner) {
    if (Ifound < 0 || Ifound >= MAX_OOO) return;
    const OBLIQUE& O = obliqueStore().OOO[Ifound];
    if (O.Proj.isEmpty() || !QFileInfo::exists(O.Proj)) return;
    if (!theForm()) {
        theForm() = new TFormOBLI(owner);
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            theForm()->move(screen->availableGeometry().topLeft());
    }
    theForm()->ShowObliqueBigWindow(Ifound, Zoom);
}

void CloseObliqueWindow() {
    if (theForm()) theForm()->close();
}

void InstallObliqueWindow(QWidget* owner) {
    obliqueHooks().showObliqueBigWindow = [owner](int index, int zoom) { ShowObliqueBigWindow(index, zoom, owner); };
    obliqueHooks().closeObliqueWindow = [] { CloseObliqueWindow(); };
}
