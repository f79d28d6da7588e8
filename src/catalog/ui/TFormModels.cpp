#include "TFormModels.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "catalog/ModelDiscovery.h"
#include "scene/FileNameCase.h"

namespace {

QPushButton* button(QWidget* parent, const char* objectName, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(objectName);
    b->setAccessibleName(caption);
    return b;
}

void setCaption(QPushButton* b, const QString& caption) {
    b->setText(caption);
    b->setAccessibleName(caption);
}

}  // namespace

TFormModels::TFormModels(QWidget* parent) : QWidget(parent, Qt::Window | Qt::WindowStaysOnTopHint) {
    setObjectName("FormModels");
    auto* layout = new QVBoxLayout(this);
    LabelkamaModels = new QLabel(this);
    LabelkamaModels->setObjectName("LabelkamaModels");
    layout->addWidget(LabelkamaModels);
    auto* middle = new QHBoxLayout;
    WorkBookGrid1 = new QTableWidget(this);
    WorkBookGrid1->setObjectName("WorkBookGrid1");
    WorkBookGrid1->setAccessibleName("Models");
    WorkBookGrid1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    WorkBookGrid1->setSelectionBehavior(QAbstractItemView::SelectRows);
    WorkBookGrid1->setSelectionMode(QAbstractItemView::SingleSelection);
    middle->addWidget(WorkBookGrid1, 3);
    scene_ = new QGraphicsScene(this);
    GIS = new QGraphicsView(scene_, this);
    GIS->setObjectName("GIS");
    GIS->setAccessibleName("Thumbnail");
    GIS->setDragMode(QGraphicsView::ScrollHandDrag);
    GIS->setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    GIS->viewport()->installEventFilter(this);
    middle->addWidget(GIS, 2);
    layout->addLayout(middle, 1);

    auto* buttons = new QHBoxLayout;
    OpenThe3DModelBtn = button(this, "OpenThe3DModelBtn", "Open the 3D model");
    ShowOnMap = button(this, "ShowOnMap", "Show in Google map");
    DeleteModelBtn = button(this, "DeleteModelBtn", "Delete the model");
    ShowOpenTessmap = button(this, "ShowOpenTessmap", "Show in 2D");
    ShowOpenTessmap->setVisible(false);
    for (QPushButton* b : {OpenThe3DModelBtn, ShowOnMap, DeleteModelBtn, ShowOpenTessmap}) buttons->addWidget(b);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    resize(1000, 600);

    connect(OpenThe3DModelBtn, &QPushButton::clicked, this, &TFormModels::OpenThe3DModelBtnClick);
    connect(ShowOnMap, &QPushButton::clicked, this, &TFormModels::ShowOnMapClick);
    connect(DeleteModelBtn, &QPushButton::clicked, this, &TFormModels::DeleteModelBtnClick);
    connect(ShowOpenTessmap, &QPushButton::clicked, this, &TFormModels::ShowOpenTessmapClick);
    // Table rows start below the title row, which the header shows.
    connect(WorkBookGrid1, &QTableWidget::currentCellChanged, this, [this](int row, int, int, int) {
        if (!filling_ && row >= 0) selectRow(row + 1);
    });
}

void TFormModels::showRequest(const ModelBrowserRequest& request) {
    filling_ = true;
    rows_ = LoadBrowserTable(request);
    selection_ = ModelSelection{};
    WorkBookGrid1->clear();
    const int columns = std::max(request.columns, 1);
    WorkBookGrid1->setColumnCount(columns);
    WorkBookGrid1->setRowCount(std::max<int>(0, static_cast<int>(rows_.size()) - 1));
    if (!rows_.isEmpty()) WorkBookGrid1->setHorizontalHeaderLabels(rows_.first().mid(0, columns));
    for (int row = 1; row < rows_.size(); ++row)
        for (int column = 0; column < std::min<int>(columns, static_cast<int>(rows_[row].size())); ++column)
            WorkBookGrid1->setItem(row - 1, column, new QTableWidgetItem(rows_[row][column]));
    WorkBookGrid1->resizeColumnsToContents();
    filling_ = false;
    setWindowTitle(request.caption);
    LabelkamaModels->setText(request.caption);
    scene_->clear();
    if (request.selectFirstRow && rows_.size() > 1) {
        WorkBookGrid1->setCurrentCell(0, 0);
        selectRow(1);
    }
    if (request.maximized)
        showMaximized();
    else
        showNormal();
    raise();
    activateWindow();
}

void TFormModels::selectRow(int ARow) {
    selection_ = WorkBookGrid1SelectCell(rows_, ARow);
    ShowOnMap->setVisible(selection_.showOnMapVisible);
    if (selection_.showOnMapVisible) setCaption(ShowOnMap, selection_.showOnMapCaption);
    ShowOpenTessmap->setVisible(selection_.showIn2DVisible);
    LabelkamaModels->setText(selection_.label);
    showThumbnail();
}

void TFormModels::showThumbnail() {
    scene_->clear();
    GIS->resetTransform();
    GIS->setToolTip({});
    const QString image = QString::fromStdString(FindFileNoCase(selection_.IMAGE.toStdString()));
    if (image.isEmpty()) return;
    const QPixmap picture(image);
    if (picture.isNull()) return;
    QGraphicsPixmapItem* item = scene_->addPixmap(picture);
    scene_->setSceneRect(item->boundingRect());
    GIS->fitInView(item, Qt::KeepAspectRatio);
    GIS->scale(3, 3);
    GIS->setToolTip(image);
}

bool TFormModels::eventFilter(QObject* watched, QEvent* event) {
    if (watched == GIS->viewport() && event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        const double factor = wheel->angleDelta().y() > 0 ? 1.1 : 1 / 1.1;
        GIS->scale(factor, factor);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void TFormModels::OpenThe3DModelBtnClick() {
    if (selection_.MODEL.isEmpty()) return;
    showMinimized();
    OpenThe3DModel(selection_.MODEL);
}

void TFormModels::ShowOnMapClick() {
    if (selection_.MODEL.isEmpty()) return;
    const QString caption = ShowOnMap->text();
    // The PRJ's file dialog must not open behind a minimised browser.
    if (caption.toUpper().contains("GOOGLE")) showMinimized();
    if (::ShowOnMapClick(caption, selection_)) showMinimized();
}

void TFormModels::DeleteModelBtnClick() {
    if (selection_.MODEL.isEmpty()) return;
    const QString model = selection_.MODEL;
    scene_->clear();
    if (!DeleteTheModel(model)) {
        showThumbnail();
        return;
    }
    close();
    DoExploreModels();
}

void TFormModels::ShowOpenTessmapClick() { ShowSolvane(selection_.ModelEast, selection_.ModelNorth); }
