// zorvex64-cli inf, discover and unanalyzed on a small site: the information
// file of an opened model checked field by field against the OBJ, the
// catalogue made from it, and bad input.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

class CatalogCli : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string model;

    // A 20 x 30 m terrain from file height 40 to 45, 178000 / 663000 away
    // from the map frame, without a coordinate system; the file's first line
    // is the program's comment.
    void SetUp() override {
        writeTextFile(dir.path("site/m/Site_model.obj"),
                      "# Orvo . . survey 2023\nmtllib Site_model.mtl\n"
                      "v -10 -15 40\nv 10 -15 40\nv 10 15 45\nv -10 15 45\nf 1 2 3\nf 1 3 4\n");
        writeTextFile(dir.path("site/m/Site_model.mtl"), "");
        writeTextFile(dir.path("site/m/offset.txt"), "178000.000 663000.000 0.000\n");
        writeTextFile(dir.path("site/u/Other.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
        writeTextFile(dir.path("site/u/Other.mtl"), "");
        QFile file(QString::fromStdString(dir.path("site/m/Site_model.obj")));
        file.open(QIODevice::ReadWrite);
        file.setFileTime(QDateTime(QDate(2023, 4, 5), QTime(6, 7, 8)), QFileDevice::FileModificationTime);
        model = dir.path("site/m/Site_model.obj");
    }
    CliResult run(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "DISPLAY= HOME=" + dir.path("home"));
    }
    std::string orvoT(const std::string& name) const { return dir.path("home/Orvo_/TMP/" + name); }
};

}  // namespace

TEST_F(CatalogCli, InfWritesTheRowOfTheOpenedModelAndItsThumbnail) {
    const CliResult r = run("inf " + model);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const std::string inf = dir.path("site/m/Site_model_INF.CSV");
    const std::string jpg = dir.path("site/m/Site_model_INF.JPG");
    EXPECT_EQ(r.out, inf + "\n" + jpg + "\n");
    const QStringList lines = QString::fromStdString(testsupport::readTextFile(inf)).split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], "Project,Model,Creation,Last accessed,Xmin,Xmax,Ymin,Ymax,Zmin,Zmax,Vertices,Faces,Image,"
                        "Comment,Lat,Lon");
    EXPECT_EQ(lines[2], "");
    // Without a coordinate system the position is the extent's plain centre.
    const QRegularExpression row(
        "^Site," + QRegularExpression::escape(QString::fromStdString(model)) +
        ",2023-04-05 06:07:08,(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d),177990\\.0,178010\\.0,662985\\.0,663015\\.0,"
        "40\\.0,45\\.0,4,2," + QRegularExpression::escape(QString::fromStdString(jpg)) +
        ",Orvo \\. \\. survey 2023  ,663000\\.000000,178000\\.000000$");
    const QRegularExpressionMatch match = row.match(lines[1]);
    ASSERT_TRUE(match.hasMatch()) << lines[1].toStdString();
    const QDateTime accessed = QDateTime::fromString(match.captured(1), "yyyy-MM-dd hh:mm:ss");
    EXPECT_LT(std::abs(accessed.secsTo(QDateTime::currentDateTime())), 120);
    const std::string picture = testsupport::readTextFile(jpg);
    ASSERT_GT(picture.size(), 4u);
    EXPECT_EQ(picture.substr(0, 3), "\xFF\xD8\xFF");
}

TEST_F(CatalogCli, DiscoverListsTheAnalysedModelAndUnanalyzedTheOther) {
    ASSERT_EQ(run("inf " + model).exitCode, 0);
    const CliResult d = run("discover " + dir.path("site"));
    ASSERT_EQ(d.exitCode, 0) << d.err;
    EXPECT_EQ(d.out, orvoT("models.csv") + "\n" + orvoT("3DmodelsCoverage.shp") + "\nmodels 1\n");
    const std::string table = testsupport::readTextFile(orvoT("models.csv"));
    EXPECT_NE(table.find("," + model + ",663000.000000,178000.000000,178000,663000\n"), std::string::npos) << table;

    const CliResult u = run("unanalyzed " + dir.path("site"));
    ASSERT_EQ(u.exitCode, 0) << u.err;
    EXPECT_EQ(u.out, orvoT("Unanalyzed_1.csv") + "\nanalyzed 1\nunanalyzed 1\n");
    EXPECT_NE(testsupport::readTextFile(orvoT("Unanalyzed_1.csv")).find(dir.path("site/u/Other.obj") + ","),
              std::string::npos);
}

TEST_F(CatalogCli, EmptyFolderAndBadArgumentsFail) {
    const CliResult empty = run("discover " + dir.path("site/u"));
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_NE(empty.err.find("No 3Dmodels found"), std::string::npos);
    EXPECT_EQ(run("discover " + dir.path("nowhere")).exitCode, 1);
    EXPECT_EQ(run("unanalyzed").exitCode, 2);
    EXPECT_EQ(run("inf").exitCode, 2);
    EXPECT_EQ(run("inf " + dir.path("site/m/none.obj")).exitCode, 1);
}
