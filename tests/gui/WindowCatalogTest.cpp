// The model catalogue, the billboards' links and geocoding in the real window
// on the demo site, under Xvfb: "Explore 3D models" over a folder of analysed
// models with the browser's open and delete, "Assign links" from the view's
// popup, and "Rectify by ONC" and "Export GCP" of the Model menu, each with
// the files it leaves compared byte for byte.
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsView>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>

#include "WindowFixture.h"
#include "catalog/CatalogState.h"
#include "catalog/ModelBrowser.h"
#include "catalog/ModelInf.h"
#include "catalog/ui/TFormIO.h"
#include "catalog/ui/TFormModels.h"
#include "measure/ui/TFormBillboard.h"
#include "measure/ui/TForm_M.h"
#include "scene/engine_interface.h"

namespace {

using Question = ScriptedDialogService::Question;

// The flat roof of the demo site: x 8 .. 22, y -10 .. 0 at 51.09 in the file frame.
constexpr double FLAT_ROOF_Z = 51.09;

// A small square model, two metres high on one side.
const char* kSquare = "v 0 0 0\nv 10 0 0\nv 10 10 2\nv 0 10 2\nf 1 2 3\nf 1 3 4\n";

class WindowCatalog : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        resetCatalogState();
    }
    QString path(const std::string& name) const { return QString::fromStdString(dir.path(name)); }
    // Text so that a failure shows the lines, not QChars.
    static std::string readAll(const QString& file) {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll().toStdString() : "(missing)";
    }
    QStringList messages() const {
        QStringList texts;
        for (const Question& q : dialogs.questions())
            if (q.kind == Question::Message) texts << q.text;
        return texts;
    }
    static void measure(TFormAt3& form, ViewPanelGL* surface, QPoint a, QPoint b, const QString& name) {
        pressToolButton(form, "MeasureButton");
        click(surface, a);
        whenDialogOpens<TForm_M>([name](TForm_M* dialog) {
            dialog->NameEdit->setText(name);
            dialog->findChild<QPushButton*>("SaveBtn")->click();
        });
        click(surface, b);
    }
    // The item of the "Geocode model" menu captioned so, or null.
    static QAction* geocodeItem(QWidget& form, const QString& caption) {
        auto* menu = form.findChild<QMenu*>("GeocodeMnu");
        if (!menu) return nullptr;
        for (QAction* action : menu->actions())
            if (action->text() == caption) return action;
        return nullptr;
    }
    // A click on the browser's row whose project is so; false when none is.
    static bool clickModelRow(TFormModels& browser, const QString& project) {
        QTableWidget* grid = browser.grid();
        for (int row = 0; row < grid->rowCount(); ++row)
            if (grid->item(row, 0) && grid->item(row, 0)->text() == project) {
                click(grid->viewport(), grid->visualItemRect(grid->item(row, 0)).center());
                return true;
            }
        return false;
    }
    // An analysed model as its producer leaves it: the model and its information file.
    void analysedModel(const std::string& folder, const QString& name, const char* lastAccessed, double lat,
                       double lon) {
        const QString model = path(folder + "/" + name.toStdString() + ".obj");
        testsupport::writeTextFile(model.toStdString(), kSquare);
        ModelInfRecord r;
        r.Project = name;
        r.Model = model;
        r.Creation = "2023-04-05 06:07:08";
        r.LastAccessed = lastAccessed;
        r.MinMax[1] = r.MinMax[3] = 10;
        r.MinMax[5] = 2;
        r.Vertices = 4;
        r.Faces = 2;
        r.Image = ModelInfImage(model);
        r.Lat = lat;
        r.Lon = lon;
        testsupport::writeTextFile(ModelInfFile(model).toStdString(),
                                   (QString(MODEL_INF_HEADER) + "\n" + ModelInfRow(r) + "\n").toStdString());
    }
};

}  // namespace

