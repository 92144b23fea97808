// The page's object, its widget tree and its texts.
#include "NetInfoSettingUIPlugin.h"

#include "DateEdit.h"
#include "NetInfoSettingTrace.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

#include "Change.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QRect>
#include <QRegularExpressionValidator>
#include <QSpacerItem>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>

namespace {

const char kSource[] = "NetInfoUIExPlugin/NetInfoSettingUIPlugin";
// Only a positive decimal number without a leading zero can be typed.
const QString kNumberPattern = QStringLiteral("[1-9][0-9]*$");
const char* const kWeekdayIds[] = { "IDS_SUNDAY", "IDS_MONDAY", "IDS_TUESDAY", "IDS_WEDNESAY", "IDS_THURSDAY",
    "IDS_FRIDAY", "IDS_SATURDAY" };

void setNumberValidator(QLineEdit* edit)
{
    // Qt 6's validator anchors the pattern at both ends, as the whole-input
    // match of the pattern always meant: "0" and "012" are refused as typed.
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(kNumberPattern), edit));
}

// Room for the widest weekday: its length in bytes, so that scripts with
// wide glyphs (three UTF-8 bytes a character) reserve more than their
// character count.
int weekdayContentsLength(const QStringList& texts)
{
    int longest = 0;
    for (const QString& text : texts) {
        int bytes = int(text.toLocal8Bit().size());
        if (bytes == text.size())
            bytes = int(text.toUtf8().size());
        longest = std::max(longest, bytes + 2);
    }
    return longest;
}

QString noteText(const QString& text)
{
    return QStringLiteral("<font color='red'>") + text + QStringLiteral("</font>");
}

} // namespace

NetInfoSettingUIPlugin* NetInfoSettingUIPlugin::m_pInstance = nullptr;

NetInfoSettingUIPlugin* NetInfoSettingUIPlugin::GetInstance()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pInstance)
        m_pInstance = new NetInfoSettingUIPlugin;
    return m_pInstance;
}

void NetInfoSettingUIPlugin::ReleaseInstance()
{
    NETINFO_SETTING_TRACE(kSource);
    delete m_pInstance;
    m_pInstance = nullptr;
}

NetInfoSettingUIPlugin::~NetInfoSettingUIPlugin()
{
    NETINFO_SETTING_TRACE(kSource);
    destroyPage();
}

void NetInfoSettingUIPlugin::destroyPage()
{
    // Everything built by InitNetInfoSetting lives inside the page's tree;
    // deleting the page also takes it out of the host's dialog.
    if (m_pPageWidget)
        delete m_pPageWidget;
    else
        forgetPage();
}

void NetInfoSettingUIPlugin::forgetPage()
{
    delete m_pGridWarn;
    m_pPageWidget = m_pDateWidget = nullptr;
    m_pDateEdit = nullptr;
    m_pStartDateLabel = m_pDataUnitLabel = m_pTimeUnitLabel = m_pNoteLabel = m_pPercentLabel = nullptr;
    m_pGrpSetPeriod = m_pGrpRecurrence = m_pGrpSetLimit = m_pGrpSetWarn = nullptr;
    m_pChkRecurrence = m_pChkDataVolume = m_pChkTimeVolume = m_pChkWarnBefore = m_pChkWarnExceed = nullptr;
    m_pRadioDaily = m_pRadioWeekly = m_pRadioMonthly = nullptr;
    m_pComboWeekly = m_pComboMonthly = nullptr;
    m_pEditWarnPercent = m_pEditDataVolume = m_pEditTimeVolume = nullptr;
    m_pFormSetWarn = m_pFormSetLimit = nullptr;
    m_pWarnBeforeRow = m_pDataVolumeRow = m_pTimeVolumeRow = nullptr;
    m_pMainLayout = m_pDateColumn = nullptr;
    m_pGridSetPeriod = m_pGridSetDate = m_pGridRecurrence = m_pGridWarn = nullptr;
    m_pSpacer = nullptr;
}

QString NetInfoSettingUIPlugin::tr(QString id)
{
    NETINFO_TRACE(
        "Returning from: %s: %s: %s %d", NetInfoLog::now().constData(), kSource, __func__, __LINE__);
    return Change::tr(id, QStringLiteral("NetInfoUIExPlugin"));
}

void NetInfoSettingUIPlugin::ongetXMLUnit(QString text)
{
    NETINFO_SETTING_TRACE(kSource);
    unitText = text;
}

