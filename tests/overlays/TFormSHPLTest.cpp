// The shape table window, drawn by the offscreen platform.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <QApplication>
#include <QTableWidget>
#include <filesystem>

#include "app/services/DialogService.h"
#include "overlays/VectorLayers.h"
#include "overlays/ui/TFormSHPL.h"
#include "support/TestSupport.h"

using namespace testsupport;

namespace {

QApplication& app() {
    static int argc = 1;
    static char name[] = "zv_overlays_TFormSHPLTest";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(argc, argv);
    return application;
}

}  // namespace

TEST(TFormSHPL, ListsEveryShapeWithItsUidAndFields) {
    app();
    ScratchDir dir;
    GDALAllRegister();
    GDALDataset* ds = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile")
                          ->Create(dir.path("p.shp").c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    OGRLayer* layer = ds->CreateLayer("p", nullptr, wkbPoint, nullptr);
    OGRFieldDefn label("label", OFTString);
    layer->CreateField(&label);
    for (const char* text : {"north", "south"}) {
        OGRFeature f(layer->GetLayerDefn());
        f.SetField("label", text);
        OGRPoint p(1, 2);
        f.SetGeometry(&p);
        layer->CreateFeature(&f);
    }
    GDALClose(ds);
    auto read = ReadVectorLayer(QString::fromStdString(dir.path("p.shp")));
    ASSERT_TRUE(read);
    TFormSHPL form;
    form.ShowLayer(*read);
    QTableWidget* t = form.table();
    ASSERT_EQ(t->rowCount(), 2);
    ASSERT_EQ(t->columnCount(), 2);
    EXPECT_EQ(t->horizontalHeaderItem(1)->text(), "label");
    EXPECT_EQ(t->item(1, 0)->text(), "2");
    EXPECT_EQ(t->item(1, 1)->text(), "south");
    EXPECT_TRUE(form.isWindow());
}

TEST(TFormSHPL, FindPointsToTheToolsBelowTheTable) {
    app();
    ScriptedDialogService dialogs;
    installDialogService(&dialogs);
    TFormSHPL form;
    form.Find1Click();
    form.FindNextClick();
    installDialogService(nullptr);
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].text, "Use the tools on the bottom of the page");
    EXPECT_EQ(dialogs.questions()[1].text, "Use the tools on the bottom of the page");
}
