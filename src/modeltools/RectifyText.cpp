#include "RectifyText.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace {

void appendV(std::string& out, const char* format, va_list args) {
    va_list again;
    va_copy(again, args);
    char small[512];
    const int n = std::vsnprintf(small, sizeof small, format, args);
    if (n >= 0 && static_cast<std::size_t>(n) < sizeof small) {
        out.append(small, static_cast<std::size_t>(n));
    } else if (n >= 0) {
        std::string big(static_cast<std::size_t>(n) + 1, '\0');
        std::vsnprintf(big.data(), big.size(), format, again);
        out.append(big.data(), static_cast<std::size_t>(n));
    }
    va_end(again);
}

}  // namespace

void AppendFormat(std::string& out, const char* format, ...) {
    va_list args;
    va_start(args, format);
    appendV(out, format, args);
    va_end(args);
}

std::string Format(const char* format, ...) {
    std::string out;
    va_list args;
    va_start(args, format);
    appendV(out, format, args);
    va_end(args);
    return out;
}

bool ReadWholeFile(const std::string& path, std::string& text) {
    text.clear();
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return false;
    struct stat info {};
    if (fstat(fileno(file), &info) != 0 || !S_ISREG(info.st_mode)) {
        std::fclose(file);
        return false;
    }
    text.resize(static_cast<std::size_t>(info.st_size));
    const std::size_t got = std::fread(text.data(), 1, text.size(), file);
    const bool ok = got == text.size() && !std::ferror(file);
    std::fclose(file);
    if (!ok) text.clear();
    return ok;
}

bool TextLines::next(std::string_view& line) {
    if (p_ >= end_) return false;
    const char* feed = static_cast<const char*>(std::memchr(p_, '\n', static_cast<std::size_t>(end_ - p_)));
    const char* stop = feed ? feed : end_;
    const char* last = stop;
    if (last > p_ && last[-1] == '\r') --last;
    line = std::string_view(p_, static_cast<std::size_t>(last - p_));
    p_ = feed ? feed + 1 : end_;
    return true;
}

std::string_view SkipLeadingBlanks(std::string_view line) {
    std::size_t i = 0;
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
    return line.substr(i);
}

bool IsObjRecord(std::string_view line, char letter) {
    const std::string_view rest = SkipLeadingBlanks(line);
    return rest.size() >= 2 && rest[0] == letter && rest[1] == ' ';
}
