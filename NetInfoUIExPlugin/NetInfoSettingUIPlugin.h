// The usage-limit page of the host's settings dialog. The page's controls
// arrive with the limit settings; until then the page is an empty widget that
// the view can already show, hide, accept and detach.
#pragma once

#include <QObject>
#include <QString>

class NetInfoSettingUILogic;
class QRect;
class QWidget;

class NetInfoSettingUIPlugin : public QObject
{
    Q_OBJECT
public:
    static NetInfoSettingUIPlugin* GetInstance();
    static void ReleaseInstance();

    // Builds the page widget; true when it exists afterwards.
    bool InitNetInfoSetting();
    // False only if the page could not be built.
    bool ShowNetInfoSettingDlg(QWidget* parent, QRect& rect);
    // True if there was a page to hide.
    bool HideNetInfoSetting();
    void SetLanguage();
    bool SaveNetInfoSettings();
    bool CancelNetInfoSetting();
    // The stored value of a usage-limit key; null when the store lacks it.
    // The first call loads the store.
    QString getVolumeLimitSettings(QString key);

    // The free-standing page the host's dialog embeds; null until built.
    QWidget* GetPageWidget() const { return m_pPageWidget; }
    QString unitText() const { return m_strUnitText; }

signals:
    void netInfoSettingsChanged(int dataVolume, int timeVolume, bool warnBefore, bool warnExceeds);

public slots:
    void ongetXMLUnit(QString text);

private:
    NetInfoSettingUIPlugin() = default;
    ~NetInfoSettingUIPlugin() override;

    static NetInfoSettingUIPlugin* m_pInstance;
    QWidget* m_pPageWidget = nullptr; // owned; has no parent of ours
    QString m_strUnitText;
    NetInfoSettingUILogic* m_pStore = nullptr; // borrowed
};
