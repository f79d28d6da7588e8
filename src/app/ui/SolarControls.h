// The main form's "Solar panels" menu: the detailed report with its
// progress dialog, the customer, panel labels and lists, roof planes,
// construction tables, helper models, the climate download, and saving,
// restoring and deleting the panels of the model.
#pragma once

class QMenuBar;
class QWidget;

void CreateSolarMenu(QWidget* form, QMenuBar* bar);
// The detailed report with a progress dialog: its bar counts the panels and
// its Cancel stops the run between two panels.
void RunReportWithProgress(QWidget* parent, bool onlyCenter, int optimizerType);
