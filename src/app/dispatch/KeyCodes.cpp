#include "KeyCodes.h"

#include <Qt>

int KeyCodeFromQt(int qtKey, bool keypad) {
    switch (qtKey) {
    case Qt::Key_Escape: return KEY_ESCAPE;
    case Qt::Key_PageUp: return KEY_PRIOR;
    case Qt::Key_PageDown: return KEY_NEXT;
    case Qt::Key_End: return KEY_END;
    case Qt::Key_Home: return KEY_HOME;
    case Qt::Key_Left: return KEY_LEFT;
    case Qt::Key_Up: return KEY_UP;
    case Qt::Key_Right: return KEY_RIGHT;
    case Qt::Key_Down: return KEY_DOWN;
    case Qt::Key_W: return KEY_W;
    case Qt::Key_S: return KEY_S;
    case Qt::Key_F4: return KEY_F4;
    case Qt::Key_F8: return KEY_F8;
    case Qt::Key_Plus: return keypad ? KEY_ADD : 0;
    case Qt::Key_Minus: return keypad ? KEY_SUBTRACT : 0;
    default: return 0;
    }
}
