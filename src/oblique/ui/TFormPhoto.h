// The facade photograph window: the picture with wheel zoom about the mouse,
// drag to move, browsing over the container and "Show on model".
#pragma once

#include <QWidget>

class QGraphicsPixmapItem;
class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QMenu;

class TFormPhoto : public QWidget {
public:
    explicit TFormPhoto(QWidget* parent);

    // Shows the picture with " DXY: %.1f DZ: %.1f" in the caption; a missing picture leaves the form as it was.
    void ShowPhotoBigWindow(const QString& JPG, double DistXY, double DistZ);
    // One photograph on (+1) or back (-1).
    void BrowswPhotoClick(int step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setStatus(const QString& text);

    QGraphicsScene* scene_;
    QGraphicsView* GIS;
    QGraphicsPixmapItem* picture_ = nullptr;
    QLabel* StatusBar2;
    QMenu* PhotoGisPopmenu;
};

// The single photograph form, made on first use over the main window.
TFormPhoto* FormPhoto(QWidget* owner = nullptr);
