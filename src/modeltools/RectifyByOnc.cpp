#include "RectifyByOnc.h"

#include <QString>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "ModelToolProgress.h"
#include "RectifyText.h"
#include "scene/engine/AtomicFile.h"

namespace {

// Longer lines are cut: the rest of such a line is neither read nor written.
constexpr std::size_t LINE_LIMIT = 4095;
// Lines between two status lines (and two looks at the Cancel button).
constexpr long long STATUS_EVERY = 65536;

// One OBJ line as a C string of at most LINE_LIMIT characters.
struct LineCopy {
    char text[LINE_LIMIT + 1];
    std::size_t size = 0;
    void set(std::string_view line) {
        size = line.size() < LINE_LIMIT ? line.size() : LINE_LIMIT;
        std::memcpy(text, line.data(), size);
        text[size] = '\0';
    }
};

// sscanf(text, "v %lf %lf %lf") == 3: the line must open with the letter itself.
bool scanVertex(const char* text, double& x, double& y, double& z) {
    if (text[0] != 'v') return false;
    const char* p = text + 1;
    double* out[3] = {&x, &y, &z};
    for (double* value : out) {
        char* end = nullptr;
        *value = std::strtod(p, &end);
        if (end == p) return false;
        p = end;
    }
    return true;
}

// Digits after the point of a number as written, 0 without a point, at most 9.
int decimalsOf(std::string_view word) {
    const std::size_t dot = word.find('.');
    if (dot == std::string_view::npos) return 0;
    int digits = 0;
    for (std::size_t i = dot + 1; i < word.size() && word[i] >= '0' && word[i] <= '9'; ++i) ++digits;
    return digits > 9 ? 9 : digits;
}

// The largest count of decimals among the three coordinates of a vertex line.
int vertexDecimals(std::string_view line) {
    std::string_view rest = SkipLeadingBlanks(line).substr(1);
    int most = 0;
    for (int i = 0; i < 3; ++i) {
        rest = SkipLeadingBlanks(rest);
        std::size_t end = 0;
        while (end < rest.size() && rest[end] != ' ' && rest[end] != '\t') ++end;
        const int d = decimalsOf(rest.substr(0, end));
        if (d > most) most = d;
        rest = rest.substr(end);
    }
    return most;
}

struct Transform {
    double s, r11, r12, r21, r22, tx, ty, tz;
    void apply(double x, double y, double z, double& X, double& Y, double& Z) const {
        X = s * (r11 * x + r12 * y) + tx;
        Y = s * (r21 * x + r22 * y) + ty;
        Z = s * z + tz;
    }
};

void progress(const char* what, std::size_t done, std::size_t total) {
    ReportModelToolProgress(QString::asprintf("Rectify by ONC: %s %d%%", what,
                                              total ? static_cast<int>(100.0 * double(done) / double(total)) : 100),
                            static_cast<long long>(done), static_cast<long long>(total));
}

}  // namespace

std::string RectifyLogPath(const std::string& OBJOUT) { return OBJOUT + ".rectify.log"; }

