// The browser's logic (what a row means, the web map address, the history
// file for the 2D map, deleting and adding a PRJ), the billboards' links
// table, and the two forms on the offscreen platform.
#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

#include "CatalogFixture.h"
#include "catalog/BillboardLinks.h"
#include "catalog/ModelBrowser.h"
#include "catalog/ModelDiscovery.h"
#include "catalog/ui/TFormIO.h"
#include "catalog/ui/TFormModels.h"

using Kind = ScriptedDialogService::Question::Kind;

namespace {

const char* kTable =
    "Project,Created,LastAccessed,Faces,Comment,Model,Lat,Lon,East,North\n"
    "B,2023-02-01 00:00:00,2024-05-01 00:00:00,2,,/m/b/B.obj,0.5,0.4,500,600\n"
    "A,2022-01-01 00:00:00,2024-01-01 00:00:00,12,First  ,/m/a/A.obj,31.25,-34.5,178000,663000\n";

GridRows parse(const char* text) { return ParseCsvText(text); }

void ensureApplication() {
    if (QCoreApplication::instance()) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "zv-test";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
}

}  // namespace

TEST_F(CatalogTest, CatalogueRowGivesModelImageAndPosition) {
    const ModelSelection s = WorkBookGrid1SelectCell(parse(kTable), 2);
    EXPECT_EQ(s.SelectedRow, 2);
    EXPECT_EQ(s.MODEL, "/m/a/A.obj");
    EXPECT_EQ(s.IMAGE, "/m/a/A_inf.jpg");
    EXPECT_EQ(s.label, "/m/a/A.obj");
    EXPECT_DOUBLE_EQ(s.ModelLat, 31.25);
    EXPECT_DOUBLE_EQ(s.ModelLon, -34.5);
    EXPECT_DOUBLE_EQ(s.ModelEast, 178000);
    EXPECT_DOUBLE_EQ(s.ModelNorth, 663000);
    EXPECT_TRUE(s.showOnMapVisible);
    EXPECT_EQ(s.showOnMapCaption, "Show in Google map");
}

TEST_F(CatalogTest, PositionOfHalfAndFourTenthsCountsAsNone) {
    const ModelSelection s = WorkBookGrid1SelectCell(parse(kTable), 1);
    EXPECT_TRUE(s.showOnMapVisible);
    EXPECT_EQ(s.showOnMapCaption, "Add PRJ");
}

TEST_F(CatalogTest, UnanalyzedListRowHasNoPositionAndNoMapButton) {
    const ModelSelection s =
        WorkBookGrid1SelectCell(parse("Unanalyzed model\n/m/c/C.obj,2020-01-01 00:00:00,No PRJ\n"), 1);
    EXPECT_EQ(s.MODEL, "/m/c/C.obj");
    EXPECT_EQ(s.label, "/m/c/C.obj");
    EXPECT_FALSE(s.showOnMapVisible);
    EXPECT_EQ(s.ModelLat, 0);
    EXPECT_EQ(s.ModelLon, 0);
}

TEST_F(CatalogTest, ShowIn2DStaysHiddenEvenUnderA3dModelsFolderInsideTheExtent) {
    ORVOINI().writeString("Orvo", "Last Extent", "177000 179000 662000 664000");
    const ModelSelection s = WorkBookGrid1SelectCell(
        parse("P,C,L,F,Co,Model,Lat,Lon,East,North\nA,c,l,1,,/x/3dmodels/a/A.obj,31.25,34.5,178000,663000\n"), 1);
    EXPECT_FALSE(ModelUnder3dModelsFolder("/x/3dmodels/a/A.obj"));
    EXPECT_FALSE(s.showIn2DVisible);
}

TEST_F(CatalogTest, BrowserTableSortsDataRowsOnTheRequestedColumnBelowTheTitles) {
    const QString file = write("models.csv", kTable);
    const GridRows rows = LoadBrowserTable({"", file, 9, 1, true, false});
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0][0], "Project");
    EXPECT_EQ(rows[1][0], "A");
    EXPECT_EQ(rows[2][0], "B");
    EXPECT_EQ(LoadBrowserTable({"", file, 9, -1, true, false})[1][0], "B");
}

