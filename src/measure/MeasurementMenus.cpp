#include "MeasurementMenus.h"

#include <QFileInfo>

#include "BillboardMenu.h"
#include "MeasureDisplay.h"
#include "MeasurementFiles.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/services/FileDialogs.h"
#include "app/session/MainFormState.h"
#include "scene/EngineSession.h"

namespace {

const QString MEASURE_FILTER = "Measurments file (*.MES)|*.mes";
const QString BILLBOARD_FILTER = "Billboard container file  (*.BLB)|*.blb";
const QString POLYGON_FILTER = "Polygon file (*.POL)|*.pol";
const QString IMPORT_FILTER = "Measurement files (*.MES;*.POL;*.BLB)|*.mes;*.pol;*.blb|All|*.*";

QString measurementsFolder() { return QString::fromStdString(modelSession().MEASUREMENTSFOLDER); }

// The name given, or the one chosen in the save dialog; "" on cancel.
QString nameToSave(const QString& given, const char* proposed, const QString& filter, const QString& title) {
    if (!given.isEmpty()) return given;
    QString file = measurementsFolder() + proposed;
    return OrvoSaveFile(file, QFileInfo(file).suffix(), filter, title, 1) ? file : QString();
}

QString reported(const QString& file, int written) {
    SSetTextAt3(3, written > 0 ? QString("%1 saved in %2").arg(written).arg(file) : QString("Nothing to save"));
    return written > 0 ? file : QString();
}

}  // namespace

QString DoSaveMeasurements(const QString& MM) {
    const QString file = nameToSave(MM, "T.MES", MEASURE_FILTER, "Open the measurements file (output)");
    return file.isEmpty() ? QString() : reported(file, ExportMeasureData(file, false));
}

QString DoSaveBillboards(const QString& MM) {
    const QString file = nameToSave(MM, "T.BLB", BILLBOARD_FILTER, "Define the iBillboard container file (output)");
    return file.isEmpty() ? QString() : reported(file, ExportBillboardData(file));
}

QString SavePolygonMnuClick() {
    const QString file = nameToSave({}, "T.POL", POLYGON_FILTER, "Open the polygon file (output)");
    return file.isEmpty() ? QString() : reported(file, ExportMeasureData(file, false));
}

void SaveAllClick() {
    DoSaveBillboards({});
    DoSaveMeasurements({});
    SavePolygonMnuClick();
}

int DoImportMeasurements(const QString& MMin) {
    const QStringList files = MMin.isEmpty() ? OrvoOpenFiles("Open the measurements file (input)", IMPORT_FILTER,
                                                             measurementsFolder())
                                             : QStringList{MMin};
    int read = 0;
    for (const QString& file : files) {
        const QString ext = QFileInfo(file).suffix().toLower();
        if (ext == "mes" || ext == "pol") {
            ImportMeasureData(file);
            ++read;
        } else if (ext == "blb") {
            ImportBillboardData(file);
            ++read;
        }
    }
    At3d_RenderOpenGLScene();
    return read;
}

bool ImportPolygon(const QString& file) {
    At3d_WriteFlag_LIBFLAG_NO_DRAW(1);
    const bool read = DoImportMeasurements(file) > 0;
    FullViewBtnClick();
    SetControlChecked("ShowMeasurementsAndBillboards", true);
    ShowMeasurementsAndBillboardsClick();
    At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
    const int last = At3d_MeasureList_Get_Count() - 1;
    MEASURE_DATA item{};
    if (last >= 0 && Get_MeasureList_Item(last, &item)) Display_Measure_Data(last, item);
    At3d_RenderOpenGLScene();
    return read;
}

int ImportPolygonMnuClick() {
    int read = 0;
    for (const QString& file : OrvoOpenFiles("Open the polygon file (input)", POLYGON_FILTER, measurementsFolder()))
        read += ImportPolygon(file) ? 1 : 0;
    return read;
}
