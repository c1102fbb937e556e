#include "platform/desktop/QtBrowser.h"

#include <QDesktopServices>
#include <QUrl>

namespace orvalen {

void QtBrowser::open(const std::string& address) {
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    const bool web = url.scheme() == "http" || url.scheme() == "https";
    if (url.isValid() && web && !url.host().isEmpty())
        QDesktopServices::openUrl(url);
}

} // namespace orvalen
