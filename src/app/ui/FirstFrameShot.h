// The viewer's first frame as a picture: with the command line option
// "--first-frame-shot" the viewer saves what it first drew into the model's
// "Screenshots/" folder, prints the path and ends. This is how the main job
// shows the viewer on a machine without a display.
#pragma once

#include <QString>

class TFormAt3;

inline constexpr const char* FIRST_FRAME_SHOT_OPTION = "--first-frame-shot";

// True when the command line holds the option.
bool FirstFrameShotAsked();

// The picture's path for the open model: SCREENSHOTSFOLDER + the model's
// name + "_first_frame.png".
QString FirstFramePath();

// Waits for the form's first painted frame, writes it, prints its path on
// stdout and quits the event loop with 0; with no model open, or no frame
// within timeoutMs, a message on stderr and 1.
void SaveFirstFrameAndQuit(TFormAt3& form, int timeoutMs);
