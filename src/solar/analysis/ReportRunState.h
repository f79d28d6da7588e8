// The report run's settings, its progress counts and the figures of the last
// run, in one owner so that a test can start clean; and the hooks through
// which a run shows its progress in whatever host runs it.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "SolarRecords.h"

struct ReportRunState {
    // General system loss, percent; the settings file's default is 10.
    int ENERGYLOSSPERCENT = 15;
    // (100 - ENERGYLOSSPERCENT) / 100, applied in the master CSV only.
    float REALFACTOR = 0.9f;
    bool OnlyCenter = false;  // the centre alone, or centre and four corners
    int OptimizerType = 1;    // 0 string inverter, 1 modern optimizer
    // 0 no ray analysis, 1 analysis, 2 analysis and ray files; a report sets 2.
    int GlobalAnalyzingLevel = 0;
    int Kamahandled = 0;   // test points done
    int Kamatohandle = 0;  // test points of the run
    float ReportStart = 0;  // clock at the start, milliseconds
    QString GlobalProcessingPanelString;  // the panel part of the progress line
    int GlobatPanelHandled = 0;
    QStringList CsvFilesToDelete;  // the sun tables of the run; nothing removes them
    // Threads of the ray pass; 0 takes every core. The answers never depend on it.
    int ShadingThreads = 0;

    std::vector<CombinedPanelResults> g_combinedResults;
    double g_totalEnergyBifacial = 0;
    double g_totalEnergyMonofacial = 0;
    double g_totalShadingLoss = 0;
    double g_averageShading = 0;
    double g_systemScore = 0;
    std::string g_systemGrade;
    int g_analysisLevel = 0;
};

ReportRunState& reportRun();
void resetReportRun();

// (100 - ENERGYLOSSPERCENT) / 100 into REALFACTOR.
void UpdateRealFactor();

// Milliseconds since the process started: the run's clock.
float ReportClock();

// How a run shows itself. The defaults write the engine's status strip and
// serve nothing; the window serves its events, the CLI prints the line.
struct ReportHooks {
    std::function<void(const QString&)> statusLine;
    std::function<void()> processMessages;
    // Asked between panels: true stops the run there, before its report is written.
    std::function<bool()> cancelled;
};
ReportHooks& reportHooks();
void resetReportHooks();
void ReportStatusLine(const QString& text);
void ReportProcessMessages();
bool ReportCancelled();
