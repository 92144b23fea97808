// The plug-in's view: the statistics tree with its live and stored figures,
// the status panel handed to the host, and the settings page the host's
// settings dialog embeds.
#pragma once

#include "ISettingUIPlugin.h"
#include "NetInfoTypes.h"
#include "view/StatisticsSnapshot.h"
#include "view/TreeRows.h"
#include "view/UsageLimitPolicy.h"

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QObject>
#include <QRect>
#include <QString>
#include <QTime>
#include <QVector>

class GraphWidget;
class GridDelegateLayout;
class INotifyService;
class LwProgressBar;
class NetInfoConfigParse;
class NetInfoSettingUIPlugin;
class NetInfoUILogic;
class QAction;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QSplitter;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;
class QWidget;
class WarnPrompt;

class CNetInfoUIService : public QObject, public ISettingUIPlugin
{
    Q_OBJECT
    Q_INTERFACES(ISettingUIPlugin)
public:
    static CNetInfoUIService* instance();
    static void Destroy();

    int Init();
    int ShowWindow(QWidget* parent, QRect& rect);
    int DoModal();
    int Hide();
    int FitSize(QRect& rect);
    int Notify(unsigned int msg, unsigned int param1, unsigned int param2);
    void unSDKRegisterEvent();
    void OnDestroy();

    bool IsActiveSetting() override;
    bool OnClickSettingOkButton() override;
    bool OnClickSettingCancelButton() override;
    bool ShowSettingDialog(QWidget* parent, QRect& rect) override;
    QString GetModuleName() override;
    bool HideSetting() override;

    QString tr(QString key);
    QWidget* GetWigetTopLevel();
    void CreateNetInfoWidget();
    bool isPluginAvailable(QString name);
    QIcon setIcon(QString path);

    // The connection status last notified (all bits set before the first)
    // and whether it counts as connected.
    unsigned int connectState() const { return m_iConnectState; }
    bool isConnected() const { return m_bConnected; }

    // Usage limits: the settings as last loaded, the share of the limit used
    // and the period shown.
    void InitParam();
    void InitDate();
    void InitDataTimeVolLimit();
    void InitFluxData();
    unsigned int OperationPersent(long double used);
    unsigned int TimeOperationPersent(long double used, unsigned long long limit);
    void UpdateNewPeriodTipInfo();
    void UpdatePeriodFields(NetInfoData oldRecord, NetInfoData newRecord);
    QTime GetBeforeNowThreeMonthlyTime();
    void ShowMonthly();
    void ShowWeekly();
    void ShowDaily();
    void ShowSpecHistroy();
    // Colour the bar for the amount used; 0 normal, 1 warning band, 2 limit reached.
    unsigned int ShowDataColorPrompt(long double used);
    unsigned int ShowTimeColorPrompt(long double used);
    void setShowWarnDlg(QWidget* parent, QString text);
    WarnPrompt* warnPrompt() const { return m_pWarnPrompt; }

signals:
    void ResetAllData();
    void getXMLUnit(QString text);

public slots:
    void onStatisticsChanged(
        ulong ulUpSpeed, ulong ulDownSpeed, qulonglong ullUpData, qulonglong ullDownData, QString stringTime);
    void showTreeContextMenu(QPoint point);
    void expandAll();
    void collapseAll();
    void resetStatistics();
    void onResetButtonClicked();
    void onSetLimitButtonClicked();
    void movedSplitter(int iPos, int iIndex);
    void onNetInfoSettingsChanged(int dataVolume, int timeVolume, bool warnBefore, bool warnExceeds);
    void onSelectDisconnectDialup();

private:
    CNetInfoUIService();
    ~CNetInfoUIService() override;