TEST_F(CatalogTest, WebMapAddressCarriesPositionZoomAndSatellite) {
    EXPECT_EQ(GoogleMapAddress(31.25, -34.5), "https://maps.google.com/maps?q=31.250000,-34.500000&z=15&t=k");
    ORVOINI().writeString(WEB_MAP_SECTION, WEB_MAP_KEY, "http://127.0.0.1:8080/map");
    EXPECT_EQ(GoogleMapAddress(1, 2), "http://127.0.0.1:8080/map?q=1.000000,2.000000&z=15&t=k");
}

TEST_F(CatalogTest, HistoryZoomLineIsReplacedAndTheLinesAfterItDropped) {
    EXPECT_EQ(RewriteHistoryZoom("VIEW 1\r\nLAYER a.shp\r\nZOOM 0 0 1 1\r\nLAYER b.shp\r\nEND\r\n", 178000.4, 663000.6),
              "VIEW 1\r\nLAYER a.shp\r\nZOOM 177800 662801 178200 663201\r\n");
    EXPECT_EQ(RewriteHistoryZoom("A\nB\n", 0, 0), "A\nB\n");
}

TEST_F(CatalogTest, ShowSolvaneWritesT2hsAndOpensIt) {
    EXPECT_TRUE(ShowSolvane(1000, 2000).isEmpty());
    EXPECT_EQ(messages(), QStringList{"Missing\n"});
    const QString history = write("last.2hs", "LAYER a\nZOOM 1 2 3 4\nTAIL\n");
    ORVOINI().writeString("Orvo", "Last History", history.toStdString());
    EXPECT_EQ(ShowSolvane(1000, 2000), orvoT("t.2hs"));
    EXPECT_EQ(testsupport::readTextFile(orvoT("t.2hs").toStdString()), "LAYER a\nZOOM 800 1800 1200 2200\n");
    EXPECT_EQ(questionsOf(Kind::Document), QStringList{orvoT("t.2hs")});
}

TEST_F(CatalogTest, DeletingAModelAsksWithItsFolderAndRemovesItWhole) {
    const QString model = write("site/a/A.obj", "v 0 0 0\n");
    write("site/a/Other.obj", "v 0 0 0\n");
    dialogs.pushButton(2);  // No
    EXPECT_FALSE(DeleteTheModel(model));
    EXPECT_TRUE(QFile::exists(model));
    dialogs.pushButton(1);  // Yes
    EXPECT_TRUE(DeleteTheModel(model));
    EXPECT_FALSE(QFileInfo::exists(path("site/a")));
    EXPECT_TRUE(QFileInfo::exists(path("site")));
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].title, "Delete model?");
    EXPECT_EQ(dialogs.questions()[0].text, path("site/a"));
}

TEST_F(CatalogTest, AddPrjCopiesTheChosenFileBesideTheModelAndOpensIt) {
    const QString model = write("site/a/A.obj", "v 0 0 0\n");
    const QString prj = write("other/x.prj", "PROJCS[\"x\"]");
    int opened = 0;
    catalogHooks().openModel = [&opened] { ++opened; };
    ModelSelection s;
    s.MODEL = model;
    dialogs.pushFile(prj);
    EXPECT_TRUE(ShowOnMapClick("Add PRJ", s));
    EXPECT_EQ(testsupport::readTextFile(dir.path("site/a/A.PRJ")), "PROJCS[\"x\"]");
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(startupState().GlobalARGVforDebug, model.toStdString());
    EXPECT_EQ(dialogs.questions()[0].title, "Open the PRJ file (input)");
    // A cancelled dialog opens nothing.
    dialogs.pushCancel();
    EXPECT_FALSE(ShowOnMapClick("Add PRJ", s));
    EXPECT_EQ(opened, 1);
}

TEST_F(CatalogTest, GoogleCaptionOpensTheWebMap) {
    QString asked;
    catalogHooks().openWebAddress = [&asked](const QString& address) { return asked = address, true; };
    ModelSelection s;
    s.ModelLat = 31.25;
    s.ModelLon = 34.5;
    EXPECT_TRUE(ShowOnMapClick("Show in Google map", s));
    EXPECT_EQ(asked, "https://maps.google.com/maps?q=31.250000,34.500000&z=15&t=k");
}

class Links : public CatalogTest {
protected:
    void SetUp() override {
        CatalogTest::SetUp();
        modelSession().MEASUREMENTSFOLDER = dir.path("site/Measurements/");
    }
    std::string table() const { return testsupport::readTextFile(dir.path("site/Measurements/Hyperlinks.csv")); }
};

