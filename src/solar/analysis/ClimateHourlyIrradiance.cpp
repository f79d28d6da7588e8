#include "ClimateHourlyIrradiance.h"

#include <QString>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ClimateText.h"
#include "app/services/DialogService.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"

namespace {

struct AnswerColumns {
    int global = -1;  // G(i) of the old layout
    int beam = -1;
    int diffuse = -1;
    int reflected = -1;
    int sunHeight = -1;
    int temperature = -1;
    int wind = -1;
    bool oldLayout() const { return global >= 0 && beam < 0 && diffuse < 0 && reflected < 0; }
};

struct HourSums {
    std::string key;
    double beam = 0;
    double diffuse = 0;
    double reflected = 0;
    double temperature = 0;
    double wind = 0;
    int count = 0;
};

bool isHeaderLine(std::string_view line) {
    return line.find("time") != std::string_view::npos &&
           (line.find("Gb(i)") != std::string_view::npos || line.find("G(i)") != std::string_view::npos);
}

AnswerColumns readHeader(std::string_view line) {
    AnswerColumns c;
    const std::vector<std::string_view> names = SplitCommas(line);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = TrimText(names[i]);
        const int index = static_cast<int>(i);
        if (name == "G(i)") c.global = index;
        else if (name == "Gb(i)") c.beam = index;
        else if (name == "Gd(i)") c.diffuse = index;
        else if (name == "Gr(i)") c.reflected = index;
        else if (name == "H_sun") c.sunHeight = index;
        else if (name == "T2m") c.temperature = index;
        else if (name == "WS10m") c.wind = index;
    }
    PrintRunLog("[PVGIS] Header found: %.*s\n", static_cast<int>(line.size()), line.data());
    if (c.global >= 0)
        PrintRunLog("[PVGIS] Old format - G(i) at column %d\n", c.global);
    else
        PrintRunLog("[PVGIS] New format - Gb(i):%d, Gd(i):%d, Gr(i):%d\n", c.beam, c.diffuse, c.reflected);
    PrintRunLog("[PVGIS] H_sun at column %d\n", c.sunHeight);
    PrintRunLog("[PVGIS] T2m at column %d\n", c.temperature);
    PrintRunLog("[PVGIS] WS10m at column %d\n", c.wind);
    return c;
}

double fieldNumber(const std::vector<std::string_view>& fields, int column, double fallback) {
    if (column < 0 || column >= static_cast<int>(fields.size())) return fallback;
    return TolerantNumber(fields[column], fallback);
}

// Characters `from` and `from + 1`, counted from 1, as far as they exist.
std::string_view twoCharacters(std::string_view text, std::size_t from) {
    return from - 1 < text.size() ? text.substr(from - 1, 2) : std::string_view();
}

// Month, day and hour of "YYYYMMDD:HHMM": minutes and years fall together.
std::string keyOf(std::string_view timestamp) {
    std::string key;
    key.reserve(11);
    key.append(twoCharacters(timestamp, 5)).append("-").append(twoCharacters(timestamp, 7));
    key.append(",").append(twoCharacters(timestamp, 10)).append(":00");
    return key;
}

// The sum as the list holds it: written as text and read back.
double heldAsText(double sum) {
    const std::string text = FixedText(sum, 6, 2);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string outputText(const std::vector<HourSums>& hours, bool hasTemperature, bool hasWindSpeed) {
    std::string text = "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance";
    if (hasTemperature) text += ",AvgTemperature";
    if (hasWindSpeed) text += ",AvgWindSpeed";
    text += '\n';
    const float altitude = static_cast<float>(frameState().OCENTER[2]);
    for (const HourSums& h : hours) {
        double temperature = h.temperature / h.count;
        double wind = h.wind / h.count;
        if (altitude > 0) {
            temperature -= altitude * 0.0065;
            wind *= 1 + altitude * 0.0002;
        }
        text += h.key + ',' + FixedText(h.beam / h.count, 6, 2) + ',' + FixedText(h.diffuse / h.count, 6, 2) + ',' +
                FixedText(h.reflected / h.count, 6, 2);
        if (hasTemperature) text += ',' + FixedText(temperature, 6, 1);
        if (hasWindSpeed) text += ',' + FixedText(wind, 6, 1);
        text += '\n';
    }
    return text;
}

void showError(const std::string& text) { dialogService().showMessage(QString::fromStdString(text), "Zorvex64"); }

}  // namespace

bool CreateHourlyIrradianceFromDownloadedCSV(const std::string& inputCsv, const std::string& outputCsv) {
    std::error_code ec;
    std::vector<std::string> lines;
    if (!std::filesystem::is_regular_file(inputCsv, ec) || !ReadTextLines(inputCsv, lines)) {
        showError("PVGIS CSV file not found: " + inputCsv);
        return false;
    }
    PrintRunLog("[PVGIS] Reading downloaded file: %s\n", inputCsv.c_str());

    AnswerColumns c;
    bool start = false;
    std::vector<HourSums> hours;
    std::unordered_map<std::string, std::size_t> hourOfKey;
    for (const std::string& rawLine : lines) {
        const std::string_view line = TrimText(rawLine);
        if (isHeaderLine(line)) {
            start = true;
            c = readHeader(line);
            continue;
        }
        if (!start) continue;
        const std::vector<std::string_view> fields = SplitCommas(line);
        if (fields.size() <= 5) continue;  // also the service's footer

        double beam = fieldNumber(fields, c.beam, 0);
        const double diffuse = c.oldLayout() ? 0 : fieldNumber(fields, c.diffuse, 0);
        const double reflected = c.oldLayout() ? 0 : fieldNumber(fields, c.reflected, 0);
        if (c.oldLayout()) beam = fieldNumber(fields, c.global, 0);
        const double sunHeight = fieldNumber(fields, c.sunHeight, -1);
        const double temperature = fieldNumber(fields, c.temperature, 20);
        const double wind = fieldNumber(fields, c.wind, 1);
        if (sunHeight <= 0) continue;  // night; an answer without H_sun has no daylight at all

        const std::string key = keyOf(fields[0]);
        const auto [it, added] = hourOfKey.try_emplace(key, hours.size());
        if (added) {
            hours.push_back({key, heldAsText(beam), heldAsText(diffuse), heldAsText(reflected), heldAsText(temperature),
                             heldAsText(wind), 1});
            continue;
        }
        HourSums& h = hours[it->second];
        h.beam = heldAsText(h.beam + beam);
        h.diffuse = heldAsText(h.diffuse + diffuse);
        h.reflected = heldAsText(h.reflected + reflected);
        if (c.temperature >= 0) h.temperature = heldAsText(h.temperature + temperature);
        if (c.wind >= 0) h.wind = heldAsText(h.wind + wind);
        h.count += 1;
    }

    const bool hasTemperature = c.temperature >= 0;
    const bool hasWindSpeed = c.wind >= 0;
    if (!WriteTextFileAtomically(outputCsv, outputText(hours, hasTemperature, hasWindSpeed))) {
        showError("Cannot create file " + outputCsv);
        return false;
    }
    PrintRunLog("[PVGIS] Output written to: %s\n", outputCsv.c_str());
    PrintRunLog("[PVGIS] Total daylight UTC entries: %d\n", static_cast<int>(hours.size()));
    PrintRunLog("[PVGIS] Temperature data: %s\n", hasTemperature ? "YES" : "NO");
    PrintRunLog("[PVGIS] Wind speed data: %s\n", hasWindSpeed ? "YES" : "NO");
    return true;
}
