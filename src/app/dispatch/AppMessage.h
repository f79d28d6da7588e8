// The first stop of every message of the main form: camera navigation with
// the mouse and the wheel, the keyboard, and the engine's notifications.
#pragma once

constexpr int WM_KEYDOWN = 256;
constexpr int WM_MOUSEMOVE = 512;
constexpr int WM_LBUTTONDOWN = 513;
constexpr int WM_LBUTTONUP = 514;
constexpr int WM_MOUSEWHEEL = 522;
// The engine's notification (wParam as AT3D_NOTIFY_*, lParam 1).
constexpr int MSG_ENGINE_NOTIFY = 1031;
// A screen point at which the Shift+right-click menu pops up.
constexpr int MSG_SHIFT_RIGHT_POPUP = 1033;
// Buttons held during a mouse move, in wParam.
constexpr int MK_LBUTTON = 1;
constexpr int MK_RBUTTON = 2;

struct AppMsg {
    int message = 0;
    // Key code, wheel delta, buttons held or the notification's number.
    int wParam = 0;
    int lParam = 0;
    // Mouse position on the view panel or the screen point of a popup.
    int x = 0, y = 0;
    bool shift = false;
    // Whether the main form is the active form under the mouse.
    bool overMainForm = true;
};

// The menu a handled message asks the window to pop up at the cursor.
enum class AppPopup { None, ShiftRightClickPopupmenu, PopupMenu1 };

struct AppMessageResult {
    bool Handled = false;
    AppPopup popup = AppPopup::None;
};

AppMessageResult AppMessage(const AppMsg& msg);

// Which items of PopupMenu1 show for what was selected (GlobalMeasureOrBilboard).
struct PopupMenu1Items {
    bool Hyperlinks = true;
    bool Move = false;
    bool ShowAll = true;
};
PopupMenu1Items PopupMenu1Popup();
