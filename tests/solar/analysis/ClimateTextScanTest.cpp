// The quick readers of the report's hot path against the slow ones they stand
// in for: date and time parts against sscanf, the line count against the split.
#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>

#include "solar/analysis/ClimateText.h"

TEST(DateParts, ReadAsSscanfReadsThemWhateverTheText) {
    const std::string alphabet = "0123456789-+: x";
    std::mt19937 random(11);
    const std::string samples[] = {"2025-06-21", "2025-6-1", " 2025- 06-21", "+2025-06-21", "20250-06-21",
                                   "2025-06", "-2025--6--1", "2025-0x", "", "12:30", "7:5", "12 :30", "123:4"};
    std::vector<std::string> texts(std::begin(samples), std::end(samples));
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 12, ' ');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        texts.push_back(text);
    }
    for (const std::string& text : texts) {
        int y = -7, m = -7, d = -7, ey = -7, em = -7, ed = -7;
        ScanDateParts(text.c_str(), y, m, d);
        std::sscanf(text.c_str(), "%4d-%2d-%2d", &ey, &em, &ed);
        ASSERT_EQ(std::tie(y, m, d), std::tie(ey, em, ed)) << '"' << text << '"';
        int h = -7, n = -7, eh = -7, en = -7;
        ScanTimeParts(text.c_str(), h, n);
        std::sscanf(text.c_str(), "%2d:%2d", &eh, &en);
        ASSERT_EQ(std::tie(h, n), std::tie(eh, en)) << '"' << text << '"';
    }
}

TEST(ClimateLines, CountedAsTheSplitMakesThem) {
    for (const char* text : {"", "a", "a\n", "a\r\nb", "a\rb\r", "\n\n", "a\r\n\r\n", "\r", "x\n\ry"})
        EXPECT_EQ(CountTextLines(text), SplitTextLines(text).size()) << '"' << text << '"';
}
