// Filling the page from the store and the rules by which its controls
// enable, disable, check and clear one another.
#include "NetInfoSettingUIPlugin.h"

#include "DateEdit.h"
#include "NetInfoSettingTrace.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoUILogic.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoSettingUIPlugin";
const QString kTrue = QStringLiteral("true");
} // namespace

QDate NetInfoSettingUIPlugin::DateFromString(QString& text)
{
    QDate date;
    if (!text.isNull()) {
        date = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
        if (!date.isValid())
            NETINFO_TRACE("QDate is not Valid  : %s: %s: %s %d", NetInfoLog::now().constData(), kSource,
                __func__, __LINE__);
    }
    return date;
}

void NetInfoSettingUIPlugin::selectStoredIndex(QComboBox* combo, const QString& key)
{
    const QString stored = getVolumeLimitSettings(key);
    if (stored.isEmpty())
        return;
    // Non-numeric text counts as 0. Qt 6 clears the selection for an index
    // outside the items, so such an index is not passed on at all: the
    // selection stays as it was.
    const int index = stored.toInt();
    if (index < 0 || index >= combo->count()) {
        NETINFO_WARN("%s: stored %s \"%s\" is out of range; selection unchanged", kSource,
            qUtf8Printable(key), qUtf8Printable(stored));
        return;
    }
    combo->setCurrentIndex(index);
}

void NetInfoSettingUIPlugin::setRecurrenceWidgetsEnabled(bool radios, bool weekly, bool monthly)
{
    m_pRadioDaily->setEnabled(radios);
    m_pRadioWeekly->setEnabled(radios);
    m_pRadioMonthly->setEnabled(radios);
    m_pComboWeekly->setEnabled(weekly);
    m_pComboMonthly->setEnabled(monthly);
}

void NetInfoSettingUIPlugin::applySettings()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pDateEdit || !m_pStore || !m_pComboWeekly || !m_pComboMonthly) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    // An empty or malformed date leaves the date edit as it was.
    QString storedDate = m_pStore->useLimitSettings()[QStringLiteral("startdate")];
    const QDate date = DateFromString(storedDate);
    if (date.isValid())
        m_pDateEdit->setDate(date);

    selectStoredIndex(m_pComboWeekly, QStringLiteral("startweekdate"));
    selectStoredIndex(m_pComboMonthly, QStringLiteral("startmonthdate"));

    if (getVolumeLimitSettings(QStringLiteral("radioDaily")) == kTrue)
        onDailyRadioBtnSelect(true);
    else if (getVolumeLimitSettings(QStringLiteral("radioWeekly")) == kTrue)
        onWeeklyRadioBtnSelect(true);
    else if (getVolumeLimitSettings(QStringLiteral("radioMonthly")) == kTrue)
        onMonthlyRadioBtnSelect(true);

    if (getVolumeLimitSettings(QStringLiteral("chkRecurrence")) == kTrue) {
        if (m_pChkRecurrence)
            m_pChkRecurrence->setChecked(true);
        m_pDateEdit->setEnabled(false);
    } else {
        if (!m_pChkRecurrence || !m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly) {
            NETINFO_ARG_NULL(kSource);
            return;
        }
        m_pDateEdit->setEnabled(true);
        m_pChkRecurrence->setChecked(false);
        setRecurrenceWidgetsEnabled(false, false, false);
    }
    applyLimitSettings();
    applyWarningSettings();
}

void NetInfoSettingUIPlugin::applyLimitSettings()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    // Filled even when the limit is not offered: its hidden entry keeps the
    // stored size for the next save.
    if (m_pChkDataVolume) {
        const bool on = getVolumeLimitSettings(QStringLiteral("chkVolume")) == kTrue;
        m_pChkDataVolume->setChecked(on);
        if (m_pEditDataVolume) {
            m_pEditDataVolume->setText(getVolumeLimitSettings(QStringLiteral("SizeVolume")));
            m_pEditDataVolume->setEnabled(on);
        }
    }
    if (m_pEditTimeVolume && m_pChkTimeVolume) {
        const bool on = getVolumeLimitSettings(QStringLiteral("chkTimeVolume")) == kTrue;
        m_pEditTimeVolume->setText(getVolumeLimitSettings(QStringLiteral("SizeTimeVolume")));
        m_pChkTimeVolume->setChecked(on);
        m_pEditTimeVolume->setEnabled(on);
    }
}

void NetInfoSettingUIPlugin::applyWarningSettings()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore || !m_pChkWarnBefore || !m_pChkWarnExceed || !m_pEditWarnPercent || !m_pPercentLabel
        || !m_pLogic) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (!m_pLogic->IsFunctionEnable(QStringLiteral("DATAVOLUMELIMIT"))
        && !m_pLogic->IsFunctionEnable(QStringLiteral("TIMEVOLUMELIMIT")))
        return;

    const bool warnBefore = m_pLogic->IsFunctionEnable(QStringLiteral("WarnBefore"));
    const bool warnExceed = m_pLogic->IsFunctionEnable(QStringLiteral("WarnExceed"));
    if (!warnBefore && !warnExceed) {
        // Without a choice the limit-reached warning is on, invisibly, and
        // is saved that way.
        if (m_pGrpSetWarn)
            m_pGrpSetWarn->hide();
        m_pChkWarnBefore->setChecked(false);
        m_pChkWarnExceed->setChecked(true);
    } else {
        if (warnBefore) {
            m_pChkWarnBefore->setChecked(getVolumeLimitSettings(QStringLiteral("chkWarnbefore")) == kTrue);
            m_pEditWarnPercent->setEnabled(m_pChkWarnBefore->isChecked());
            m_pPercentLabel->show();
        } else {
            m_pChkWarnBefore->hide();
            m_pChkWarnBefore->setChecked(false);
            m_pChkWarnBefore->setEnabled(false);
            m_pEditWarnPercent->setEnabled(false);
            m_pEditWarnPercent->hide();
            m_pPercentLabel->hide();
        }
        if (warnExceed) {
            m_pChkWarnExceed->setChecked(getVolumeLimitSettings(QStringLiteral("chkWarnAfter")) == kTrue);
        } else {
            m_pChkWarnExceed->hide();
            m_pChkWarnExceed->setChecked(false);
            m_pChkWarnExceed->setEnabled(false);
        }
    }
    m_pEditWarnPercent->setText(getVolumeLimitSettings(QStringLiteral("WarnBeforPercentage")));
}

