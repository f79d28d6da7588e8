#include "PanelTexturePainter.h"

#include <QLinearGradient>
#include <QPainter>

namespace paneltex {

namespace {

constexpr int kColumns = 6;
constexpr int kRows = 10;
constexpr int kFrame = 8;      // frame width in pixels
constexpr int kGap = 3;        // backsheet visible between cells
constexpr int kBusbars = 4;    // per cell, running along the module
constexpr int kFingerStep = 6; // spacing of the fine fingers across each cell

void paintCell(QPainter& painter, const QRectF& cell, const PanelLook& look)
{
    QLinearGradient shade(cell.topLeft(), cell.bottomRight());
    shade.setColorAt(0.0, look.cellDark);
    shade.setColorAt(0.5, look.cellLight);
    shade.setColorAt(1.0, look.cellDark);
    painter.fillRect(cell, shade);

    QColor finger = look.busbar;
    finger.setAlpha(70);
    painter.setPen(QPen(finger, 1));
    for (double y = cell.top() + kFingerStep / 2.0; y < cell.bottom(); y += kFingerStep)
        painter.drawLine(QPointF(cell.left(), y), QPointF(cell.right(), y));

    painter.setPen(QPen(look.busbar, 2));
    for (int b = 1; b <= kBusbars; ++b) {
        const double x = cell.left() + cell.width() * b / (kBusbars + 1);
        painter.drawLine(QPointF(x, cell.top()), QPointF(x, cell.bottom()));
    }
}

} // namespace

PanelLook darkLook()
{
    return {QColor(24, 24, 28), QColor(10, 10, 12), QColor(14, 17, 24), QColor(30, 34, 44), QColor(48, 52, 60)};
}

PanelLook defaultLook()
{
    return {QColor(196, 200, 206), QColor(236, 238, 240), QColor(22, 48, 110), QColor(40, 78, 160),
            QColor(190, 196, 206)};
}

QImage paintPanelTexture(const PanelLook& look)
{
    QImage image(kTextureWidth, kTextureHeight, QImage::Format_RGB32);
    image.fill(look.frame);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, false);

    const QRectF inner(kFrame, kFrame, kTextureWidth - 2 * kFrame, kTextureHeight - 2 * kFrame);
    painter.fillRect(inner, look.backsheet);
    const double cellW = (inner.width() - (kColumns + 1) * kGap) / kColumns;
    const double cellH = (inner.height() - (kRows + 1) * kGap) / kRows;
    for (int r = 0; r < kRows; ++r)
        for (int c = 0; c < kColumns; ++c) {
            const QRectF cell(inner.left() + kGap + c * (cellW + kGap), inner.top() + kGap + r * (cellH + kGap),
                              cellW, cellH);
            paintCell(painter, cell, look);
        }
    painter.end();
    return image;
}

} // namespace paneltex
