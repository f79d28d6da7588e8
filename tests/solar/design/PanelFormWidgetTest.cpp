// The form "Solar Panels" as a window: it builds without a screen, shows the
// shipped catalogue with its defaults and hints, and keeps itself open on a
// tilt below a tiled roof's.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <cstdlib>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/ui/TFormPanels.h"

namespace {

QApplication& application() {
    static int argc = 1;
    static char name[] = "PanelFormWidgetTest";
    static char* argv[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static QApplication app(argc, argv);
    return app;
}

TEST(TFormPanels, ShowsTheCatalogueDefaultsAndRefusesATiltBelowTiles) {
    application();
    resetPanelCatalog();
    resetPanelStore();
    resetPanelFormState();
    resetOrvoIni();
    resetSessionPaths();
    sessionPaths().CTQ_Path = ZV_SOURCE_DIR "/data/";
    ScriptedDialogService dialogs;
    installDialogService(&dialogs);

    TFormPanels form;
    form.show();
    QApplication::processEvents();

    ASSERT_EQ(form.PanelsRG->buttons().size(), 9);
    ASSERT_NE(form.PanelsRG->checkedButton(), nullptr);
    EXPECT_EQ(form.PanelsRG->checkedButton()->text(), "AIKO-ZV620 ABC");
    EXPECT_FALSE(form.PanelImageTexture->pixmap().isNull());  // the dark texture of the data folder
    EXPECT_EQ(form.TiltEdit->text(), "0.00");
    EXPECT_EQ(form.LiftEdit->text(), "0.20");
    EXPECT_EQ(form.RowsGap->text(), "0.00");
    EXPECT_EQ(form.RooftypeRG->checkedId(), 0);
    EXPECT_EQ(form.RowsPairingRG->checkedButton()->text(), "Double Rows");
    EXPECT_FALSE(form.GapHelp->isEnabled());  // no row spacing help installed
    EXPECT_EQ(form.StatusBar1->currentMessage(), "Length 2382   Width 1134  ");
    EXPECT_TRUE(form.windowFlags() & Qt::WindowStaysOnTopHint);

    form.LandscapeCB->click();
    EXPECT_EQ(form.RowsPairingRG->checkedButton()->text(), "Single");

    panelFormState().GlobalRoofTilt = 20;
    form.TiltEdit->setText("5");
    form.OK->click();
    EXPECT_TRUE(form.isVisible());
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "For redtiled roof tilt has to be at least 20");

    form.RooftypeRG->button(1)->click();
    form.OK->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_TRUE(panelFormState().GlobalPanelsOK);
    EXPECT_DOUBLE_EQ(panelStore().GlobalPanel.DTilt, 5);
    EXPECT_TRUE(panelStore().GlobalPanel.Landscape);
    installDialogService(nullptr);
}

TEST(TFormPanels, AnUnreadableNumberIsShownInYellowAndRed) {
    application();
    TFormPanels form;
    form.LiftEdit->setText("9x");
    EXPECT_TRUE(form.LiftEdit->styleSheet().contains("yellow"));
    form.LiftEdit->setText("-1.5");
    EXPECT_TRUE(form.LiftEdit->styleSheet().isEmpty());
}

}  // namespace
