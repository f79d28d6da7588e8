// The Qt faces of the dialogs, on the offscreen platform.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <cstdlib>

#include "app/services/XlsForm.h"
#include "app/services/ui/QtFileFilter.h"
#include "app/services/ui/TFormOrvoMsg.h"
#include "app/services/ui/TFormXLS.h"
#include "app/services/ui/TForm_DLG.h"

namespace {

class QtDialogs : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        static int argc = 1;
        static char name[] = "QtDialogsTest";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
    }
    // Gone before the exit handlers, which would otherwise tear Qt down out of order.
    static void TearDownTestSuite() {
        delete app;
        app = nullptr;
    }
    void TearDown() override { resetXlsFormState(); }
    static QApplication* app;
};

QApplication* QtDialogs::app = nullptr;

int visibleButtons(const TFormOrvoMsg& box) {
    int visible = 0;
    for (int number = 1; number <= box.buttonCount(); ++number) visible += box.button(number)->isVisible() ? 1 : 0;
    return visible;
}

}  // namespace

TEST_F(QtDialogs, TwoButtonTextsShowTwoButtonsAndTheSecondAnswersTwo) {
    TFormOrvoMsg box;
    box.setup("First line\nSecond line", "Question", {"Keep", "Delete", ""}, 2);
    box.open();
    EXPECT_EQ(box.buttonCount(), 3);
    EXPECT_EQ(visibleButtons(box), 2);
    EXPECT_EQ(box.button(1)->text(), "Keep");
    EXPECT_TRUE(box.button(2)->isDefault());
    EXPECT_FALSE(box.button(1)->isDefault());
    box.button(2)->click();
    EXPECT_EQ(box.result(), 2);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(QtDialogs, TheFourButtonBoxHidesItsEmptyTexts) {
    TFormOrvoMsg4 box;
    box.setup("?", "Q", {"A", "", "C", "D"}, 1);
    box.open();
    EXPECT_EQ(box.buttonCount(), 4);
    EXPECT_EQ(visibleButtons(box), 3);
    box.button(4)->click();
    EXPECT_EQ(box.result(), 4);
}

TEST_F(QtDialogs, EnterInTheOneLineFormActsAsOk) {
    TForm_DLG form;
    OneLineDialogRequest request;
    request.label1 = "Restrict";
    form.setup(request, "1 2");
    form.open();
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(form.edit(), &enter);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(form.text(), "1 2");
}

TEST_F(QtDialogs, FiltersBecomeQtNameFiltersThatTakeEitherCase) {
    EXPECT_EQ(QtNameFilters("Polygon file (*.POL)|*.pol"), QStringList{"Polygon file (*.[pP][oO][lL])"});
    EXPECT_EQ(QtNameFilters("Vector file(*.SHP;*.DXF)|*.SHP;*.dxf|All|*.*"),
              (QStringList{"Vector file (*.[sS][hH][pP] *.[dD][xX][fF])", "All (*.*)"}));
    // A panels model saved as "Panels_....dae" is offered by the filter "Panels_*.DAE".
    const QStringList filter = QtNameFilters("Panels model file | Panels_*.DAE");
    const QString pattern = filter[0].section('(', 1).chopped(1);
    EXPECT_TRUE(QRegularExpression(QRegularExpression::wildcardToRegularExpression(pattern))
                    .match("Panels_20261123_101010.dae")
                    .hasMatch());
}

TEST_F(QtDialogs, TheGridShowsRowsBelowTheTitleAndEditsReachTheState) {
    xlsFormState().rows = {{"Name", "kWh"}, {"A", "10"}, {"B", "20"}};
    xlsFormState().fixedRows = 1;
    TFormXLS form;
    form.showState("Energy (2)", false);
    EXPECT_EQ(form.windowTitle(), "Energy (2)");
    QTableWidget* grid = form.grid();
    ASSERT_EQ(grid->rowCount(), 2);
    EXPECT_EQ(grid->horizontalHeaderItem(1)->text(), "kWh");
    EXPECT_EQ(grid->item(1, 0)->text(), "B");
    EXPECT_FALSE(xlsFormState().edited);
    grid->item(1, 1)->setText("25");
    EXPECT_TRUE(xlsFormState().edited);
    EXPECT_EQ(xlsFormState().rows[2], (QStringList{"B", "25"}));
    grid->setCurrentCell(1, 0);
    EXPECT_EQ(xlsFormState().GlobalXLSRow, 2);
}
