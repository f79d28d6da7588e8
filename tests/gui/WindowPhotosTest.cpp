// The Photos menu in the real window: "Analyze EXIF" asks for a picture and
// shows exiftool's report of it with the drone and altitude lines added.
#include <QFile>
#include <QProcess>

#include "WindowFixture.h"

namespace {

class WindowPhotos : public WindowFixture {};

}  // namespace

TEST_F(WindowPhotos, AnalyzeExifShowsThePicturesReportWithTheDroneLines) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    const QString picture = QString::fromStdString(dir.path("site/DJI_0007.JPG"));
    ASSERT_TRUE(QFile::copy(QString::fromStdString(dir.path("site/DemoSite.jpg")), picture));
    ASSERT_EQ(QProcess::execute("exiftool", {"-q", "-overwrite_original", "-Model=M4TD", picture}), 0);

    dialogs.pushFile(picture);
    chooseMenuItem(form, "AnalyzeEXIF1");
    const auto& asked = dialogs.questions();
    ASSERT_GE(asked.size(), 2u);
    EXPECT_EQ(asked[asked.size() - 2].title, "Open the image file (input)");
    QFile shown(asked.back().text);
    ASSERT_TRUE(shown.open(QIODevice::ReadOnly)) << asked.back().text.toStdString();
    const QString text = QString::fromUtf8(shown.readAll());
    EXPECT_TRUE(text.contains("Camera Model Name               : M4TD\n"));
    EXPECT_TRUE(text.contains("Drone name                 ***  : Matrice 4TD\n"));
}
