// The drawing tool: page fit, strips and dimension lines, read back as XML.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <cmath>
#include <map>
#include <vector>

#include "solar/design/Csv2Svg.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

struct Element {
    QString name;
    std::map<QString, QString> attr;
    QString text;
    double num(const char* key) const { return attr.at(key).toDouble(); }
};

// Every element of the SVG with its attributes; fails the test on bad XML.
std::vector<Element> parseSvg(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    std::vector<Element> all;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            Element e{xml.name().toString(), {}, {}};
            for (const auto& a : xml.attributes()) e.attr[a.name().toString()] = a.value().toString();
            if (e.name == "text" || e.name == "script") e.text = xml.readElementText();
            all.push_back(e);
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return all;
}

std::vector<Element> named(const std::vector<Element>& all, const char* name) {
    std::vector<Element> out;
    for (const Element& e : all)
        if (e.name == name) out.push_back(e);
    return out;
}

// Content 0..100 x 0..50 cm on A4: with 5 and 8 units added around,
// scale 0.9 * 277 / 110 = 2.266364 mm per cm, origin (23.85, 179.79).
TEST(SvgDrawing, DimensionLinesSitWhereThePageFitPutsThem) {
    ScratchDir dir;
    const std::string csv = dir.path("frame.csv");
    writeTextFile(csv,
                  "// a frame\n# another comment\n\n"
                  "0, 0, 100, 0\n"
                  "0,0,0,50\n"
                  "10, 20, 90, 20, 4, 8421504\n"
                  "10, 30, 90, 30, 2, RGB(255,0,0), 0\n");
    const QString svg = CSV2SVG(QString::fromStdString(csv), "Frame A", "");
    ASSERT_EQ(svg.toStdString(), dir.path("frame.svg"));
    const std::vector<Element> all = parseSvg(svg);
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all[0].name, "svg");
    EXPECT_EQ(all[0].attr.at("width"), "297.00mm");
    EXPECT_EQ(all[0].attr.at("viewBox"), "0 0 297.00 210.00");
    EXPECT_EQ(named(all, "script").size(), 1u);

    const auto lines = named(all, "line");
    ASSERT_EQ(lines.size(), 4u);
    // Horizontal: " 100 " needs 5 * 6 * 1.1 * 0.26 + 3 = 11.58 mm, so the 12 mm minimum.
    const double tol = 0.006;
    EXPECT_NEAR(lines[0].num("x1"), 35.18, tol);
    EXPECT_NEAR(lines[0].num("y1"), 161.66, tol);
    EXPECT_NEAR(lines[0].num("x2"), 142.50, tol);
    EXPECT_EQ(lines[0].attr.at("marker-start"), "url(#arrStart)");
    EXPECT_NEAR(lines[1].num("x1"), 154.50, tol);
    EXPECT_NEAR(lines[1].num("x2"), 261.82, tol);
    EXPECT_EQ(lines[1].attr.at("marker-end"), "url(#arrEnd)");
    // Vertical, upper end first: " 50 " needs 7.99 mm around the middle 105.00.
    EXPECT_NEAR(lines[2].num("y1"), 48.34, tol);
    EXPECT_NEAR(lines[2].num("y2"), 101.00, tol);
    EXPECT_NEAR(lines[3].num("y1"), 109.00, tol);
    EXPECT_NEAR(lines[3].num("y2"), 161.66, tol);

    const auto texts = named(all, "text");
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0].text, "Frame A");
    EXPECT_EQ(texts[0].attr.count("direction"), 0u);
    EXPECT_EQ(texts[1].text, " 100 ");
    EXPECT_NEAR(texts[1].num("y"), 162.26, tol);
    EXPECT_EQ(texts[1].attr.at("transform"), "rotate(0.00 148.50 162.26)");
    EXPECT_EQ(texts[2].text, " 50 ");
    EXPECT_TRUE(texts[2].attr.at("transform").startsWith("rotate(90.00 "));

    const auto polygons = named(all, "polygon");
    ASSERT_EQ(polygons.size(), 4u);  // two markers, two strips
    EXPECT_EQ(polygons[2].attr.at("fill"), "#808080");
    EXPECT_EQ(polygons[2].attr.at("stroke"), "#000000");
    EXPECT_TRUE(polygons[2].attr.at("points").startsWith("57.85,120.86 "));
    EXPECT_EQ(polygons[3].attr.at("fill"), "#FF0000");
    EXPECT_EQ(polygons[3].attr.at("stroke"), "#FF0000");

    const std::string log = readTextFile(dir.path("frame.log"));
    EXPECT_EQ(log.rfind("=== CSV2SVG LOG ===\nCSV: " + csv + "\nHeader=Frame A, Footer=\n", 0), 0u);
    EXPECT_NE(log.find("Processing line: 0,0,0,50\nCalculated length (Lw_cm): 50.00\nVERTICAL\n"), std::string::npos);
}

