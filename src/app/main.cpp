// zorvex64: the viewer's window. The full main form arrives with the viewer;
// until then the window shows the engine's state for the model named on the
// command line.
#include <QApplication>
#include <clocale>
#include <QLabel>
#include <QMainWindow>
#include <QString>

#include "app/model/ModelOpening.h"
#include "app/services/ui/QtDialogService.h"
#include "scene/engine_interface.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    // Qt takes the user's locale; every file we read and write uses "." for decimals.
    setlocale(LC_NUMERIC, "C");
    // Lives inside the application's lifetime: its forms must go before QApplication.
    QtDialogService dialogs;
    installDialogService(&dialogs);
    QMainWindow window;
    window.setWindowTitle("Zorvex64");
    auto* label = new QLabel(&window);
    label->setAlignment(Qt::AlignCenter);
    window.setCentralWidget(label);
    window.resize(1024, 768);

    At3d_Start();
    QString text = "No model";
    const QStringList arguments = application.arguments();
    if (arguments.size() > 1) {
        OpenedModel opened;
        if (OpenModelHeadless(arguments[1].toStdString(), opened))
            text = QString("%1\n%2 layers").arg(arguments[1]).arg(At3d_LayerCount());
        else
            text = "Missing\n" + arguments[1];
    }
    label->setText(text);
    window.show();
    const int result = application.exec();
    At3d_Stop();
    return result;
}
