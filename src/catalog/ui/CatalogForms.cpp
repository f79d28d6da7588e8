#include "CatalogForms.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QPointer>
#include <QUrl>
#include <memory>

#include "TFormModels.h"
#include "catalog/CatalogHooks.h"

void InstallCatalogForms(QWidget* parent) {
    CatalogHooks& hooks = catalogHooks();
    hooks.chooseFolder = [parent](const QString& title, const QString& prompt, QString& folder) {
        const QString chosen = QFileDialog::getExistingDirectory(parent, title + " - " + prompt, folder);
        if (chosen.isEmpty()) return false;
        folder = chosen;
        return true;
    };
    // One browser for the session; "Delete the model" shows it again over what is left.
    auto browser = std::make_shared<QPointer<TFormModels>>();
    hooks.showBrowser = [parent, browser](const ModelBrowserRequest& request) {
        if (!*browser) *browser = new TFormModels(parent);
        (*browser)->showRequest(request);
    };
    hooks.openWebAddress = [](const QString& address) { return QDesktopServices::openUrl(QUrl(address)); };
}
