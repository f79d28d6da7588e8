#include "PanelGeometryRows.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEps = 1e-6;

int landscapeCountOnBaseline(const RowPlanInput& in) {
    if (in.lengthM + in.gap <= 0) return in.repeat;
    const int fit = static_cast<int>(std::floor((in.baselineLength + in.gap) / (in.lengthM + in.gap)));
    return std::min(in.repeat, std::max(1, fit));
}

PlannedRow row(double offset, bool landscape, int count) {
    PlannedRow r;
    r.offset = offset;
    r.landscape = landscape;
    r.panelCount = count;
    return r;
}

std::vector<PlannedRow> tightRows(const RowPlanInput& in) {
    const int portraitRows =
        in.projPortrait < kEps ? 0 : static_cast<int>(std::floor(in.depthInPlane / in.projPortrait));
    const double remainder = in.depthInPlane - portraitRows * in.projPortrait;
    const bool tail = remainder + kEps >= in.projLandscape;
    std::vector<PlannedRow> rows;
    const double step = in.projPortrait + ROW_GAP_M;
    for (int r = 0; r < portraitRows; ++r) rows.push_back(row(r * step, false, in.repeat));
    if (tail) rows.push_back(row(portraitRows * step, true, landscapeCountOnBaseline(in)));
    if (rows.empty()) rows.push_back(row(0, false, in.repeat));
    return rows;
}

std::vector<PlannedRow> doubleRows(const RowPlanInput& in) {
    const double pairFootprint = 2 * in.projPortrait;
    const double pairGapInter = 2 * in.rowGap;
    int fullPairs = 0;
    if (in.depthInPlane + kEps >= pairFootprint)
        fullPairs = std::max(
            1, static_cast<int>(std::floor((in.depthInPlane + pairGapInter) / (pairFootprint + pairGapInter))));
    const double usedByPairs = fullPairs > 0 ? fullPairs * pairFootprint + (fullPairs - 1) * pairGapInter : 0;
    double availForTail = in.depthInPlane - usedByPairs;
    if (fullPairs > 0) availForTail -= pairGapInter;

    const double secondRise = in.lengthM * std::sin(in.tiltRelDeg * 3.14159265358979323846 / 180.0);
    const double pairStep = pairFootprint + pairGapInter + ROW_GAP_M;
    const double secondOffset = in.projPortrait + ROW_GAP_M;
    std::vector<PlannedRow> rows;
    for (int p = 0; p < fullPairs; ++p) {
        rows.push_back(row(p * pairStep, false, in.repeat));
        PlannedRow second = row(p * pairStep + secondOffset, false, in.repeat);
        second.verticalExtra = secondRise;
        rows.push_back(second);
    }
    const double tailOffset = fullPairs * pairStep;
    const int cap = computeSecondRowCap(in.repeat, in.lengthM, in.widthM, in.gap);
    if (availForTail + kEps >= in.projPortrait + in.projLandscape) {
        rows.push_back(row(tailOffset, false, in.repeat));
        PlannedRow second = row(tailOffset + secondOffset, true, cap);
        second.verticalExtra = secondRise;
        rows.push_back(second);
    } else if (availForTail + kEps >= in.projPortrait) {
        rows.push_back(row(tailOffset, false, in.repeat));
    } else if (availForTail + kEps >= in.projLandscape) {
        rows.push_back(row(tailOffset, true, rows.empty() ? in.repeat : cap));
    }
    // A landscape row above a portrait one ends flush with it on the far end.
    const double firstRowLength = (in.repeat - 1) * (in.widthM + in.gap) + in.widthM;
    for (std::size_t r = 1; r < rows.size(); r += 2) {
        if (!rows[r].landscape) continue;
        const double secondRowLength = (rows[r].panelCount - 1) * (in.lengthM + in.gap) + in.lengthM;
        rows[r].rightAlignOffset = std::max(0.0, firstRowLength - secondRowLength);
    }
    return rows;
}

std::vector<PlannedRow> singleRows(const RowPlanInput& in) {
    const double npGap = in.rowGap;
    const double divisor = in.projPortrait + npGap;
    const int npRows =
        divisor < 1e-6 ? 1 : std::max(1, static_cast<int>(std::floor((in.depthInPlane + npGap) / divisor)));
    const double remaining = in.depthInPlane - npRows * in.projPortrait - (npRows - 1) * npGap;
    const double step = in.projPortrait + npGap + ROW_GAP_M;
    std::vector<PlannedRow> rows;
    for (int r = 0; r < npRows; ++r) rows.push_back(row(r * step, false, in.repeat));
    if (remaining + kEps >= in.projLandscape) rows.push_back(row(npRows * step, true, landscapeCountOnBaseline(in)));
    return rows;
}

}  // namespace

int computeSecondRowCap(int n, double Lm, double Wm, double Gap) {
    if (Lm + Gap <= 0) return std::max(1, n);
    const double firstLen = n > 0 ? (n - 1) * (Wm + Gap) + Wm : 0;
    const int cap = static_cast<int>(std::floor((firstLen - Lm) / (Lm + Gap))) + 1;
    return std::clamp(cap, 1, std::max(1, n));
}

std::vector<PlannedRow> PlanRows(const RowPlanInput& in) {
    if (in.rowPairing == 0) return {row(0, in.landscape, in.repeat)};
    if (in.roofIsTilted) return tightRows(in);
    if (in.rowPairing == 2) return doubleRows(in);
    if (in.rowPairing == 1) return singleRows(in);
    return {row(0, in.landscape, in.repeat)};
}
