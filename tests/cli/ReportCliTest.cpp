// zorvex64-cli report on a one-panel roof, run as a user would run it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <filesystem>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

namespace {

using testsupport::CliResult;
using testsupport::readTextFile;
using testsupport::runCli;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

class ReportCli : public ::testing::Test {
protected:
    // A flat 20 m roof at z 5 with one panel placed on it, and two hours of climate.
    void SetUp() override {
        // The report asks no geocoder: tests never reach the public one.
        writeTextFile(dir.path("Orvo_/Orvo.ini"), "[Services]\nGeocoding =\n");
        writeTextFile(dir.path("roof.obj"), "v -10 -10 5\nv 10 -10 5\nv 10 10 5\nv -10 10 5\nf 1 2 3 4\n");
        writeTextFile(dir.path("climate.csv"),
                      "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,"
                      "AvgTemperature,AvgWindSpeed\n06-21,11:00,700.00,100.00,50.00,25.0,1.0\n"
                      "06-21,12:00,800.00,100.00,50.00,25.0,1.0\n");
        const CliResult placed = cli("place " + dir.path("roof.obj") +
                                     " 0 0 5 1.2 0 5 0 2 5 --lift 0 --module 'ZV-M54 410 Black'");
        ASSERT_EQ(placed.exitCode, 0) << placed.err;
        const QStringList words = QString::fromStdString(placed.out).split(' ');
        ASSERT_GE(words.size(), 2);
        name = words[0];
        panelFile = words[1];
    }
    CliResult cli(const std::string& arguments) { return runCli(arguments, dir, "HOME=" + dir.root()); }
    CliResult report(const std::string& options) {
        return cli("report " + dir.path("roof.obj") + " --climate " + dir.path("climate.csv") + " " + options);
    }
    // A panel file as an older copy of the site left it: its record names a place that is gone.
    void recordStalePath(const QString& file, const QString& stale) {
        const QString text = QString::fromStdString(readTextFile(file.toStdString()));
        const QString tag = "<name>" + name + "</name>";
        ASSERT_TRUE(text.contains(tag));
        writeTextFile(file.toStdString(),
                      QString(text).replace(tag, tag + "\n<original_path>" + stale + "</original_path>").toStdString());
    }
    QString folder() const { return QString::fromStdString(dir.root()); }

    ScratchDir dir;
    QString name;       // "1/G"
    QString panelFile;  // the panel's own file in PANELS/
};

}  // namespace

TEST_F(ReportCli, ReportsThePanelsOfTheModelsFolderAndListsTheFilesWritten) {
    recordStalePath(panelFile, "/gone/site/PANELS/Panel-1_1.dae");
    const CliResult r = report("--center --loss 10");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QRegularExpression logLine("^log (\\S+/Reports/\\d+_roof_ComprehensiveLog)\\.LOG\n");
    const auto m = logLine.match(QString::fromStdString(r.out));
    ASSERT_TRUE(m.hasMatch()) << r.out;
    const QString base = m.captured(1);
    const QString leaf = QFileInfo(panelFile).completeBaseName();
    EXPECT_EQ(base.left(folder().size()), folder());
    // The panel's results go into the file it was read from, not the one its record names.
    EXPECT_EQ(QString::fromStdString(r.out),
              "log " + base + ".LOG\n" + "csv " + base + ".csv\n" + "html " + base + ".html\n" + "documentation " +
                  base + "_TechnicalDocumentation.html\n" + "panel " + panelFile + "\n" + "shading " + folder() +
                  "PANELS/SHADING/" + leaf + "_Shading.CSV\n" + "rays " + folder() + "PANELS/SHADING/" + leaf +
                  "_Shading.dae\n");
    const QStringList csv = QString::fromStdString(readTextFile((base + ".csv").toStdString())).split('\n');
    ASSERT_EQ(csv.size(), 3);
    EXPECT_TRUE(csv[0].startsWith("PanelID,X,Y,Z,"));
    EXPECT_TRUE(csv[1].startsWith(name + "A,")) << csv[1].toStdString();
    EXPECT_EQ(csv[2], "");
    EXPECT_FALSE(QFileInfo::exists(base + ".JPG"));
    EXPECT_NE(r.err.find("\rProcessing panel 1 of 1"), std::string::npos);
    EXPECT_EQ(r.err.back(), '\n');
}

TEST_F(ReportCli, APanelsFilesPanelsAreWrittenIntoTheModelsPanelsFolder) {
    const std::string elsewhere = dir.path("elsewhere/Panels_site.dae");
    std::filesystem::create_directories(dir.path("elsewhere"));
    std::filesystem::rename(panelFile.toStdString(), elsewhere);
    recordStalePath(QString::fromStdString(elsewhere), "C:\\Old\\Site\\PANELS\\Panel-9_9.dae");
    const CliResult r = report("--string-inverter --panels " + elsewhere);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QString own = folder() + "PANELS/Panel-9_9.dae";
    EXPECT_NE(QString::fromStdString(r.out).indexOf("\npanel " + own + "\nshading " + folder() +
                                                    "PANELS/SHADING/Panel-9_9_Shading.CSV\n"),
              -1)
        << r.out;
    EXPECT_TRUE(QFileInfo::exists(own));
    EXPECT_EQ(QDir(QString::fromStdString(dir.path("elsewhere"))).entryList(QDir::Files),
              QStringList{"Panels_site.dae"});
}

TEST_F(ReportCli, FailuresAndBadArguments) {
    EXPECT_EQ(cli("report").exitCode, 2);
    EXPECT_EQ(report("--loss abc").exitCode, 2);
    EXPECT_EQ(report("--loss 5.5").exitCode, 2);
    EXPECT_EQ(report("--bogus").exitCode, 2);
    EXPECT_EQ(cli("report " + dir.path("missing.obj")).exitCode, 1);

    const CliResult noClimate = cli("report " + dir.path("roof.obj") + " --climate " + dir.path("none.csv"));
    EXPECT_EQ(noClimate.exitCode, 1);
    EXPECT_NE(noClimate.err.find("Could not download PVGIST data\n"), std::string::npos);
    EXPECT_EQ(noClimate.out.find("csv "), std::string::npos);

    std::filesystem::remove(panelFile.toStdString());
    const CliResult noPanels = report("");
    EXPECT_EQ(noPanels.exitCode, 1);
    EXPECT_NE(noPanels.err.find("No panels created. Cannot generate multiple panel report.\n"), std::string::npos);
    EXPECT_NE(noPanels.err.find("Could not create\n"), std::string::npos);
}
