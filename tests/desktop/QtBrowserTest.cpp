#include "platform/desktop/QtBrowser.h"

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <gtest/gtest.h>

namespace orvalen::test {

/// Receives the addresses that would start another program.
class OtherPrograms : public QObject {
    Q_OBJECT

public:
    OtherPrograms() {
        for (const char* scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~OtherPrograms() override {
        for (const char* scheme : schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> opened;

public slots:
    void open(const QUrl& address) { opened.append(address); }

private:
    static constexpr const char* schemes[] = {"http", "https", "file", "ftp", "mailto"};
};

TEST(QtBrowser, OpensWebAddressesOnly) {
    OtherPrograms programs;
    QtBrowser browser;
    for (const char* other : {"file:///usr/bin/true", "ftp://a.example/x", "mailto:a@a.example", "https:///x",
                              "https://a.example/%", "/usr/bin/true"})
        browser.open(other);
    EXPECT_EQ(programs.opened, QList<QUrl>());
    browser.open("https://a.example/x?y");
    browser.open("http://a.example");
    EXPECT_EQ(programs.opened, (QList<QUrl>{QUrl("https://a.example/x?y"), QUrl("http://a.example")}));
}

} // namespace orvalen::test

#include "QtBrowserTest.moc"
