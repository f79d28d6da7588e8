#include "ShiftModel.h"

#include <QFile>
#include <QFileInfo>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "ModelToolProgress.h"
#include "ObjFacePass.h"
#include "ObjPieces.h"
#include "app/model/CameraTools.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/services/DialogService.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoFopen.h"
#include "app/services/SessionPaths.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "geo/EnterLatLonAlt.h"
#include "geo/Frames.h"
#include "scene/engine/AtomicFile.h"

namespace {

constexpr int STATUS_EVERY = 5000;
constexpr int ROTATE_LINE_LIMIT = 256;
constexpr long long CANCEL_CHECK_EVERY = 4096;

void appendFixed(std::string& out, double value, int decimals) {
    char text[64];
    const auto [next, error] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    out.append(text, next);
}

void appendVertex(std::string& out, const char* word, const double v[3], int decimals) {
    out += word;
    for (int a = 0; a < 3; ++a) {
        out += ' ';
        appendFixed(out, v[a], decimals);
    }
    out += '\n';
}

bool isVertex(std::string_view piece) { return piece.size() > 1 && piece[0] == 'v' && piece[1] == ' '; }

// A pass of a line reader over the model into an atomic output; each piece goes
// to rewrite, which appends what the output gets. False when nothing was written.
template <class Rewrite>
bool rewriteModel(const std::string& input, const std::string& output, int limit, const std::string& firstLine,
                  long long totalLines, Rewrite rewrite) {
    std::FILE* in = ORVOfopen(QString::fromStdString(input), "rb");
    if (!in) return false;
    engine::AtomicFile out(output);
    out.write(firstLine);
    ObjPieceReader reader(in, limit);
    std::string_view piece;
    std::string text;
    long long line = 0;
    bool cancelled = false;
    while (reader.next(piece)) {
        ++line;
        if (line % STATUS_EVERY == 0) ReportModelToolProgress(QString::asprintf("Processing record %lld", line), line, totalLines);
        if (line % CANCEL_CHECK_EVERY == 0 && ModelToolCancelled()) {
            cancelled = true;
            break;
        }
        text.clear();
        rewrite(piece, text);
        out.write(text);
    }
    std::fclose(in);
    SSetTextAt3(0, "");
    if (cancelled) return false;
    if (out.commit()) return true;
    MyShowMessage("Cannot write " + QString::fromStdString(output) + "\n" + QString::fromStdString(out.error()));
    return false;
}

long long countLines(const std::string& path, int limit) {
    long long lines = 0, vertices = 0, faces = 0;
    CountObjPieces(path, limit, lines, vertices, faces);
    return lines;
}

}  // namespace

std::string ShiftedModelName(const std::string& model, const double shift[3]) {
    return WithExtension(model, QString::asprintf("_Shifted_%.0lf_%.0lf_%.0lf.OBJ", shift[0] * 100, shift[1] * 100,
                                                  shift[2] * 100)
                                    .toStdString());
}

std::string ShiftedRotatedModelName(const std::string& model, const double shift[3], int rotation) {
    return WithExtension(model, QString::asprintf("_Shifted_%.0lf_%.0lf_%.0lf_%d.OBJ", shift[0] * 100,
                                                  shift[1] * 100, shift[2] * 100, rotation)
                                    .toStdString());
}

bool ExportTheShiftedModel(const std::string& model, const std::string& OutOBJ_FILE) {
    const double* shift = frameState().ShiftXYZ;
    const bool written = rewriteModel(
        model, OutOBJ_FILE, OBJ_LINE_LIMIT, "Model shifted by Orvo Systems . .\n", countLines(model, OBJ_LINE_LIMIT),
        [shift](std::string_view piece, std::string& out) {
            if (piece.size() > 1 && piece[0] == 'v' && piece[1] == 'n') return;
            double v[3];
            if (isVertex(piece) && ReadObjVertex(piece, v[0], v[1], v[2])) {
                for (int a = 0; a < 3; ++a) v[a] += shift[a];
                appendVertex(out, "v", v, 2);
                return;
            }
            ObjFace face;
            if (ReadObjFace(piece, face))
                WriteObjFace(out, piece, face);
            else
                out.append(piece);
        });
    if (written) MyShowMessage(QString::fromStdString(OutOBJ_FILE) + "\nCreated");
    return written;
}

