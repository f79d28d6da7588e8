#include "ModelToolProgress.h"

#include "app/session/MainFormState.h"

ModelToolHooks& modelToolHooks() {
    static ModelToolHooks hooks;
    return hooks;
}

void resetModelToolHooks() { modelToolHooks() = ModelToolHooks{}; }

void ReportModelToolProgress(const QString& text, long long done, long long total) {
    SSetTextAt3(0, text);
    if (modelToolHooks().progress) modelToolHooks().progress(text, done, total);
}

bool ModelToolCancelled() { return modelToolHooks().cancelled && modelToolHooks().cancelled(); }
