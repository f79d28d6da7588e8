#include "ClimateText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

locale_t cLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return c;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Sign, digits with at most one point and at least one digit, an optional
// exponent: what the tolerant reading accepts, nothing of strtod's extras.
bool isPlainDecimal(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    int mantissaDigits = 0;
    while (i < text.size() && isDigit(text[i])) ++i, ++mantissaDigits;
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) ++i, ++mantissaDigits;
    }
    if (mantissaDigits == 0) return false;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
        int exponentDigits = 0;
        while (i < text.size() && isDigit(text[i])) ++i, ++exponentDigits;
        if (exponentDigits == 0) return false;
    }
    return i == text.size();
}

}  // namespace

ClimateCLocale::ClimateCLocale() : previous_(uselocale(cLocale())) {}

ClimateCLocale::~ClimateCLocale() { uselocale(previous_); }

std::string FixedText(double value, int precision, int digits) {
    char buffer[400];
    char* const end = buffer + sizeof buffer;
    const double magnitude = std::fabs(value);
    const int integerDigits = magnitude >= 1 ? static_cast<int>(std::floor(std::log10(magnitude))) + 1 : 0;
    if (!std::isfinite(value) || integerDigits > precision) {
        const auto r = std::to_chars(buffer, end, value, std::chars_format::scientific, precision - 1);
        return std::string(buffer, r.ptr);
    }
    const int decimals = std::min(digits, precision - integerDigits);
    const auto r = std::to_chars(buffer, end, value, std::chars_format::fixed, decimals);
    std::string text(buffer, r.ptr);
    if (decimals < digits) {
        if (decimals == 0) text += '.';
        text.append(static_cast<std::size_t>(digits - decimals), '0');
    }
    if (text[0] == '-' && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
    return text;
}

double TolerantNumber(std::string_view text, double fallback) {
    text = TrimText(text);
    if (!isPlainDecimal(text)) return fallback;
    if (text[0] == '+') text.remove_prefix(1);
    double value = 0;
    const auto [next, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || next != text.data() + text.size()) return fallback;
    return value;
}

namespace {

// One "%Nd": blanks, then at most `width` characters of a sign and digits; false when no digit comes.
bool scanWidthInt(const char*& p, int width, int& value) {
    while (std::isspace(static_cast<unsigned char>(*p))) ++p;
    const char* q = p;
    int used = 0, digits = 0, magnitude = 0;
    const bool negative = *q == '-';
    if (*q == '+' || *q == '-') ++q, ++used;
    for (; used < width && *q >= '0' && *q <= '9'; ++q, ++used, ++digits) magnitude = magnitude * 10 + (*q - '0');
    if (digits == 0) return false;
    value = negative ? -magnitude : magnitude;
    p = q;
    return true;
}

}  // namespace

void ScanDateParts(const char* date, int& year, int& month, int& day) {
    const char* p = date;
    if (!scanWidthInt(p, 4, year) || *p++ != '-' || !scanWidthInt(p, 2, month) || *p++ != '-') return;
    scanWidthInt(p, 2, day);
}

void ScanTimeParts(const char* time, int& hour, int& minute) {
    const char* p = time;
    if (!scanWidthInt(p, 2, hour) || *p++ != ':') return;
    scanWidthInt(p, 2, minute);
}

std::string_view TrimText(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> SplitCommas(std::string_view text) {
    std::vector<std::string_view> fields;
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = text.find(',', start);
        if (comma == std::string_view::npos) {
            fields.push_back(text.substr(start));
            return fields;
        }
        fields.push_back(text.substr(start, comma - start));
        start = comma + 1;
    }
}

std::vector<std::string> SplitTextLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c != '\r' && c != '\n') {
            ++i;
            continue;
        }
        lines.emplace_back(text.substr(start, i - start));
        i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
        start = i;
    }
    if (start < text.size()) lines.emplace_back(text.substr(start));
    return lines;
}

std::size_t CountTextLines(std::string_view text) {
    std::size_t lines = 0, i = 0, start = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c != '\r' && c != '\n') {
            ++i;
            continue;
        }
        ++lines;
        i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
        start = i;
    }
    return lines + (start < text.size() ? 1 : 0);
}

bool ReadTextFile(const std::string& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream whole;
    whole << in.rdbuf();
    text = std::move(whole).str();
    return true;
}

bool ReadTextLines(const std::string& path, std::vector<std::string>& lines) {
    std::string text;
    if (!ReadTextFile(path, text)) return false;
    lines = SplitTextLines(text);
    return true;
}

bool WriteTextFileAtomically(const std::string& path, const std::string& text) {
    const std::string temporary = path + ".tmp";
    std::FILE* file = std::fopen(temporary.c_str(), "wb");
    if (!file) return false;
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    if (std::fclose(file) != 0 || !written || std::rename(temporary.c_str(), path.c_str()) != 0) {
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}
