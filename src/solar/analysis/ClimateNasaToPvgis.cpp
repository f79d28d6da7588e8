#include "ClimateNasaToPvgis.h"

#include <strings.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "ClimateText.h"
#include "app/services/RunLog.h"

namespace {

constexpr int LINE_BUFFER = 16384;  // a longer line is read in pieces
constexpr std::size_t MAX_TOKENS = 256;
constexpr int HOUR_COLUMNS = 5;

using Tokens = std::vector<std::string>;

struct NasaColumns {
    int ghi = -1;
    int dhi = -1;
    int year = -1;
    int month = -1;
    int day = -1;
    int date = -1;
    int hour[HOUR_COLUMNS] = {-1, -1, -1, -1, -1};  // UTC, LST, HR, HOUR, TIME: the first present wins
    int t2m = -1;
    int ws2m = -1;
};

// At most 256 tokens; each loses blanks, tabs and quotes at both ends. A line
// that is empty without its line end has no tokens.
Tokens tokenize(const char* line) {
    std::string_view text(line);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
    Tokens tokens;
    if (text.empty()) return tokens;
    std::size_t start = 0;
    while (tokens.size() < MAX_TOKENS) {
        const std::size_t comma = text.find(',', start);
        std::string_view token = text.substr(start, comma == std::string_view::npos ? comma : comma - start);
        const std::size_t first = token.find_first_not_of(" \t\"");
        token = first == std::string_view::npos ? std::string_view() : token.substr(first);
        const std::size_t last = token.find_last_not_of(" \t\"\r\n");
        token = last == std::string_view::npos ? std::string_view() : token.substr(0, last + 1);
        tokens.emplace_back(token);
        if (comma == std::string_view::npos) break;
        start = comma + 1;
    }
    return tokens;
}

// The first token equal to one of the names, compared without case.
void findColumn(const Tokens& tokens, int& column, std::initializer_list<const char*> names) {
    for (std::size_t i = 0; i < tokens.size() && column < 0; ++i)
        for (const char* name : names)
            if (strcasecmp(tokens[i].c_str(), name) == 0) column = static_cast<int>(i);
}

bool readHeader(const Tokens& tokens, NasaColumns& c) {
    NasaColumns found;
    findColumn(tokens, found.ghi, {"ALLSKY_SFC_SW_DWN"});
    findColumn(tokens, found.dhi, {"ALLSKY_SFC_SW_DIFF"});
    if (found.ghi < 0 || found.dhi < 0) return false;
    findColumn(tokens, found.year, {"YEAR", "YR"});
    findColumn(tokens, found.month, {"MO", "MM"});
    findColumn(tokens, found.day, {"DY", "DD"});
    findColumn(tokens, found.date, {"DATE", "YYYYMMDD"});
    const char* hourNames[HOUR_COLUMNS] = {"UTC", "LST", "HR", "HOUR", "TIME"};
    for (int k = 0; k < HOUR_COLUMNS; ++k) findColumn(tokens, found.hour[k], {hourNames[k]});
    findColumn(tokens, found.t2m, {"T2M"});
    findColumn(tokens, found.ws2m, {"WS2M"});
    c = found;
    return true;
}

const std::string* tokenAt(const Tokens& tokens, int column) {
    return column >= 0 && column < static_cast<int>(tokens.size()) ? &tokens[column] : nullptr;
}

// An optional sign, then digits and points only, at least one of them.
bool isNumericToken(const std::string& token) {
    std::size_t i = (!token.empty() && (token[0] == '+' || token[0] == '-')) ? 1 : 0;
    if (i == token.size()) return false;
    for (; i < token.size(); ++i)
        if (!((token[i] >= '0' && token[i] <= '9') || token[i] == '.')) return false;
    return true;
}

bool isUnitsLine(const Tokens& tokens, const NasaColumns& c) {
    const std::string* global = tokenAt(tokens, c.ghi);
    const std::string* diffuse = tokenAt(tokens, c.dhi);
    return (global && !isNumericToken(*global)) || (diffuse && !isNumericToken(*diffuse));
}

int integerOf(const std::string* token) { return token ? std::atoi(token->c_str()) : 0; }

double numberOf(const std::string* token) { return token && !token->empty() ? std::atof(token->c_str()) : 0; }

bool dateOfRow(const Tokens& tokens, const NasaColumns& c, int& year, int& month, int& day) {
    const std::string* date = tokenAt(tokens, c.date);
    std::string digits;
    if (date)
        for (char ch : *date)
            if (ch >= '0' && ch <= '9' && digits.size() < 15) digits += ch;
    if (digits.size() >= 8) {
        year = std::atoi(digits.substr(0, 4).c_str());
        month = std::atoi(digits.substr(4, 2).c_str());
        day = std::atoi(digits.substr(6, 2).c_str());
    } else {
        year = integerOf(tokenAt(tokens, c.year));
        month = integerOf(tokenAt(tokens, c.month));
        day = integerOf(tokenAt(tokens, c.day));
    }
    return month > 0 && day > 0;
}

bool hourOfRow(const Tokens& tokens, const NasaColumns& c, int& hour) {
    int column = -1;
    for (int k = 0; k < HOUR_COLUMNS && column < 0; ++k) column = c.hour[k];
    const std::string* token = tokenAt(tokens, column);
    if (!token || token->empty()) return false;
    if (token->find(':') != std::string::npos) {
        int minute = 0;
        if (std::sscanf(token->c_str(), "%d:%d", &hour, &minute) < 1) return false;
    } else {
        char* end = nullptr;
        const long value = std::strtol(token->c_str(), &end, 10);
        if (end == token->c_str()) return false;
        hour = static_cast<int>(value);
    }
    return hour >= 0 && hour <= 23;
}

bool writeRow(std::FILE* out, const Tokens& tokens, const NasaColumns& c) {
    int year = 0, month = 0, day = 0, hour = 0;
    if (!dateOfRow(tokens, c, year, month, day) || !hourOfRow(tokens, c, hour)) return false;
    double ghi = numberOf(tokenAt(tokens, c.ghi));
    double dhi = numberOf(tokenAt(tokens, c.dhi));
    double t2m = numberOf(tokenAt(tokens, c.t2m));
    double ws2 = numberOf(tokenAt(tokens, c.ws2m));
    if (ghi < 0) ghi = 0;
    if (dhi < 0) dhi = 0;
    if (t2m < -90 || t2m > 70) t2m = 25;
    if (ws2 < 0) ws2 = 0;
    const double gb = ghi - dhi < 0 ? 0 : ghi - dhi;
    char time[64];
    std::snprintf(time, sizeof time, "%04d%02d%02d:%02d", year == 0 ? 2020 : year, month, day, hour);
    // The 2 m wind stands in the 10 m column as it is.
    std::fprintf(out, "%s,%.3f,%.3f,%.3f,%.3f,%.2f,%.2f,0\n", time, gb, dhi, 0.0, ghi, t2m, ws2);
    return true;
}

// Reads up to the header and past a units line; false at the end of the file.
bool findHeader(std::FILE* in, char* line, NasaColumns& columns) {
    for (;;) {
        if (!std::fgets(line, LINE_BUFFER, in)) return false;
        if (line[0] != '#' && readHeader(tokenize(line), columns)) break;
    }
    std::fpos_t afterHeader;
    std::fgetpos(in, &afterHeader);
    if (!std::fgets(line, LINE_BUFFER, in)) return false;
    if (!isUnitsLine(tokenize(line), columns)) std::fsetpos(in, &afterHeader);
    return true;
}

}  // namespace