    // Widget tree and layout.
    void createMainWidget();
    void createLeftWidget();
    void createStatisticsWidget();
    void addUpLoadWidgetStatisticsWidget();
    void addDownLoadWidgetStatisticsWidget();
    void addStatisticsNodeComponets();
    void addStatisticsMonthlyNode();
    void addStatisticsYearlyNode();
    void addNoteInTree();
    void checkTreeColumnWidth(QTreeWidgetItem* item);
    void enableScroll();
    QIcon treeIcon(const char* name);
    void showLiveValues(quint64 totalData);
    void showStoredValues();
    void showRow(QTreeWidgetItem* item, view::Row row);
    void showValueIcon(QTreeWidgetItem* item);
    void rebuildRows();
    void addPeriodNode(const char* function, QTreeWidgetItem* node, QTreeWidgetItem* uploaded,
        QTreeWidgetItem* downloaded, const char* key, const char* icon, const char* labelKey,
        const QVector<TagUnits>& zeroUnits);
    void addTransferDirection(const char* function, QTreeWidgetItem* node, QTreeWidgetItem* speedItem,
        QTreeWidgetItem* dataItem, const char* key, const char* icon, const char* labelKey);
    QString transferLabel();
    QString zeroValue(const QVector<TagUnits>& units);

    // The limit panel and its warnings.
    void createVolumeLimitWidget();
    void addDataVolumeWidget();
    void updateDataVolumeStrings();
    void UpdateTreeItems();
    void showPeriod(void (CNetInfoUIService::*data)(), void (CNetInfoUIService::*time)());
    void ShowDailyDataVolumeLimit();
    void ShowWeeklyDataVolumeLimit();
    void ShowMonthlyDataVolumeLimit();
    void ShowSpecHistroyDataVolumeLimit();
    void ShowDailyTimeVolumeLimit();
    void ShowWeeklyTimeVolumeLimit();
    void ShowMonthlyTimeVolumeLimit();
    void ShowSpecHistroyTimeVolumeLimit();
    void showDataVolumeLimit(const NetInfoData& record);
    void showTimeVolumeLimit(const NetInfoData& record);
    void paintBar(LwProgressBar* bar, const view::LimitBar& state, const QString& text);
    QString limitSetting(const char* key) const;
    NetInfoConfigParse* featureConfig() const;
    QColor progressColor(const QString& name) const;

    // Figures and texts.
    int updateStoredStatistics();
    void updateTransferStrings();
    void updateStatisticsStrings();
    void setSpeedLanguage();
    void translateCachedLabels();

    // Context menu, reset and the graph's place in the splitter.
    void createRightClickActions();
    void updateRightClickItems();
    void createGraphWidget();

    static CNetInfoUIService* m_pInstance;

    QWidget* m_pMainWidget = nullptr;
    QWidget* m_pTopLevel = nullptr;
    QSplitter* m_pSplitter = nullptr;
    QWidget* m_pLeftWidget = nullptr;
    QTreeWidget* m_pTree = nullptr;
    GridDelegateLayout* m_pDelegate = nullptr;
    QTreeWidgetItem* m_pNoteItem = nullptr;

    QTreeWidgetItem* m_pTransferNode = nullptr;
    QTreeWidgetItem* m_pTransferTimeItem = nullptr;
    QTreeWidgetItem* m_pUploadNode = nullptr;
    QTreeWidgetItem* m_pUploadSpeedItem = nullptr;
    QTreeWidgetItem* m_pUploadDataItem = nullptr;
    QTreeWidgetItem* m_pDownloadNode = nullptr;
    QTreeWidgetItem* m_pDownloadSpeedItem = nullptr;
    QTreeWidgetItem* m_pDownloadDataItem = nullptr;
    QTreeWidgetItem* m_pStatisticsNode = nullptr;
    QTreeWidgetItem* m_pLastResetItem = nullptr;
    QTreeWidgetItem* m_pDailyNode = nullptr;
    QTreeWidgetItem* m_pDailyUploadedItem = nullptr;
    QTreeWidgetItem* m_pDailyDownloadedItem = nullptr;
    QTreeWidgetItem* m_pMonthlyNode = nullptr;
    QTreeWidgetItem* m_pMonthlyUploadedItem = nullptr;
    QTreeWidgetItem* m_pMonthlyDownloadedItem = nullptr;
    QTreeWidgetItem* m_pYearlyNode = nullptr;
    QTreeWidgetItem* m_pYearlyUploadedItem = nullptr;
    QTreeWidgetItem* m_pYearlyDownloadedItem = nullptr;
    QTreeWidgetItem* m_pSpacerItem = nullptr;

