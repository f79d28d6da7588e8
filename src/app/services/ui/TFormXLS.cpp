#include "TFormXLS.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "app/services/XlsForm.h"

TFormXLS::TFormXLS(QWidget* parent) : QWidget(parent, Qt::Window) {
    auto* layout = new QVBoxLayout(this);
    WorkBookGrid1 = new QTableWidget(this);
    layout->addWidget(WorkBookGrid1);
    auto* row = new QHBoxLayout;
    auto* importButton = new QPushButton(QStringLiteral("Import"), this);
    auto* exportButton = new QPushButton(QStringLiteral("Export"), this);
    row->addWidget(importButton);
    row->addWidget(exportButton);
    row->addStretch(1);
    layout->addLayout(row);
    resize(900, 600);

    connect(importButton, &QPushButton::clicked, this, &TFormXLS::ImportBtnClick);
    connect(exportButton, &QPushButton::clicked, this, &TFormXLS::ExportbtnClick);
    // Grid rows start below the title row, which the header shows.
    connect(WorkBookGrid1, &QTableWidget::cellChanged, this, [this](int row, int column) {
        if (filling_) return;
        const QTableWidgetItem* item = WorkBookGrid1->item(row, column);
        WorkBookGrid1EditCellDone(row + xlsFormState().fixedRows, column, item ? item->text() : QString());
    });
    connect(WorkBookGrid1, &QTableWidget::currentCellChanged, this, [this](int row, int, int, int) {
        if (!filling_ && row >= 0) WorkBookGrid1SelectCell(row + xlsFormState().fixedRows);
    });
}

void TFormXLS::fillGrid() {
    filling_ = true;
    const XlsFormState& state = xlsFormState();
    const int fixed = std::min<int>(state.fixedRows, static_cast<int>(state.rows.size()));
    qsizetype columns = 0;
    for (const QStringList& cells : state.rows) columns = std::max(columns, cells.size());
    WorkBookGrid1->clear();
    WorkBookGrid1->setColumnCount(static_cast<int>(columns));
    WorkBookGrid1->setRowCount(static_cast<int>(state.rows.size()) - fixed);
    if (fixed > 0) WorkBookGrid1->setHorizontalHeaderLabels(state.rows.first());
    for (int row = fixed; row < state.rows.size(); ++row)
        for (int column = 0; column < state.rows[row].size(); ++column)
            WorkBookGrid1->setItem(row - fixed, column, new QTableWidgetItem(state.rows[row][column]));
    WorkBookGrid1->resizeColumnsToContents();
    filling_ = false;
}

void TFormXLS::showState(const QString& caption, bool maximized) {
    fillGrid();
    setWindowTitle(caption);
    if (maximized)
        showMaximized();
    else
        showNormal();
    raise();
    activateWindow();
}

void TFormXLS::ImportBtnClick() {
    if (::ImportBtnClick()) fillGrid();
}

void TFormXLS::ExportbtnClick() { ::ExportbtnClick(); }
