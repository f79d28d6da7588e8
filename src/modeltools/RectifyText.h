// Small text helpers of the rectification passes: printf into a string with
// the "C" formats of the files, a whole file read into memory, and a walk
// over the lines of such a text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

void AppendFormat(std::string& out, const char* format, ...) __attribute__((format(printf, 2, 3)));
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

// The whole file as bytes; false when it can't be read.
bool ReadWholeFile(const std::string& path, std::string& text);

// The lines of a text held whole, each without its line feed (and without a
// carriage return before it); a last line without a line feed counts too.
class TextLines {
public:
    explicit TextLines(const std::string& text) : begin_(text.data()), p_(begin_), end_(begin_ + text.size()) {}
    bool next(std::string_view& line);
    // Bytes walked so far.
    std::size_t offset() const { return static_cast<std::size_t>(p_ - begin_); }

private:
    const char* begin_;
    const char* p_;
    const char* end_;
};

// The line without the blanks and tabs that lead it.
std::string_view SkipLeadingBlanks(std::string_view line);
// The line begins, after its leading blanks, with the letter and a blank ("v ", "f ").
bool IsObjRecord(std::string_view line, char letter);
