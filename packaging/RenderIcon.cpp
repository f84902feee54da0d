// Draws the application's SVG icon into a square PNG for the icon theme:
//   tillery-render-icon ICON.svg OUTPUT.png SIZE
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#include <QTextStream>

int main(int argc, char *argv[])
{
    if (argc != 4) {
        QTextStream(stderr) << "usage: tillery-render-icon ICON.svg OUTPUT.png SIZE\n";
        return 2;
    }
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    bool isNumber = false;
    const int size = QString::fromLocal8Bit(argv[3]).toInt(&isNumber);
    if (!renderer.isValid() || !isNumber || size <= 0) {
        QTextStream(stderr) << "tillery-render-icon: cannot draw " << argv[1] << " at size " << argv[3] << "\n";
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[2]), "PNG")) {
        QTextStream(stderr) << "tillery-render-icon: cannot write " << argv[2] << "\n";
        return 1;
    }
    return 0;
}
