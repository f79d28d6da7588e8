// zv-icongen OUTFOLDER: writes the tactical icons offered by the icons form
// as 64 x 64 bitmaps into OUTFOLDER. They are drawn on white, which the
// billboards make transparent, so every stroke is a colour other than white.
// The same program always gives the same files.

#include <QGuiApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <cstdio>
#include <functional>

namespace {

constexpr int kSize = 64;

bool writeBitmap(const QImage& image, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (!image.convertToFormat(QImage::Format_RGB888).save(&file, "BMP")) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

void flag(QPainter& p) {
    p.setPen(QPen(QColor(60, 40, 20), 4));
    p.drawLine(16, 8, 16, 58);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(200, 20, 20));
    p.drawPolygon(QPolygon({QPoint(18, 8), QPoint(54, 18), QPoint(18, 30)}));
}

void camera(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 40, 40));
    p.drawRoundedRect(8, 20, 48, 32, 4, 4);
    p.drawRect(22, 14, 16, 8);
    p.setBrush(QColor(70, 120, 200));
    p.drawEllipse(QPoint(32, 36), 10, 10);
}

void antenna(QPainter& p) {
    p.setPen(QPen(QColor(30, 30, 120), 3));
    p.drawLine(32, 20, 20, 58);
    p.drawLine(32, 20, 44, 58);
    p.drawLine(24, 44, 40, 44);
    p.drawArc(20, 6, 24, 24, 30 * 16, 120 * 16);
    p.drawArc(12, 0, 40, 36, 30 * 16, 120 * 16);
}

void warning(QPainter& p) {
    p.setPen(QPen(QColor(40, 40, 40), 3));
    p.setBrush(QColor(250, 200, 0));
    p.drawPolygon(QPolygon({QPoint(32, 6), QPoint(60, 56), QPoint(4, 56)}));
    p.setPen(QPen(QColor(40, 40, 40), 6));
    p.drawLine(32, 22, 32, 40);
    p.drawPoint(32, 48);
}

void tent(QPainter& p) {
    p.setPen(QPen(QColor(30, 80, 30), 3));
    p.setBrush(QColor(60, 140, 60));
    p.drawPolygon(QPolygon({QPoint(32, 10), QPoint(58, 54), QPoint(6, 54)}));
    p.setBrush(QColor(20, 50, 20));
    p.drawPolygon(QPolygon({QPoint(32, 26), QPoint(40, 54), QPoint(24, 54)}));
}

void sphere(QPainter& p) {
    QRadialGradient light(QPointF(24, 24), 30);
    light.setColorAt(0, QColor(150, 180, 255));
    light.setColorAt(1, QColor(10, 30, 150));
    p.setPen(Qt::NoPen);
    p.setBrush(light);
    p.drawEllipse(QPoint(32, 32), 26, 26);
}

void crane(QPainter& p) {
    p.setPen(QPen(QColor(230, 150, 0), 4));
    p.drawLine(20, 60, 20, 8);
    p.drawLine(8, 10, 58, 10);
    p.drawLine(20, 24, 34, 10);
    p.setPen(QPen(QColor(40, 40, 40), 2));
    p.drawLine(50, 10, 50, 36);
    p.setBrush(QColor(40, 40, 40));
    p.drawRect(44, 36, 12, 8);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: zv-icongen OUTFOLDER\n");
        return 2;
    }
    const QDir out(QString::fromLocal8Bit(argv[1]));
    if (!QDir().mkpath(out.path())) return 1;
    const std::pair<const char*, std::function<void(QPainter&)>> icons[] = {
        {"FLAG", flag},   {"CAMERA", camera}, {"ANTENNA", antenna}, {"WARNING", warning},
        {"TENT_S", tent}, {"SPHERE", sphere}, {"CRANE_L", crane}};
    for (const auto& [name, paint] : icons) {
        QImage image(kSize, kSize, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, false);
        paint(painter);
        painter.end();
        const QString path = out.filePath(QString(name) + ".bmp");
        if (!writeBitmap(image, path)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
        std::printf("%s\n", qPrintable(path));
    }
    return 0;
}
