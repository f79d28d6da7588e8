// The Qt face of the dialog service, installed by the window at start-up:
// the boxes, queries and file dialogs as Qt dialogs, documents through the
// desktop's opener, and the grid form.
#pragma once

#include <memory>

#include "app/services/DialogService.h"

class TFormXLS;

class QtDialogService : public DialogService {
public:
    QtDialogService();
    ~QtDialogService() override;
    int ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) override;
    void showMessage(const QString& text, const QString& title) override;
    bool inputQuery(const QString& caption, const QString& prompt, QString& value) override;
    bool chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) override;
    bool oneLineDialog(const OneLineDialogRequest& request, QString& value) override;
    bool chooseColor(const QString& title, int& color) override;
    bool openDocument(const QString& path) override;
    void showXlsForm(const QString& caption, bool maximized) override;

private:
    std::unique_ptr<TFormXLS> xlsForm_;
};
