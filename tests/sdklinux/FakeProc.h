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
    struct Device
    {
        quint64 received = 0, sent = 0;
        velt::LinkState link;
        int megabits = 0;
    };
    struct Shared
    {
        std::mutex mutex;
        QMap<QString, Device> devices;
        std::atomic<qint64> wallMs { 0 }, monoMs { 100000 };
    };

    QTemporaryDir dir;
    QString root = dir.path(); // another directory for a child process
    QString route;
    QByteArray bootId = "3f1c-boot-1";
    std::shared_ptr<Shared> state = std::make_shared<Shared>();

    // A device that is up, running and has an address when connected.
    void set(const QString& name, quint64 received, quint64 sent, quint32 ifindex = 2, bool connected = true,
        int megabits = 0)
    {
        std::lock_guard lock(state->mutex);
        state->devices[name] = Device { received, sent,
            velt::LinkState { true, true, connected, connected, ifindex }, megabits };
    }

    void advance(qint64 ms) { state->wallMs += ms, state->monoMs += ms; }

    bool write()
    {
        QByteArray dev = "Inter-|   Receive |  Transmit\n face |bytes packets|bytes\n";
        {
            std::lock_guard lock(state->mutex);
            for (auto it = state->devices.cbegin(); it != state->devices.cend(); ++it) {
                dev += QStringLiteral("%1: %2 1 0 0 0 0 0 0 %3 1 0 0 0 0 0 0\n")
                           .arg(it.key())
                           .arg(it->received)
                           .arg(it->sent)
                           .toUtf8();
                if (it->megabits
                    && !put(qPrintable(QStringLiteral("sysfs/class/net/%1/speed").arg(it.key())),
                        QByteArray::number(it->megabits)))
                    return false;
            }
        }
        const QByteArray routes
            = "Iface\tDestination\tGateway\tFlags\tRefCnt\tUse\tMetric\tMask\tMTU\tWindow\tIRTT\n"
            + (route.isEmpty() ? QByteArray()
                               : route.toUtf8() + "\t00000000\t0100000A\t0003\t0\t0\t0\t00000000\t0\t0\t0\n");
        return put("self/net/dev", dev) && put("self/net/route", routes)
            && put("sys/kernel/random/boot_id", bootId);
    }

    velt::LinuxOptions options(const QString& database) const
    {
        velt::LinuxOptions options;
        options.databasePath = database;
        options.settingsPath = root + QStringLiteral("/netinfo-host.conf");
        options.procRoot = root;
        options.sysRoot = root + QStringLiteral("/sysfs");
        options.interval = std::chrono::milliseconds(0);
        auto shared = state;
        options.linkState = [shared](const QString& name) {
            std::lock_guard lock(shared->mutex);
            return shared->devices.value(name).link;
        };
        options.wallClockMs = [shared] { return shared->wallMs.load(); };
        options.monotonicMs = [shared] { return shared->monoMs.load(); };
        return options;
    }

private:
    bool put(const char* relative, const QByteArray& content)
    {
        const QString path = root + QLatin1Char('/') + QLatin1String(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
    }
};
