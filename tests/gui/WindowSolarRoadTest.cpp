// The road of one report in the real window on a copy of the demo site,
// under Xvfb: Digitize -> "Roofs" and three clicks on the house's south
// roof, the panel form accepted, the panels drawn on the roof; a panel moved
// and one duplicated through the measure dialog's panel buttons; a roof
// polygon that offers only its deletion; then "Solar panels" -> the report
// with its progress dialog, once cancelled and once to the end, and its
// picture. Pictures of each step go to build/test-screens/.
#include <QFile>
#include <QFileInfo>
#include <QButtonGroup>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <cmath>

#include "WindowFixture.h"
#include "measure/ui/TForm_M.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelText.h"
#include "solar/design/ui/TFormPanels.h"

namespace {

// The house's south roof: z = 47.82 + (y - 6) tan 30 over x -25.35 .. -14.65,
// y 5.65 .. 10 in the file frame. The flat roof: x 8 .. 22, y -10 .. 0 at 51.09.
double southRoofZ(double y) { return 47.82 + (y - 6) * std::tan(30 * M_PI / 180); }
constexpr double FLAT_ROOF_Z = 51.09;

class WindowSolarRoad : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        // The road starts on a roof with no panels; the site's climate year stands in for the download.
        QDir panels(QString::fromStdString(dir.path("site/PANELS")));
        for (const QString& file : panels.entryList({"*.dae"}, QDir::Files)) panels.remove(file);
        fs::copy_file(dir.path("site/PVGIST_H_SYNTHETIC.csv"), dir.path("site/PVGIST_H.csv"));
    }
    // The panels' layers in the scene.
    static QStringList panelLayers() {
        QStringList layers;
        char name[AT3D_NAME_SIZE] = {};
        for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
            if (QString(name).contains("Panel-") && QString(name).endsWith("_geometry")) layers << name;
        return layers;
    }
    // A point a fraction along the panel from its lower left corner: u along the row, v up the panel.
    static TGIS_Point3D onPanel(const PANEL& p, double u, double v) {
        const TGIS_Point3D &ll = p.Corners[0], &ul = p.Corners[1], &lr = p.Corners[3];
        return {ll.X + u * (lr.X - ll.X) + v * (ul.X - ll.X), ll.Y + u * (lr.Y - ll.Y) + v * (ul.Y - ll.Y),
                ll.Z + u * (lr.Z - ll.Z) + v * (ul.Z - ll.Z), 0};
    }
    static TGIS_Point3D mapOfFile(double x, double y, double z) {
        const double* offset = frameState().Offset;
        return {x + offset[0], y + offset[1], z + offset[2], 0};
    }
    // Draws a measure line between two pixels and does in its dialog what answer does.
    static void lineWithDialog(TFormAt3& form, ViewPanelGL* surface, QPoint from, QPoint to,
                               std::function<void(TForm_M*)> answer) {
        pressToolButton(form, "MeasureButton");
        click(surface, from);
        whenDialogOpens<TForm_M>(std::move(answer));
        click(surface, to);
    }
    // The names of the dialog's panel buttons an operator can see.
    static QStringList offeredButtons(TForm_M* dialog) {
        QStringList shown;
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->isVisibleTo(dialog)) shown << button->text();
        return shown;
    }
    // Each panel's file holds the panel as the store has it.
    static void expectFilesMatchStore() {
        PanelStore& store = panelStore();
        for (int i = 0; i < store.NumPanelsCreated; ++i) {
            const PANEL& live = store.panels[i];
            store.NumPanelsCreatedT = 0;
            ASSERT_EQ(GetPanelsFromDae(PanelText(live.Filename)), 1) << live.Name;
            const PANEL& file = store.panelsT[0];
            EXPECT_NEAR(file.CenterPoint.X, live.CenterPoint.X, 1e-3) << live.Name;
            EXPECT_NEAR(file.CenterPoint.Y, live.CenterPoint.Y, 1e-3) << live.Name;
            EXPECT_NEAR(file.CenterPoint.Z, live.CenterPoint.Z, 1e-3) << live.Name;
        }
        store.NumPanelsCreatedT = 0;
    }
    int panelNamed(const QString& name) const {
        for (int i = 0; i < panelStore().NumPanelsCreated; ++i)
            if (PanelText(panelStore().panels[i].Name) == name) return i;
        return -1;
    }
};

}  // namespace

