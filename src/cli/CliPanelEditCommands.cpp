// panel-edit, panels-save and panels-restore: the measure dialog's panel
// buttons and the "Solar panels" menu's save and restore on a model's panels,
// which are first put into the scene as the window holds them.
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <cmath>
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/AddModels.h"
#include "app/services/DialogService.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelEditing.h"
#include "solar/design/PanelLayers.h"
#include "solar/design/PanelNames.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PanelsModelFile.h"
#include "solar/design/PlacementDae.h"

namespace {

constexpr const char* kPanelEditUsage =
    "zorvex64-cli panel-edit MODEL NAME (--move DX DY DZ | --lift M | --delete | --duplicate X Y Z) [--group]";
constexpr const char* kPanelsSaveUsage = "zorvex64-cli panels-save MODEL";
constexpr const char* kPanelsRestoreUsage = "zorvex64-cli panels-restore MODEL FILE";

enum class EditAction { None, Move, Lift, Delete, Duplicate };

struct EditOptions {
    std::string model, name;
    EditAction action = EditAction::None;
    double values[3] = {0, 0, 0};
    bool group = false;
};

// Messages on stderr; the lift's question answered with the lift asked for.
class EditDialogService : public ScriptedDialogService {
public:
    explicit EditDialogService(double lift) : lift_(lift) {}
    void showMessage(const QString& text, const QString&) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
    bool inputQuery(const QString&, const QString&, QString& value) override {
        value = QString::number(lift_, 'g', 10);
        return true;
    }

private:
    double lift_;
};

int parseEdit(const std::vector<std::string>& args, EditOptions& o) {
    std::vector<std::string> positional;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::size_t count = 0;
        EditAction action = EditAction::None;
        if (a == "--move") action = EditAction::Move, count = 3;
        else if (a == "--lift") action = EditAction::Lift, count = 1;
        else if (a == "--delete") action = EditAction::Delete;
        else if (a == "--duplicate") action = EditAction::Duplicate, count = 3;
        if (a == "--group") {
            o.group = true;
        } else if (action != EditAction::None) {
            if (o.action != EditAction::None) return CliUsageError("one action at a time", kPanelEditUsage);
            if (count > 0 && i + count >= args.size())
                return CliUsageError(a + " needs " + std::to_string(count) + " number(s)", kPanelEditUsage);
            o.action = action;
            for (std::size_t k = 0; k < count; ++k)
                if (!ParseCliNumber(args[++i], o.values[k]))
                    return CliUsageError("not a number: " + args[i], kPanelEditUsage);
        } else if (a.rfind("--", 0) == 0) {
            return CliUsageError("unexpected argument: " + a, kPanelEditUsage);
        } else {
            positional.push_back(a);
        }
    }
    if (positional.size() != 2) return CliUsageError("panel-edit takes a model and a panel name", kPanelEditUsage);
    if (o.action == EditAction::None) return CliUsageError("say what to do with the panel", kPanelEditUsage);
    if (o.group && o.action == EditAction::Duplicate)
        return CliUsageError("a duplicate is made of one panel", kPanelEditUsage);
    if (o.action == EditAction::Lift && o.values[0] == 0) return CliUsageError("--lift needs a lift", kPanelEditUsage);
    for (double v : o.values)
        if (o.action == EditAction::Move && std::fabs(v) > 1000)
            return CliUsageError("a move goes 1000 m at most", kPanelEditUsage);
    o.model = positional[0];
    o.name = positional[1];
    return 0;
}

// The model open with its folders and its panel files in the scene.
bool openWithPanels(const std::string& model) {
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(model, opened)) return false;
    AddCompleteModels(PanelFilesOfModel());
    placementHooks().addModels = AddCompleteModels;
    return true;
}

// The content of every file of the PANELS folder, to tell afterwards what was written and what went.
QMap<QString, QByteArray> panelFolderDigest() {
    QMap<QString, QByteArray> digest;
    const QDir folder(panelStore().PANELSFOLDER);
    for (const QFileInfo& info : folder.entryInfoList(QDir::Files)) {
        QFile file(info.absoluteFilePath());
        if (file.open(QIODevice::ReadOnly))
            digest[info.absoluteFilePath()] = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5);
    }
    return digest;
}

