// One change of the inbox folder, handled on the main thread: a dropped
// "Center3DView.tmp" moves the view to the map point it holds.
#pragma once

#include <QString>

// What happened to a file of the folder, as the watch reports it.
enum FolderAction {
    FOLDER_ADDED = 1,
    FOLDER_REMOVED = 2,
    FOLDER_MODIFIED = 3,
    FOLDER_RENAMED_OLD = 4,
    FOLDER_RENAMED_NEW = 5,
};

// action and the name relative to the folder. Repeats within 100 ms and
// ".tss" files are ignored; each change is logged.
void FolderWatchOnChangeEx(int action, const QString& name);
