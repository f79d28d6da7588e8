// The video and panorama items of the main form's view menu, and the grab
// of the view panel as the screen shows it.
#pragma once

#include <QImage>
#include <memory>

class QMenu;
class QMainWindow;
class QWidget;

// Adds "Create video" and "Create panorama" to menu. The video's frames are
// counted in a progress dialog: Esc ends the video at the frame reached,
// Cancel abandons it with no video written.
void AddVideoMenuItems(QMainWindow* form, QMenu* menu);

// What the screen shows over the panel (a window above it included), its
// sides cut down to multiples of 4; null when the screen can't be read.
std::unique_ptr<QImage> GetBmp(QWidget* panel);
