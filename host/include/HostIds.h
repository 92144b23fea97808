// Identifiers and codes shared by the host and its plug-ins.
#pragma once

namespace HostIds {

// Look-up keys in the plug-in container.
inline constexpr char NotifyServicePlugin[] = "1FB2F226-FA07-5720-6990-60D7281E609B";
inline constexpr int NotifyServiceKind = 8209;
inline constexpr char MainFramePlugin[] = "A32FDF6B-CFEC-0dCC-2F25-A316158E60FF";
inline constexpr int MainFrameKind = 4113;

// Targets of the notification service.
inline constexpr char StatusPanelTarget[] = "B5B2E947-2D76-333f-3167-20FD266492A2";
inline constexpr char SettingsTarget[] = "53730AC4-E220-66d0-8A96-D74249D6C381";
inline constexpr int SettingsKind = 4098;
inline constexpr char ConnectionTarget[] = "E68979D2-54C0-3A9D-221A-84C44CFF9339";
inline constexpr int ConnectionKind = 16401;
inline constexpr char MainFrameTarget[] = "A32FDF6B-CFEC-0dCC-2F25-A316158E60FF";

// IBasePlugin::QueryInterface id of a plug-in's view service.
inline constexpr int ViewServiceId = 4098;

// Events sent by plug-ins through the notification service.
inline constexpr unsigned int EventMinimumWidth = 262;
inline constexpr unsigned int EventDisconnect = 1537;
inline constexpr unsigned int EventOpenSettings = 2304;
inline constexpr unsigned int EventStatusPanel = 4116;

// Messages the host sends through INotify::Notify.
inline constexpr unsigned int MsgLanguageChanged = 1024;
inline constexpr unsigned int MsgRefit = 258;
inline constexpr unsigned int MsgConnectionStatus = 1536;
inline constexpr unsigned int MsgCreateStatusPanel = 4117;

// Connection status values of MsgConnectionStatus that mean "connected".
inline constexpr unsigned int StatusConnected = 1;
inline constexpr unsigned int StatusConnectedAlt = 8;
inline constexpr unsigned int StatusDisconnected = 0;

} // namespace HostIds
