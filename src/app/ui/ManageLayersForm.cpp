#include "ManageLayersForm.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <vector>

#include "app/model/LayerTable.h"
#include "app/model/SceneLayers.h"
#include "scene/engine_interface.h"

namespace {

// Layer, Vertices3D, Vertices2D, Active: the faces stay in the file only.
constexpr int GRID_COLUMNS = 4;
constexpr int ACTIVE_COLUMN = 3;

}  // namespace

ManageLayersForm::ManageLayersForm(QWidget* parent) : QDialog(parent), grid_(new QTableWidget(0, GRID_COLUMNS)) {
    setObjectName("FormObjects");
    grid_->setObjectName("SatamGrid");
    auto* tabs = new QTabWidget;
    auto* page = new QWidget;
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->addWidget(grid_);
    auto* refresh = new QPushButton("Refresh scene");
    refresh->setObjectName("RefreshSceneBtn");
    pageLayout->addWidget(refresh);
    tabs->addTab(page, "Active layers");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(refresh, &QPushButton::clicked, this, [this] { RefreshSceneBtnClick(); });
    connect(grid_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (!loading_ && item->column() == ACTIVE_COLUMN) RefreshSceneBtnClick();
    });
    resize(640, 480);
}

bool ManageLayersForm::load() {
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    QString caption;
    const std::string path = WriteLayersList(caption);
    if (path.empty()) return false;
    setWindowTitle(caption);
    const GridRows rows = ReadLayersList(path);
    loading_ = true;
    grid_->clear();
    grid_->setRowCount(0);
    grid_->setHorizontalHeaderLabels({"Layer", "Vertices3D", "Vertices2D", "Active"});
    for (const QStringList& cells : rows) {
        if (cells.size() < GRID_COLUMNS) continue;
        const int row = grid_->rowCount();
        grid_->insertRow(row);
        for (int column = 0; column < ACTIVE_COLUMN; ++column) {
            // The name stays as the engine knows it; only the counts are trimmed.
            auto* item = new QTableWidgetItem(column == 0 ? cells[column] : cells[column].trimmed());
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            grid_->setItem(row, column, item);
        }
        auto* active = new QTableWidgetItem;
        active->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        active->setCheckState(cells[ACTIVE_COLUMN].trimmed() == "1" ? Qt::Checked : Qt::Unchecked);
        grid_->setItem(row, ACTIVE_COLUMN, active);
    }
    loading_ = false;
    return true;
}

void ManageLayersForm::RefreshSceneBtnClick() {
    std::vector<LayerRow> rows;
    for (int row = 0; row < grid_->rowCount(); ++row) {
        const QTableWidgetItem* name = grid_->item(row, 0);
        const QTableWidgetItem* active = grid_->item(row, ACTIVE_COLUMN);
        if (name && active) rows.push_back({name->text().toStdString(), active->checkState() == Qt::Checked});
    }
    RefreshSceneLayers(rows);
    At3d_RenderOpenGLScene();
}

void Managelayers(QWidget* parent) {
    auto* form = parent ? parent->findChild<ManageLayersForm*>() : nullptr;
    if (!form) form = new ManageLayersForm(parent);
    if (form->load()) form->show();
}