bool RotateModel(const std::string& OBJ, const std::string& OBJR, double Rot, double dx, double dy, double dz) {
    std::FILE* in = ORVOfopen(QString::fromStdString(OBJ), "rb");
    if (!in) return false;
    double sum[3] = {0, 0, 0};
    long long count = 0, lines = 0;
    {
        ObjPieceReader reader(in, ROTATE_LINE_LIMIT);
        std::string_view piece;
        double v[3];
        while (reader.next(piece)) {
            ++lines;
            if (!isVertex(piece) || !ReadObjVertex(piece, v[0], v[1], v[2])) continue;
            for (int a = 0; a < 3; ++a) sum[a] += v[a];
            ++count;
        }
        std::fclose(in);
    }
    const double center[3] = {count ? sum[0] / count : 0, count ? sum[1] / count : 0, count ? sum[2] / count : 0};
    const double angle = Rot * M_PI / 180;
    const double c = std::cos(angle), s = std::sin(angle);
    return rewriteModel(OBJ, OBJR, ROTATE_LINE_LIMIT, "", lines, [&](std::string_view piece, std::string& out) {
        double v[3];
        if (!isVertex(piece) || !ReadObjVertex(piece, v[0], v[1], v[2])) {
            out.append(piece);
            return;
        }
        const double tx = v[0] - center[0], ty = v[1] - center[1], tz = v[2] - center[2];
        const double turned[3] = {tx * c + ty * s + center[0] + dx, ty * c - tx * s + center[1] + dy,
                                  tz + center[2] + dz};
        appendVertex(out, "v", turned, 6);
    });
}

std::string Shiftthemodel1Click() {
    FrameState& frame = frameState();
    const std::string& model = modelSession().GlobalModelFileName;
    QString value = QString::asprintf("%.2lf %.2lf %.2lf", frame.ModelSHIFTX, frame.ModelSHIFTY, frame.ModelSHIFTZ);
    if (!MyInputQuery("Model shifting", "DX DY DZ (in meters)", value)) return "";
    double* shift = frame.ShiftXYZ;
    shift[0] = shift[1] = shift[2] = 0;
    std::sscanf(value.toUtf8().constData(), "%lf%lf%lf", &shift[0], &shift[1], &shift[2]);
    const std::string output = ShiftedModelName(model, shift);
    if (!ExportTheShiftedModel(model, output)) return "";
    CopyModelPrj(model, output);
    return output;
}

std::string ShiftRotatethemodel1Click() {
    const std::string& model = modelSession().GlobalModelFileName;
    if (QFileInfo(QString::fromStdString(model)).suffix().compare("obj", Qt::CaseInsensitive) != 0) {
        MyShowMessage("The model has to be OBJ");
        return "";
    }
    QString value = "0. 0. 0. 0.";
    float d[3] = {0, 0, 0};
    int rotation = 0;
    // A cancelled question turns and moves by nothing: the copy is still written.
    if (MyInputQuery("Shift (m) dx dy dz Rotate CW (degrees)", "Please define sfift and rotation", value))
        std::sscanf(value.toUtf8().constData(), "%f%f%f%d", &d[0], &d[1], &d[2], &rotation);
    const double shift[3] = {d[0], d[1], d[2]};
    const std::string output = ShiftedRotatedModelName(model, shift, rotation);
    if (!RotateModel(model, output, rotation, shift[0], shift[1], shift[2])) return "";
    CopyModelPrj(model, output);
    MyShowMessage("Model has been relocated");
    return output;
}

bool Findmodelshift1Click() {
    const TGIS_Point3D truePoint = EnterLatLonAlt();
    if (truePoint.X == 0 && truePoint.Y == 0) return false;
    const DispatchState& click = dispatchState();
    FrameState& frame = frameState();
    frame.ModelSHIFTX = truePoint.X - click.FromModel_X;
    frame.ModelSHIFTY = truePoint.Y - click.FromModel_Y;
    frame.ModelSHIFTZ = truePoint.Z - click.FromModel_Z;
    MyShowMessage(QString::asprintf("%.2lf %.2lf %.2lf", frame.ModelSHIFTX, frame.ModelSHIFTY, frame.ModelSHIFTZ));
    return true;
}

bool Restoreshifted1Click() {
    FileDialogRequest request;
    request.title = "Open the viewport file (input)";
    request.filter = "Viewport file (*.VPT)|*.vpt";
    request.folder = QString::fromStdString(modelSession().MEASUREMENTSFOLDER);
    QString chosen;
    int filter = 1;
    if (!dialogService().chooseFile(request, chosen, filter)) return false;
    if (chosen.contains("_Roaming") && ControlChecked("LookAtBtn")) {
        SetControlChecked("LookAtBtn", false);
        LookAtBtnClick();
    }
    QString value;
    if (!MyInputQuery("Set the shift", "Enter the shift (x y)", value)) return RestoreViewport(chosen.toStdString());
    double sx = 0, sy = 0;
    std::sscanf(value.toUtf8().constData(), "%lf%lf", &sx, &sy);
    QStringList lines = StringFromFile(chosen).split('\n');
    if (lines.size() < 2) return RestoreViewport(chosen.toStdString());
    double x = 0, y = 0, z = 0;
    std::sscanf(lines[1].toUtf8().constData(), "%lf%lf%lf", &x, &y, &z);
    lines[1] = QString::asprintf("%.2lf %.2lf %.2lf", x + sx, y + sy, z);
    while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    const QString shifted = QString::fromStdString(sessionPaths().ORVO_T) + "S.vpt";
    if (!StringToFile(lines.join('\n') + '\n', shifted)) return false;
    return RestoreViewport(shifted.toStdString());
}
