// The model shape of a panel file: the COLLADA lines around the data blocks,
// shared by the writer of new panels and the rewrite after an update.
#pragma once

#include <QString>
#include <QStringList>

#include "PanelStruct.h"

struct PanelModelShape {
    bool box = false;         // eight vertices and six faces; else four and one
    QString textureLeaf;      // the texture's file name; empty for no texture
    TColor color = 0;         // material colour
    int opacity = 100;        // %
    QString author;           // the exporter text of <contributor>
    QString sceneName;        // name of the visual scene
    bool printedForm = false; // positions "%.6f %.6f %.6f " and the fixed uv line of the rewrite
};

// The whole file, one line each, with nodeData inside the panel's <node>
// ahead of its <instance_geometry>.
QStringList PanelModelLines(const PANEL& panel, const PanelModelShape& shape, const QStringList& nodeData);

// A colour line of the <phong> block (12 blanks of indent): the bytes of
// color over 255, two decimals, alpha 1.0.
QString PhongColourLine(const char* element, TColor color);

// The program's build date in the form "Oct 17 2025" (the compiler's date of
// this library, one blank between the parts).
QString PanelColladaBuildDate();
