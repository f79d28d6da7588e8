// The oblique photograph window: one photograph of the relevant list in
// picture coordinates (X 0..Width, Y -Height..0) with the clicked point
// marked, browsing through the list, wheel zoom about the mouse, distances
// and report points taken on the model through the photograph, and saving
// or exporting the picture.
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "geo/GisTypes.h"

class QAction;
class QGraphicsItem;
class QGraphicsPixmapItem;
class QGraphicsScene;
class QGraphicsView;
class QLabel;
class QLineEdit;
class QMenu;

class TFormOBLI : public QWidget {
public:
    explicit TFormOBLI(QWidget* parent);
    ~TFormOBLI() override;

    // Shows OOO[Ifound]; Zoom above 0 is kept (browsing), -9 shows the whole
    // picture. False, and the window as it was, when the picture can't be read.
    bool ShowObliqueBigWindow(int Ifound, double Zoom);
    // One photograph on (+1) or back (-1) through the relevant list, at the zoom in use.
    void BrowswObliquesClick(int step);
    // A point mark of size pixels, and a line mark of width pixels; toolkit colours.
    void AddSimun(const TGIS_Point& point, int colour, int size);
    void AddSimun(const TGIS_Point& point1, const TGIS_Point& point2, int colour, int width);
    // Orders the viewer's layers: marks over the photograph.
    void SetZorder();
    // Between the viewer's pixels and picture coordinates, rotation included.
    TGIS_Point Screen2Map(int X, int Y) const;
    QPoint Map2Screen(const TGIS_Point& point) const;
    // Status panel i (0 or 1); a negative i writes nothing.
    void GL2Text(int i, const QString& text);
    void REPAINT2();

    // Viewer pixels per picture pixel.
    double Zoom() const;
    void SetZoom(double zoom);
    // Zooms by factor keeping the picture point under the viewer pixel at fixed.
    void ZoomBy(double factor, const QPointF& at);
    void FullExtent();
    QString ScaleAsText() const;

    // The items of the pop-up menu.
    void DistanceClick();
    void ReportClick();
    void SaveImageClick();
    void ExportTheFileClick();
    void ClearClick();

    QGraphicsView* viewer() const { return GIS; }
    // Mark items in drawing order of their layers, for a look from outside.
    std::vector<QGraphicsItem*> marks() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Mode { Select, Drag, ZoomWindow, ZoomDynamic };
    struct Layer {
        QString Name;
        bool raster = false;
        QGraphicsItem* item = nullptr;
    };

    // What a new photograph starts with: no pressed point, the keys to the
    // form, browsing only through a list of more than one.
    void FormActivate();
    bool mousePress(QMouseEvent* event);
    void mouseRelease(QMouseEvent* event);
    void SetShifts2(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons);
    void ResetShifts2();
    void setMode(Mode mode);
    QGraphicsItem* vectorLayer(QGraphicsItem*& layer, const QString& name);
    void applyTransform(double zoom);
    void centreOn(const QPointF& scenePoint);
    QPointF viewCentre() const;

    QGraphicsScene* scene_;
    QGraphicsView* GIS;
    QLineEdit* KeyTrap;
    QLabel* StatusBar1[2];
    QWidget* BrowswObliques;
    QMenu* ObliiGisPopmenu;
    QAction* Report1;
    QGraphicsPixmapItem* picture_ = nullptr;
    QGraphicsItem* _Oblisimun = nullptr;
    QGraphicsItem* _OblisimunL = nullptr;
    std::vector<Layer> layers_;
    Mode mode_ = Mode::Select;
    double rotation_ = 0;
    QRect rubberBand_;
    QPoint dynamicFrom_;
};

// The window, null when it is closed.
TFormOBLI* FormOBLI();
// Shows OOO[Ifound], making the window over owner when there is none.
void ShowObliqueBigWindow(int Ifound, double Zoom, QWidget* owner);
void CloseObliqueWindow();
// The photograph step of a lookup shows its list in this window.
void InstallObliqueWindow(QWidget* owner);
