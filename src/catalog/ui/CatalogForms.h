// The window's side of the catalogue: the folder dialog, the browser and the
// web browser put into catalogHooks(). The window calls this once at start-up.
#pragma once

void InstallCatalogForms();
