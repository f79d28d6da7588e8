#include "RenderModeMenu.h"

#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>
#include <algorithm>

#include "LayerTable.h"
#include "ModelSession.h"
#include "app/services/RunLog.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "scene/engine_interface.h"

namespace {

int luminance(QRgb pixel) { return (qRed(pixel) * 299 + qGreen(pixel) * 587 + qBlue(pixel) * 114) / 1000; }

QRgb grayPixel(QRgb pixel) {
    const int y = luminance(pixel);
    return qRgb(y, y, y);
}

// The classic sepia matrix, clipped at white.
QRgb sepiaPixel(QRgb pixel) {
    const double r = qRed(pixel), g = qGreen(pixel), b = qBlue(pixel);
    const auto clip = [](double v) { return std::min(255, static_cast<int>(v + 0.5)); };
    return qRgb(clip(0.393 * r + 0.769 * g + 0.189 * b), clip(0.349 * r + 0.686 * g + 0.168 * b),
                clip(0.272 * r + 0.534 * g + 0.131 * b));
}

bool convertTexture(const std::string& source, const std::string& target, QRgb (*convert)(QRgb)) {
    if (QFileInfo::exists(QString::fromStdString(target))) return true;
    QImage image(QString::fromStdString(source));
    if (image.isNull()) {
        PrintRunLog("Texture %s can't be read\n", source.c_str());
        return false;
    }
    image = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) line[x] = convert(line[x]);
    }
    QSaveFile file(QString::fromStdString(target));
    if (!file.open(QIODevice::WriteOnly)) return false;
    QImageWriter writer(&file, "jpg");
    writer.setQuality(RENDER_MODE_JPEG_QUALITY);
    if (!writer.write(image)) return false;
    return file.commit();
}

void showTexture(const std::string& path) {
    if (layerTable().NL == 0 || path.empty()) return;
    At3d_SetTextureName(layerTable().layerName[0], path.c_str());
    At3d_RenderOpenGLScene();
}

void convertAndShow(const std::string& target, QRgb (*convert)(QRgb)) {
    const ModelSession& model = modelSession();
    if (model.JPG.empty()) return;
    SetBusyCursor(true);
    if (convertTexture(model.JPG, target, convert)) showTexture(target);
    SetBusyCursor(false);
}

void toggleFlag(int flag, const char* control) {
    const bool on = !At3d_ReadFlag(flag);
    At3d_WriteFlag(flag, on ? 1 : 0);
    SetControlChecked(control, on);
    At3d_RenderOpenGLScene();
}

}  // namespace

bool MakeGrayTexture(const std::string& source, const std::string& target) {
    return convertTexture(source, target, grayPixel);
}

bool MakeSepiaTexture(const std::string& source, const std::string& target) {
    return convertTexture(source, target, sepiaPixel);
}

void Normal1Click() {
    SetBusyCursor(true);
    showTexture(modelSession().JPG);
    SetBusyCursor(false);
}

void Gray1Click() { convertAndShow(modelSession().GRAY, grayPixel); }
void Sepia1Click() { convertAndShow(modelSession().SEPIA, sepiaPixel); }

void Usetexture1Click() {
    ViewerSettings& settings = viewerSettings();
    settings.useTexturesFlag = settings.useTexturesFlag ? 0 : 1;
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, settings.useTexturesFlag);
    SetControlChecked("Usetexture1", settings.useTexturesFlag != 0);
    At3d_RenderOpenGLScene();
}

void DepthFlagBtnClick() {
    RubberbandState& r = rubberbandState();
    r.depthTestFlag_ML = r.depthTestFlag_ML ? 0 : 1;
    At3d_WriteFlag(LIBFLAG_MEASURE_DEPTH, r.depthTestFlag_ML);
    SetControlChecked("DepthFlagBtn", r.depthTestFlag_ML != 0);
    At3d_RenderOpenGLScene();
}

void BackfaceCullingBtnClick() { toggleFlag(LIBFLAG_BACKFACE_CULL, "BackfaceCullingBtn"); }

void Highaccuracy1Click() {
    toggleFlag(LIBFLAG_INTEGRATED_GPU, "Highaccuracy1");
    SetHelpLabelColor(ControlChecked("Highaccuracy1") ? HIGH_ACCURACY_COLOR : mainFormState().OriginalLabelForHelpColor);
}
