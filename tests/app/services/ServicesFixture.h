// Each services test starts clean: a scripted answerer installed, ORVO_T in
// a scratch folder, no dialog or grid state left from another test.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QString>

#include "app/services/DialogService.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "app/services/XlsForm.h"
#include "support/TestSupport.h"

class ServicesTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetDialogState();
        resetXlsFormState();
        resetSessionPaths();
        sessionPaths().ORVO_T = dir.path("TMP/");
        QDir().mkpath(QString::fromStdString(sessionPaths().ORVO_T));
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetSessionPaths();
        resetXlsFormState();
        resetDialogState();
    }
    QString path(const std::string& name) const { return QString::fromStdString(dir.path(name)); }
    QString orvoT(const QString& name) const { return QString::fromStdString(sessionPaths().ORVO_T) + name; }
    // The texts of the boxes shown so far.
    QStringList messages() const {
        QStringList texts;
        for (const auto& question : dialogs.questions())
            if (question.kind == ScriptedDialogService::Question::Message) texts.append(question.text);
        return texts;
    }

    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
};