void printFolderChanges(const QMap<QString, QByteArray>& before) {
    const QMap<QString, QByteArray> after = panelFolderDigest();
    for (auto it = after.begin(); it != after.end(); ++it)
        if (QFileInfo(it.key()).suffix().compare("dae", Qt::CaseInsensitive) == 0 && before.value(it.key()) != it.value())
            std::printf("written %s\n", it.key().toUtf8().constData());
    for (auto it = before.begin(); it != before.end(); ++it)
        if (!after.contains(it.key())) std::printf("deleted %s\n", it.key().toUtf8().constData());
}

int CliPanelEdit(const std::vector<std::string>& args) {
    EditOptions o;
    if (const int bad = parseEdit(args, o)) return bad;
    if (!openWithPanels(o.model)) return CLI_FAILED;
    EditDialogService dialogs(o.values[0]);
    const CliCommandScope scope(&dialogs);

    const QString name = QString::fromStdString(o.name);
    const int index = GetPanelIndexFromName(name);
    const QString layer = index < 0 ? QString() : GetLayerOfPanel(panelStore().panels[index]);
    if (layer.isEmpty()) {
        std::fprintf(stderr, "error: no panel %s in %s\n", o.name.c_str(), panelStore().PANELSFOLDER.toUtf8().constData());
        return CLI_FAILED;
    }
    // As a line drawn on the panel's centre opens the dialog.
    const TGIS_Point3D centre = panelStore().panels[index].CenterPoint;
    PreparePanelDialog(layer, centre, centre);
    panelEditState().PanelOrGroup = o.group ? 2 : 1;
    const QMap<QString, QByteArray> before = panelFolderDigest();
    bool done = false;
    switch (o.action) {
    case EditAction::Move: done = MovePanels(o.values[0], o.values[1], o.values[2], -1) > 0; break;
    case EditAction::Lift: done = LiftPanels() != 0; break;
    case EditAction::Delete: done = DeletePanels() > 0; break;
    case EditAction::Duplicate:
        done = !DuplicatePanel(index, o.values[0], o.values[1], o.values[2]).isEmpty();
        break;
    case EditAction::None: break;
    }
    printFolderChanges(before);
    if (done) return CLI_OK;
    std::fprintf(stderr, "error: the panel was not changed\n");
    return CLI_FAILED;
}

int CliPanelsSave(const std::vector<std::string>& args) {
    if (args.size() != 1) return CliUsageError("panels-save takes one model", kPanelsSaveUsage);
    if (!openWithPanels(args[0])) return CLI_FAILED;
    const CliCommandScope scope;
    const QString file = Save3Click(panelStore().ModelFolder);
    if (file.isEmpty()) return CLI_FAILED;
    std::printf("%s\n", file.toUtf8().constData());
    return CLI_OK;
}

int CliPanelsRestore(const std::vector<std::string>& args) {
    if (args.size() != 2) return CliUsageError("panels-restore takes a model and a panels model", kPanelsRestoreUsage);
    if (!openWithPanels(args[0])) return CLI_FAILED;
    const CliCommandScope scope;
    const QString file = QFileInfo(QString::fromStdString(args[1])).absoluteFilePath();
    if (!RestorePanelsModel(file)) {
        std::fprintf(stderr, "Missing\n%s\n", args[1].c_str());
        return CLI_FAILED;
    }
    if (panelStore().NumPanelsCreated == 0) {
        std::fprintf(stderr, "error: no panels in %s\n", args[1].c_str());
        return CLI_FAILED;
    }
    const PanelFolderChanges changes = MatchPanelFolderToStore();
    for (const QString& written : changes.written) std::printf("written %s\n", written.toUtf8().constData());
    for (const QString& aside : changes.setAside) std::printf("deleted %s\n", aside.toUtf8().constData());
    return changes.written.size() == panelStore().NumPanelsCreated ? CLI_OK : CLI_FAILED;
}

}  // namespace

ZV_CLI_COMMAND("panel-edit", "MODEL NAME (--move DX DY DZ | --lift M | --delete | --duplicate X Y Z) [--group]",
               CliPanelEdit);
ZV_CLI_COMMAND("panels-save", "MODEL", CliPanelsSave);
ZV_CLI_COMMAND("panels-restore", "MODEL FILE", CliPanelsRestore);
