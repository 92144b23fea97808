// The usage-limit page of the host's settings dialog: the accounting period
// (a start date or a daily, weekly or monthly recurrence), the data-volume and
// time-volume limits and the two warnings. The page is a free-standing widget
// owned by this object; the view service hands it to the host's dialog.
#pragma once

#include <QDate>
#include <QObject>
#include <QString>

class DateEdit;
class NetInfoSettingUILogic;
class NetInfoUILogic;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QRadioButton;
class QRect;
class QSpacerItem;
class QVBoxLayout;
class QWidget;

class NetInfoSettingUIPlugin : public QObject
{
    Q_OBJECT
public:
    static NetInfoSettingUIPlugin* GetInstance();
    static void ReleaseInstance();

    // Builds the widget tree (replacing an earlier one) and fills it from
    // the store; false when a part could not be built.
    bool InitNetInfoSetting();
    // False only if the page could not be built.
    bool ShowNetInfoSettingDlg(QWidget* parent, QRect& rect);
    // True if there was a page to hide.
    bool HideNetInfoSetting();
    // Re-reads the texts without rebuilding.
    void SetLanguage();
    // OK: true when every entry was valid and the settings were saved.
    bool SaveNetInfoSettings();
    // Cancel: refills the page from the store.
    bool CancelNetInfoSetting();
    // The stored value of a usage-limit key; null when the store lacks it.
    // The first call loads the store.
    QString getVolumeLimitSettings(QString key);
    QString tr(QString id);
    QDate DateFromString(QString& text);

    // The free-standing page the host's dialog embeds; null until built.
    QWidget* GetPageWidget() const { return m_pPageWidget; }

signals:
    void netInfoSettingsChanged(int dataVolume, int timeVolume, bool warnBefore, bool warnExceeds);

public slots:
    void ongetXMLUnit(QString text);

    void onSetRecurrenceSelect(bool isChecked);
    void onDailyRadioBtnSelect(bool isSelected);
    void onWeeklyRadioBtnSelect(bool isSelected);
    void onMonthlyRadioBtnSelect(bool isSelected);
    void onWeeklyIndexChange(int index);
    void onMonthlyIndexChange(int index);
    void onDataVolumeSelect(bool isChecked);
    void onTimeVolumeSelect(bool isChecked);
    void onWarnBeforeSelect(bool isChecked);
    void onWarnExceedSelect(bool isChecked);
    void onDateChangeEvent(QDate date);

    void applySettings();
    void applyLimitSettings();
    void applyWarningSettings();

    bool saveLimit();
    bool saveWarning();

private:
    NetInfoSettingUIPlugin() = default;
    ~NetInfoSettingUIPlugin() override;

    void initRecurrence();
    void initSetLimit();
    void initDataVolume();
    void initTimeVolume();
    void initVolumeRow(QCheckBox* check, QLineEdit* edit, QLabel* unit, QHBoxLayout*& row,
        const char* rowName, int maxLength, const QString& unitLabel,
        void (NetInfoSettingUIPlugin::*slot)(bool));
    void initWarnings();
    void setLanguageSetPeriod();
    // A rebuild after a change of language replaces the earlier page.
    void replacePage();
    void nameAndTitleGroups();
    void fillWeekdays();
    void selectStoredIndex(QComboBox* combo, const QString& key);
    void setRecurrenceWidgetsEnabled(bool radios, bool weekly, bool monthly);
    void showPrompt(const QString& textId);
    void destroyPage();
    void forgetPage();

    static NetInfoSettingUIPlugin* m_pInstance;

    QWidget* m_pPageWidget = nullptr;
    QWidget* m_pDateWidget = nullptr;
    DateEdit* m_pDateEdit = nullptr;
    QLabel* m_pStartDateLabel = nullptr;
    QLabel* m_pDataUnitLabel = nullptr;
    QLabel* m_pTimeUnitLabel = nullptr;
    QLabel* m_pNoteLabel = nullptr;
    QGroupBox* m_pGrpSetPeriod = nullptr;
    QGroupBox* m_pGrpRecurrence = nullptr;
    QGroupBox* m_pGrpSetLimit = nullptr;
    QGroupBox* m_pGrpSetWarn = nullptr;
    QCheckBox* m_pChkRecurrence = nullptr;
    QCheckBox* m_pChkDataVolume = nullptr;
    QCheckBox* m_pChkTimeVolume = nullptr;
    QCheckBox* m_pChkWarnBefore = nullptr;
    QCheckBox* m_pChkWarnExceed = nullptr;
    QRadioButton* m_pRadioDaily = nullptr;
    QRadioButton* m_pRadioWeekly = nullptr;
    QRadioButton* m_pRadioMonthly = nullptr;
    QComboBox* m_pComboWeekly = nullptr;
    QComboBox* m_pComboMonthly = nullptr;
    QLineEdit* m_pEditWarnPercent = nullptr;
    QLabel* m_pPercentLabel = nullptr;
    QFormLayout* m_pFormSetWarn = nullptr;
    QHBoxLayout* m_pWarnBeforeRow = nullptr;
    QLineEdit* m_pEditDataVolume = nullptr;
    QLineEdit* m_pEditTimeVolume = nullptr;
    QVBoxLayout* m_pMainLayout = nullptr;
    QGridLayout* m_pGridSetPeriod = nullptr;
    QGridLayout* m_pGridSetDate = nullptr;
    QGridLayout* m_pGridRecurrence = nullptr;
    QGridLayout* m_pGridWarn = nullptr; // named, never filled; owned here, not by the tree
    QVBoxLayout* m_pDateColumn = nullptr;
    QHBoxLayout* m_pDataVolumeRow = nullptr;
    QHBoxLayout* m_pTimeVolumeRow = nullptr;
    QFormLayout* m_pFormSetLimit = nullptr;
    QSpacerItem* m_pSpacer = nullptr;
    NetInfoUILogic* m_pLogic = nullptr; // borrowed
    NetInfoSettingUILogic* m_pStore = nullptr; // borrowed

    // Period choices made on the page and not yet saved; null until the
    // user (or a refill) changes them, and kept across OK and Cancel.
    QString startWeekText;
    QString startMonthText;
    QString startDateText;
    QString unitText;
};
