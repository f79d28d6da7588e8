#include "QtDialogService.h"

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QUrl>

#include "QtFileFilter.h"
#include "app/services/ToolkitColor.h"
#include "TFormOrvoMsg.h"
#include "TFormXLS.h"
#include "TForm_DLG.h"

namespace {

QWidget* ownerWindow() { return QApplication::activeWindow(); }

// Brings the program to the front before a question, so it is never asked
// behind another application's window.
void bringToFront(QWidget* dialog) {
    if (QWidget* owner = ownerWindow()) {
        owner->raise();
        owner->activateWindow();
    }
    dialog->raise();
    dialog->activateWindow();
}

}  // namespace

QtDialogService::QtDialogService() = default;
QtDialogService::~QtDialogService() = default;

int QtDialogService::ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) {
    std::unique_ptr<TFormOrvoMsg> box;
    if (buttons.size() > 3)
        box = std::make_unique<TFormOrvoMsg4>(ownerWindow());
    else
        box = std::make_unique<TFormOrvoMsg>(ownerWindow());
    box->setup(text, title, buttons, defaultButton);
    bringToFront(box.get());
    return box->exec();
}

void QtDialogService::showMessage(const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, ownerWindow());
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    bringToFront(&box);
    box.exec();
}

bool QtDialogService::inputQuery(const QString& caption, const QString& prompt, QString& value) {
    QInputDialog dialog(ownerWindow());
    dialog.setWindowTitle(caption);
    dialog.setLabelText(prompt);
    dialog.setTextValue(value);
    QFont font = dialog.font();
    font.setPixelSize(16);
    dialog.setFont(font);
    bringToFront(&dialog);
    if (dialog.exec() != QDialog::Accepted) return false;
    value = dialog.textValue();
    return true;
}

bool QtDialogService::chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) {
    QFileDialog dialog(ownerWindow(), request.title, request.folder);
    const QStringList filters = QtNameFilters(request.filter);
    dialog.setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size())
        dialog.selectNameFilter(filters[request.filterIndex - 1]);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.save       ? QFileDialog::AnyFile
                       : request.multiple ? QFileDialog::ExistingFiles
                                          : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.promptOverwrite);
    dialog.setOption(QFileDialog::HideNameFilterDetails, true);
    if (!request.proposedName.isEmpty()) dialog.selectFile(request.proposedName);

    // A save dialog leaves the pointer where it was: the operator goes on
    // clicking on the model where he stood.
    const QPoint pointer = QCursor::pos();
    QApplication::processEvents();
    const bool accepted = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    QApplication::processEvents();
    if (request.save) QCursor::setPos(pointer);
    if (!accepted) return false;
    chosen = request.multiple ? dialog.selectedFiles().join('\n') : dialog.selectedFiles().first();
    chosenFilter = std::max<int>(1, static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1);
    return true;
}

bool QtDialogService::oneLineDialog(const OneLineDialogRequest& request, QString& value) {
    TForm_DLG form(ownerWindow());
    form.setup(request, value);
    bringToFront(&form);
    if (form.exec() != QDialog::Accepted) return false;
    value = form.text();
    return true;
}

bool QtDialogService::chooseColor(const QString& title, int& color) {
    QColorDialog dialog(QColorFromToolkit(color), ownerWindow());
    dialog.setWindowTitle(title);
    bringToFront(&dialog);
    if (dialog.exec() != QDialog::Accepted) return false;
    color = ToolkitFromQColor(dialog.selectedColor());
    return true;
}

bool QtDialogService::openDocument(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
}

void QtDialogService::showXlsForm(const QString& caption, bool maximized) {
    if (!xlsForm_) xlsForm_ = std::make_unique<TFormXLS>();
    xlsForm_->showState(caption, maximized);
}
