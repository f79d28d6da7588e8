#include "ClipboardInbox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <cstdio>

#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"

bool HandleClipboardText(QString text) {
    if (text.isEmpty()) return false;
    text.replace(',', ' ');
    const qsizetype label = text.indexOf("WGS84 Lat");
    QByteArray numbers;
    if (label >= 0)
        numbers = text.mid(label + QStringLiteral("WGS84 Lat").size()).toUtf8();
    else if (text.startsWith('m'))
        numbers = text.mid(1).toUtf8();
    else
        return false;
    double X3D = 0, Y3D = 0, Z3D = 0;
    std::sscanf(numbers.constData(), "%lf%lf%lf", &X3D, &Y3D, &Z3D);
    const DispatchState& d = dispatchState();
    const QString file = QString::fromStdString(modelSession().GlobalONCFileName);
    if (file.isEmpty()) return false;
    QString lines = StringFromFile(file);
    if (!lines.isEmpty() && !lines.endsWith('\n')) lines += '\n';
    lines += QString::asprintf("%.2lf %.2lf %.2lf %.2lf %.2lf  %.2lf\n", d.FromModel_X, d.FromModel_Y, d.FromModel_Z,
                               X3D, Y3D, Z3D);
    if (!StringToFile(lines, file)) return false;
    SSetTextAt3(0, mainFormState().statusTexts[0] + " ONC points saved to " + file);
    return true;
}

void HandleClipboardUpdate() {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard) HandleClipboardText(clipboard->text());
}

void StartClipboardMonitoring(QObject* owner) {
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, owner, [] { HandleClipboardUpdate(); });
}
