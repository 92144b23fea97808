#include "Autostart.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace Autostart {

QString entryPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/autostart/netinfo.desktop");
}

bool isEnabled()
{
    return QFileInfo::exists(entryPath());
}

bool setEnabled(bool enabled, QString& error)
{
    const QString path = entryPath();
    if (!enabled) {
        QFile file(path);
        if (!file.exists() || file.remove())
            return true;
        error = file.errorString();
        return false;
    }
    QSaveFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)) {
        error = file.errorString();
        return false;
    }
    file.write("[Desktop Entry]\nType=Application\nName=NetInfo\nComment=Network usage in the tray\n"
               "Exec=netinfo --tray\nIcon=netinfo\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
    if (!file.commit()) {
        error = file.errorString();
        return false;
    }
    return true;
}

} // namespace Autostart