TEST_F(WindowSolarRoad, FromTheRoofClicksToTheReportInTheWindow) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    // No test reaches the public geocoder.
    ORVOINI().writeString("Services", "Geocoding", "");
    EXPECT_EQ(panelStore().PANELSFOLDER.toStdString(), dir.path("site/PANELS/"));

    // 1. Digitize -> Roofs: along the eaves, then up the roof; the right click ends it.
    closeUp(-20, 8, 48.5, 28);
    const QPoint eavesWest = pixelOf(-24.2, 6.3, southRoofZ(6.3));
    const QPoint eavesEast = pixelOf(-15.8, 6.3, southRoofZ(6.3));
    // One row of panels: 2 m up the slope.
    const QPoint upTheRoof = pixelOf(-24.2, 8.1, southRoofZ(8.1));
    for (QPoint p : {eavesWest, eavesEast, upTheRoof}) ASSERT_EQ(layerAt(p), "house_roof");
    chooseMenuItem(form, "Roofs1");
    click(surface, eavesWest);
    click(surface, eavesEast);
    // 2. The panel form opens; the operator picks the module and one row of single panels.
    QString formTitle;
    whenDialogOpens<TFormPanels>([&formTitle](TFormPanels* dialog) {
        for (QAbstractButton* module : dialog->PanelsRG->buttons())
            if (module->text() == "ZV-M54 410 Black") module->click();
        for (QAbstractButton* pairing : dialog->RowsPairingRG->buttons())
            if (pairing->text() == "Single") pairing->click();
        formTitle = dialog->windowTitle();
        screenshotOf(dialog, "road_panel_form");
        dialog->OK->click();
    });
    click(surface, upTheRoof, Qt::RightButton);
    EXPECT_TRUE(formTitle.contains("Solar panel")) << formTitle.toStdString();
    EXPECT_EQ(panelFormState().BlockDepth, 0);
    const int placed = panelStore().NumPanelsCreated;
    ASSERT_GE(placed, 4);
    EXPECT_EQ(panelLayers().size(), placed);
    for (int i = 0; i < placed; ++i) {
        const PANEL& p = panelStore().panels[i];
        EXPECT_TRUE(QFileInfo::exists(PanelText(p.Filename))) << p.Filename;
        EXPECT_TRUE(PanelText(p.Filename).startsWith(panelStore().PANELSFOLDER));
        EXPECT_NEAR(p.DTilt, 30, 1) << p.Name;
        EXPECT_NEAR(p.DAzimuth, 180, 1) << p.Name;
        // Drawn where it stands: its middle shows the panel, not the roof.
        EXPECT_TRUE(layerAt(pixelOfMap(onPanel(p, 0.5, 0.5))).contains("Panel-")) << p.Name;
    }
    screenshot(surface, "road_panels_on_house_roof");

    // 3. A line from near a panel's lower right corner to a free place on the roof above the row moves it there.
    const PANEL before = panelStore().panels[placed / 2];
    const TGIS_Point3D target = mapOfFile(-19.0, 8.4, southRoofZ(8.4));
    QStringList offered;
    QString caption;
    lineWithDialog(form, surface, pixelOfMap(onPanel(before, 0.9, 0.1)), pixelOfMap(target),
                   [&offered, &caption](TForm_M* dialog) {
                       offered = offeredButtons(dialog);
                       caption = dialog->windowTitle();
                       screenshotOf(dialog, "road_panel_dialog");
                       dialog->findChild<QPushButton*>("MovepanelBtn")->click();
                   });
    EXPECT_TRUE(caption.startsWith("Panel ")) << caption.toStdString();
    EXPECT_TRUE(caption.contains(QRegularExpression(" Snapped 1 0 "))) << caption.toStdString();
    for (const char* button : {"Move panel", "Move palel group", "Delete panel", "Delete palel group", "Lift panel",
                               "Lift palel group", "Show info", "Show shading", "Cancel"})
        EXPECT_TRUE(offered.contains(button)) << button;
    EXPECT_FALSE(offered.contains("Save"));
    const int movedIndex = panelNamed(PanelText(before.Name));
    ASSERT_GE(movedIndex, 0);
    const PANEL& moved = panelStore().panels[movedIndex];
    // The corner next to where the line started now stands where it ended.
    EXPECT_NEAR(moved.Corners[3].X, target.X, 0.15);
    EXPECT_NEAR(moved.Corners[3].Y, target.Y, 0.15);
    EXPECT_NEAR(moved.CenterPoint.X - before.CenterPoint.X, moved.Corners[3].X - before.Corners[3].X, 1e-6);
    EXPECT_EQ(form.statusText(3), "1 panel(s) moved");
    expectFilesMatchStore();
    screenshot(surface, "road_panel_moved");

    // 4. From the westmost panel out west: the free place beside it gets a copy.
    int westmost = 0;
    for (int i = 1; i < placed; ++i)
        if (panelStore().panels[i].CenterPoint.X < panelStore().panels[westmost].CenterPoint.X) westmost = i;
    const PANEL west = panelStore().panels[westmost];
    lineWithDialog(form, surface, pixelOfMap(onPanel(west, 0.5, 0.5)),
                   pixelOfMap(mapOfFile(-25.1, west.CenterPoint.Y - frameState().Offset[1],
                                        southRoofZ(west.CenterPoint.Y - frameState().Offset[1]))),
                   [](TForm_M* dialog) {
                       QPushButton* duplicate = dialog->findChild<QPushButton*>("DuplicateBtn");
                       ASSERT_TRUE(duplicate->isVisibleTo(dialog));
                       duplicate->click();
                   });
    settle(400);
    const int afterDuplicate = panelStore().NumPanelsCreated;
    ASSERT_GE(afterDuplicate, placed + 1);
    EXPECT_EQ(panelLayers().size(), afterDuplicate);
    const PANEL& copy = panelStore().panels[afterDuplicate - 1];
    EXPECT_LT(copy.CenterPoint.X, west.CenterPoint.X - 1);
    EXPECT_TRUE(QFileInfo::exists(PanelText(copy.Filename)));
    EXPECT_TRUE(layerAt(pixelOfMap(onPanel(copy, 0.5, 0.5))).contains("Panel-"));
    expectFilesMatchStore();
    screenshot(surface, "road_panel_duplicated");

    // 5. A roof polygon on the flat roof: a line from it offers only its deletion.
    closeUp(15, -5, FLAT_ROOF_Z, 40);
    chooseMenuItem(form, "Roofs1");
    const double outline[4][2] = {{10, -8}, {20, -8}, {20, -2}, {10, -2}};
    for (int i = 0; i < 4; ++i)
        click(surface, pixelOf(outline[i][0], outline[i][1], FLAT_ROOF_Z), i == 3 ? Qt::RightButton : Qt::LeftButton);
    const QPoint onRoofPolygon = pixelOf(15, -5, FLAT_ROOF_Z + 0.2);
    ASSERT_TRUE(layerAt(onRoofPolygon).contains("roof_polygon")) << layerAt(onRoofPolygon).toStdString();
    QStringList roofOffered;
    lineWithDialog(form, surface, onRoofPolygon, pixelOf(17, -5, FLAT_ROOF_Z + 0.2),
                   [&roofOffered](TForm_M* dialog) {
                       roofOffered = offeredButtons(dialog);
                       dialog->reject();
                   });
    EXPECT_EQ(roofOffered, (QStringList{"Delete panel", "Cancel"}));
    EXPECT_EQ(panelFormState().BlockDepth, 0);

    // 6. The report, cancelled from its progress dialog: nothing half made.
    closeUp(-20, 8, 48.5, 30);
    QString progressLabel;
    int progressMaximum = 0;
    QTimer cancelPresser;
    cancelPresser.setInterval(5);
    QObject::connect(&cancelPresser, &QTimer::timeout, [&form, &progressLabel, &progressMaximum] {
        auto* progress = form.findChild<QProgressDialog*>();
        if (!progress || !progress->isVisible()) return;
        progressLabel = progress->labelText();
        progressMaximum = progress->maximum();
        screenshotOf(progress, "road_report_progress");
        for (QPushButton* button : progress->findChildren<QPushButton*>())
            if (button->text() == "Cancel") button->click();
    });
    cancelPresser.start();
    dialogs.pushText("12");
    chooseMenuItem(form, "CenterOptimizer1");
    cancelPresser.stop();
    EXPECT_FALSE(progressLabel.isEmpty());
    EXPECT_EQ(progressMaximum, afterDuplicate);
    bool saidCancelled = false;
    for (const auto& q : dialogs.questions()) saidCancelled = saidCancelled || q.text == "Report cancelled";
    EXPECT_TRUE(saidCancelled);
    const QDir reports(QString::fromStdString(dir.path("site/Reports")));
    EXPECT_TRUE(reports.entryList({"*.html"}).isEmpty());
    EXPECT_EQ(panelStore().NumPanelsCreated, afterDuplicate);

    // 7. The report to the end: it opens in the browser with its picture.
    const std::size_t asked = dialogs.questions().size();
    dialogs.pushText("12");
    chooseMenuItem(form, "CenterOptimizer1");
    QString opened;
    for (std::size_t i = asked; i < dialogs.questions().size(); ++i)
        if (dialogs.questions()[i].kind == ScriptedDialogService::Question::Document) opened = dialogs.questions()[i].text;
    ASSERT_FALSE(opened.isEmpty());
    EXPECT_TRUE(opened.startsWith(QString::fromStdString(dir.path("site/Reports/"))));
    QFile html(opened);
    ASSERT_TRUE(html.open(QIODevice::ReadOnly));
    const QString page = QString::fromUtf8(html.readAll());
    EXPECT_TRUE(page.contains(QString("Total Panels: %1").arg(afterDuplicate))) << "no panel count";
    const auto picture = QRegularExpression("data:image/jpeg;base64,([A-Za-z0-9+/=]+)").match(page);
    ASSERT_TRUE(picture.hasMatch());
    const QImage image = QImage::fromData(QByteArray::fromBase64(picture.captured(1).toLatin1()), "JPG");
    ASSERT_FALSE(image.isNull());
    image.save(QString(ZV_BINARY_DIR) + "/test-screens/road_report_picture.png");
    // The picture looks at the panels: their dark blue covers a fair part of its middle.
    int blue = 0, total = 0;
    for (int y = image.height() / 4; y < image.height() * 3 / 4; y += 2)
        for (int x = image.width() / 4; x < image.width() * 3 / 4; x += 2, ++total) {
            const QColor c = image.pixelColor(x, y);
            blue += c.blue() > c.red() + 30 && c.blue() > c.green() + 10 && c.value() < 200 ? 1 : 0;
        }
    EXPECT_GT(blue, total / 50) << blue << " of " << total;
    // The operator's view is back once the picture is taken.
    double distance = 0;
    At3d_GetCameraDistance(&distance);
    EXPECT_NEAR(distance, 30, 1e-6);
    screenshot(surface, "road_after_report");

    // The report left each panel's rays: "Show shading" on a panel draws them as lines.
    const PANEL& shaded = panelStore().panels[0];
    lineWithDialog(form, surface, pixelOfMap(onPanel(shaded, 0.5, 0.5)), pixelOfMap(onPanel(shaded, 0.6, 0.5)),
                   [](TForm_M* dialog) { dialog->findChild<QPushButton*>("ShowPanelShadingBtn")->click(); });
    settle(400);
    QString rays;
    char layerName[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, layerName); layer; layer = At3d_GetNextLayer(layer, layerName))
        if (QString(layerName).contains("ShadingRays")) rays = layerName;
    ASSERT_FALSE(rays.isEmpty());
    EXPECT_EQ(At3d_FaceCount(rays.toUtf8().constData()), 0);
    screenshot(surface, "road_shading_rays");
    At3d_DeleteLayer(rays.toUtf8().constData());

    // 8. Solar panels -> Save panels, Delete all panels, Restore panels: the same panels again.
    chooseMenuItem(form, "Save3");
    const QStringList saved = QDir(QString::fromStdString(dir.path("site"))).entryList({"Panels_*.dae"});
    ASSERT_EQ(saved.size(), 1);
    chooseMenuItem(form, "DeleteAllPanels1");
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    EXPECT_TRUE(panelLayers().isEmpty());
    dialogs.pushFile(QString::fromStdString(dir.path("site/")) + saved[0]);
    chooseMenuItem(form, "Restore1");
    EXPECT_EQ(panelStore().NumPanelsCreated, afterDuplicate);
    EXPECT_EQ(panelLayers().size(), afterDuplicate);
    EXPECT_EQ(dialogs.questions().back().title, "Open the panels model file(input)");
    for (int i = 0; i < afterDuplicate; ++i)
        EXPECT_TRUE(PanelText(panelStore().panels[i].Filename).startsWith(panelStore().PANELSFOLDER));
    screenshot(surface, "road_panels_restored");
}