TEST_F(Links, MissingTableListsNothing) { EXPECT_TRUE(PopulateListBox("Gate|FLAG1").isEmpty()); }

TEST_F(Links, SavedListReadsBackAndOtherBillboardsKeepTheirLines) {
    write("site/Measurements/Hyperlinks.csv", "Tower|X2,/d/t.pdf\nGATE|FLAG1,/old.txt\nGate|FLAG1,/older.txt\n");
    EXPECT_EQ(PopulateListBox("gate|flag1"), QStringList{"/old.txt"});
    ASSERT_TRUE(SaveListBoxPopulation("Gate|FLAG1", {"/d/a b.pdf", "/d/c,d.txt", "/d/e.jpg"}));
    EXPECT_EQ(table(), "Tower|X2,/d/t.pdf\nGate|FLAG1,\"/d/a b.pdf\",\"/d/c,d.txt\",/d/e.jpg\n");
    EXPECT_EQ(PopulateListBox("GATE|flag1"), (QStringList{"/d/a b.pdf", "/d/c,d.txt", "/d/e.jpg"}));
    EXPECT_EQ(PopulateListBox("Tower|X2"), QStringList{"/d/t.pdf"});
}

TEST_F(Links, EmptyListLeavesTheNameAlone) {
    ASSERT_TRUE(SaveListBoxPopulation("Gate|FLAG1", {"/a.txt"}));
    ASSERT_TRUE(SaveListBoxPopulation("Gate|FLAG1", {}));
    EXPECT_EQ(table(), "Gate|FLAG1\n");
    EXPECT_TRUE(PopulateListBox("Gate|FLAG1").isEmpty());
}

TEST_F(Links, MissingLinkedFileIsReportedNotOpened) {
    EXPECT_FALSE(OpenLinkedFile("/no/such.pdf"));
    EXPECT_EQ(messages(), QStringList{"/no/such.pdf\nNot found"});
    const QString there = write("there.pdf", "%PDF");
    EXPECT_TRUE(OpenLinkedFile(there));
    EXPECT_EQ(questionsOf(Kind::Document), QStringList{there});
}

TEST_F(Links, LinksFormAddsChosenFilesOnceAndRemovesSelectedOnes) {
    ensureApplication();
    TFormIO form;
    EXPECT_EQ(form.windowTitle(), "Associating links");
    for (const char* caption : {"Associate files", "Open selected files", "Delete selected files", "OK", "Cancel"}) {
        bool found = false;
        for (QAbstractButton* b : form.findChildren<QAbstractButton*>()) found = found || b->accessibleName() == caption;
        EXPECT_TRUE(found) << caption;
    }
    form.setLinks({"/a.txt"});
    dialogs.pushFile("/a.txt\n/b.txt\n/c.txt");
    form.AssociateFilesClick();
    EXPECT_EQ(form.links(), (QStringList{"/a.txt", "/b.txt", "/c.txt"}));
    form.listBox()->item(1)->setSelected(true);
    form.DeleteSelectedFilesClick();
    EXPECT_EQ(form.links(), (QStringList{"/a.txt", "/c.txt"}));
}

TEST_F(CatalogTest, BrowserFormFollowsTheSelectedRow) {
    ensureApplication();
    const QString file = write("models.csv", kTable);
    TFormModels form;
    form.showRequest({"2  Models", file, 9, 2, false, false});
    EXPECT_EQ(form.windowTitle(), "2  Models");
    EXPECT_EQ(form.grid()->columnCount(), 9);
    EXPECT_EQ(form.grid()->rowCount(), 2);
    EXPECT_EQ(form.grid()->item(0, 0)->text(), "A");  // sorted on the last access
    form.grid()->setCurrentCell(1, 0);
    EXPECT_EQ(form.selection().MODEL, "/m/b/B.obj");
    auto* map = form.findChild<QPushButton*>("ShowOnMap");
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->text(), "Add PRJ");
    EXPECT_EQ(map->accessibleName(), "Add PRJ");
    form.grid()->setCurrentCell(0, 0);
    EXPECT_EQ(map->text(), "Show in Google map");
    EXPECT_FALSE(form.findChild<QPushButton*>("ShowOpenTessmap")->isVisibleTo(&form));
    form.close();
}