    // The limit area: built by Init() so that the note in the tree can
    // replace it; its content comes with the limit panel.
    QWidget* m_pLimitRow = nullptr;
    QWidget* m_pLimitArea = nullptr;
    QLabel* m_pLimitMsgLabel = nullptr;
    QLabel* m_pDataVolumeLabel = nullptr;
    QLabel* m_pTimeVolumeLabel = nullptr;
    QPushButton* m_pResetButton = nullptr;
    QPushButton* m_pSetLimitButton = nullptr;
    LwProgressBar* m_pDataProgress = nullptr;
    LwProgressBar* m_pTimeProgress = nullptr;
    WarnPrompt* m_pWarnPrompt = nullptr;

    // The speed graph, placed in the splitter only with "SHOWGRAPH", and the
    // tree's context-menu actions (children of the tree).
    GraphWidget* m_pGraph = nullptr;
    QAction* m_pActionResetAll = nullptr;
    QAction* m_pActionExpandAll = nullptr;
    QAction* m_pActionCollapseAll = nullptr;

    INotifyService* m_pNotifyService = nullptr;

    QVBoxLayout* m_pLeftLayout = nullptr;
    QHBoxLayout* m_pMainLayout = nullptr;
    QVBoxLayout* m_pLimitLayout = nullptr;
    QHBoxLayout* m_pLimitRowLayout = nullptr;

    NetInfoUILogic* m_pLogic = nullptr;
    NetInfoSettingUIPlugin* m_pSettingPlugin = nullptr;

    QWidget* m_pStatPanel = nullptr;
    QFormLayout* m_pStatLayout = nullptr;
    QLabel* m_pDurationLabel = nullptr;
    QLabel* m_pUpSpeedLabel = nullptr;
    QLabel* m_pDownSpeedLabel = nullptr;
    QLabel* m_pDataSentLabel = nullptr;
    QLabel* m_pDataReceivedLabel = nullptr;
    QLabel* m_pTotalDataLabel = nullptr;
    QLabel* m_pDurationNameLabel = nullptr;
    QLabel* m_pUpSpeedNameLabel = nullptr;
    QLabel* m_pDownSpeedNameLabel = nullptr;
    QLabel* m_pDataSentNameLabel = nullptr;
    QLabel* m_pDataReceivedNameLabel = nullptr;
    QLabel* m_pTotalDataNameLabel = nullptr;

    bool m_bSettingActive = false;
    bool m_bStatPanelHanded = false;

    QString m_strSpeed;
    QString m_strData;
    QString m_strTime;
    QString m_strUploaded;
    QString m_strDownloaded;
    QString m_strLastResetCaption;

    // Whether the product offers each limit at all.
    bool m_bDataVolumeLimit = false;
    bool m_bTimeVolumeLimit = false;

    // The page's last announcement, as it sent it.
    int m_iSettingDataVolume = 0;
    int m_iSettingTimeVolume = 0;
    bool m_bSettingWarnBefore = false;
    bool m_bSettingWarnExceeds = false;

    // Figures, their texts and the limit rules live in widget-free parts;
    // the widgets only show what those computed.
    view::StatisticsSnapshot m_snapshot;
    view::TreeRows m_rows;
    view::UsageLimitPolicy m_limits;
    QHash<QString, QIcon> m_icons; // by file name, for the layout direction they were made in
    Qt::LayoutDirection m_iconDirection = Qt::LeftToRight;

    unsigned int m_iConnectState = ~0u;
    bool m_bConnected = false;
    int m_iColumnWidth = 280;
    QRect m_rcLast;

    QVector<TagUnits> m_vecSpeedUnits;
    QVector<TagUnits> m_vecFluxUnits;
};
