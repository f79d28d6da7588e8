// Each catalogue test starts clean: a scripted answerer, ORVO_T and the
// settings file in a scratch folder, no catalogue state or hooks left over.
#pragma once

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "app/session/StartupState.h"
#include "catalog/CatalogHooks.h"
#include "catalog/CatalogState.h"
#include "support/TestSupport.h"

class CatalogTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetCatalogState();
        resetCatalogHooks();
        resetSessionPaths();
        resetModelSession();
        resetStartupState();
        resetOrvoIni();
        ORVOINI().load(dir.path("Orvo.ini"));
        sessionPaths().ORVO_T = dir.path("TMP/");
        QDir().mkpath(QString::fromStdString(sessionPaths().ORVO_T));
        installDialogService(&dialogs);
        catalogHooks().showBrowser = [this](const ModelBrowserRequest& request) { shown.push_back(request); };
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetCatalogHooks();
        resetCatalogState();
        resetOrvoIni();
        resetSessionPaths();
    }
    QString path(const std::string& name) const { return QString::fromStdString(dir.path(name)); }
    QString orvoT(const QString& name) const { return QString::fromStdString(sessionPaths().ORVO_T) + name; }
    // Writes a file and gives it a fixed modification time.
    QString write(const std::string& name, const std::string& text,
                  const QDateTime& time = QDateTime(QDate(2023, 4, 5), QTime(6, 7, 8))) {
        testsupport::writeTextFile(dir.path(name), text);
        QFile file(path(name));
        file.open(QIODevice::ReadWrite);
        file.setFileTime(time, QFileDevice::FileModificationTime);
        return path(name);
    }
    QStringList questionsOf(ScriptedDialogService::Question::Kind kind) const {
        QStringList texts;
        for (const auto& question : dialogs.questions())
            if (question.kind == kind) texts.append(question.kind == ScriptedDialogService::Question::Input
                                                        ? question.title + "|" + question.text
                                                        : question.text);
        return texts;
    }
    QStringList messages() const { return questionsOf(ScriptedDialogService::Question::Message); }

    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    std::vector<ModelBrowserRequest> shown;
};
