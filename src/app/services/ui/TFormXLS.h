// The grid form: shows xlsFormState() in an editable grid, with Import and
// Export buttons. It does not block; one instance serves the session.
#pragma once

#include <QWidget>

class QTableWidget;

class TFormXLS : public QWidget {
    Q_OBJECT
public:
    explicit TFormXLS(QWidget* parent = nullptr);
    // Fills the grid from the state and shows the form.
    void showState(const QString& caption, bool maximized);
    QTableWidget* grid() const { return WorkBookGrid1; }

private:
    void fillGrid();
    void ImportBtnClick();
    void ExportbtnClick();

    QTableWidget* WorkBookGrid1 = nullptr;
    bool filling_ = false;
};
