// Ground control points from the clipboard: a coordinate copied in another
// viewer, paired with the point last clicked on the model, is added to the
// model's ONC list.
#pragma once

#include <QString>

class QObject;

// A copied text: "... WGS84 Lat X Y Z ..." or "m X Y Z". True when a pair was added.
bool HandleClipboardText(QString text);

// Called on every clipboard change while monitoring.
void HandleClipboardUpdate();

// Listens to the clipboard for as long as owner lives.
void StartClipboardMonitoring(QObject* owner);
