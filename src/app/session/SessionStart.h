// The main form's start-up and end as logic: the defaults its constructor
// sets, the engine start, the steps of FormCreate that need no widget, and
// the exit question. The window calls them in this order.
#pragma once

#include <string>

// The notification the engine posts for picks and selections.
constexpr int AT3D_NOTIFY_MESSAGE = 1031;

// The constructor's defaults: viewer settings, rubberband and camera, and
// the observer's look handed to the engine.
void SetSessionDefaults();

// Form_Setup: the status texts emptied and the engine started on the view
// panel, with the form as the target of its notifications and the
// rubberband's look. Returns dllOpen.
int Form_Setup(void* form, void* viewPanel, int width, int height);

// The renderer's name decides IntelGPU; an Intel GPU hides "Highaccuracy1".
void SetRendererName(const std::string& glRenderer);

// FormCreate from the drone table to the custom icons: ORVO_, ORVO_T and
// MONITOREDFOLDER made (a failure shows "Can not create directory " and
// returns false: the caller ends the process), the renderer's name taken,
// the run log opened, the settings read, the installation's paths set.
// The user folders must be derived first.
bool FormCreateSession(const std::string& executablePath, const std::string& glRenderer);

// SatamsList: the bitmaps of the installation's "CustomIcons/"; the
// tactical icon button shows only when there are some.
void LoadCustomIcons();

// FormClose's question; true when the operator answers yes.
bool AskToExit();
// After a yes: the run log closed and the engine stopped. Nothing of the
// session is saved; the caller ends the process at once.
void EndSession();
