// The text of the climate files: numbers always in "C" notation, and files
// as line lists split the way the list loader of the hourly file splits them.
#pragma once

#include <locale.h>

#include <string>
#include <string_view>
#include <vector>

// Puts this thread's number notation to "C" while it lives. The window's
// toolkit adopts the user's locale at start, and sscanf, strtod and snprintf
// would then read and write 3.25 as "3,25".
class ClimateCLocale {
public:
    ClimateCLocale();
    ~ClimateCLocale();
    ClimateCLocale(const ClimateCLocale&) = delete;
    ClimateCLocale& operator=(const ClimateCLocale&) = delete;

private:
    locale_t previous_;
};

// Fixed notation with `digits` decimals after rounding to `precision`
// significant digits, so 12345.678 with precision 6 reads "12345.70". A value
// with more than `precision` integer digits comes in scientific notation.
// A value that rounds to zero carries no minus sign.
std::string FixedText(double value, int precision, int digits);

// A whole field read as a decimal number ("C" notation, blanks around it
// allowed); anything else gives the fallback.
double TolerantNumber(std::string_view text, double fallback);

// The parts of a sun-table date and time, read as sscanf reads them with
// "%4d-%2d-%2d" and "%2d:%2d" (a part that does not scan stops the reading and
// leaves it and the parts after it as they were), at a fraction of its cost:
// a year's hours of every panel go through here.
void ScanDateParts(const char* date, int& year, int& month, int& day);
void ScanTimeParts(const char* time, int& hour, int& minute);

// Drops the blanks and control characters at both ends.
std::string_view TrimText(std::string_view text);

// Splits on every comma; "a,,b," gives four fields.
std::vector<std::string_view> SplitCommas(std::string_view text);

// Lines end at CR, LF or CRLF; a last line without an end counts, a final
// line end adds no empty line.
std::vector<std::string> SplitTextLines(std::string_view text);

// How many lines SplitTextLines makes of the text, without making them.
std::size_t CountTextLines(std::string_view text);

// The whole file as lines; false when it cannot be read.
bool ReadTextLines(const std::string& path, std::vector<std::string>& lines);

// The whole file as text; false when it cannot be read.
bool ReadTextFile(const std::string& path, std::string& text);

// Writes through "path.tmp" and a rename, so a failed write never leaves a
// half file where a good one stood; false on failure.
bool WriteTextFileAtomically(const std::string& path, const std::string& text);
