#include "TFormPhoto.h"

#include <QContextMenuEvent>
#include <QFileInfo>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "oblique/FacadeStore.h"
#include "oblique/FacadeView.h"

namespace {

constexpr double WHEEL_ZOOM = 1.1;
// The size the form first takes before it is fitted to the picture's aspect.
constexpr int FIRST_WIDTH = 800;
constexpr int FIRST_HEIGHT = 600;

QToolButton* stepButton(QWidget* parent, const char* name, Qt::ArrowType arrow) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setToolTip("Change oblique imges");
    button->setAccessibleName(name);
    return button;
}

TFormPhoto*& theForm() {
    static TFormPhoto* form = nullptr;
    return form;
}

}  // namespace

TFormPhoto::TFormPhoto(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName("FormPhoto");
    scene_ = new QGraphicsScene(this);
    GIS = new QGraphicsView(scene_, this);
    GIS->setObjectName("GIS");
    GIS->setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    GIS->viewport()->installEventFilter(this);
    StatusBar2 = new QLabel(this);
    StatusBar2->setObjectName("StatusBar2");
    auto* browse = new QWidget(this);
    browse->setObjectName("BrowswPhoto");
    browse->setToolTip("Change oblique imges");
    auto* up = stepButton(browse, "BrowswPhotoUp", Qt::UpArrow);
    auto* down = stepButton(browse, "BrowswPhotoDown", Qt::DownArrow);
    auto* pair = new QVBoxLayout(browse);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->addWidget(up);
    pair->addWidget(down);
    connect(up, &QToolButton::clicked, this, [this] { BrowswPhotoClick(1); });
    connect(down, &QToolButton::clicked, this, [this] { BrowswPhotoClick(-1); });

    PhotoGisPopmenu = new QMenu(this);
    PhotoGisPopmenu->setObjectName("PhotoGisPopmenu");
    PhotoGisPopmenu->addAction("Zoom window mode", this, [this] { GIS->setDragMode(QGraphicsView::RubberBandDrag); });
    PhotoGisPopmenu->addAction("Zoom dynamic mode", this, [this] { GIS->setDragMode(QGraphicsView::ScrollHandDrag); });
    PhotoGisPopmenu->addAction("Zoom to extent", this,
                               [this] { GIS->fitInView(scene_->itemsBoundingRect(), Qt::KeepAspectRatio); });
    PhotoGisPopmenu->addSeparator();
    QAction* showOnModel = PhotoGisPopmenu->addAction("Show on model", this, [] { ShowFacadeOnModel(); });
    showOnModel->setObjectName("ShowOnModel");

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(StatusBar2, 1);
    bottom->addWidget(browse);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(GIS, 1);
    layout->addLayout(bottom);
}

void TFormPhoto::setStatus(const QString& text) { StatusBar2->setText(text); }

void TFormPhoto::ShowPhotoBigWindow(const QString& JPG, double DistXY, double DistZ) {
    const QPixmap pixmap(JPG);
    if (pixmap.isNull()) return;
    facadeState().THE_JPG = JPG;
    scene_->clear();
    picture_ = scene_->addPixmap(pixmap);
    // Picture coordinates: X 0..Width, Y -Height..0.
    picture_->setPos(0, -pixmap.height());
    scene_->setSceneRect(picture_->sceneBoundingRect());
    setWindowTitle(QFileInfo(JPG).fileName() + QString::asprintf(" DXY: %.1f DZ: %.1f", DistXY, DistZ));
    if (!isVisible()) {
        const double aspect = double(pixmap.width()) / pixmap.height();
        int w = FIRST_WIDTH, h = FIRST_HEIGHT;
        if (w > h * aspect)
            w = int(h * aspect);
        else
            h = int(w / aspect);
        resize(w, h);
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            move(screen->availableGeometry().right() - frameGeometry().width(), screen->availableGeometry().top());
        showNormal();
    }
    GIS->fitInView(scene_->sceneRect(), Qt::KeepAspectRatio);
}

void TFormPhoto::BrowswPhotoClick(int step) {
    setStatus(QString::asprintf("Zoom: %.2f", GIS->transform().m11()));
    const QString next = FindNextFacade(step, 0);
    if (next.isEmpty() || !QFileInfo::exists(next)) return;
    ShowPhotoBigWindow(next, 0, 0);
    SelectLine(next);
}

bool TFormPhoto::eventFilter(QObject* watched, QEvent* event) {
    if (watched != GIS->viewport()) return false;
    switch (event->type()) {
        case QEvent::Wheel: {
            const double factor = static_cast<QWheelEvent*>(event)->angleDelta().y() > 0 ? WHEEL_ZOOM : 1 / WHEEL_ZOOM;
            GIS->scale(factor, factor);
            setStatus(QString::asprintf("Scale %f", GIS->transform().m11()));
            return true;
        }
        case QEvent::MouseButtonPress:
            if (static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) return false;
            GIS->setDragMode(QGraphicsView::ScrollHandDrag);
            return false;
        case QEvent::MouseButtonRelease:
            GIS->setDragMode(QGraphicsView::NoDrag);
            return false;
        case QEvent::ContextMenu:
            PhotoGisPopmenu->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
            return true;
        default:
            return false;
    }
}

TFormPhoto* FormPhoto(QWidget* owner) {
    if (!theForm() && owner) {
        theForm() = new TFormPhoto(owner);
        QObject::connect(theForm(), &QObject::destroyed, [] { theForm() = nullptr; });
    }
    return theForm();
}
