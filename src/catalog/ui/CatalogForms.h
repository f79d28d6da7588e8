// The window's side of the catalogue: the folder dialog, the browser and the
// web browser put into catalogHooks(). The window calls this once at start-up.
#pragma once

class QWidget;

// The browser is made on first use as a window of parent, so that it goes
// with the main window rather than outliving the application.
void InstallCatalogForms(QWidget* parent);
