// The shape table: a free-standing window listing the shapes of a vector
// layer, one row a shape, one column a field.
#pragma once

#include <QMainWindow>

class QTableWidget;
class TGIS_LayerVector;

class TFormSHPL : public QMainWindow {
public:
    explicit TFormSHPL(QWidget* parent = nullptr);
    // Fills the table: "UID" (from 1) then the layer's fields.
    void ShowLayer(const TGIS_LayerVector& layer);
    QTableWidget* table() const { return table_; }
    // The table's own search lies in its tools below it.
    void Find1Click();
    void FindNextClick();

private:
    QTableWidget* table_ = nullptr;
};
