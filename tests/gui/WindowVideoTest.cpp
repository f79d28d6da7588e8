// "Create video" in the real window on the demo site, under Xvfb: the
// frames are counted in a progress dialog; its Cancel leaves no video, Esc
// ends the video at the frame reached and encodes it.
#include <QFileInfo>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>

#include "WindowFixture.h"
#include "motion/Flythrough.h"
#include "motion/VideoOutput.h"
#include "motion/ui/VideoMenu.h"

namespace {

class WindowVideo : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        resetFlythroughState();
        resetVideoState();
    }
    // Once the dialog has counted three frames, what the operator does to it.
    static void afterThreeFrames(std::function<void(QProgressDialog*)> act) {
        auto* poll = new QTimer;
        QObject::connect(poll, &QTimer::timeout, [poll, act] {
            for (QWidget* widget : QApplication::topLevelWidgets())
                for (auto* dialog : widget->findChildren<QProgressDialog*>("VideoProgress"))
                    if (dialog->isVisible() && dialog->value() >= 3) {
                        poll->stop();
                        poll->deleteLater();
                        act(dialog);
                        return;
                    }
        });
        poll->start(5);
    }
    // Ten seconds of video asked for, not Full HD, into out.
    void askFor(const QString& out) {
        dialogs.pushText("10");
        dialogs.pushButton(2);
        dialogs.pushFile(out);
    }
};

}  // namespace

TEST_F(WindowVideo, CancelInTheProgressDialogLeavesNoVideoAndEscEndsItEarly) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ASSERT_TRUE(waitForFirstFrame(form.viewPanel()->surface()));
    EXPECT_EQ(form.findChild<QAction*>("Createvideo1")->text(), "Create video");
    EXPECT_EQ(form.findChild<QAction*>("Createpanorama1")->text(), "Create panorama");
    const QString caption = form.windowTitle();

    const QString cancelled = QString::fromStdString(dir.path("site/cancelled.mp4"));
    askFor(cancelled);
    afterThreeFrames([](QProgressDialog* dialog) {
        auto* cancel = dialog->findChild<QPushButton*>();
        ASSERT_NE(cancel, nullptr);
        EXPECT_EQ(cancel->text(), "Cancel");
        cancel->click();
    });
    chooseMenuItem(form, "Createvideo1");
    const QString images = QString::fromStdString(startupState().ImagesFolder);
    const int frames = flythroughState().AVIframe;
    EXPECT_GE(frames, 3);
    EXPECT_LT(frames, 251);
    EXPECT_TRUE(QFileInfo::exists(images + "Image-00002.bmp"));
    EXPECT_FALSE(QFileInfo::exists(cancelled));
    EXPECT_FALSE(QFileInfo::exists(images + "MakeVideo.BAT"));
    EXPECT_EQ(form.statusText(0), "Create video cancelled: no video written");
    EXPECT_EQ(form.windowTitle(), caption);
    EXPECT_EQ(form.findChildren<QProgressDialog*>().size(), 0);

    const QString ended = QString::fromStdString(dir.path("site/ended.mp4"));
    askFor(ended);
    afterThreeFrames([](QProgressDialog* dialog) {
        QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(dialog, &esc);
    });
    chooseMenuItem(form, "Createvideo1");
    EXPECT_LT(flythroughState().AVIframe, 251);
    EXPECT_GT(QFileInfo(ended).size(), 0);
    EXPECT_EQ(form.statusText(0), ended);
    EXPECT_EQ(dialogs.questions().back().text, ended);  // opened for the operator

    // The grab of the panel: what the screen shows, in multiples of 4.
    const std::unique_ptr<QImage> grab = GetBmp(form.viewPanel());
    ASSERT_NE(grab, nullptr);
    EXPECT_EQ(grab->width(), form.viewPanel()->width() / 4 * 4);
    EXPECT_EQ(grab->height(), form.viewPanel()->height() / 4 * 4);
}
