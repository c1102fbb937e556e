#include "app/window/symbols/SymbolProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace orvalen {

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString name = id.section(u'/', 0, 0);
    const QString colour = id.section(u'/', 1);
    const QSize pixels = requestedSize.isValid() ? requestedSize : QSize(24, 24);
    *size = pixels;

    QFile file(":/qt/qml/Orvalen/symbols/" + name + ".svg");
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no symbol named %s", qUtf8Printable(name));
        return {};
    }
    QSvgRenderer drawing(file.readAll().replace("currentColor", colour.toUtf8()));
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

} // namespace orvalen
