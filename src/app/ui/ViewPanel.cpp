#include "ViewPanel.h"

#include <QVBoxLayout>

#include "scene/render/ViewPanelGL.h"

ViewPanel::ViewPanel(QWidget* parent) : QWidget(parent), surface_(new ViewPanelGL(this)) {
    setObjectName("ViewPanel");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(surface_);
}
