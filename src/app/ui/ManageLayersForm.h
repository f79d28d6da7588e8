// The layer page of the objects form: one row per layer with its vertex
// counts and a check box that shows or hides it.
#pragma once

#include <QDialog>

class QTableWidget;
class QTableWidgetItem;

class ManageLayersForm : public QDialog {
    Q_OBJECT

public:
    explicit ManageLayersForm(QWidget* parent = nullptr);
    // Lists the engine's layers afresh (each listed layer is painted blue)
    // and fills the grid from the list file; false when it can't be written.
    bool load();
    QTableWidget* grid() const { return grid_; }
    // Every row's check box becomes its layer's output flag.
    void RefreshSceneBtnClick();

private:
    QTableWidget* grid_;
    bool loading_ = false;
};

// Opens the form over parent, filled.
void Managelayers(QWidget* parent);
