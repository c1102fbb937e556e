#pragma once

#include <QQuickImageProvider>

namespace orvalen {

/// Draws our symbols in any colour and size: ‘image://symbol/play.fill/#ff9f0a’.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider() : QQuickImageProvider(Image) {}
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace orvalen