RectifyResult RectifyOBJByONC(const std::string& OBJIN, const std::string& OBJOUT, const std::string& ONCFile,
                              double Radius) {
    RectifyResult result;
    // The log is gathered here and put in place whole at each stop. A run
    // the operator cancels writes neither file, so an earlier output and its
    // log stay together as they were.
    std::string log;
    auto finish = [&](const char* error) {
        if (error) {
            log += error;
            result.error.assign(error, std::strlen(error) - 1);
        }
        engine::WriteFileAtomically(RectifyLogPath(OBJOUT), log, nullptr);
        return result;
    };
    auto cancelled = [&]() {
        result.cancelled = true;
        return result;
    };

    AppendFormat(log, "RectifyOBJByONC LOG (Full 3D Procrustes)\nOBJIN=%s\nOBJOUT=%s\nONC=%s\nRadius=%.6f\n\n",
                 OBJIN.c_str(), OBJOUT.c_str(), ONCFile.c_str(), Radius);
    std::string onc;
    if (!ReadWholeFile(ONCFile, onc)) return finish("ERROR: cannot load ONC\n");
    log += "ONC file (raw lines):\n";
    std::vector<std::array<double, 6>> pairs;
    {
        TextLines lines(onc);
        std::string_view line;
        while (lines.next(line)) {
            log += "  ";
            log.append(line);
            log += '\n';
            const std::string_view rest = SkipLeadingBlanks(line);
            if (rest.empty() || rest[0] == '#') continue;
            const std::string text(line);
            std::array<double, 6> p{};
            if (std::sscanf(text.c_str(), "%lf %lf %lf %lf %lf %lf", &p[0], &p[1], &p[2], &p[3], &p[4], &p[5]) == 6)
                pairs.push_back(p);
        }
    }
    const int n = static_cast<int>(pairs.size());
    if (n < 3) {
        const std::string error = Format("ERROR: need >=3 valid pairs, got %d\n", n);
        return finish(error.c_str());
    }

    log += "=== CONSTRAINED 3D TRANSFORMATION ===\n"
           "For flat terrain with small buildings: preserve vertical Z-axis\n"
           "XY: 2D Procrustes (scale + rotation + translation)\n"
           "Z:  Uniform scaling only (preserves vertical direction)\n";
    AppendFormat(log, "Control points: %d\n\n", n);

    // Step 1: the plane.
    log += "Step 1: 2D Procrustes transformation for XY plane\n";
    double cLx = 0, cLy = 0, cLz = 0, cRx = 0, cRy = 0, cRz = 0;
    for (const auto& p : pairs) {
        cLx += p[0], cLy += p[1], cLz += p[2];
        cRx += p[3], cRy += p[4], cRz += p[5];
    }
    cLx /= n, cLy /= n, cLz /= n, cRx /= n, cRy /= n, cRz /= n;
    double aCov = 0, bCov = 0, L2 = 0;
    for (const auto& p : pairs) {
        const double xL = p[0] - cLx, yL = p[1] - cLy, xR = p[3] - cRx, yR = p[4] - cRy;
        aCov += xL * xR + yL * yR;
        bCov += xL * yR - yL * xR;
        L2 += xL * xL + yL * yL;
    }
    if (L2 <= 1e-15) return finish("ERROR: degenerate local XY spread\n");
    const double num = std::sqrt(aCov * aCov + bCov * bCov);
    if (num <= 1e-15) return finish("ERROR: degenerate XY covariance\n");

    RectifyFit& fit = result.fit;
    fit.pairs = n;
    fit.r11 = aCov / num;
    fit.r12 = -bCov / num;
    fit.r21 = bCov / num;
    fit.r22 = aCov / num;
    fit.scale = num / L2;
    fit.tx = cRx - fit.scale * (fit.r11 * cLx + fit.r12 * cLy);
    fit.ty = cRy - fit.scale * (fit.r21 * cLx + fit.r22 * cLy);
    fit.rotationDegrees = std::atan2(fit.r21, fit.r11) * 180 / 3.141592654;
    fit.cRx = cRx;
    fit.cRy = cRy;
    const double s = fit.scale;

    log += "  XY Procrustes parameters:\n";
    AppendFormat(log, "    Scale: %.9f\n", s);
    AppendFormat(log, "    Rotation: %.6f degrees\n", fit.rotationDegrees);
    AppendFormat(log, "    Translation: (%.6f, %.6f)\n", fit.tx, fit.ty);
    AppendFormat(log, "    Rotation matrix: [%.6f %.6f; %.6f %.6f]\n", fit.r11, fit.r12, fit.r21, fit.r22);
    double sumXY = 0;
    for (int i = 0; i < n; ++i) {
        const auto& p = pairs[i];
        const double px = s * (fit.r11 * p[0] + fit.r12 * p[1]) + fit.tx;
        const double py = s * (fit.r21 * p[0] + fit.r22 * p[1]) + fit.ty;
        const double e = std::hypot(px - p[3], py - p[4]);
        sumXY += e * e;
        AppendFormat(log, "    Point %d: Local(%.3f,%.3f) ? Pred(%.3f,%.3f) vs Target(%.3f,%.3f) Error=%.3f\n", i + 1,
                     p[0], p[1], px, py, p[3], p[4], e);
    }
    AppendFormat(log, "    XY RMS Error: %.6f meters\n", std::sqrt(sumXY / n));

    // Step 2: the vertical keeps its direction and takes the plane's scale.
    log += "\nStep 2: Z transformation (uniform scaling, preserves vertical)\n";
    const double zScale = s;
    fit.tz = cRz - zScale * cLz;
    AppendFormat(log, "  Z centroids: Local %.6f ? World %.6f\n", cLz, cRz);
    AppendFormat(log, "  Z scale: %.9f (same as XY)\n", zScale);
    AppendFormat(log, "  Z offset: %.6f - %.9f * %.6f = %.6f\n", cRz, zScale, cLz, fit.tz);
    AppendFormat(log, "  Z formula: Z' = %.9f * z + %.6f\n", zScale, fit.tz);
    log += "  Z transformation verification:\n";
    double sumZ = 0;
    for (int i = 0; i < n; ++i) {
        const auto& p = pairs[i];
        const double pz = zScale * p[2] + fit.tz;
        const double e = std::fabs(pz - p[5]);
        sumZ += e * e;
        AppendFormat(log, "    Point %d: Local_Z=%.3f ? Pred_Z=%.3f vs Target_Z=%.3f Error=%.3f\n", i + 1, p[2], pz,
                     p[5], e);
    }
    AppendFormat(log, "    Z RMS Error: %.6f meters\n", std::sqrt(sumZ / n));

    // Step 3: the two together.
    log += "\nStep 3: Final constrained 3D transformation\n";
    log += "  Rotation matrix (XY rotation + Z preserved):\n";
    AppendFormat(log, "    [%10.6f %10.6f %10.6f]\n", fit.r11, fit.r12, 0.0);
    AppendFormat(log, "    [%10.6f %10.6f %10.6f]\n", fit.r21, fit.r22, 0.0);
    AppendFormat(log, "    [%10.6f %10.6f %10.6f]\n", 0.0, 0.0, 1.0);
    AppendFormat(log, "  Uniform scale factor: %.9f\n", s);
    AppendFormat(log, "  Translation vector: (%.6f, %.6f, %.6f)\n", fit.tx, fit.ty, fit.tz);
    AppendFormat(log, "  Final transformation: P_world = %.6f * R * P_local + t\n", s);

    const Transform T{s, fit.r11, fit.r12, fit.r21, fit.r22, fit.tx, fit.ty, fit.tz};
    log += "\n=== CONSTRAINED 3D TRANSFORMATION VERIFICATION ===\n"
           "Applying: P_world = scale * R * P_local + t (with Z-axis preserved)\n\n"
           "Point   Local (x,y,z)           Predicted (x,y,z)        Target (x,y,z)          3D Error\n"
           "-----   ----------------        ------------------       ----------------        --------\n";
    double sum3 = 0;
    for (int i = 0; i < n; ++i) {
        const auto& p = pairs[i];
        double X, Y, Z;
        T.apply(p[0], p[1], p[2], X, Y, Z);
        const double e = std::sqrt((X - p[3]) * (X - p[3]) + (Y - p[4]) * (Y - p[4]) + (Z - p[5]) * (Z - p[5]));
        sum3 += e * e;
        if (e > fit.maxError) fit.maxError = e;
        AppendFormat(log, "%d       (%7.2f,%7.2f,%7.2f)   (%10.2f,%10.2f,%7.2f)   (%10.2f,%10.2f,%7.2f)   %8.3f\n", i + 1,
                     p[0], p[1], p[2], X, Y, Z, p[3], p[4], p[5], e);
    }
    fit.rmsError = std::sqrt(sum3 / n);
    log += "\nConstrained 3D Transformation Summary:\n";
    AppendFormat(log, "  RMS Error: %.6f meters\n", fit.rmsError);
    AppendFormat(log, "  Max Error: %.6f meters\n", fit.maxError);
    AppendFormat(log, "  Scale factor: %.9f (uniform)\n", s);
    log += "  Z-axis preserved: Buildings will be vertical\n";
    if (fit.rmsError < 1)
        log += "  ? EXCELLENT: Constrained transformation very accurate (<1m RMS)\n";
    else if (fit.rmsError < 5)
        log += "  ? GOOD: Constrained transformation accurate (<5m RMS)\n";
    else
        log += "  ? FAIR: Constrained transformation has moderate errors\n";

    // The model, held whole.
    std::string obj;
    if (!ReadWholeFile(OBJIN, obj)) return finish("ERROR: cannot load OBJ\n");
    const std::size_t total = obj.size();
    std::string_view line;
    long long lineNo = 0;
    auto step = [&](const char* what, const TextLines& lines) {
        if (++lineNo % STATUS_EVERY != 0) return true;
        progress(what, lines.offset(), total);
        return !ModelToolCancelled();
    };

    int vertexCount = 0;
    int vDec = 3;
    {
        TextLines lines(obj);
        while (lines.next(line)) {
            if (!step("counting vertices", lines)) return cancelled();
            if (!IsObjRecord(line, 'v')) continue;
            if (vertexCount == 0) vDec = vertexDecimals(line);
            ++vertexCount;
        }
    }
    if (vertexCount == 0) return finish("ERROR: no vertices in OBJ\n");
    log += "\nOBJ processing:\n";
    AppendFormat(log, "  Total vertices: %d\n", vertexCount);

    std::vector<double> X(vertexCount), Y(vertexCount), Z(vertexCount);
    std::vector<char> has(vertexCount, 0);
    double inMin[3] = {1e300, 1e300, 1e300}, inMax[3] = {-1e300, -1e300, -1e300};
    double outMin[3] = {1e300, 1e300, 1e300}, outMax[3] = {-1e300, -1e300, -1e300};
    static thread_local LineCopy copy;
    {
        TextLines lines(obj);
        int k = 0;
        while (lines.next(line)) {
            if (!step("transforming vertices", lines)) return cancelled();
            if (!IsObjRecord(line, 'v')) continue;
            copy.set(line);
            double x, y, z;
            if (scanVertex(copy.text, x, y, z)) {
                T.apply(x, y, z, X[k], Y[k], Z[k]);
                has[k] = 1;
                ++result.verticesTransformed;
                const double in[3] = {x, y, z}, out[3] = {X[k], Y[k], Z[k]};
                for (int a = 0; a < 3; ++a) {
                    inMin[a] = std::fmin(inMin[a], in[a]);
                    inMax[a] = std::fmax(inMax[a], in[a]);
                    outMin[a] = std::fmin(outMin[a], out[a]);
                    outMax[a] = std::fmax(outMax[a], out[a]);
                }
            }
            ++k;
        }
    }
    log += "\n3D Transformation Results:\n";
    AppendFormat(log, "  Input bounds:  X[%.3f, %.3f] Y[%.3f, %.3f] Z[%.3f, %.3f]\n", inMin[0], inMax[0], inMin[1],
                 inMax[1], inMin[2], inMax[2]);
    AppendFormat(log, "  Output bounds: X[%.3f, %.3f] Y[%.3f, %.3f] Z[%.3f, %.3f]\n", outMin[0], outMax[0], outMin[1],
                 outMax[1], outMin[2], outMax[2]);
    AppendFormat(log, "  Scale factor: %.6f (uniform for all axes)\n", s);
    log += "\nSample transformed vertices:\n";
    for (int k = 0, shown = 0; k < vertexCount && shown < 10; ++k)
        if (has[k]) {
            AppendFormat(log, "  #%d: (%.3f, %.3f, %.3f)\n", k + 1, X[k], Y[k], Z[k]);
            ++shown;
        }

    engine::AtomicFile out(OBJOUT);
    if (!out.ok()) return finish("ERROR: cannot open OBJOUT for write\n");
    out.write(std::string("# Transformed using full 3D Procrustes (uniform scale + 3D rotation + translation)\n"));

    // All vertices first, then everything else in file order.
    {
        TextLines lines(obj);
        int k = 0;
        while (lines.next(line)) {
            if (!step("writing vertices", lines)) return cancelled();
            if (!IsObjRecord(line, 'v')) continue;
            if (has[k]) {
                out.write("v ", 2);
                out.number(X[k], vDec);
                out.write(" ", 1);
                out.number(Y[k], vDec);
                out.write(" ", 1);
                out.number(Z[k], vDec);
                out.write("\n", 1);
            } else {
                copy.set(line);
                out.write(copy.text, copy.size);
                out.write("\n", 1);
            }
            ++k;
        }
    }
    const bool filter = Radius > 0;
    const double r2 = Radius * Radius;
    long faces = 0;
    {
        TextLines lines(obj);
        while (lines.next(line)) {
            if (!step("writing faces", lines)) return cancelled();
            if (IsObjRecord(line, 'v')) continue;
            copy.set(line);
            if (IsObjRecord(line, 'f')) {
                ++faces;
                if (filter) {
                    bool keep = true;
                    const char* p = SkipLeadingBlanks(std::string_view(copy.text, copy.size)).data() + 1;
                    while (keep) {
                        while (*p == ' ' || *p == '\t') ++p;
                        if (!*p) break;
                        long long v = 0;
                        while (*p >= '0' && *p <= '9') {
                            if (v <= vertexCount) v = v * 10 + (*p - '0');
                            ++p;
                        }
                        while (*p && *p != ' ' && *p != '\t') ++p;
                        if (v < 1 || v > vertexCount || !has[v - 1]) {
                            keep = false;
                        } else {
                            const double dx = X[v - 1] - cRx, dy = Y[v - 1] - cRy;
                            keep = dx * dx + dy * dy <= r2;
                        }
                    }
                    if (!keep) {
                        ++result.facesDropped;
                        continue;
                    }
                    ++result.facesKept;
                }
            }
            out.write(copy.text, copy.size);
            out.write("\n", 1);
        }
    }
    // A write that fails on the way (a full disk) leaves no output either,
    // and is told with the same line.
    if (!out.commit()) return finish("ERROR: cannot open OBJOUT for write\n");
    result.written = true;

    log += "\nOutput Summary:\n";
    AppendFormat(log, "  Vertices transformed: %d\n", result.verticesTransformed);
    if (filter) {
        AppendFormat(log, "  Faces kept: %ld\n", result.facesKept);
        AppendFormat(log, "  Faces dropped (outside %.1fm): %ld\n", Radius, result.facesDropped);
    } else {
        AppendFormat(log, "  Total faces: %ld (no radius filtering)\n", faces);
        result.facesKept = faces;
    }
    log += "\n=== TRANSFORMATION SUCCESS ===\n"
           "Full 3D Procrustes transformation completed!\n";
    AppendFormat(log, "- Uniform scale factor: %.6f\n", s);
    log += "- 3D rotation applied to handle model tilt\n"
           "- Single unified transformation (no separate XY/Z)\n"
           "- Buildings should now be upright and properly scaled\n";
    if (fit.rmsError < 2)
        log += "? Transformation quality: EXCELLENT (RMS < 2m)\n";
    else if (fit.rmsError < 5)
        log += "? Transformation quality: GOOD (RMS < 5m)\n";
    else
        log += " Transformation quality: Check control point accuracy\n";
    progress("done", total, total);
    return finish(nullptr);
}
