#include "ReportRunState.h"

#include <QElapsedTimer>

#include "scene/engine_interface.h"

ReportRunState& reportRun() {
    static ReportRunState state;
    return state;
}

void resetReportRun() { reportRun() = ReportRunState{}; }

void UpdateRealFactor() {
    ReportRunState& run = reportRun();
    run.REALFACTOR = static_cast<float>((100 - run.ENERGYLOSSPERCENT) / 100.0);
}

float ReportClock() {
    static QElapsedTimer clock = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return static_cast<float>(clock.elapsed());
}

ReportHooks& reportHooks() {
    static ReportHooks hooks;
    return hooks;
}

void resetReportHooks() { reportHooks() = ReportHooks{}; }

void ReportStatusLine(const QString& text) {
    if (reportHooks().statusLine) {
        reportHooks().statusLine(text);
        return;
    }
    At3d_StatusBar_Set_Text(text.toUtf8().constData());
    At3d_RenderOpenGLScene();
}

void ReportProcessMessages() {
    if (reportHooks().processMessages) reportHooks().processMessages();
}

bool ReportCancelled() { return reportHooks().cancelled && reportHooks().cancelled(); }
