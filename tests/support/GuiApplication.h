// Text drawn into pictures needs a QGuiApplication for its fonts; tests that
// draw no window get one on the offscreen platform, made once.
#pragma once

#include <QGuiApplication>

namespace testsupport {

inline void ensureGuiApplication() {
    if (QCoreApplication::instance()) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "zv-test";
    static char* argv[] = {name, nullptr};
    static QGuiApplication application(argc, argv);
}

}  // namespace testsupport
