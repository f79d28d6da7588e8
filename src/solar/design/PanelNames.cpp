#include "PanelNames.h"

#include <QRandomGenerator>
#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "PanelStore.h"
#include "PanelText.h"

int GetPanelIndexFromName(const QString& Name) {
    const PanelStore& store = panelStore();
    for (int i = 0; i < store.NumPanelsCreated; ++i)
        if (PanelText(store.panels[i].Name).compare(Name, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

// The decimal digits a name starts with; -1 when it starts with none.
static int LeadingNumber(const char* name, std::size_t size) {
    std::size_t i = 0;
    int value = 0;
    for (; i < size && name[i] >= '0' && name[i] <= '9'; ++i) value = value * 10 + (name[i] - '0');
    return i == 0 ? -1 : value;
}

int HighestPanelNumber() {
    const PanelStore& store = panelStore();
    int maxNum = 0;
    for (int i = 0; i < store.NumPanelsCreated; ++i)
        maxNum = std::max(maxNum, LeadingNumber(store.panels[i].Name, sizeof store.panels[i].Name));
    return maxNum;
}

QString GetNewPanelname() {
    const int group = std::clamp(panelStore().GlobalPanelGroup, 1, 990);
    return QString::asprintf("%d/%d", HighestPanelNumber() + 1, group);
}

QString GetGroup(const PANEL& panel) {
    const QString name = PanelText(panel.Name);
    const qsizetype slash = name.indexOf('/');
    if (slash < 0) return {};
    return name.mid(slash + 1, 12);
}

int GetPanelGroup(const PANEL& panel) {
    const QString name = PanelText(panel.Name);
    const qsizetype slash = name.indexOf('/');
    if (slash < 0) return -1;
    return std::atoi(name.mid(slash + 1).toLatin1().constData());
}

int ExtractNumericSuffix(const QString& name) {
    qsizetype start = name.size();
    while (start > 0 && name[start - 1].isDigit() && name[start - 1].unicode() < 128) --start;
    if (start == name.size()) return 0;
    return name.mid(start).toInt();
}

QString PanelFileNameFromName(const QString& name) {
    return panelStore().PANELSFOLDER + "Panel-" + QString(name).replace('/', '_') + ".dae";
}

int NewPlacementGroup() {
    QRandomGenerator generator(QRandomGenerator::system()->generate());
    panelStore().GlobalPanelGroup = static_cast<int>(generator.bounded(995)) + 1;
    return panelStore().GlobalPanelGroup;
}

int RowGroupNumber(int baseGroup, int rowIndex) {
    const int group = baseGroup + 10 * rowIndex;
    return group > 999 ? group - 999 : group;
}

char GroupLetterOfGroup(int group) {
    int remainder = group % 26;
    if (remainder < 0) remainder += 26;
    return static_cast<char>('A' + remainder);
}