TEST_F(WindowCatalog, ExploreListsTheAnalysedModelsAndItsBrowserOpensAndDeletesThem) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    // The open demo site is analysed as the "inf" command does, with the view as its thumbnail.
    ASSERT_TRUE(WriteModelInf(QString::fromStdString(model)));
    analysedModel("north", "North", "2023-05-01 10:00:00", 32.1, 34.8);
    analysedModel("south", "South", "2023-06-01 10:00:00", 0, 0);
    // An information file of the older form names no model worth listing.
    testsupport::writeTextFile(dir.path("old/Old_INF.CSV"), "Project,Model\nOld,/gone/Old.obj\n");

    QString folderTitle;
    whenDialogOpens<QFileDialog>([this, &folderTitle](QFileDialog* chooser) {
        folderTitle = chooser->windowTitle();
        chooser->setDirectory(QString::fromStdString(dir.root()));
        static_cast<QDialog*>(chooser)->accept();
    });
    chooseMenuItem(form, "Explore3Dmodels1");
    EXPECT_EQ(folderTitle, "Browse Folders - Select the master drive/folder");
    auto* shown = form.findChild<TFormModels*>("FormModels");
    ASSERT_NE(shown, nullptr);
    TFormModels& browser = *shown;
    ASSERT_TRUE(browser.isVisible());
    EXPECT_EQ(browser.windowTitle(), "3  Models");
    QTableWidget* grid = browser.grid();
    ASSERT_EQ(grid->rowCount(), 3);
    ASSERT_EQ(grid->columnCount(), 9);
    EXPECT_EQ(grid->horizontalHeaderItem(5)->text(), "Model");
    // Sorted on the time of the last reading: the demo site, read just now, comes last.
    EXPECT_EQ(grid->item(0, 0)->text(), "North");
    EXPECT_EQ(grid->item(1, 0)->text(), "South");
    EXPECT_EQ(grid->item(2, 0)->text(), "DemoSite");
    EXPECT_FALSE(QFileInfo::exists(path("old/Old_INF.CSV")));

    ASSERT_TRUE(clickModelRow(browser, "DemoSite"));
    EXPECT_EQ(browser.selection().MODEL, QString::fromStdString(model));
    auto* mapButton = browser.findChild<QPushButton*>("ShowOnMap");
    EXPECT_EQ(mapButton->text(), "Show in Google map");
    EXPECT_FALSE(browser.findChild<QGraphicsView*>("GIS")->toolTip().isEmpty());
    screenshotOf(&browser, "model_browser");

    // The operator opens North in the window.
    ASSERT_TRUE(clickModelRow(browser, "North"));
    browser.findChild<QPushButton*>("OpenThe3DModelBtn")->click();
    EXPECT_EQ(modelSession().GlobalModelFileName, dir.path("north/North.obj"));
    EXPECT_TRUE(browser.isMinimized());

    // Deleting South asks with its folder; No keeps it, Yes takes the folder away.
    browser.showNormal();
    ASSERT_TRUE(clickModelRow(browser, "South"));
    EXPECT_EQ(mapButton->text(), "Add PRJ");
    dialogs.pushButton(2);
    browser.findChild<QPushButton*>("DeleteModelBtn")->click();
    const Question asked = dialogs.questions().back();
    EXPECT_EQ(asked.kind, Question::Ask);
    EXPECT_EQ(asked.title, "Delete model?");
    EXPECT_EQ(asked.text, path("south"));
    EXPECT_EQ(asked.buttons, QStringList({"Yes", "No"}));
    EXPECT_TRUE(QFileInfo::exists(path("south/South.obj")));
    EXPECT_EQ(grid->rowCount(), 3);

    dialogs.pushButton(1);
    browser.findChild<QPushButton*>("DeleteModelBtn")->click();
    EXPECT_FALSE(QFileInfo::exists(path("south")));
    EXPECT_TRUE(QFileInfo::exists(path("north/North.obj")));
    // The browser comes back over what is left, without asking for the folder again.
    EXPECT_TRUE(browser.isVisible());
    EXPECT_EQ(browser.windowTitle(), "2  Models");
    EXPECT_EQ(grid->rowCount(), 2);
    EXPECT_FALSE(clickModelRow(browser, "South"));
}

