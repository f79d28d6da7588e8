#include "PanelLayers.h"

#include <QStringList>

#include "PanelNames.h"
#include "PanelText.h"
#include "scene/engine_interface.h"

QStringList SceneLayerNames() {
    QStringList names;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer && names.size() < 1000;
         layer = At3d_GetNextLayer(layer, name))
        names << QString::fromUtf8(name);
    return names;
}

QString GetPanelNameFromLayer(const QString& Layer) {
    if (!Layer.startsWith('P')) return "UNKNOWN";
    const QStringList fields = Layer.split('_', Qt::KeepEmptyParts);
    const qsizetype NF = fields.size();
    if (NF == 0) return "UNKNOWN";
    if (fields.last() != "geometry") return {};
    if (NF < 4) return "UNKNOWN";
    return fields[NF - 3] + "/" + fields[NF - 2];
}

int GetPanelIndexFromLayer(const QString& Layer) {
    if (!Layer.startsWith('P')) return -1000;
    const QStringList fields = Layer.split('_', Qt::KeepEmptyParts);
    if (fields.size() < 4 || fields.last() != "geometry") return -1000;
    return GetPanelIndexFromName(GetPanelNameFromLayer(Layer));
}

QString GetLayerOfPanel(const PANEL& panel) {
    const QString name = PanelText(panel.Name);
    if (name.isEmpty()) return {};
    for (const QString& layer : SceneLayerNames())
        if (GetPanelNameFromLayer(layer).compare(name, Qt::CaseInsensitive) == 0) return layer;
    return {};
}

QString GetPrefixOfPanel(const PANEL& panel) {
    const QString layer = GetLayerOfPanel(panel);
    const qsizetype tail = layer.indexOf("_geometry");
    if (tail >= 0) return layer.left(tail);
    const QStringList fields = layer.split('_', Qt::KeepEmptyParts);
    const qsizetype last = fields.size() - 4;
    if (last < 0) return {};
    return fields.mid(0, last + 1).join('_');
}
