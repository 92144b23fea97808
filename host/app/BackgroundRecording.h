// Turning the background recorder on for this user: the systemd user unit
// where systemd knows it, else an autostart entry; either way it starts now.
#pragma once

#include <QString>

class BackgroundRecording
{
public:
    struct Setup
    {
        QString systemctl; // empty: no systemd user session to ask
        QString recorder; // the netinfo-recorder program
        QString autostartDir; // where the session looks for autostart entries
        int timeoutMs = 10000;
    };
    static constexpr char UnitName[] = "netinfo-recorder.service";

    // systemctl from the PATH, the recorder beside this program,
    // $XDG_CONFIG_HOME/autostart.
    static Setup defaults();

    // True when the recorder now runs and will run at the next login;
    // message tells the user what was done or why it failed.
    static bool enable(const Setup& setup, QString& message);
};
