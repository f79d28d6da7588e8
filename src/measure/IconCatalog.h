// The tactical icons offered on the icons form: the bitmaps of the
// installation's "CustomIcons/" folder, the one chosen, its colour, and
// which of them stand in the scene.
#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

// The icons' names as the form shows them: upper-case file names without extension.
QStringList SetSatamim();
// Chooses icon index of the list: its picture, name and default height
// (a name ending "_S" stands 1 m high, "_L" 5 m, any other 3 m). False for
// an index out of the list or a picture that can't be read.
bool IM01Click(int index);
// The picture with every pixel that is not pure white in the colour (a toolkit colour).
QImage RecolourIcon(const QImage& icon, int color);
// "Change Color": the colour dialog; the chosen colour goes to SphereColor
// and recolours the selected icon. False when cancelled.
bool ChangeColorBtnClick();
// The names of the icons that billboards of the scene carry.
QStringList SetActiveSatamim();
// The icon's file of a billboard's id ("text|NAME<clock>"); "" when it has none.
QString GetImageFromBillboard(const QString& Name);
