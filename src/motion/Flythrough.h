// The flythrough: a digitised line becomes a point shape file of way points
// above the model, and the same file opened again is the path on which the
// roaming camera walks. While walking the operator sets pitch, skew, height
// and field of view at each way point; CompleteFTWP writes them back.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "geo/GisTypes.h"

// One way point, or a position between two of them.
struct FLYTROUGHWAYPOINT {
    TGIS_Point3D P{};    // map frame, as in the file
    TGIS_Point3D POI{};  // point of interest: kept, never filled
    int Index = 0;       // place in FTWP
    int Traversed = 0;   // times reached by the forward key or by completion
    float Sta = 0;       // metres along the path, in plan
    float Pitch = 0;     // degrees, negative downwards
    float FOV = 0;
    float Azim = 0;      // heading of the segment that starts here
    float SKEW = 0;      // degrees added to the heading
    float DeltaH = 0;    // metres added to Z
};

struct FlythroughState {
    std::vector<FLYTROUGHWAYPOINT> FTWP;
    // The open way point file (the layer the walk came from).
    QString FTLL;
    float FlytroughLength = 0;
    float FlytroughSta = 0;
    // Station step of one video frame.
    float DeltaFlytroughSta = 0;
    FLYTROUGHWAYPOINT GlobalFTWP{};
    // The video's length and frame counter, which the stepping reads.
    float AviDuration = 0;
    int AVIframe = 0;
    // The trace of every position asked for, one CSV line each.
    QStringList TSCSV;
    int traceCalls = 0;
    // The help text before the flythrough opened, put back at its end.
    QString keptHelp;
    // The main form's caption while a video steps.
    QString FormCaption;
};

FlythroughState& flythroughState();
void resetFlythroughState();
// The window shows FormCaption through this; null for none.
void SetFlythroughCaptionHook(std::function<void(const QString&)> hook);

// Names of the way point file's own fields, in the order they are added.
inline const QStringList FLYTROUGH_FIELD_LOOKUPS = {"Sta",        "DeltaH", "Pitch", "SKEW", "FOV",
                                                    "TTraversed", "POIX",   "POIY",  "POIZ"};
struct FlytroughFields {
    QStringList added;  // the fields to add, in order
    int count = 0;      // how many lookups missed
};
// The fields a layer that already has existing lacks. The sixth lookup is
// "TTraversed", which no file has, so "Traversed" is always added and the
// count is never 0.
FlytroughFields FlytroughFieldsToAdd(const QStringList& existing);

// rounds rounds of corner cutting of an open line (Chaikin's: each inner
// corner replaced by the points at a quarter and three quarters of its
// edges), the ends kept; a straight line of two points stays as it is.
std::vector<TGIS_Point3D> SmoothLine(const std::vector<TGIS_Point3D>& line, int rounds);

struct WaypointFileSummary {
    int waypoints = 0;
    double length = 0;  // plan length of the path, metres
};
// The digitised line P (NP vertices, map frame) to the way point file SHP:
// smoothed, FlytroughAlt added to every Z, one point shape a vertex with
// "Color", "MaxAllowedZ" and the nine way point fields, in the model's
// coordinate system. fov is the field of view every way point starts with.
bool CreateFlytroughWaypointFile(const TGIS_Point3D* P, int NP, double FlytroughAlt, double fov, const QString& SHP,
                                 WaypointFileSummary* summary = nullptr);

// The menu item "Flytrough": checked it asks for a way point file and opens
// it; unchecked it ends the walk.
void FlytroughVieportClick();
// Opens FN as the path (the opening without its file dialog). False when
// the file is refused or the duration is cancelled; KamaFTWP stays 0 then.
bool OpenFlytroughFile(const QString& FN);
void EndFlytrough();
// "Show Flytrough waypints": ORVO_T + "FTWP.csv" shown in the grid form.
void ShowFlytroughwaypints1Click();

FLYTROUGHWAYPOINT GetPointOnFlytrough(float sta_in);
void OrvoSetObserverFlyTrough(FLYTROUGHWAYPOINT PQ);
// The keys of a walk, as the dispatcher hands them over.
enum class FlyKey { PageUp, PageDown, Left, Right, Up, Down, NumPlus, NumMinus, Forward, Back };
// One key on the walk: the change goes to the way point at the start of the
// segment the camera is on, and the camera is placed anew.
void FlyTroughKey(FlyKey key);
bool DoOneStepFlyTrough();
bool DoOneStepCircle();
// Fills the way points never reached from the one before them and writes
// the file the operator names. Returns the number filled.
int CompleteFTWP();
