#include "SyntheticClimate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>

#include "ClimateText.h"
#include "SunPosition.h"
#include "SunTable.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180.0;
constexpr double kSolarConstant = 1367.0;  // W/m2

// splitmix64: the same numbers on every compiler and library, unlike the
// standard distributions.
class SeededNumbers {
public:
    explicit SeededNumbers(unsigned seed) : state_(0x5A0C11A7E5EEDULL ^ seed) {}
    // Uniform in [0, 1).
    double next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        z ^= z >> 31;
        return static_cast<double>(z >> 11) * 0x1.0p-53;
    }

private:
    std::uint64_t state_;
};

// 1 in the middle of the local winter, 0 in the middle of summer.
double winterness(int dayOfYear, double latitude) {
    const double northern = (1 + std::cos(2 * kPi * (dayOfYear - 20) / 365.0)) / 2;
    return latitude >= 0 ? northern : 1 - northern;
}

// Haurwitz's clear sky: global horizontal irradiance from the sun's height alone.
double clearSkyGlobal(double altitudeDeg) {
    const double cosZenith = std::sin(altitudeDeg * kDegree);
    return cosZenith > 0 ? 1098.0 * cosZenith * std::exp(-0.057 / cosZenith) : 0;
}

// Erbs' diffuse fraction of the global irradiance from the clearness index.
double diffuseFraction(double kt) {
    if (kt <= 0.22) return 1 - 0.09 * kt;
    if (kt <= 0.8) return 0.9511 - 0.1604 * kt + 4.388 * kt * kt - 16.638 * std::pow(kt, 3) + 12.336 * std::pow(kt, 4);
    return 0.165;
}

// The day's weather: cloud cover persists from day to day around a seasonal
// mean, so clear and cloudy spells come in runs as they do outdoors.
struct DayWeather {
    double cloud = 0;
    double temperatureAnomaly = 0;
    double windBase = 0;
};

class WeatherSequence {
public:
    WeatherSequence(double latitude, unsigned seed) : latitude_(latitude), numbers_(seed) {}

    DayWeather nextDay(int dayOfYear) {
        const double absLat = std::fabs(latitude_);
        const double highLatitudeCloud = 0.25 * std::clamp((absLat - 35) / 25, 0.0, 1.0);
        const double meanCloud = 0.12 + 0.38 * winterness(dayOfYear, latitude_) + highLatitudeCloud;
        cloudAnomaly_ = 0.7 * cloudAnomaly_ + 0.9 * (numbers_.next() - 0.5);
        temperatureAnomaly_ = 0.8 * temperatureAnomaly_ + 2.4 * (numbers_.next() - 0.5);
        DayWeather day;
        day.cloud = std::clamp(meanCloud + cloudAnomaly_, 0.0, 1.0);
        day.temperatureAnomaly = temperatureAnomaly_;
        day.windBase = 2.0 + 2.5 * numbers_.next() + 2.0 * day.cloud;
        return day;
    }
    double jitter() { return numbers_.next() - 0.5; }

private:
    double latitude_;
    SeededNumbers numbers_;
    double cloudAnomaly_ = 0;
    double temperatureAnomaly_ = 0;
};

void setIrradiance(SyntheticHour& h, double altitude, int dayOfYear) {
    const double clear = clearSkyGlobal(altitude);
    if (clear <= 0) return;
    // Kasten and Czeplak: the cloud cover dims the clear sky.
    const double global = clear * (1 - 0.75 * std::pow(h.cloudCover, 3.4));
    const double outside =
        kSolarConstant * (1 + 0.033 * std::cos(2 * kPi * dayOfYear / 365.0)) * std::sin(altitude * kDegree);
    const double diffuse = global * diffuseFraction(std::min(global / outside, 1.0));
    h.beam = global - diffuse;
    h.diffuse = diffuse;
}

void setTemperatureAndWind(SyntheticHour& h, const DayWeather& day, double latitude, double longitude,
                           int dayOfYear, double windJitter) {
    const double absLat = std::fabs(latitude);
    const double yearlyMean = 27.0 - 0.5 * std::max(0.0, absLat - 15);
    const double yearlyAmplitude = 2.0 + 0.2 * absLat;
    const double season = yearlyMean + yearlyAmplitude * (1 - 2 * winterness(dayOfYear, latitude));
    const double solarHour = std::fmod(h.hour + longitude / 15.0 + 48.0, 24.0);
    const double dailyAmplitude = 5.0 - 3.0 * day.cloud;
    h.temperature = season + day.temperatureAnomaly - 1.5 * day.cloud +
                    dailyAmplitude * std::cos(2 * kPi * (solarHour - 14.5) / 24.0);
    // The sea breeze of the afternoon: wind picks up after sunrise and calms at night.
    const double daytime = solarHour > 7 && solarHour < 21 ? std::sin(kPi * (solarHour - 7) / 14.0) : 0;
    h.wind = std::max(0.2, day.windBase * (0.6 + 0.6 * daytime) + 0.6 * windJitter);
}

}  // namespace

std::vector<SyntheticHour> MakeSyntheticClimateYear(double latitude, double longitude, unsigned seed) {
    std::vector<SyntheticHour> hours;
    hours.reserve(365 * 24);
    WeatherSequence weather(latitude, seed);
    int dayOfYear = 0;
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= DAYS_IN_MONTH[month - 1]; ++day) {
            ++dayOfYear;
            const DayWeather today = weather.nextDay(dayOfYear);
            for (int hour = 0; hour < 24; ++hour) {
                SyntheticHour h;
                h.month = month;
                h.day = day;
                h.hour = hour;
                h.cloudCover = std::clamp(today.cloud + 0.15 * weather.jitter(), 0.0, 1.0);
                double altitude = 0, azimuth = 0;
                DoSunPosition(DEFAULT_SOLAR_YEAR, month, day, hour, latitude, longitude, altitude, azimuth);
                setIrradiance(h, altitude, dayOfYear);
                setTemperatureAndWind(h, today, latitude, longitude, dayOfYear, weather.jitter());
                hours.push_back(h);
            }
        }
    return hours;
}

std::string SyntheticClimateText(const std::vector<SyntheticHour>& hours) {
    std::string text =
        "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
        "AvgWindSpeed\n";
    text.reserve(text.size() + hours.size() * 48);
    char key[16];
    for (const SyntheticHour& h : hours) {
        std::snprintf(key, sizeof key, "%02d-%02d,%02d:00", h.month, h.day, h.hour);
        text += key;
        text += ',' + FixedText(h.beam, 6, 2) + ',' + FixedText(h.diffuse, 6, 2) + ',' + FixedText(h.reflected, 6, 2) +
                ',' + FixedText(h.temperature, 6, 1) + ',' + FixedText(h.wind, 6, 1) + '\n';
    }
    return text;
}

bool WriteSyntheticClimateFile(double latitude, double longitude, unsigned seed, const std::string& path) {
    return WriteTextFileAtomically(path, SyntheticClimateText(MakeSyntheticClimateYear(latitude, longitude, seed)));
}
