// The view panel of the main form: it holds the OpenGL drawing surface
// that shows the engine's state.
#pragma once

#include <QWidget>

class ViewPanelGL;

class ViewPanel : public QWidget {
    Q_OBJECT

public:
    explicit ViewPanel(QWidget* parent = nullptr);
    ViewPanelGL* surface() const { return surface_; }

private:
    ViewPanelGL* surface_;
};
