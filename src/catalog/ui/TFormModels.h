// The model browser: the catalogue table (or the list of unanalysed
// models), the selected model's thumbnail, and its actions. Not modal; a
// window of its own that stays above the main window it belongs to.
#pragma once

#include <QWidget>

#include "catalog/ModelBrowser.h"

class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QPushButton;
class QTableWidget;

class TFormModels : public QWidget {
    Q_OBJECT
public:
    explicit TFormModels(QWidget* parent = nullptr);
    // Loads the table of the request and shows the form.
    void showRequest(const ModelBrowserRequest& request);
    // Selects a grid row (row 0 the titles), as a click on it does.
    void selectRow(int ARow);

    const ModelSelection& selection() const { return selection_; }
    QTableWidget* grid() const { return WorkBookGrid1; }

    void OpenThe3DModelBtnClick();
    void ShowOnMapClick();
    void DeleteModelBtnClick();
    void ShowOpenTessmapClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showThumbnail();

    QTableWidget* WorkBookGrid1 = nullptr;
    QLabel* LabelkamaModels = nullptr;
    QGraphicsView* GIS = nullptr;
    QGraphicsScene* scene_ = nullptr;
    QPushButton* OpenThe3DModelBtn = nullptr;
    QPushButton* ShowOnMap = nullptr;
    QPushButton* DeleteModelBtn = nullptr;
    QPushButton* ShowOpenTessmap = nullptr;
    GridRows rows_;
    ModelSelection selection_;
    bool filling_ = false;
};