void NetInfoSettingUIPlugin::onSetRecurrenceSelect(bool isChecked)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pDateEdit || !m_pChkRecurrence || !m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly
        || !m_pComboWeekly || !m_pComboMonthly) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (!isChecked) {
        m_pDateEdit->setEnabled(true);
        m_pChkRecurrence->setChecked(false);
        setRecurrenceWidgetsEnabled(false, false, false);
        return;
    }
    m_pDateEdit->setEnabled(false);
    m_pRadioDaily->setEnabled(true);
    m_pRadioWeekly->setEnabled(true);
    m_pRadioMonthly->setEnabled(true);
    // The checked radio decides which combo comes back; with none checked
    // the combos keep their state.
    if (m_pRadioDaily->isChecked())
        onDailyRadioBtnSelect(true);
    else if (m_pRadioWeekly->isChecked())
        onWeeklyRadioBtnSelect(true);
    else if (m_pRadioMonthly->isChecked())
        onMonthlyRadioBtnSelect(true);
}

void NetInfoSettingUIPlugin::onDailyRadioBtnSelect(bool isSelected)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly || !m_pComboWeekly || !m_pComboMonthly) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (!isSelected)
        return;
    m_pRadioDaily->setChecked(true);
    setRecurrenceWidgetsEnabled(true, false, false);
}

void NetInfoSettingUIPlugin::onWeeklyRadioBtnSelect(bool isSelected)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly || !m_pComboWeekly || !m_pComboMonthly) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (!isSelected)
        return;
    m_pRadioWeekly->setChecked(true);
    setRecurrenceWidgetsEnabled(true, true, false);
}

void NetInfoSettingUIPlugin::onMonthlyRadioBtnSelect(bool isSelected)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pRadioDaily || !m_pRadioWeekly || !m_pRadioMonthly || !m_pComboWeekly || !m_pComboMonthly) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    if (!isSelected)
        return;
    m_pRadioMonthly->setChecked(true);
    setRecurrenceWidgetsEnabled(true, false, true);
}

void NetInfoSettingUIPlugin::onWeeklyIndexChange(int index)
{
    startWeekText = QString::number(index);
}

void NetInfoSettingUIPlugin::onMonthlyIndexChange(int index)
{
    startMonthText = QString::number(index);
}

void NetInfoSettingUIPlugin::onDateChangeEvent(QDate date)
{
    startDateText = date.toString(QStringLiteral("yyyy-MM-dd"));
}

void NetInfoSettingUIPlugin::onDataVolumeSelect(bool isChecked)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pEditDataVolume || !m_pChkWarnBefore || !m_pChkWarnExceed || !m_pEditWarnPercent
        || !m_pChkTimeVolume) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pEditDataVolume->setEnabled(isChecked);
    if (isChecked) {
        m_pChkWarnBefore->setEnabled(true);
        m_pChkWarnExceed->setEnabled(true);
        m_pEditWarnPercent->setEnabled(true);
    } else if (m_pChkTimeVolume->isHidden() || !m_pChkTimeVolume->isChecked()) {
        // The last limit went off: no warning has anything to watch.
        m_pChkWarnBefore->setChecked(false);
        m_pChkWarnExceed->setChecked(false);
        m_pChkWarnBefore->setEnabled(false);
        m_pChkWarnExceed->setEnabled(false);
        m_pEditWarnPercent->setEnabled(false);
    }
}

void NetInfoSettingUIPlugin::onTimeVolumeSelect(bool isChecked)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pEditTimeVolume || !m_pChkWarnBefore || !m_pChkWarnExceed || !m_pEditWarnPercent
        || !m_pChkDataVolume) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pEditTimeVolume->setEnabled(isChecked);
    if (isChecked) {
        m_pChkWarnBefore->setEnabled(true);
        m_pChkWarnExceed->setEnabled(true);
        m_pEditWarnPercent->setEnabled(true);
    } else if (m_pChkDataVolume->isHidden() || !m_pChkDataVolume->isChecked()) {
        m_pChkWarnBefore->setChecked(false);
        m_pChkWarnExceed->setChecked(false);
        m_pChkWarnBefore->setEnabled(false);
        m_pChkWarnExceed->setEnabled(false);
        m_pEditWarnPercent->setEnabled(false);
    }
}

void NetInfoSettingUIPlugin::onWarnBeforeSelect(bool isChecked)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pChkWarnBefore || !m_pEditWarnPercent) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pChkWarnBefore->setChecked(isChecked);
    m_pEditWarnPercent->setEnabled(isChecked);
}

void NetInfoSettingUIPlugin::onWarnExceedSelect(bool isChecked)
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pChkWarnExceed) {
        NETINFO_ARG_NULL(kSource);
        return;
    }
    m_pChkWarnExceed->setChecked(isChecked);
}
