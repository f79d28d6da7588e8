// zv-paneltex OUTFOLDER: writes the panel textures "PNEG.JPG" (dark) and
// "PDEF.JPG" (default) into OUTFOLDER. The pictures are painted, not drawn
// from any photograph, so the same program always gives the same files.

#include "PanelTexturePainter.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

#include <cstdio>

namespace {

bool writeJpeg(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (!image.save(&file, "JPG", 92)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // lets Qt find its image format plugins
    if (argc != 2) {
        std::fprintf(stderr, "usage: zv-paneltex OUTFOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "zv-paneltex: cannot create %s\n", argv[1]);
        return 1;
    }
    const struct {
        const char* name;
        paneltex::PanelLook look;
    } textures[] = {{"PNEG.JPG", paneltex::darkLook()}, {"PDEF.JPG", paneltex::defaultLook()}};
    for (const auto& texture : textures) {
        const QString path = QDir(folder).filePath(QString::fromLatin1(texture.name));
        if (!writeJpeg(paneltex::paintPanelTexture(texture.look), path)) {
            std::fprintf(stderr, "zv-paneltex: cannot write %s\n", qPrintable(path));
            return 1;
        }
        std::printf("%s\n", qPrintable(path));
    }
    return 0;
}
