// The key codes the keyboard route knows, and the one place where the
// toolkit's keys become them.
#pragma once

constexpr int KEY_ESCAPE = 27;
constexpr int KEY_PRIOR = 33;
constexpr int KEY_NEXT = 34;
constexpr int KEY_END = 35;
constexpr int KEY_HOME = 36;
constexpr int KEY_LEFT = 37;
constexpr int KEY_UP = 38;
constexpr int KEY_RIGHT = 39;
constexpr int KEY_DOWN = 40;
constexpr int KEY_W = 87;
constexpr int KEY_S = 83;
constexpr int KEY_ADD = 107;
constexpr int KEY_SUBTRACT = 109;
// F4 and F8 carry the codes of lower-case "s" and "w": the bindings rely on it.
constexpr int KEY_F4 = 115;
constexpr int KEY_F8 = 119;

// A Qt::Key to its code; keypad tells "+" and "-" of the number
// pad from those of the main keys. 0 for keys the route doesn't know.
int KeyCodeFromQt(int qtKey, bool keypad);
