#include "SolkManual.h"

#include <QFileInfo>

#include "ClimateText.h"
#include "ReportHtml.h"
#include "SolkManualPage.h"
#include "app/services/DialogService.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SunGlobalLog.h"

bool WriteSOLK_Manual(const std::string& output, const ManualPictures& pictures) {
    ManualImages images;
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
        images[static_cast<std::size_t>(i)] = ConvertImageToBase64(pictures[static_cast<std::size_t>(i)].toStdString());
    PrintSunLog("\n=== FINAL SUMMARY ===\n");
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
        PrintSunLog("%s: %s\n", ManualPictureName(i), images[static_cast<std::size_t>(i)].empty() ? "placeholder" : "embedded");
    if (!WriteTextFileAtomically(output, SolkManualPage(images))) return false;
    PrintSunLog("SOLK Manual created successfully: %s\n", output.c_str());
    return true;
}

std::string CreateSOLK_Manual() {
    ManualPictures pictures = LoadSelections();
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
        PrintSunLog("%s: %s\n", ManualPictureKey(i), pictures[static_cast<std::size_t>(i)].toUtf8().constData());
    const QFileInfo panels(pictures[MANUAL_PANELS]);
    if (panels.exists())
        PrintSunLog("Panels image: %lld bytes, %s\n", static_cast<long long>(panels.size()),
                    panels.lastModified().toString("yyyy-MM-dd hh:mm:ss").toUtf8().constData());
    for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i) {
        QString& picture = pictures[static_cast<std::size_t>(i)];
        if (!picture.isEmpty()) continue;
        const QString folder = i == MANUAL_MODEL ? QString() : QFileInfo(pictures[MANUAL_MODEL]).absolutePath();
        if (!OrvoOpenFile(picture, "JPG", "Image file (*.JPG)|*.jpg", ManualPicturePrompt(i), folder)) return {};
    }
    SaveSelections(pictures);
    const std::string output = (QFileInfo(pictures[MANUAL_MODEL]).absolutePath() + "/SOLK_Manual.html").toStdString();
    if (!WriteSOLK_Manual(output, pictures)) {
        MyShowMessage("Failed to create HTML file");
        return {};
    }
    return output;
}

void CreateManualMnuClick() {
    const std::string page = CreateSOLK_Manual();
    if (!page.empty()) dialogService().openDocument(QString::fromStdString(page));
}