bool ConvertNasaPowerToPvgisRaw(const std::string& nasaCsv, const std::string& pvgisRawCsv) {
    const ClimateCLocale cNumbers;
    std::FILE* in = std::fopen(nasaCsv.c_str(), "rb");
    if (!in) {
        PrintRunLog("NASA: cannot open raw\n");
        return false;
    }
    const std::string temporary = pvgisRawCsv + ".tmp";
    std::FILE* out = std::fopen(temporary.c_str(), "wb");
    if (!out) {
        std::fclose(in);
        PrintRunLog("NASA: cannot create PVGIS-RAW\n");
        return false;
    }
    std::vector<char> line(LINE_BUFFER);
    NasaColumns columns;
    if (!findHeader(in, line.data(), columns)) {
        std::fclose(in);
        std::fclose(out);
        std::remove(temporary.c_str());
        return false;
    }
    std::fputs("time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n", out);
    long rows = 0;
    while (std::fgets(line.data(), LINE_BUFFER, in)) {
        if (line[0] == '#') continue;
        const Tokens tokens = tokenize(line.data());
        if (!tokens.empty() && writeRow(out, tokens, columns)) ++rows;
    }
    std::fclose(in);
    const bool closed = std::fclose(out) == 0;
    PrintRunLog("NASA?PVGIS-RAW rows written: %ld\n", rows);
    if (rows > 0 && closed && std::rename(temporary.c_str(), pvgisRawCsv.c_str()) == 0) return true;
    std::remove(temporary.c_str());
    return false;
}
