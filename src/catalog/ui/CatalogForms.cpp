#include "CatalogForms.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QUrl>

#include "TFormModels.h"
#include "catalog/CatalogHooks.h"

void InstallCatalogForms() {
    CatalogHooks& hooks = catalogHooks();
    hooks.chooseFolder = [](const QString& title, const QString& prompt, QString& folder) {
        const QString chosen = QFileDialog::getExistingDirectory(nullptr, title + " - " + prompt, folder);
        if (chosen.isEmpty()) return false;
        folder = chosen;
        return true;
    };
    hooks.showBrowser = [](const ModelBrowserRequest& request) { formModels().showRequest(request); };
    hooks.openWebAddress = [](const QString& address) { return QDesktopServices::openUrl(QUrl(address)); };
}
