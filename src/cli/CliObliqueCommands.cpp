// oblique, oblique-visible and pic2world: the photographs of a model at a
// command line. The model's open finds its catalogue as the window's does,
// and a point given here takes the place of the Alt or Ctrl click.
#include <QDir>
#include <QFileInfo>
#include <cmath>
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelPhotographs.h"
#include "app/model/ModelSession.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "oblique/ObliqueCatalogue.h"
#include "oblique/ObliqueGeometry.h"
#include "oblique/ObliqueLookup.h"
#include "oblique/ObliqueOpen.h"
#include "oblique/ObliqueRecords.h"

namespace {

constexpr const char* kObliqueUsage = "zorvex64-cli oblique MODEL E N Z [--view-azimuth A]";
constexpr const char* kVisibleUsage = "zorvex64-cli oblique-visible MODEL E N Z";
constexpr const char* kPic2WorldUsage = "zorvex64-cli pic2world MODEL PHOTO PX PY";

// Opens the model and runs the open's photograph search; false, with the
// reason on stderr, when the model can't be opened or has no photographs.
bool openWithPhotographs(const std::string& path) {
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(path, opened)) return false;
    InstallObliqueSearch();
    FindModelPhotographs(modelSession().GlobalModelFileName);
    resetModelPhotoHooks();
    if (modelSession().KamaOblique > 0 || modelSession().KamaOPK > 0) return true;
    std::fprintf(stderr, "error: the model has no oblique photographs\n");
    return false;
}

// A picture below the model's folder by its path from there, any other by its own.
QString shownPath(const QString& picture) {
    const QString folder = QString::fromStdString(ModelFolder());
    return picture.startsWith(folder) ? picture.mid(folder.size()) : picture;
}

int CliOblique(const std::vector<std::string>& args) {
    std::vector<std::string> positional;
    double viewAzimuth = 0;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--view-azimuth") {
            if (i + 1 >= args.size() || !ParseCliNumber(args[i + 1], viewAzimuth))
                return CliUsageError("--view-azimuth needs an angle in degrees", kObliqueUsage);
            ++i;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 4) return CliUsageError("oblique takes a model and a map point E N Z", kObliqueUsage);
    double p[3];
    int error = 0;
    if (!ParseCliNumbers(positional, 1, 3, p, kObliqueUsage, error)) return error;

    const CliCommandScope scope;
    if (!openWithPhotographs(positional[0])) return CLI_FAILED;
    // The view's azimuth, which the window takes from its camera.
    cameraState().cameraZAngle = viewAzimuth;
    SSetTextAt3(2, "");
    StretchOblique(TGIS_Point3D{p[0], p[1], p[2], 0});

    const ObliqueStore& store = obliqueStore();
    std::printf("%s\n", mainFormState().statusTexts[2].toUtf8().constData());
    const TGIS_Point3D& at = store.ForOBLIpoint;
    for (int i = 0; i < store.relevants; ++i) {
        const OBLIQUE& O = store.OOO[i];
        const QByteArray file = shownPath(O.Proj).toUtf8();
        // A photograph of the OPK list has no matrix: only its camera's plan distance is known.
        if (O.fpc < 0) {
            std::printf("%d %s - - %.2f %d %d\n", i + 1, file.constData(), -O.fpc, O.Azimuth, O.Incl);
            continue;
        }
        double px, py;
        Ob_World2Pic(at.X, at.Y, at.Z, O, px, py);
        const double pxc = (O.Xmin + O.Xmax) / 2.0, pyc = (O.Ymin + O.Ymax) / 2.0;
        const int distance = static_cast<int>(std::hypot(px - pxc, py - pyc));
        std::printf("%d %s %.1f %.1f %d %d %d\n", i + 1, file.constData(), px, py, distance, O.Azimuth, O.Incl);
    }
    return CLI_OK;
}

int CliObliqueVisible(const std::vector<std::string>& args) {
    if (args.size() != 4) return CliUsageError("oblique-visible takes a model and a map point E N Z", kVisibleUsage);
    double p[3];
    int error = 0;
    if (!ParseCliNumbers(args, 1, 3, p, kVisibleUsage, error)) return error;
    const CliCommandScope scope;
    if (!openWithPhotographs(args[0])) return CLI_FAILED;
    for (const QString& line : CountRelevantObliques(TGIS_Point3D{p[0], p[1], p[2], 0}))
        std::printf("%s\n", line.toUtf8().constData());
    return CLI_OK;
}

int CliPic2World(const std::vector<std::string>& args) {
    if (args.size() != 4) return CliUsageError("pic2world takes a model, a photograph and a pixel PX PY", kPic2WorldUsage);
    double pixel[2];
    int error = 0;
    if (!ParseCliNumbers(args, 2, 2, pixel, kPic2WorldUsage, error)) return error;
    const CliCommandScope scope;
    if (!openWithPhotographs(args[0])) return CLI_FAILED;

    // The photograph by its file name, or by its path.
    const QString photo = QString::fromStdString(args[1]);
    const QString photoPath = QFileInfo(photo).absoluteFilePath();
    for (int I = 0; I < modelSession().KamaOblique; ++I) {
        const OBLIQUE O = O8Get(I);
        if (O.Proj.isEmpty()) continue;
        if (QFileInfo(O.Proj).fileName() != photo && QFileInfo(O.Proj).absoluteFilePath() != photoPath) continue;
        double wx, wy, wz;
        if (Pic2World(pixel[0], pixel[1], O, wx, wy, wz) == 0)
            std::printf("no hit\n");
        else
            std::printf("%.3f %.3f %.3f\n", wx, wy, wz);
        return CLI_OK;
    }
    std::fprintf(stderr, "error: no photograph %s in the model's catalogue\n", args[1].c_str());
    return CLI_FAILED;
}

}  // namespace

ZV_CLI_COMMAND("oblique", "MODEL E N Z [--view-azimuth A]", CliOblique);
ZV_CLI_COMMAND("oblique-visible", "MODEL E N Z", CliObliqueVisible);
ZV_CLI_COMMAND("pic2world", "MODEL PHOTO PX PY", CliPic2World);
