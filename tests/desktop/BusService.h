#pragma once

#include <QDBusConnection>
#include <QObject>
#include <gtest/gtest.h>

namespace orvalen::test {

/// Another program that offers its scriptable slots as a service on the session bus.
class BusService : public QObject {
public:
    BusService(const char* name, const char* path)
        : name_(name), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connection())) {
        EXPECT_TRUE(bus_.registerObject(path, this, QDBusConnection::ExportScriptableSlots));
        EXPECT_TRUE(bus_.registerService(name));
    }
    ~BusService() override {
        bus_.unregisterService(name_);
        QDBusConnection::disconnectFromBus(connection());
    }
    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;

private:
    /// Returns a name that differs from the names of the connections under test.
    QString connection() const { return QString("test of ") + name_; }

    const char* name_;

protected:
    QDBusConnection bus_;
};

} // namespace orvalen::test
