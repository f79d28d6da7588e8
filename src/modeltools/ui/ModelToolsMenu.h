// The "Model" menu of the main window: new model files made from the open
// one (crop, clean, geocode, export, shift, pack) and the model catalogue.
#pragma once

#include <QString>
#include <functional>

class QMenuBar;
class QWidget;

void CreateModelMenu(QWidget* form, QMenuBar* bar);

// Runs a long pass over a model file under a progress dialog whose Cancel
// stops it; a stopped pass leaves no output behind.
void RunModelToolWithProgress(QWidget* parent, const QString& title, const std::function<void()>& job);
