// What the catalogue needs from a window: the folder dialog, the model
// browser, the web browser and the model opening. The window fills these at
// start-up (InstallCatalogForms), the CLI and tests put their own, so the
// logic runs without widgets.
#pragma once

#include <QString>
#include <functional>

// How the browser is to show a table.
struct ModelBrowserRequest {
    QString caption;
    QString csvFile;
    int columns = 0;        // columns to show
    int sortColumn = -1;    // data rows sorted on this column; -1 keeps the file's order
    bool maximized = true;
    bool selectFirstRow = false;
};

struct CatalogHooks {
    // A folder dialog; folder comes in as the proposal and goes out as the
    // choice. False on cancel. Unset: the question is asked as an input query.
    std::function<bool(const QString& title, const QString& prompt, QString& folder)> chooseFolder;
    // Shows TFormModels without blocking. Unset: nothing is shown.
    std::function<void(const ModelBrowserRequest&)> showBrowser;
    // Opens a web address in the system's browser; false when nothing took it.
    std::function<bool(const QString& address)> openWebAddress;
    // Opens startupState().GlobalARGVforDebug as the window does. Unset: ReadModelBtnClick.
    std::function<void()> openModel;
};

CatalogHooks& catalogHooks();
void resetCatalogHooks();
