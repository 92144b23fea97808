// Starting in the tray at login: an XDG autostart entry running "netinfo --tray".
#pragma once

#include <QString>

namespace Autostart {
// $XDG_CONFIG_HOME/autostart/netinfo.desktop
QString entryPath();
bool isEnabled();
// Writes or removes the entry; false with the reason in error.
bool setEnabled(bool enabled, QString& error);
} // namespace Autostart
