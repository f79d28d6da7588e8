// Signs of life of the long passes over model files (crop, clean, shift,
// rotate, rectify, convert, pack). The window shows them in a progress
// dialog whose Cancel stops the pass; the command line prints them. A pass
// that is stopped leaves no output behind.
#pragma once

#include <QString>
#include <functional>

struct ModelToolHooks {
    // The pass's status line, with how far it has come (done of total, any unit).
    std::function<void(const QString& text, long long done, long long total)> progress;
    // Asked between pieces of work; true stops the pass.
    std::function<bool()> cancelled;
};

ModelToolHooks& modelToolHooks();
void resetModelToolHooks();

// Puts the text on the status line and hands it to the progress hook.
void ReportModelToolProgress(const QString& text, long long done, long long total);
// True when the operator asked to stop.
bool ModelToolCancelled();
