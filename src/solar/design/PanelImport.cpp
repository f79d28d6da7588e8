#include "PanelImport.h"

#include "PanelNames.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/SunGlobalLog.h"

int AddPanelsT() {
    PanelStore& store = panelStore();
    const int K = store.NumPanelsCreatedT;
    PrintSunLog("AddPanelsT: start  K=%d  NumPanelsCreated(before)=%d\n", K, store.NumPanelsCreated);
    int added = 0, dupSkipped = 0, emptySkipped = 0, capSkipped = 0;
    for (int i = 0; i < K; ++i) {
        const PANEL& staged = store.panelsT[i];
        const QString name = PanelText(staged.Name).trimmed();
        if (name.isEmpty()) {
            ++emptySkipped;
            continue;
        }
        if (store.NumPanelsCreated >= MAX_PANELS) {
            capSkipped += K - i;
            break;
        }
        if (GetPanelIndexFromName(name) >= 0) {
            ++dupSkipped;
            continue;
        }
        store.panels[store.NumPanelsCreated++] = staged;
        ++added;
    }
    store.NumPanelsCreatedT = 0;
    PrintSunLog("AddPanelsT: done  added=%d  dupSkipped=%d  emptySkipped=%d  capSkipped=%d  NumPanelsCreated(after)=%d\n",
                added, dupSkipped, emptySkipped, capSkipped, store.NumPanelsCreated);
    return added;
}
