// What the open sequence's tests share: a started engine, the session's
// folders and settings in a scratch folder, a scripted operator and a form
// that reports its view panel's size.
#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include <string>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/StartupState.h"
#include "app/session/UserFolders.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "scene/EngineSession.h"
#include "support/TestSupport.h"

class PanelHost : public MainFormHost {
public:
    int viewPanelWidth() const override { return 100; }
    int viewPanelHeight() const override { return 80; }
};

class ModelOpenFixture : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    PanelHost host;

    void SetUp() override {
        resetSessionPaths();
        resetStartupState();
        resetOrvoIni();
        resetViewerSettings();
        resetRubberbandState();
        resetCameraState();
        resetMainFormState();
        resetModelSession();
        resetFrameState();
        resetGeoState();
        resetEngineSession();
        installDialogService(&dialogs);
        installMainFormHost(&host);
        DeriveUserFolders(dir.root() + "home", dir.path("zv/bin/zorvex64"), false);
        SetInstallationPaths(dir.path("zv/bin/zorvex64"));
        QDir().mkpath(QString::fromStdString(sessionPaths().ORVO_T));
        ORVOINI().load(startupState().ORVOINIFILENAME);
        Start_DLL(nullptr, 100, 80, 1, 0, 0);
    }
    void TearDown() override {
        installMainFormHost(nullptr);
        installDialogService(nullptr);
        resetRunLog();
    }
};
