#include "PanelStoreOps.h"

#include <QFileInfo>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/DialogService.h"
#include "scene/FileNameCase.h"

// The panel's file renamed to ".DA-", so a deleted panel can still be fetched back by hand.
void SoftDeleteFile(const QString& fileName) {
    if (fileName.isEmpty()) return;
    const std::string existing = FindFileNoCase(fileName.toStdString());
    if (existing.empty()) return;
    const QFileInfo info(QString::fromStdString(existing));
    const QString target = info.path() + "/" + info.completeBaseName() + ".DA-";
    std::rename(existing.c_str(), target.toStdString().c_str());
}

void DeletePanelByName(const QString& panelName) {
    PanelStore& store = panelStore();
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        if (PanelText(store.panels[i].Name).compare(panelName, Qt::CaseInsensitive) != 0) continue;
        SoftDeleteFile(PanelText(store.panels[i].Filename));
        for (int j = i; j < store.NumPanelsCreated - 1; ++j) store.panels[j] = store.panels[j + 1];
        store.panels[--store.NumPanelsCreated] = PANEL{};
        return;
    }
}

// N and G of "N/G"; what doesn't parse stays 0.
static std::pair<int, int> NameNumbers(const PANEL& panel) {
    char name[sizeof panel.Name + 1] = {};
    std::copy(std::begin(panel.Name), std::end(panel.Name), name);
    int N = 0, G = 0;
    std::sscanf(name, "%d/%d", &N, &G);
    return {N, G};
}

void SortPanels() {
    PanelStore& store = panelStore();
    for (int i = 0; i < store.NumPanelsCreated - 1; ++i)
        for (int j = i + 1; j < store.NumPanelsCreated; ++j)
            if (NameNumbers(store.panels[i]) > NameNumbers(store.panels[j]))
                std::swap(store.panels[i], store.panels[j]);
}

void ListPanels() {
    const PanelStore& store = panelStore();
    QString text = "Panels sorted:\n";
    for (int i = 0; i < store.NumPanelsCreated; ++i) text += PanelText(store.panels[i].Name) + "\n";
    dialogService().showMessage(text, QString::number(store.NumPanelsCreated) + " panels");
}
