// zorvex64-cli panel-write and panels-info, run as a script would run them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::runCli;

namespace {

using testsupport::readTextFile;
using testsupport::ScratchDir;

const char* const kCorners = "'100,200,10;100,201.7,10.5;101,201.7,10.5;101,200,10'";

TEST(PanelCli, WrittenPanelIsListedFromItsFile) {
    ScratchDir dir;
    const std::string out = dir.path("Panel-12_417.dae");
    const CliResult write = runCli("panel-write " + out + " --name 12/417 --corners " + kCorners, dir);
    ASSERT_EQ(write.exitCode, 0) << write.err;
    EXPECT_EQ(write.out, out + "\n");
    const std::string text = readTextFile(out);
    EXPECT_NE(text.find("      <node id=\"12/417\" name=\"12/417\">\n"), std::string::npos);
    // Measured from the corners: 1.77 m by 1 m, portrait, facing south at 16.4 degrees.
    EXPECT_NE(text.find("            <length>1772</length>\n            <width>1000</width>\n"
                        "            <thickness>0</thickness>\n"),
              std::string::npos);
    EXPECT_NE(text.find("            <tilt>16.39</tilt>\n            <azimuth>180.00</azimuth>\n"), std::string::npos);
    EXPECT_NE(text.find("          <p>0 1 2 3</p>\n"), std::string::npos);

    const CliResult info = runCli("panels-info " + out, dir);
    ASSERT_EQ(info.exitCode, 0) << info.err;
    EXPECT_EQ(info.out, dir.path("Panel-12_417.csv") + "\n");
    EXPECT_EQ(readTextFile(dir.path("Panel-12_417.csv")),
              "ModuleType,Layer,Name,Filename,Row,Grouping,TextureName,Length,Width,DTilt,DAzimuth,RoofType,"
              "PanelPowerratingKW,CenterX,CenterY,CenterZ\n"
              ",(MISSING),12/417," + out + ",0,,,1772,1000,16,180,Tiled,0.000000,100.500000,200.850000,10.250000\n");
}

TEST(PanelCli, ModuleFromTheCatalogueGivesATexturedBox) {
    ScratchDir dir;
    const std::string out = dir.path("Panel-3_9.dae");
    const CliResult write =
        runCli("panel-write " + out + " --name 3/9 --corners " + kCorners + " --module 'AIKO-ZV620' --thickness 30", dir);
    ASSERT_EQ(write.exitCode, 0) << write.err;
    const std::string text = readTextFile(out);
    EXPECT_NE(text.find("            <module_type>AIKO-ZV620 ABC</module_type>\n"), std::string::npos);
    EXPECT_NE(text.find("          <float_array id=\"3/9_positions_array\" count=\"24\">\n"), std::string::npos);
    EXPECT_NE(text.find("      <init_from>PNEG.JPG</init_from>\n"), std::string::npos);
    EXPECT_NE(text.find("            <power_rating_stc>0.620000</power_rating_stc>\n"), std::string::npos);
    // The texture lies beside the panel file, made from the installation's picture.
    EXPECT_FALSE(readTextFile(dir.path("PNEG.JPG")).empty());
}

TEST(PanelCli, BadArgumentsAndMissingFilesAreRefused) {
    ScratchDir dir;
    const std::string out = dir.path("p.dae");
    EXPECT_EQ(runCli("panel-write " + out + " --name 12 --corners " + kCorners, dir).exitCode, 2);
    EXPECT_EQ(runCli("panel-write " + out + " --name 1/2 --corners '1,2,3;4,5,6'", dir).exitCode, 2);
    EXPECT_EQ(runCli("panel-write --name 1/2 --corners " + std::string(kCorners), dir).exitCode, 2);
    EXPECT_EQ(runCli("panel-write " + out + " --name 1/2 --corners " + kCorners + " --thickness -3", dir).exitCode, 2);
    const CliResult unknown = runCli("panel-write " + out + " --name 1/2 --corners " + kCorners + " --module NOPE", dir);
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_NE(unknown.err.find("module not found in the catalogue: NOPE"), std::string::npos) << unknown.err;
    EXPECT_EQ(runCli("panels-info", dir).exitCode, 2);
    const CliResult missing = runCli("panels-info " + dir.path("gone.dae"), dir);
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.err, "Missing\n" + dir.path("gone.dae") + "\n");
}

}  // namespace