TEST_F(WindowSolarRoad, TheSolarMenuHoldsEveryItemWithItsCaption) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    const std::pair<const char*, const char*> items[] = {
        {"N5pointsOptimizer1", "5 points +Optimizer"},
        {"CenterOptimizer1", "Center + Optimizer"},
        {"N5points1", "5 points + String Inverter"},
        {"CenterStringInverter1", "Center + String Inverter"},
        {"DefineCustomer1", "Define Customer"},
        {"DownloadPVGISTcsv1", "Download PVGIST csv"},
        {"ShowpanelsNamesMnu", "Show panels names"},
        {"Showroofplanes1", "Show roof planes"},
        {"Sortpanels1", "Sort panels"},
        {"Listpanels1", "List panels"},
        {"CreateConstructionMnu", "Create construction"},
        {"Createplane1", "Create plane"},
        {"CreateautoDAEhelper1", "Create auto DAE helper"},
        {"Save3", "Save panels"},
        {"Restore1", "Restore panels"},
        {"DeleteAllPanels1", "Delete all panels"},
    };
    for (const auto& [name, caption] : items) {
        const QAction* action = form.findChild<QAction*>(name);
        ASSERT_NE(action, nullptr) << name;
        EXPECT_EQ(action->text(), caption) << name;
    }
    // Without panels the labels item draws nothing and saving says so.
    chooseMenuItem(form, "ShowpanelsNamesMnu");
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
    chooseMenuItem(form, "Save3");
    EXPECT_EQ(dialogs.questions().back().text, "No panels to save");
}