TEST(SvgDrawing, MetaLinePageAndDecimals) {
    // A3, 100 x 100 content: the height limits, 0.9 * 277 / 116 = 2.149138.
    ScratchDir dir;
    const std::string csv = dir.path("a3.csv");
    writeTextFile(csv, "@ PAGE = a3 , Dim_Dec=1, interactive=0, unknown=4\n0,0,100,100\n100,0,0,0,1\n");
    const auto all = parseSvg(CSV2SVG(QString::fromStdString(csv), "", QString::fromUtf8("גג שטוח")));
    EXPECT_EQ(all[0].attr.at("width"), "420.00mm");
    EXPECT_TRUE(named(all, "script").empty());
    const auto lines = named(all, "line");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_NEAR(lines[0].num("x1"), 102.54, 0.006);
    EXPECT_NEAR(lines[0].num("y1"), 255.96, 0.006);
    const auto texts = named(all, "text");
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0].text, " 141.4 ");
    // Orientation 1 keeps the drawing direction, right to left: upside down.
    EXPECT_EQ(texts[1].text, " 100 ");
    EXPECT_TRUE(texts[1].attr.at("transform").startsWith("rotate(180.00 "));
    EXPECT_EQ(texts[2].attr.at("direction"), "rtl");
    EXPECT_EQ(texts[2].attr.at("font-family"), "Arial, David, sans-serif");
}

// Decimals past what a double holds print nothing more: a file asking for
// two thousand million of them gets 15.
TEST(SvgDrawing, DecimalsStopAtFifteen) {
    ScratchDir dir;
    const std::string csv = dir.path("decimals.csv");
    writeTextFile(csv, "@page=A4, dim_dec=2000000000\n0,0,100,100\n");
    const auto texts = named(parseSvg(CSV2SVG(QString::fromStdString(csv), "", "")), "text");
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts[0].text, " 141.421356237309510 ");
}

TEST(SvgDrawing, ShortDimensionArrowsTouch) {
    ScratchDir dir;
    const std::string csv = dir.path("short.csv");
    writeTextFile(csv, "0,0,100,0\n0,-1,0.5,-1\n");
    const auto lines = named(parseSvg(CSV2SVG(QString::fromStdString(csv), "", "")), "line");
    ASSERT_EQ(lines.size(), 4u);
    // 0.5 cm is 1.13 mm on the page: under 2 mm, so no gap at all.
    EXPECT_DOUBLE_EQ(lines[2].num("x2"), lines[3].num("x1"));
}

// A number too big for an int stops at the int's end instead of wrapping to
// its other end: a huge colour is white, not black, and a huge orientation
// is as much "turned" as 1 is.
TEST(SvgDrawing, NumbersBeyondTheIntRangeStopAtItsEnds) {
    ScratchDir dir;
    const std::string csv = dir.path("big.csv");
    const auto draw = [&](const std::string& rows) {
        writeTextFile(csv, "0,0,100,0\n" + rows);
        return readTextFile(CSV2SVG(QString::fromStdString(csv), "", "").toStdString());
    };
    EXPECT_EQ(draw("0,10,80,40,888888888888888\n"), draw("0,10,80,40,1\n"));
    EXPECT_EQ(draw("0,20,90,20,4,1e20,0\n"), draw("0,20,90,20,4,2147483647,0\n"));
    EXPECT_EQ(draw("0,20,90,20,4,-1e20,0\n"), draw("0,20,90,20,4,-2147483648,0\n"));

    int colour = 0;
    ASSERT_TRUE(ParseCsvuColour("RGB(99999999999, -99999999999, 0)", colour));
    EXPECT_EQ(colour, 0xFF);
    EXPECT_EQ(CsvuInt(std::nan("")), 0);
}

TEST(SvgDrawing, NothingToDrawGivesNoFile) {
    ScratchDir dir;
    const std::string csv = dir.path("empty.csv");
    writeTextFile(csv, "// only a comment\n@page=A4\n1,2,3\n");
    EXPECT_TRUE(CSV2SVG(QString::fromStdString(csv), "H", "F").isEmpty());
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("empty.svg"))));
    EXPECT_TRUE(CSV2SVG(QString::fromStdString(dir.path("missing.csv")), "", "").isEmpty());
}

}  // namespace
