// What the oblique tests share: the open-model fixture with the oblique
// stores and hooks reset, and a small file writer for pictures.
#pragma once

#include <QDir>
#include <QFileInfo>

#include <string>

#include "app/model/ModelOpenFixture.h"
#include "oblique/ObliqueHooks.h"
#include "oblique/ObliqueRecords.h"
#include "support/GuiApplication.h"

class ObliqueFixture : public ModelOpenFixture {
protected:
    void SetUp() override {
        testsupport::ensureGuiApplication();
        ModelOpenFixture::SetUp();
        resetObliqueStore();
        resetObliqueHooks();
    }
    void TearDown() override {
        resetObliqueStore();
        resetObliqueHooks();
        ModelOpenFixture::TearDown();
    }
    // A stand-in picture: the lookup only asks whether the file is there.
    void touch(const std::string& path) {
        QDir().mkpath(QFileInfo(QString::fromStdString(path)).absolutePath());
        testsupport::writeTextFile(path, "x");
    }
};
