#include "RectifyConvert.h"

#include <QString>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "ModelToolProgress.h"
#include "RectifyText.h"
#include "app/services/OrvoDialogs.h"
#include "scene/engine/AtomicFile.h"

namespace {

// OBJ lines are read in pieces of this size; a longer line is copied piece
// by piece, so it passes unchanged.
constexpr int BUFFER = 1024;
constexpr long long CANCEL_EVERY = 4096;

void status(const QString& text, long long done = 0, long long total = 0) {
    ReportModelToolProgress(text, done, total);
}

double distance(const double* a, const double* b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

// Reads one piece; at its end the piece ends the line when it holds the line feed.
bool readPiece(std::FILE* in, char* buffer, bool& wholeLine) {
    if (!std::fgets(buffer, BUFFER, in)) return false;
    const std::size_t n = std::strlen(buffer);
    wholeLine = n > 0 && buffer[n - 1] == '\n';
    return true;
}

}  // namespace

bool ConvertOBJ(const std::string& OriginalOBJ, const std::string& ConvertedOBJ, const std::string& ONC) {
    status("Reading control points...");
    std::FILE* onc = std::fopen(ONC.c_str(), "rb");
    if (!onc) {
        MyShowMessage("Cannot open ONC file: " + QString::fromStdString(ONC));
        return false;
    }
    double local[3][3], world[3][3];
    for (int i = 0; i < 3; ++i) {
        char line[1024];
        const bool got = std::fgets(line, sizeof line, onc) != nullptr;
        if (!got || std::sscanf(line, "%lf %lf %lf %lf %lf %lf", &local[i][0], &local[i][1], &local[i][2],
                                &world[i][0], &world[i][1], &world[i][2]) != 6) {
            std::fclose(onc);
            MyShowMessage(QString("Error reading control point %1 from ONC file").arg(i + 1));
            return false;
        }
    }
    std::fclose(onc);

    status("Validating control points...");
    const double u[3] = {local[1][0] - local[0][0], local[1][1] - local[0][1], local[1][2] - local[0][2]};
    const double v[3] = {local[2][0] - local[0][0], local[2][1] - local[0][1], local[2][2] - local[0][2]};
    const double cross[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    if (std::sqrt(cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2]) < 1e-6)
        MyShowMessage("Warning: Control points are collinear!\nTransformation may be unreliable.");

    status("Calculating transformation parameters...");
    const double local1 = distance(local[0], local[1]), world1 = distance(world[0], world[1]);
    const double local2 = distance(local[0], local[2]), world2 = distance(world[0], world[2]);
    const double scale1 = local1 > 1e-9 ? world1 / local1 : 0;
    const double scale2 = local2 > 1e-9 ? world2 / local2 : 0;
    const double avgScale = (scale1 + scale2) / 2;
    const double difference = std::fabs(scale1 - scale2);

    QString analysis = "Transformation Analysis:\n\n";
    analysis += "Control Points Read: 3\n";
    analysis += QString::asprintf("Scale Factor 1: %.6f\n", scale1);
    analysis += QString::asprintf("Scale Factor 2: %.6f\n", scale2);
    analysis += QString::asprintf("Average Scale: %.6f\n", avgScale);
    analysis += QString::asprintf("Scale Difference: %.6f\n", difference);
    if (difference > 0.01) analysis += "WARNING: Scale factors differ significantly!\n";
    analysis += "\nContinue with transformation?";
    if (MyMessageBox(analysis, "Transformation Analysis", MB_YESNO | MB_ICONQUESTION) != IDYES) {
        status("Operation cancelled by user");
        return false;
    }

    status("Analyzing OBJ file structure...");
    std::FILE* in = std::fopen(OriginalOBJ.c_str(), "rb");
    if (!in) {
        MyShowMessage("Cannot open OBJ file: " + QString::fromStdString(OriginalOBJ));
        return false;
    }
    char buffer[BUFFER];
    long long totalVertices = 0, totalFaces = 0;
    bool atLineStart = true, wholeLine = true;
    while (readPiece(in, buffer, wholeLine)) {
        if (atLineStart && buffer[0] == 'v' && buffer[1] == ' ') ++totalVertices;
        if (atLineStart && buffer[0] == 'f' && buffer[1] == ' ') ++totalFaces;
        atLineStart = wholeLine;
    }
    // The count stays on the status line while the pass runs; nothing waits on it.
    status(QString("Found %1 vertices, %2 faces").arg(totalVertices).arg(totalFaces));

    engine::AtomicFile out(ConvertedOBJ);
    if (!out.ok()) {
        std::fclose(in);
        MyShowMessage("Cannot create output file: " + QString::fromStdString(ConvertedOBJ));
        return false;
    }

    status("Starting transformation...");
    double offset[3];
    for (int a = 0; a < 3; ++a) offset[a] = world[0][a] - avgScale * local[0][a];

    std::rewind(in);
    using Clock = std::chrono::steady_clock;
    auto lastStatus = Clock::now();
    long long vertices = 0, faces = 0, pieces = 0;
    atLineStart = true;
    while (readPiece(in, buffer, wholeLine)) {
        if (++pieces % CANCEL_EVERY == 0 && ModelToolCancelled()) {
            std::fclose(in);
            status("Operation cancelled by user");
            return false;
        }
        double x, y, z;
        if (atLineStart && buffer[0] == 'v' && buffer[1] == ' ' && wholeLine &&
            std::sscanf(buffer, "v %lf %lf %lf", &x, &y, &z) == 3) {
            out.write(Format("v %.2f %.2f %.2f\n", x * avgScale + offset[0], y * avgScale + offset[1],
                             z * avgScale + offset[2]));
            ++vertices;
        } else {
            if (atLineStart && buffer[0] == 'f' && buffer[1] == ' ') {
                if (faces == 0) status("Vertices completed. Processing faces...");
                ++faces;
            }
            out.write(buffer, std::strlen(buffer));
        }
        atLineStart = wholeLine;
        // A status line at most every two seconds.
        if (Clock::now() - lastStatus >= std::chrono::seconds(2)) {
            lastStatus = Clock::now();
            if (faces == 0)
                status(QString("Processing vertices: %1 / %2").arg(vertices).arg(totalVertices), vertices,
                       totalVertices);
            else
                status(QString("Processing faces: %1 / %2").arg(faces).arg(totalFaces), faces, totalFaces);
        }
    }
    const bool readFailed = std::ferror(in) != 0;
    std::fclose(in);
    if (readFailed || !out.commit()) {
        MyShowMessage("Cannot create output file: " + QString::fromStdString(ConvertedOBJ));
        return false;
    }

    status(QString("Transformation completed! %1 vertices, %2 faces processed").arg(vertices).arg(faces));
    MyShowMessage(QString("Transformation completed!\nVertices: %1\nFaces: %2").arg(vertices).arg(faces));
    return true;
}
