// Billboards and icons as the session keeps them: the kind of the next
// billboard, the icon chosen on the icons form, the values of the billboard
// dialog and the spheres and cranes made so far.
#pragma once

#include <QImage>
#include <QString>

// What the billboard dialog holds; the window's form shows and edits it.
struct BillboardDialogValues {
    QString text;
    // How far the picture stands from its foot, metres.
    double pivotHeight = 1;
    bool isStatic = false;
    // 0 small (0.9 m), 1 medium (2 m), 2 large (4 m).
    int sizeIndex = 1;
};

// What the icons form (TFormObjects) holds.
struct IconFormValues {
    QString text;
    // Upper-case file name of the icon without extension.
    QString name;
    // The icon billboard's height in centimetres.
    int sizeNumber = 300;
    QImage SelectedImage;
};

struct BillboardState {
    bool IsBillboardStatic = false;
    bool IsBillboardIcon = false;
    QString ICONNAME;
    QString LastIconName;
    // The colour panel: a toolkit colour, red in the lowest byte.
    int ColorPanel = 0x0000FF;
    BillboardDialogValues dialog;
    IconFormValues icons;
    double GlobalMoveBillboard[3] = {0, 0, 0};
    int KamaSpheresandCranes = 0;
    QString Billboard_Selected_IDText;
    // Labels of measures (alpha flag 2) are drawn.
    bool measureLabelsShown = true;
    // While panel labels are made they all stand 0.5 m high.
    bool ISPANEL = false;
};

BillboardState& billboardState();
void resetBillboardState();
