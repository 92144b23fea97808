// A /proc look-alike in a temporary directory, with the link states and the
// clocks a Linux backend reads, all under the test's control.
#pragma once

#include "LinuxOptions.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <mutex>

struct FakeProc
{
    struct Device { quint64 received = 0; quint64 sent = 0; velt::LinkState link; };

    QTemporaryDir dir;
    QString root = dir.path(); // another directory for a child process
    std::shared_ptr<std::mutex> mutex = std::make_shared<std::mutex>();
    std::shared_ptr<QMap<QString, Device>> devices = std::make_shared<QMap<QString, Device>>();
    QString route;
    QByteArray bootId = "3f1c-boot-1";
    std::shared_ptr<std::atomic<qint64>> wallMs = std::make_shared<std::atomic<qint64>>(0);
    std::shared_ptr<std::atomic<qint64>> monoMs = std::make_shared<std::atomic<qint64>>(100000);

    // A connected device (up, running, with an address) of the given index.
    void set(const QString& name, quint64 received, quint64 sent, quint32 ifindex = 2, bool connected = true)
    {
        std::lock_guard lock(*mutex);
        velt::LinkState link{true, true, connected, connected, ifindex};
        (*devices)[name] = Device{received, sent, link};
    }
    void remove(const QString& name)
    {
        std::lock_guard lock(*mutex);
        devices->remove(name);
    }
    void advance(qint64 ms)
    {
        *wallMs += ms;
        *monoMs += ms;
    }

    bool write()
    {
        QByteArray dev = "Inter-|   Receive |  Transmit\n face |bytes packets|bytes\n";
        {
            std::lock_guard lock(*mutex);
            for (auto it = devices->cbegin(); it != devices->cend(); ++it)
                dev += QStringLiteral("%1: %2 1 0 0 0 0 0 0 %3 1 0 0 0 0 0 0\n")
                           .arg(it.key()).arg(it->received).arg(it->sent).toUtf8();
        }
        QByteArray routes = "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\tMTU\tWindow\tIRTT\n";
        if (!route.isEmpty())
            routes += route.toUtf8() + "\t00000000\t0100000A\t0003\t0\t0\t0\t00000000\t0\t0\t0\n";
        return put(QStringLiteral("self/net/dev"), dev) && put(QStringLiteral("self/net/route"), routes)
            && put(QStringLiteral("sys/kernel/random/boot_id"), bootId + '\n');
    }

    velt::LinuxOptions options(const QString& database) const
    {
        velt::LinuxOptions options;
        options.databasePath = database;
        options.settingsPath = root + QStringLiteral("/netinfo-host.conf");
        options.procRoot = root;
        options.interval = std::chrono::milliseconds(0);
        auto lock = mutex;
        auto table = devices;
        options.linkState = [lock, table](const QString& name) {
            std::lock_guard guard(*lock);
            return table->value(name).link;
        };
        auto wall = wallMs;
        auto mono = monoMs;
        options.wallClockMs = [wall] { return wall->load(); };
        options.monotonicMs = [mono] { return mono->load(); };
        return options;
    }

private:
    bool put(const QString& relative, const QByteArray& content)
    {
        const QString path = root + QLatin1Char('/') + relative;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
    }
};
