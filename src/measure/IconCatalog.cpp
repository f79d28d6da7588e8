#include "IconCatalog.h"

#include <QFileInfo>

#include "BillboardState.h"
#include "app/services/DialogService.h"
#include "app/services/ToolkitColor.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "scene/engine_interface.h"

namespace {

QString iconName(const QString& path) { return QFileInfo(path).completeBaseName().toUpper(); }

// The icon name inside an id "text|NAME<clock>": the clock's digits come off.
QString iconNameOfId(const QString& id) {
    const qsizetype bar = id.indexOf('|');
    if (bar < 0) return {};
    QString name = id.mid(bar + 1);
    while (!name.isEmpty() && name.back().isDigit()) name.chop(1);
    return name;
}

}  // namespace

QStringList SetSatamim() {
    QStringList names;
    for (const QString& path : startupState().SatamsList) names << iconName(path);
    return names;
}

bool IM01Click(int index) {
    const QStringList& icons = startupState().SatamsList;
    if (index < 0 || index >= icons.size()) return false;
    QImage picture(icons[index]);
    if (picture.isNull()) return false;
    IconFormValues& form = billboardState().icons;
    form.SelectedImage = picture;
    form.name = iconName(icons[index]);
    form.sizeNumber = form.name.endsWith("_S") ? 100 : form.name.endsWith("_L") ? 500 : 300;
    return true;
}

QImage RecolourIcon(const QImage& icon, int color) {
    QImage out = icon.convertToFormat(QImage::Format_RGB32);
    const QRgb paint = QColorFromToolkit(color).rgb();
    for (int y = 0; y < out.height(); ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < out.width(); ++x)
            if ((row[x] & 0xFFFFFF) != 0xFFFFFF) row[x] = paint;
    }
    return out;
}

bool ChangeColorBtnClick() {
    int color = viewerSettings().SphereColor;
    if (!dialogService().chooseColor("Change Color", color)) return false;
    viewerSettings().SphereColor = color;
    IconFormValues& form = billboardState().icons;
    if (!form.SelectedImage.isNull()) form.SelectedImage = RecolourIcon(form.SelectedImage, color);
    return true;
}

QStringList SetActiveSatamim() {
    QStringList used;
    const int count = At3d_Measure_Billboard_Get_Count();
    for (int i = 0; i < count; ++i) {
        char id[AT3D_NAME_SIZE] = {};
        if (!At3d_Measure_Billboard_Get_ID(i, id)) continue;
        const QString name = iconNameOfId(QString::fromUtf8(id));
        if (!name.isEmpty() && !used.contains(name)) used << name;
    }
    return used;
}

QString GetImageFromBillboard(const QString& Name) {
    const QString name = iconNameOfId(Name);
    if (name.isEmpty()) return {};
    for (const QString& path : startupState().SatamsList)
        if (iconName(path) == name) return path;
    return {};
}
