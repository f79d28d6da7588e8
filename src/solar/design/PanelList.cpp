#include "PanelList.h"

#include <utility>

#include "PanelNames.h"
#include "PanelText.h"

void SortPanelList(PANEL_LIST* list) {
    for (int i = 0; i < list->count - 1; ++i)
        for (int j = i + 1; j < list->count; ++j)
            if (ExtractNumericSuffix(PanelText(list->list[i].Name)) > ExtractNumericSuffix(PanelText(list->list[j].Name)))
                std::swap(list->list[i], list->list[j]);
}

void DeletePanelFromList(PANEL_LIST* list, int index) {
    if (index < 0 || index >= list->count) return;
    for (int i = index; i < list->count - 1; ++i) list->list[i] = list->list[i + 1];
    --list->count;
}

void DeletePanelFromListByName(PANEL_LIST* list, const QString& name) {
    for (int i = 0; i < list->count; ++i)
        if (PanelText(list->list[i].Name).compare(name, Qt::CaseInsensitive) == 0) {
            DeletePanelFromList(list, i);
            return;
        }
}

void ClearPanelList(PANEL_LIST* list) { list->count = 0; }

PANEL GetPanel(const PANEL_LIST* list, int index) {
    if (index < 0 || index >= list->count) return PANEL{};
    return list->list[index];
}
