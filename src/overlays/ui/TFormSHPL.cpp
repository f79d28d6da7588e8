#include "TFormSHPL.h"

#include <ogrsf_frmts.h>

#include <QHeaderView>
#include <QMenuBar>
#include <QTableWidget>

#include "app/services/DialogService.h"
#include "overlays/VectorLayers.h"

TFormSHPL::TFormSHPL(QWidget* parent) : QMainWindow(parent) {
    // Its own window on the task bar, not a child of the main form.
    setWindowFlag(Qt::Window, true);
    setObjectName("FormSHPL");
    table_ = new QTableWidget(this);
    table_->setObjectName("SHPLGrid");
    setCentralWidget(table_);
    QMenu* find = menuBar()->addMenu("Find");
    QAction* first = find->addAction("Find");
    first->setObjectName("Find1");
    connect(first, &QAction::triggered, this, [this] { Find1Click(); });
    QAction* next = find->addAction("Find next");
    next->setObjectName("FindNext");
    connect(next, &QAction::triggered, this, [this] { FindNextClick(); });
}

void TFormSHPL::ShowLayer(const TGIS_LayerVector& layer) {
    setWindowTitle(layer.Name);
    OGRLayer* source = layer.layer();
    table_->clear();
    if (!source) return;
    OGRFeatureDefn* defn = source->GetLayerDefn();
    QStringList headers{"UID"};
    for (int i = 0; i < defn->GetFieldCount(); ++i) headers << QString::fromUtf8(defn->GetFieldDefn(i)->GetNameRef());
    table_->setColumnCount(headers.size());
    table_->setHorizontalHeaderLabels(headers);
    table_->setRowCount(layer.ShapeCount());
    int row = 0;
    source->ResetReading();
    for (auto& feature : *source) {
        if (row >= table_->rowCount()) table_->setRowCount(row + 1);
        table_->setItem(row, 0, new QTableWidgetItem(QString::number(row + 1)));
        for (int i = 0; i < defn->GetFieldCount(); ++i)
            table_->setItem(row, i + 1, new QTableWidgetItem(QString::fromUtf8(feature->GetFieldAsString(i))));
        ++row;
    }
    table_->resizeColumnsToContents();
}

void TFormSHPL::Find1Click() { dialogService().showMessage("Use the tools on the bottom of the page", ""); }

void TFormSHPL::FindNextClick() { dialogService().showMessage("Use the tools on the bottom of the page", ""); }
