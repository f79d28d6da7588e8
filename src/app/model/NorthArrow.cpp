#include "NorthArrow.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>

#include "app/session/StartupState.h"

namespace {

constexpr int SIZE = 128;

QImage northArrowImage() {
    QImage image(SIZE, SIZE, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    // The arrow: the west half dark, the east half light, as on a compass rose.
    QPainterPath west, east;
    west.moveTo(64, 6);
    west.lineTo(64, 70);
    west.lineTo(34, 84);
    west.closeSubpath();
    east.moveTo(64, 6);
    east.lineTo(94, 84);
    east.lineTo(64, 70);
    east.closeSubpath();
    painter.setPen(QPen(QColor(20, 20, 20), 3));
    painter.setBrush(QColor(20, 20, 20));
    painter.drawPath(west);
    painter.setBrush(QColor(245, 245, 245));
    painter.drawPath(east);
    // The letter N drawn as strokes, so no font is needed.
    painter.setPen(QPen(QColor(20, 20, 20), 7, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    const QPointF n[] = {{50, 122}, {50, 94}, {78, 122}, {78, 94}};
    painter.drawPolyline(n, 4);
    return image;
}

}  // namespace

bool PrepareNorthArrow() {
    const std::string& path = startupState().NORTHARROW;
    if (path.empty()) return false;
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) return false;
    return northArrowImage().save(&file, "PNG") && file.commit();
}
