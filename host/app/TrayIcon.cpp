#include "TrayIcon.h"

#include "CommonUtils.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QPainter>
#include <QSystemTrayIcon>

namespace {
const QString kToldKey = QStringLiteral("trayclosenoticeshown");

QString amount(quint64 value, bool time, const QLocale& locale)
{
    if (time)
        return QStringLiteral("%1:%2").arg(value / 3600).arg(value / 60 % 60, 2, 10, QLatin1Char('0'));
    return locale.formattedDataSize(qint64(value), 1, QLocale::DataSizeTraditionalFormat);
}
} // namespace

TrayIcon::TrayIcon(QWidget* window, bool trayAvailable, QObject* parent)
    : QObject(parent)
    , m_pWindow(window)
    , m_bAvailable(trayAvailable)
    , m_pMenu(new QMenu)
{
    m_pOpenAction = m_pMenu->addAction(QString(), this, &TrayIcon::showWindow);
    m_pSettingsAction = m_pMenu->addAction(QString(), this, &TrayIcon::settingsRequested);
    m_pHistoryAction = m_pMenu->addAction(QString(), this, &TrayIcon::historyRequested);
    m_pHistoryAction->setEnabled(false);
    m_pMenu->addSeparator();
    m_pQuitAction = m_pMenu->addAction(QString(), qApp, &QCoreApplication::quit);
    retranslate();
    // The menu has no parent, so it hears of a new language on its own.
    m_pMenu->installEventFilter(this);
    if (m_pWindow)
        m_pWindow->installEventFilter(this);
    setStatus({});
    if (!m_bAvailable)
        return;
    // Hidden into the tray the application must stay; Quit ends it.
    QApplication::setQuitOnLastWindowClosed(false);
    m_pTray = new QSystemTrayIcon(this);
    m_pTray->setContextMenu(m_pMenu);
    setStatus({});
    connect(m_pTray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            toggleWindow();
    });
    connect(this, &TrayIcon::notice, m_pTray, [this](const QString& text) {
        m_pTray->showMessage(QStringLiteral("NetInfo"), text, m_pTray->icon());
    });
    m_pTray->show();
}

TrayIcon::~TrayIcon()
{
    delete m_pMenu;
}

void TrayIcon::setHistoryAvailable(bool available)
{
    m_pHistoryAction->setEnabled(available);
}

QColor TrayIcon::color(const char* colorName)
{
    // The shipped colour table's values for the three bar states.
    const QByteArray name(colorName);
    if (name == "BeforeWarningColor")
        return QColor(255, 167, 38);
    if (name == "ReachedWarningColor")
        return QColor(229, 57, 53);
    return QColor(76, 175, 80);
}

QImage TrayIcon::drawIcon(int percent, const QColor& color, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal pen = size / 5.0;
    const QRectF ring = QRectF(0, 0, size, size).adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2);
    painter.setPen(QPen(QColor(128, 128, 128, 110), pen));
    painter.drawEllipse(ring);
    // Clockwise from twelve o'clock, as a gauge reads.
    const int span = -int(qBound(0, percent, 100) * 360 * 16 / 100);
    painter.setPen(QPen(color, pen, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ring, 90 * 16, span);
    return image;
}

QString TrayIcon::toolTipText(const notify::LimitStatus& status, const QLocale& locale)
{
    if (!status.limited)
        return tr("NetInfo: no usage limit set");
    QString text
        = tr("NetInfo: %1 of %2 used (%3 %)\n%4 left")
              .arg(amount(status.used, status.time, locale), amount(status.limit, status.time, locale))
              .arg(status.percent)
              .arg(amount(status.remaining, status.time, locale));
    if (status.daysLeft >= 0)
        text += QLatin1Char('\n') + tr("%n day(s) left in this period", nullptr, status.daysLeft);
    return text;
}

void TrayIcon::retranslate()
{
    m_pOpenAction->setText(tr("Open"));
    m_pSettingsAction->setText(tr("Settings"));
    m_pHistoryAction->setText(tr("History"));
    m_pQuitAction->setText(tr("Quit"));
}

void TrayIcon::setStatus(const notify::LimitStatus& status)
{
    m_status = status;
    m_strToolTip = toolTipText(status);
    if (!m_pTray)
        return;
    m_pTray->setToolTip(m_strToolTip);
    QIcon icon;
    for (int size : { 16, 22, 32, 64 })
        icon.addPixmap(QPixmap::fromImage(drawIcon(status.percent, color(status.colorName), size)));
    m_pTray->setIcon(icon);
}

bool TrayIcon::keepOnClose()
{
    if (!m_bAvailable || !m_pWindow)
        return false;
    m_pWindow->hide();
    if (!CommonUtils::GetSettings(QStringLiteral("host"), kToldKey, false).toBool()) {
        CommonUtils::SetSettings(QStringLiteral("host"), kToldKey, true);
        emit notice(tr("NetInfo keeps running in the tray. Quit it from the tray icon's menu."));
    }
    return true;
}

void TrayIcon::toggleWindow()
{
    if (m_pWindow && m_pWindow->isVisible() && !m_pWindow->isMinimized())
        m_pWindow->hide();
    else
        showWindow();
}

void TrayIcon::showWindow()
{
    if (!m_pWindow)
        return;
    m_pWindow->showNormal();
    m_pWindow->raise();
    m_pWindow->activateWindow();
}

bool TrayIcon::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pMenu && event->type() == QEvent::LanguageChange) {
        retranslate();
        setStatus(m_status);
    }
    if (watched == m_pWindow && event->type() == QEvent::Close && m_bAvailable) {
        // The window manager's close button hides; Quit closes all windows
        // itself and then means it, as the tray keeps the application alive.
        if (event->spontaneous() && keepOnClose()) {
            event->ignore();
            return true;
        }
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
