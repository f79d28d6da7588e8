#include "OncFiles.h"

#include <QStringList>

#include "RectifyText.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/MainFormState.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine/AtomicFile.h"
#include "scene/engine_interface.h"

std::string ExportONC() {
    const int count = At3d_Measure_Billboard_Get_Count();
    if (count < 2) {
        MyShowMessage("We need minimum 2 locations");
        return {};
    }
    QString file = QString::fromStdString(modelSession().GlobalONCFileName);
    if (!OrvoSaveFile(file, "ONC", "Transformation  file(*.ONC)|*.ONC", "Please select the transformation file (output)",
                      1))
        return {};
    const std::string path = file.toStdString();

    std::string text;
    BILLBOARD_DATA data{};
    for (int i = 0; i < count; ++i) {
        // Only the labels of measuring points mark control points.
        if (!Get_Billboard_Data(i, &data) || data.alphaFlag != 2) continue;
        AppendFormat(text, "%19.5lf%19.5lf%19.5lf      \n", data.position[0] + OC(0), data.position[1] + OC(1),
                     data.position[2] + OC(2));
    }
    delete[] data.imagePtr;
    const QStringList opk = Find_Files(QString::fromStdString(ModelFolder()) + "*_opk.txt", false);
    if (!opk.isEmpty()) text += opk.first().toStdString() + "\n";

    std::string why;
    if (!engine::WriteFileAtomically(path, text, &why)) {
        DisplayErrorText("Cannot write " + file, QString::fromStdString(why));
        return {};
    }
    At3d_Save_Thumbnail_Image(WithExtension(path, ".bmp").c_str(), mainFormHost().viewPanelWidth(),
                              mainFormHost().viewPanelHeight());
    return path;
}

QString OncHelpText() {
    return "To create an ONC rectification file:\n"
           "1.  Ensure your 3D model is open in Zorvex64 and the orthophoto in Tessmap.\n"
           "2.  For each of 3 coordinate pairs:\n"
           "    a. In Zorvex64, select a point and Shift+Click.\n"
           "    b. In Tessmap, select the matching point, place the mouse there, press F9, and choose Full format.\n"
           "3.  After the third pair, an ONC file (named after your model) will be automatically created for "
           "rectification.";
}
