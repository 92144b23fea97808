// The tray icon: the period's use as a ring in the limit bar's colour, the
// figures in its tooltip, a click shows or hides the window, and closing the
// window keeps the application here where a tray exists.
#pragma once

#include "LimitWatch.h"

#include <QColor>
#include <QImage>
#include <QLocale>
#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QSystemTrayIcon;
class QWidget;

class TrayIcon : public QObject
{
    Q_OBJECT
public:
    // trayAvailable: QSystemTrayIcon::isSystemTrayAvailable() outside tests.
    TrayIcon(QWidget* window, bool trayAvailable, QObject* parent = nullptr);
    ~TrayIcon() override;

    bool isAvailable() const { return m_bAvailable; }
    void setStatus(const notify::LimitStatus& status);
    QString toolTip() const { return m_strToolTip; }
    QMenu* menu() const { return m_pMenu; }
    // History is offered once the window can show it.
    void setHistoryAvailable(bool available);

    // The ring filled to percent (capped at 100) in color, size pixels wide.
    static QImage drawIcon(int percent, const QColor& color, int size);
    // The limit bars' colours by the name the limit rules give.
    static QColor color(const char* colorName);
    static QString toolTipText(const notify::LimitStatus& status, const QLocale& locale = QLocale());

    // The window's close: true when it was only hidden into the tray. The
    // first time says so, once per user.
    bool keepOnClose();
    void toggleWindow();
    void showWindow();

signals:
    void settingsRequested();
    void historyRequested();
    // Tells the user something once, through the tray's balloon.
    void notice(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void retranslate();

    QPointer<QWidget> m_pWindow;
    bool m_bAvailable = false;
    QSystemTrayIcon* m_pTray = nullptr;
    QMenu* m_pMenu = nullptr;
    QAction* m_pOpenAction = nullptr;
    QAction* m_pSettingsAction = nullptr;
    QAction* m_pHistoryAction = nullptr;
    QAction* m_pQuitAction = nullptr;
    notify::LimitStatus m_status;
    QString m_strToolTip;
};