TEST_F(WindowCatalog, AssignLinksOfTheSelectedBillboardRewritesItsLineInHyperlinks) {
    const QString table = path("site/Measurements/Hyperlinks.csv");
    testsupport::writeTextFile(table.toStdString(), "Tank,/plans/tank.pdf\nANTENNA,/docs/old.pdf\n");
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, FLAT_ROOF_Z, 45);
    placeBillboard(form, surface, pixelOf(15, -5, FLAT_ROOF_Z), "Antenna");
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);

    pressToolButton(form, "SelectMeasuringBtn");
    const BILLBOARD_DATA placed = billboard(0);
    const double* center = frameState().OriginalobjectCenter;
    click(surface, pixelOf(placed.position[0] + center[0], placed.position[1] + center[1], placed.position[2] + center[2]),
          Qt::RightButton);
    auto* popup = form.findChild<QMenu*>("PopupMenu1");
    ASSERT_TRUE(popup->isVisible());
    QMenu* links = form.findChild<QMenu*>("Hyperlinks1");
    EXPECT_TRUE(links->menuAction()->isVisible());
    popup->hide();

    const QString plan = path("site/Roof plan.pdf");
    QStringList offered, kept;
    whenDialogOpens<TFormIO>([&](TFormIO* dialog) {
        offered = dialog->links();
        // The old link chosen again is not listed twice.
        dialogs.pushFile("/docs/old.pdf\n" + plan);
        dialog->findChild<QPushButton*>("AssociateFiles")->click();
        kept = dialog->links();
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    chooseMenuItem(form, "Assignlinks1");
    EXPECT_EQ(offered, QStringList{"/docs/old.pdf"});
    EXPECT_EQ(kept, QStringList({"/docs/old.pdf", plan}));
    EXPECT_EQ(readAll(table), ("Tank,/plans/tank.pdf\nAntenna,/docs/old.pdf,\"" + plan + "\"\n").toStdString());
}

TEST_F(WindowCatalog, RectifyByOncWritesTheRectifiedCopyOfTheOpenModel) {
    // Twice the size, turned a quarter left and moved to (1000, 2000, 10).
    const std::string small = dir.path("geo/Small.obj");
    testsupport::writeTextFile(small, "# small\nv 1.50 2.25 3.00\nv 0.00 0.00 0.00\nv 4.00 0.00 0.00\nvt 0 0\n"
                                      "f 1/1 2/1 3/1\n");
    testsupport::writeTextFile(dir.path("geo/Small.ONC"), "0 0 0 1000 2000 10\n10 0 0 1000 2020 10\n"
                                                          "0 10 0 980 2000 10\n");
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ASSERT_TRUE(waitForFirstFrame(form.viewPanel()->surface()));
    OpenThe3DModel(QString::fromStdString(small));
    ASSERT_EQ(modelSession().GlobalModelFileName, small);

    // Both files are proposed from the open model; the operator takes them.
    dialogs.pushFile(path("geo/Small.obj"));
    dialogs.pushFile(path("geo/Small.ONC"));
    QAction* rectify = geocodeItem(form, "Rectify by ONC");
    ASSERT_NE(rectify, nullptr);
    rectify->trigger();
    const std::vector<Question>& asked = dialogs.questions();
    ASSERT_GE(asked.size(), 3u);
    EXPECT_EQ(asked[asked.size() - 3].title, "Open the OBJ file (input)");
    EXPECT_EQ(asked[asked.size() - 3].value, "Small.obj");
    EXPECT_EQ(asked[asked.size() - 2].title, "Open the ONC file (input)");
    EXPECT_EQ(asked[asked.size() - 2].value, "Small.ONC");
    const QString rectified = path("geo/Small_rectified.OBJ");
    EXPECT_EQ(messages().back(), rectified + "\nCreated");
    EXPECT_EQ(readAll(rectified),
              "# Transformed using full 3D Procrustes (uniform scale + 3D rotation + translation)\n"
              "v 995.50 2003.00 16.00\nv 1000.00 2000.00 10.00\nv 1000.00 2008.00 10.00\n"
              "# small\nvt 0 0\nf 1/1 2/1 3/1\n");
    EXPECT_EQ(readAll(rectified + ".rectify.log").rfind("RectifyOBJByONC LOG (Full 3D Procrustes)\n", 0), 0u);
}

TEST_F(WindowCatalog, ExportGcpWritesTheMeasureLabelsInTheMapFrameBesideTheModel) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, FLAT_ROOF_Z, 45);
    const QString onc = path("site/DemoSite.ONC");

    QAction* exportGcp = geocodeItem(form, "Export GCP");
    ASSERT_NE(exportGcp, nullptr);
    EXPECT_EQ(exportGcp->statusTip(), "Export points to prepare data for model geocoding");

    // A text billboard alone is too few, and is no control point either.
    placeBillboard(form, surface, pixelOf(15, -5, FLAT_ROOF_Z), "Tank");
    exportGcp->trigger();
    EXPECT_EQ(messages().back(), "We need minimum 2 locations");
    EXPECT_FALSE(QFileInfo::exists(onc));

    measure(form, surface, pixelOf(10, -8, FLAT_ROOF_Z), pixelOf(20, -8, FLAT_ROOF_Z), "South");
    measure(form, surface, pixelOf(10, -2, FLAT_ROOF_Z), pixelOf(20, -2, FLAT_ROOF_Z), "North");
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 2);
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 3);
    testsupport::writeTextFile(dir.path("site/DemoSite_opk.txt"), "");

    dialogs.pushFile(onc);
    exportGcp->trigger();
    const Question& asked = dialogs.questions().back();
    EXPECT_EQ(asked.title, "Please select the transformation file (output)");
    EXPECT_EQ(asked.text, "Transformation  file(*.ONC)|*.ONC");
    EXPECT_EQ(asked.value, "DemoSite.ONC");
    EXPECT_EQ(asked.folder, path("site/"));
    // Each measure's label stands in the middle of its line.
    QString expected;
    for (int i = 0; i < 2; ++i) {
        MEASURE_DATA m{};
        ASSERT_TRUE(Get_MeasureList_Item(i, &m));
        expected += QString::asprintf("%19.5lf%19.5lf%19.5lf      \n", (m.vertex1[0] + m.vertex2[0]) / 2 + OC(0),
                                      (m.vertex1[1] + m.vertex2[1]) / 2 + OC(1),
                                      (m.vertex1[2] + m.vertex2[2]) / 2 + OC(2));
    }
    expected += path("site/DemoSite_opk.txt") + "\n";
    EXPECT_EQ(readAll(onc), expected.toStdString());
    const QImage view(path("site/DemoSite.bmp"));
    EXPECT_EQ(view.size(), form.viewPanel()->size());
}
