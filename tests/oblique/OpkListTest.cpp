// The OPK list of a model without a catalogue: built once from its
// "OPK.TXT" into the prepared ".OPK" and ".CSV", read from there after.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>

#include "ObliqueFixture.h"
#include "oblique/OpkList.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class OpkList : public ObliqueFixture {
protected:
    std::string model() const { return dir.path("site/Site.obj"); }
    void writeOpkTxt() {
        // A camera looking straight down, one tilted by phi, one by omega, and a broken line.
        writeTextFile(dir.path("site/oblixs/opk.txt"),
                      "Tessmap OPK export\nName X Y Z Omega Phi Kappa\n"
                      "IMG_A 100 200 30 0 0 0\n"
                      "IMG_C 100 200 30 0 30 0\n"
                      "IMG_B 100.5 200.25 30 -20 0 45\n"
                      "IMG_D 1 2\n");
    }
};

// A small JPEG whose EXIF block holds only the Orientation tag.
void writeJpegWithOrientation(const std::string& path, int orientation) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::gray);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG");
    // Big-endian TIFF header, one IFD entry: tag 0x0112, SHORT, count 1.
    const QByteArray tiff = QByteArray("MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 19) +
                            char(orientation) + QByteArray("\0\0\0\0\0\0", 6);
    const QByteArray payload = QByteArray("Exif\0\0", 6) + tiff;
    const int length = payload.size() + 2;
    const QByteArray app1 = QByteArray("\xFF\xE1", 2) + char(length >> 8) + char(length & 0xFF) + payload;
    jpeg.insert(2, app1);
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(jpeg);
}

}  // namespace

TEST_F(OpkList, TheTurnIsReadFromThePicturesExifOrientation) {
    writeTextFile(dir.path("site/OBLIXS/OPK.TXT"), "h1\nh2\nIMG_C 100 200 30 0 30 0\n");
    writeJpegWithOrientation(dir.path("site/OBLIXS/IMG_C.jpg"), 8);
    ASSERT_EQ(LoadOpkList(model()), 1);
    EXPECT_TRUE(obliqueStore().TSOPK[0].endsWith(" 0.58 270"));
}

TEST_F(OpkList, TheListIsBuiltFromOpkTxtSortedAndTheCsvKeepsTheFileOrder) {
    writeOpkTxt();
    // The first picture that exists (IMG_C's) sets the turn of all: orientation 6 is 90 degrees.
    touch(dir.path("site/oblixs/IMG_C.JPG"));
    touch(dir.path("site/oblixs/IMG_B.jpg"));
    QStringList asked;
    obliqueHooks().exifOrientation = [&](const QString& picture) {
        asked << QFileInfo(picture).fileName();
        return picture.endsWith("IMG_C.JPG") ? 6 : 3;
    };

    EXPECT_EQ(LoadOpkList(model()), 2);
    EXPECT_EQ(asked, QStringList{"IMG_C.JPG"});
    const std::string opk =
        "IMG_B 100.500000 200.250000 30.000000 100.500000 199.886030 31.000000 180 69 1.00   0.00 -0.36 1.00 0.36 90\n"
        "IMG_C 100.000000 200.000000 30.000000 99.422650 200.000000 31.000000 270 60 1.00   -0.58 0.00 1.00 0.58 90\n";
    EXPECT_EQ(readTextFile(dir.path("site/oblixs/Site.OPK")), opk);
    EXPECT_EQ(readTextFile(dir.path("site/oblixs/Site.CSV")),
              "Image,X1,Y1,Z1,Z2,Y2,Z2,Azimuth,Pitch,fpc,DX,DY,DZ,DIST,Rotation\n"
              "IMG_C ,100.000000, 200.000000, 30.000000, 99.422650, 200.000000, 31.000000, 270, 60, 1.00 ,  -0.58 "
              ",0.00 ,1.00 ,0.58,90\n"
              "IMG_B ,100.500000, 200.250000, 30.000000, 100.500000, 199.886030, 31.000000, 180, 69, 1.00 ,  0.00 "
              ",-0.36 ,1.00 ,0.36,90\n");
    EXPECT_EQ(modelSession().KamaOPK, 2);
    EXPECT_EQ(modelSession().OPKfile, dir.path("site/oblixs/Site.OPK"));
    EXPECT_EQ(obliqueStore().DIR_OPK, QString::fromStdString(dir.path("site/oblixs/")));
    EXPECT_EQ(readTextFile(sessionPaths().ORVO_T + "t.txt"), opk);
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions().back().text, QString::fromStdString(sessionPaths().ORVO_T + "t.txt"));
}

TEST_F(OpkList, APreparedListIsReadAsItStands) {
    writeOpkTxt();
    writeTextFile(dir.path("site/oblixs/Site.OPK"),
                  "IMG_Z 1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7 8 1.00   3.00 3.00 3.00 4.24 0\n");
    EXPECT_EQ(LoadOpkList(model()), 1);
    EXPECT_EQ(obliqueStore().TSOPK,
              QStringList{"IMG_Z 1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7 8 1.00   3.00 3.00 3.00 4.24 0"});
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("site/oblixs/Site.CSV"))));
}

TEST_F(OpkList, AModelWithoutOpkTxtHasNoList) {
    writeTextFile(dir.path("site/Site.obj"), "");
    EXPECT_EQ(LoadOpkList(model()), 0);
    EXPECT_EQ(modelSession().KamaOPK, 0);
    EXPECT_TRUE(obliqueStore().TSOPK.isEmpty());
}