QString NetInfoSettingUIPlugin::getVolumeLimitSettings(QString key)
{
    if (!m_pStore) {
        m_pStore = NetInfoSettingUILogic::GetInstance();
        if (!m_pStore)
            return QStringLiteral("");
        m_pStore->GetUseLimitSetting();
    }
    NETINFO_TRACE(
        "Returning from : %s: %s: %s %d", NetInfoLog::now().constData(), kSource, __func__, __LINE__);
    return m_pStore->useLimitSettings().value(key);
}

bool NetInfoSettingUIPlugin::ShowNetInfoSettingDlg(QWidget* parent, QRect& rect)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pPageWidget)
        InitNetInfoSetting();
    if (!m_pPageWidget)
        return false;
    m_pPageWidget->setParent(parent);
    m_pPageWidget->setGeometry(rect);
    m_pPageWidget->setVisible(true);
    return true;
}

bool NetInfoSettingUIPlugin::HideNetInfoSetting()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pPageWidget)
        return false;
    m_pPageWidget->setVisible(false);
    return true;
}

bool NetInfoSettingUIPlugin::InitNetInfoSetting()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore) {
        m_pStore = NetInfoSettingUILogic::GetInstance();
        if (m_pStore)
            m_pStore->GetUseLimitSetting();
    }
    replacePage();
    m_pGrpSetPeriod = new QGroupBox(m_pPageWidget);
    m_pGrpRecurrence = new QGroupBox(m_pPageWidget);
    m_pDateWidget = new QWidget(m_pPageWidget);
    m_pDateEdit = new DateEdit;
    m_pStartDateLabel = new QLabel(m_pPageWidget);
    // Layouts get no parent here: the widget or layout that they are set on
    // or added to below takes them over.
    m_pMainLayout = new QVBoxLayout;
    m_pGridSetPeriod = new QGridLayout;
    m_pGridSetDate = new QGridLayout;
    m_pDateColumn = new QVBoxLayout;
    m_pGrpSetLimit = new QGroupBox(m_pPageWidget);
    m_pGrpSetWarn = new QGroupBox(m_pPageWidget);
    m_pNoteLabel = new QLabel(m_pPageWidget);
    m_pSpacer = new QSpacerItem(10, 100, QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_pLogic = NetInfoUILogic::Instance();
    if (!m_pStore || !m_pPageWidget || !m_pGrpSetPeriod || !m_pGrpRecurrence || !m_pMainLayout
        || !m_pGridSetPeriod || !m_pNoteLabel || !m_pDateWidget || !m_pDateEdit || !m_pStartDateLabel
        || !m_pGridSetDate || !m_pDateColumn || !m_pGrpSetLimit || !m_pGrpSetWarn || !m_pLogic) {
        NETINFO_ARG_NULL(kSource);
        return false;
    }

    nameAndTitleGroups();

    m_pNoteLabel->setText(noteText(tr(QStringLiteral("IDS_STAT_MAX"))));
    m_pNoteLabel->setWordWrap(true);
    m_pNoteLabel->setMinimumHeight(50);
    m_pNoteLabel->setAlignment(Qt::AlignTop);
    m_pStartDateLabel->setText(tr(QStringLiteral("IDS_STA_STARTDATE")));
    m_pDateEdit->setCalendarPopup(true);

    initRecurrence();

    m_pGridSetDate->addWidget(m_pStartDateLabel, 1, 1);
    m_pGridSetDate->setHorizontalSpacing(10);
    m_pGridSetDate->setVerticalSpacing(1);
    m_pSpacer->changeSize(10, 50, QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_pGridSetDate->addWidget(m_pDateEdit, 2, 1);
    m_pDateWidget->setLayout(m_pGridSetDate);
    m_pDateColumn->addWidget(m_pDateWidget);
    m_pDateColumn->addItem(m_pSpacer);
    m_pGridSetPeriod->addLayout(m_pDateColumn, 1, 1);

    initSetLimit();
    if (m_pGridRecurrence)
        m_pGrpRecurrence->setLayout(m_pGridRecurrence);
    m_pGridSetPeriod->addWidget(m_pGrpRecurrence, 1, 2);
    m_pGrpSetPeriod->setLayout(m_pGridSetPeriod);
    if (m_pFormSetLimit)
        m_pGrpSetLimit->setLayout(m_pFormSetLimit);

    initWarnings();
    if (m_pFormSetWarn)
        m_pGrpSetWarn->setLayout(m_pFormSetWarn);

    m_pMainLayout->addWidget(m_pGrpSetPeriod);
    m_pMainLayout->addWidget(m_pGrpSetLimit);
    m_pMainLayout->addWidget(m_pGrpSetWarn);
    m_pMainLayout->addWidget(m_pNoteLabel);
    m_pPageWidget->setLayout(m_pMainLayout);

    applySettings();
    // Connected only now, so that the stored date shown above does not
    // count as the user's pick.
    connect(m_pDateEdit, &QDateEdit::dateChanged, this, &NetInfoSettingUIPlugin::onDateChangeEvent);
    return true;
}

void NetInfoSettingUIPlugin::replacePage()
{
    // A rebuild after a change of language replaces the earlier tree.
    // A page on show in the host's dialog (a language change, say) is
    // replaced in place rather than taken from under the user.
    QPointer<QWidget> host = m_pPageWidget ? m_pPageWidget->parentWidget() : nullptr;
    const QRect shownAt = m_pPageWidget ? m_pPageWidget->geometry() : QRect();
    const bool shown = m_pPageWidget && m_pPageWidget->isVisible();
    destroyPage();
    m_pPageWidget = new QWidget;
    if (host) {
        m_pPageWidget->setParent(host);
        m_pPageWidget->setGeometry(shownAt);
        m_pPageWidget->setVisible(shown);
    }
    // The host's dialog deletes the page with itself when it still holds it
    // (after a refused OK, say); every pointer into the tree must go then.
    connect(m_pPageWidget, &QObject::destroyed, this, &NetInfoSettingUIPlugin::forgetPage);
}

void NetInfoSettingUIPlugin::nameAndTitleGroups()
{
    m_pPageWidget->setObjectName(QStringLiteral("NetInfoSettingDlg_WidgetNetInfoSetting"));
    m_pGrpSetPeriod->setObjectName(QStringLiteral("NetInfoSettingDlg_GroupBoxSetPeriod"));
    m_pGrpRecurrence->setObjectName(QStringLiteral("NetInfoSettingDlg_GroupBoxRecurrence"));
    m_pDateWidget->setObjectName(QStringLiteral("NetInfoSettingDlg_WidgetSetDate"));
    m_pDateEdit->setObjectName(QStringLiteral("NetInfoSettingDlg_dateedit"));
    m_pMainLayout->setObjectName(QStringLiteral("NetInfoSettingDlg_layoutNetInfoMain"));
    m_pGridSetPeriod->setObjectName(QStringLiteral("NetInfoSettingDlg_gridlayoutSetPeriod"));
    m_pGridSetDate->setObjectName(QStringLiteral("NetInfoSettingDlg_gridlayoutSetDate"));
    m_pDateColumn->setObjectName(QStringLiteral("NetInfoSettingDlg_vlayoutSetDate"));
    m_pGrpSetWarn->setObjectName(QStringLiteral("NetInfoSettingDlg_GroupBoxSetWarn"));
    m_pGrpSetLimit->setObjectName(QStringLiteral("NetInfoSettingDlg_groupBoxSetLimit"));

    m_pGrpSetPeriod->setFixedHeight(180);
    m_pGrpSetPeriod->setTitle(tr(QStringLiteral("IDS_GRP_SETPERIOD")));
    m_pGrpRecurrence->setTitle(tr(QStringLiteral("IDS_GRP_RECURRENCE")));
    m_pGrpSetLimit->setFixedHeight(88);
    m_pGrpSetLimit->setTitle(tr(QStringLiteral("IDS_GRP_SETLIMIT")));
    m_pGrpSetLimit->setContentsMargins(0, 0, 0, 0);
    m_pGrpSetWarn->setFixedHeight(93);
    m_pGrpSetWarn->setTitle(tr(QStringLiteral("IDS_GRP_SETWARNINGS")));
}

void NetInfoSettingUIPlugin::fillWeekdays()
{
    for (const char* id : kWeekdayIds)
        m_pComboWeekly->addItem(tr(QLatin1String(id)));
}

void NetInfoSettingUIPlugin::initRecurrence()
{
    NETINFO_SETTING_TRACE(kSource);
    m_pGridRecurrence = new QGridLayout;
    m_pChkRecurrence = new QCheckBox(m_pPageWidget);
    m_pRadioDaily = new QRadioButton(m_pPageWidget);
    m_pRadioWeekly = new QRadioButton(m_pPageWidget);
    m_pRadioMonthly = new QRadioButton(m_pPageWidget);
    m_pComboWeekly = new QComboBox(m_pPageWidget);
    m_pComboMonthly = new QComboBox(m_pPageWidget);
    if (!m_pGridRecurrence || !m_pChkRecurrence || !m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly
        || !m_pComboWeekly || !m_pComboMonthly || !m_pGrpRecurrence) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pGridRecurrence->setObjectName(QStringLiteral("NetInfoSettingDlg_gridlayoutRecurence"));
    m_pChkRecurrence->setObjectName(QStringLiteral("NetInfoSettingDlg_dateeditSetDate"));
    m_pRadioDaily->setObjectName(QStringLiteral("NetInfoSettingDlg_radioDaily"));
    m_pRadioWeekly->setObjectName(QStringLiteral("NetInfoSettingDlg_radioWeekly"));
    m_pRadioMonthly->setObjectName(QStringLiteral("NetInfoSettingDlg_radioMonthly"));
    m_pComboWeekly->setObjectName(QStringLiteral("NetInfoSettingDlg_comboBoxWeekly"));
    m_pComboMonthly->setObjectName(QStringLiteral("NetInfoSettingDlg_comboBoxMonthly"));

    m_pChkRecurrence->setText(tr(QStringLiteral("IDS_CHK_SET")));
    m_pRadioDaily->setText(tr(QStringLiteral("IDS_RADIO_DAILY")));
    m_pRadioWeekly->setText(tr(QStringLiteral("IDC_RADIO_WEEKLY")));
    m_pRadioMonthly->setText(tr(QStringLiteral("IDS_RADIO_MONTHLY")));

    fillWeekdays();
    QStringList weekdays;
    for (int i = 0; i < m_pComboWeekly->count(); ++i)
        weekdays << m_pComboWeekly->itemText(i);
    m_pComboWeekly->setMinimumContentsLength(weekdayContentsLength(weekdays));
    m_pGrpRecurrence->setMinimumWidth(m_pComboWeekly->width()
        + QFontMetrics(m_pRadioWeekly->font()).horizontalAdvance(tr(QStringLiteral("IDC_RADIO_WEEKLY")))
        + 30);
    // Days 29 to 31 are left out: not every month has them.
    for (int day = 1; day <= 28; ++day)
        m_pComboMonthly->addItem(QString::number(day));

    m_pGridRecurrence->setHorizontalSpacing(1);
    m_pGridRecurrence->addWidget(m_pChkRecurrence, 1, 1, 1, 3);
    m_pGridRecurrence->addWidget(m_pRadioDaily, 2, 1);
    m_pGridRecurrence->addWidget(m_pRadioWeekly, 3, 1);
    m_pGridRecurrence->addWidget(m_pComboWeekly, 3, 3);
    m_pGridRecurrence->addWidget(m_pRadioMonthly, 4, 1);
    m_pGridRecurrence->addWidget(m_pComboMonthly, 4, 3);

    connect(m_pChkRecurrence, &QCheckBox::clicked, this, &NetInfoSettingUIPlugin::onSetRecurrenceSelect);
    connect(m_pRadioDaily, &QRadioButton::clicked, this, &NetInfoSettingUIPlugin::onDailyRadioBtnSelect);
    connect(m_pRadioWeekly, &QRadioButton::clicked, this, &NetInfoSettingUIPlugin::onWeeklyRadioBtnSelect);
    connect(m_pRadioMonthly, &QRadioButton::clicked, this, &NetInfoSettingUIPlugin::onMonthlyRadioBtnSelect);
    connect(
        m_pComboWeekly, &QComboBox::currentIndexChanged, this, &NetInfoSettingUIPlugin::onWeeklyIndexChange);
    connect(m_pComboMonthly, &QComboBox::currentIndexChanged, this,
        &NetInfoSettingUIPlugin::onMonthlyIndexChange);
}

void NetInfoSettingUIPlugin::initSetLimit()
{
    NETINFO_SETTING_TRACE(kSource);
    m_pFormSetLimit = new QFormLayout;
    m_pFormSetLimit->setObjectName(QStringLiteral("NetInfoSettingDlg_FormLayoutSetLimit"));

    // All six exist whether or not their limit is offered: a hidden entry
    // still carries the stored size through a save.
    m_pChkDataVolume = new QCheckBox(tr(QStringLiteral("IDS_CHK_VOLUME")), m_pPageWidget);
    m_pDataUnitLabel = new QLabel(m_pPageWidget);
    m_pEditDataVolume = new QLineEdit(m_pPageWidget);
    m_pChkTimeVolume = new QCheckBox(tr(QStringLiteral("IDS_VOLUME_LIMIT")), m_pPageWidget);
    m_pTimeUnitLabel = new QLabel(m_pPageWidget);
    m_pEditTimeVolume = new QLineEdit(m_pPageWidget);
    for (QWidget* widget : std::initializer_list<QWidget*> { m_pChkDataVolume, m_pDataUnitLabel,
             m_pEditDataVolume, m_pChkTimeVolume, m_pTimeUnitLabel, m_pEditTimeVolume })
        widget->hide();

    m_pFormSetLimit->setHorizontalSpacing(100);
    m_pFormSetLimit->setFormAlignment(Qt::AlignVCenter);
    m_pFormSetLimit->setLabelAlignment(Qt::AlignLeft);

    if (m_pLogic->IsFunctionEnable(QStringLiteral("DATAVOLUMELIMIT")))
        initDataVolume();
    if (m_pLogic->IsFunctionEnable(QStringLiteral("TIMEVOLUMELIMIT")))
        initTimeVolume();
}

void NetInfoSettingUIPlugin::initDataVolume()
{
    NETINFO_SETTING_TRACE(kSource);
    m_pChkDataVolume->setObjectName(QStringLiteral("NetInfoSettingDlg_checkBoxDataVolume"));
    m_pEditDataVolume->setObjectName(QStringLiteral("NetInfoSettingDlg_lineEditDataVolume"));
    initVolumeRow(m_pChkDataVolume, m_pEditDataVolume, m_pDataUnitLabel, m_pDataVolumeRow,
        "NetInfoSettingDlg_hlayoutDataVolume", 6, unitText, &NetInfoSettingUIPlugin::onDataVolumeSelect);
}

void NetInfoSettingUIPlugin::initTimeVolume()
{
    NETINFO_SETTING_TRACE(kSource);
    m_pChkTimeVolume->setObjectName(QStringLiteral("NetInfoSettingDlg_checkBoxTimeVolume"));
    m_pEditTimeVolume->setObjectName(QStringLiteral("NetInfoSettingDlg_lineEditTimeVolume"));
    initVolumeRow(m_pChkTimeVolume, m_pEditTimeVolume, m_pTimeUnitLabel, m_pTimeVolumeRow,
        "NetInfoSettingDlg_layoutTimeVolume", 5, tr(QStringLiteral("IDS_UNIT_HOURS")),
        &NetInfoSettingUIPlugin::onTimeVolumeSelect);
}

void NetInfoSettingUIPlugin::initVolumeRow(QCheckBox* check, QLineEdit* edit, QLabel* unit, QHBoxLayout*& row,
    const char* rowName, int maxLength, const QString& unitLabel, void (NetInfoSettingUIPlugin::*slot)(bool))
{
    check->setVisible(true);
    unit->setVisible(true);
    edit->setVisible(true);
    row = new QHBoxLayout;
    row->setObjectName(QLatin1String(rowName));
    setNumberValidator(edit);
    edit->setMaximumWidth(110);
    unit->setMinimumWidth(60);
    edit->setMaxLength(maxLength);
    unit->setText(unitLabel);
    row->addWidget(edit);
    row->addWidget(unit);
    row->setSpacing(0);
    m_pFormSetLimit->addRow(check, row);
    connect(check, &QCheckBox::clicked, this, slot);
}

void NetInfoSettingUIPlugin::initWarnings()
{
    NETINFO_SETTING_TRACE(kSource);
    m_pChkWarnBefore = new QCheckBox(tr(QStringLiteral("IDS_CHK_BEFORE")), m_pPageWidget);
    m_pChkWarnExceed = new QCheckBox(tr(QStringLiteral("IDS_CHK_AFTER")), m_pPageWidget);
    m_pGridWarn = new QGridLayout;
    if (!m_pChkWarnBefore || !m_pChkWarnExceed || !m_pGridWarn) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pChkWarnBefore->setObjectName(QStringLiteral("NetInfoSettingDlg_checkBoxWarnBefore"));
    m_pChkWarnExceed->setObjectName(QStringLiteral("NetInfoSettingDlg_checkBoxWarnExceed"));
    m_pGridWarn->setObjectName(QStringLiteral("NetInfoSettingDlg_gridlayoutWarn"));

    m_pEditWarnPercent = new QLineEdit(m_pPageWidget);
    m_pPercentLabel = new QLabel(m_pPageWidget);
    m_pFormSetWarn = new QFormLayout;
    m_pWarnBeforeRow = new QHBoxLayout;
    m_pEditWarnPercent->setObjectName(QStringLiteral("NetInfoSettingDlg_lineEditWarnPercent"));
    m_pPercentLabel->setObjectName(QStringLiteral("NetInfoSettingDlg_labelDataPercentSign"));
    m_pFormSetWarn->setObjectName(QStringLiteral("NetInfoSettingDlg_FormLayoutSetWarn"));
    m_pWarnBeforeRow->setObjectName(QStringLiteral("NetInfoSettingDlg_hlayoutWarnBefore"));

    m_pFormSetWarn->setHorizontalSpacing(100);
    m_pFormSetWarn->setFormAlignment(Qt::AlignVCenter);
    m_pFormSetWarn->setLabelAlignment(Qt::AlignLeft);

    setNumberValidator(m_pEditWarnPercent);
    m_pEditWarnPercent->setMaxLength(2);
    m_pEditWarnPercent->setEnabled(false);
    m_pPercentLabel->setMinimumWidth(10);
    m_pPercentLabel->setText(QStringLiteral("%"));

    m_pWarnBeforeRow->addWidget(m_pChkWarnBefore);
    m_pWarnBeforeRow->addSpacing(4);
    m_pWarnBeforeRow->addStretch(4);
    m_pWarnBeforeRow->addWidget(m_pEditWarnPercent);
    m_pWarnBeforeRow->addWidget(m_pPercentLabel);
    m_pFormSetWarn->addRow(m_pWarnBeforeRow);
    m_pFormSetWarn->addRow(m_pChkWarnExceed);

    connect(m_pChkWarnBefore, &QCheckBox::clicked, this, &NetInfoSettingUIPlugin::onWarnBeforeSelect);
    connect(m_pChkWarnExceed, &QCheckBox::clicked, this, &NetInfoSettingUIPlugin::onWarnExceedSelect);
}

void NetInfoSettingUIPlugin::SetLanguage()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pChkWarnBefore || !m_pChkWarnExceed || !m_pNoteLabel || !m_pStartDateLabel) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (m_pDataUnitLabel && m_pChkDataVolume) {
        m_pDataUnitLabel->setText(unitText);
        m_pChkDataVolume->setText(tr(QStringLiteral("IDS_CHK_VOLUME")));
    }
    if (m_pTimeUnitLabel && m_pChkTimeVolume) {
        m_pTimeUnitLabel->setText(tr(QStringLiteral("IDS_UNIT_HOURS")));
        m_pChkTimeVolume->setText(tr(QStringLiteral("IDS_VOLUME_LIMIT")));
    }
    m_pChkWarnBefore->setText(tr(QStringLiteral("IDS_CHK_BEFORE")));
    m_pChkWarnExceed->setText(tr(QStringLiteral("IDS_CHK_AFTER")));
    m_pNoteLabel->setText(noteText(tr(QStringLiteral("IDS_STAT_MAX"))));
    m_pStartDateLabel->setText(tr(QStringLiteral("IDS_STA_STARTDATE")));
    setLanguageSetPeriod();
}

void NetInfoSettingUIPlugin::setLanguageSetPeriod()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pGrpSetPeriod || !m_pGrpRecurrence || !m_pGrpSetLimit || !m_pGrpSetWarn || !m_pComboWeekly
        || !m_pStore) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pGrpSetPeriod->setTitle(tr(QStringLiteral("IDS_GRP_SETPERIOD")));
    m_pGrpRecurrence->setTitle(tr(QStringLiteral("IDS_GRP_RECURRENCE")));
    m_pGrpSetLimit->setTitle(tr(QStringLiteral("IDS_GRP_SETLIMIT")));
    m_pGrpSetWarn->setTitle(tr(QStringLiteral("IDS_GRP_SETWARNINGS")));
    m_pComboWeekly->clear();
    fillWeekdays();
    selectStoredIndex(m_pComboWeekly, QStringLiteral("startweekdate"));
}
