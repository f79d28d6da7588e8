// The main window under Xvfb: started on the demo site as from the command
// line, it draws the model in its first frame and shows the open's texts;
// the exit question and the solar configuration act on the window.
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSet>

#include "WindowFixture.h"
#include "app/model/ReadModel.h"

namespace {

class Window : public WindowFixture {};

// How far two colours lie apart, channel by channel.
int colourDistance(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
}

}  // namespace

TEST_F(Window, StartsOnTheDemoSiteAndDrawsItsModel) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    const QImage frame = surface->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(frame.isNull());

    // Pixels far from the background's colour (the corner above the north
    // arrow's row, left side) are the model's.
    const QRgb background = frame.pixel(4, frame.height() / 3);
    long count = 0;
    double sumX = 0, sumY = 0;
    QSet<int> colours;
    long greenish = 0;
    for (int y = 0; y < frame.height() - 40; ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            const QRgb p = frame.pixel(x, y);
            if (colourDistance(p, background) < 60) continue;
            ++count;
            sumX += x;
            sumY += y;
            colours.insert((qRed(p) >> 3) << 10 | (qGreen(p) >> 3) << 5 | qBlue(p) >> 3);
            if (qGreen(p) > qRed(p) + 10 && qGreen(p) > qBlue(p) + 10) ++greenish;
        }
    }
    const double area = double(frame.width()) * frame.height();
    // Not blank: the site fills a good part of the view.
    EXPECT_GT(count, area * 0.10);
    // Centred: seen from the south at 45 degrees, the site's middle lies near the view's.
    EXPECT_NEAR(sumX / count, frame.width() / 2.0, frame.width() * 0.08);
    EXPECT_NEAR(sumY / count, frame.height() / 2.0, frame.height() * 0.15);
    // Textured: the atlas gives hundreds of colours, grass among them.
    EXPECT_GT(colours.size(), 300);
    EXPECT_GT(greenish, count / 5);

    EXPECT_EQ(form.statusText(3), "Azimuth 0");
    EXPECT_EQ(form.helpText(), REGULAR_HELP);
    EXPECT_EQ(StatusStripText(), " 13819 vertices and 25012 faces in 7 layers   ");
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(dir.path("site/Home.vpt"))));
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(dir.path("site/Screenshots/"))));
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(startupState().NORTHARROW)));
    // The textured model has its own picture: no thumbnail is written over it.
    EXPECT_EQ(modelSession().JPG, dir.path("site/DemoSite.jpg"));
}

TEST_F(Window, ClosingAsksAndANoKeepsTheWindow) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    dialogs.pushButton(2);
    EXPECT_FALSE(form.close());
    EXPECT_TRUE(form.isVisible());
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions().back().text, "Do you really want to exit?");
    EXPECT_EQ(dialogs.questions().back().title, "Closing Viewer");
}

TEST_F(Window, TheSolarConfigurationHidesItsMenuItems) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    QAction* solar = form.findChild<QAction*>("CofigireforSolarPlanning1");
    QAction* addPrj = form.findChild<QAction*>("AddPRJ1");
    ASSERT_TRUE(solar && addPrj);
    EXPECT_TRUE(addPrj->isVisible());
    solar->trigger();
    EXPECT_TRUE(solar->isChecked());
    EXPECT_FALSE(addPrj->isVisible());
    for (const char* name : {"ExportONC1", "Compressthemodel1", "Rectifymodel1", "Explore3Dmodels1"}) {
        QAction* item = form.findChild<QAction*>(name);
        ASSERT_NE(item, nullptr) << name;
        EXPECT_FALSE(item->isVisible()) << name;
    }
    EXPECT_EQ(ORVOINI().readString("Viewer3D", "ConfiguredForSolar", ""), "YES");
    solar->trigger();
    EXPECT_FALSE(solar->isChecked());
    EXPECT_TRUE(addPrj->isVisible());
}

TEST_F(Window, CreateSolkManualAsksForItsPicturesAndOpensThePage) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    for (int i = 0; i < 7; ++i) dialogs.pushFile(QString::fromStdString(dir.path("site/DemoSite.jpg")));
    chooseMenuItem(form, "CreateManualMnu");
    const QString page = QString::fromStdString(dir.path("site/SOLK_Manual.html"));
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions().back().text, page);
    EXPECT_TRUE(QFileInfo::exists(page));
}
