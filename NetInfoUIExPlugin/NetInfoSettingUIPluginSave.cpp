// OK and Cancel: checking the entries, writing them to the store and telling
// the view.
#include "NetInfoSettingUIPlugin.h"

#include "NetInfoSettingTrace.h"
#include "NetInfoSettingUILogic.h"

#include "CommonUtils.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

namespace {
const char kSource[] = "NetInfoUIExPlugin/NetInfoSettingUIPlugin";

QString flag(const QAbstractButton* button)
{
    return button && button->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
}
} // namespace

void NetInfoSettingUIPlugin::showPrompt(const QString& textId)
{
    CommonUtils::ShowMessage(QMessageBox::Information, nullptr, tr(QStringLiteral("IDS_PROPMT")), tr(textId),
        QStringLiteral("IDS_OK"), QStringLiteral(""), QStringLiteral(""), true, Qt::WindowCloseButtonHint,
        nullptr, QString(), true);
}

bool NetInfoSettingUIPlugin::SaveNetInfoSettings()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore || !m_pChkWarnBefore || !m_pChkWarnExceed) {
        NETINFO_ARG_NULL(kSource);
        return false;
    }
    // What the view may go on using if the file cannot be written.
    const QMap<QString, QString> before = m_pStore->useLimitSettings();
    // The period goes into the store's map before any entry is checked: a
    // refused OK followed by Cancel shows these choices, and the next good
    // OK writes them.
    m_pStore->updateUseLimitSetting(QStringLiteral("chkRecurrence"), flag(m_pChkRecurrence));
    m_pStore->updateUseLimitSetting(QStringLiteral("radioDaily"), flag(m_pRadioDaily));
    m_pStore->updateUseLimitSetting(QStringLiteral("radioWeekly"), flag(m_pRadioWeekly));
    m_pStore->updateUseLimitSetting(QStringLiteral("radioMonthly"), flag(m_pRadioMonthly));
    if (!startDateText.isEmpty())
        m_pStore->updateUseLimitSetting(QStringLiteral("startdate"), startDateText);
    if (!startWeekText.isEmpty())
        m_pStore->updateUseLimitSetting(QStringLiteral("startweekdate"), startWeekText);
    if (!startMonthText.isEmpty())
        m_pStore->updateUseLimitSetting(QStringLiteral("startmonthdate"), startMonthText);

    if (!saveLimit() || !saveWarning())
        return false;

    // Both sizes are sent whether or not their limits are on; a hidden
    // entry carries the stored size.
    const int dataVolume = m_pEditDataVolume ? m_pEditDataVolume->text().toInt(nullptr, 10) : 0;
    const int timeVolume = m_pEditTimeVolume ? m_pEditTimeVolume->text().toInt(nullptr, 10) : 0;
    // Receivers see the new values in the map while the file still holds
    // the old ones; but only once the new file is safely written, so that
    // a full disk or a read-only folder never applies what cannot be kept.
    bool told = false;
    const bool saved = m_pStore->saveUseLimitSetting([&] {
        told = true;
        emit netInfoSettingsChanged(
            dataVolume, timeVolume, m_pChkWarnBefore->isChecked(), m_pChkWarnExceed->isChecked());
    });
    if (saved)
        return true;

    // The entries stay as typed so that OK can be tried again.
    m_pStore->useLimitSettings() = before;
    if (told) { // the view follows the map again
        const auto stored = [&before](const char* key) { return before.value(QLatin1String(key)); };
        emit netInfoSettingsChanged(stored("SizeVolume").toInt(nullptr, 10),
            stored("SizeTimeVolume").toInt(nullptr, 10), stored("chkWarnbefore") == QLatin1String("true"),
            stored("chkWarnAfter") == QLatin1String("true"));
    }
    showPrompt(QStringLiteral("IDS_SAVE_SETTINGS_FAILED"));
    return false;
}

bool NetInfoSettingUIPlugin::saveLimit()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore)
        return false;
    // An empty entry is refused even when its limit is off or not offered.
    if (m_pChkDataVolume) {
        if (!m_pEditDataVolume || m_pEditDataVolume->text().isEmpty()) {
            showPrompt(QStringLiteral("IDS_INPUT_DATA_VOLUME"));
            return false;
        }
        m_pStore->updateUseLimitSetting(QStringLiteral("chkVolume"), flag(m_pChkDataVolume));
        m_pStore->updateUseLimitSetting(QStringLiteral("SizeVolume"), m_pEditDataVolume->text());
    }
    if (m_pChkTimeVolume) {
        if (!m_pEditTimeVolume || m_pEditTimeVolume->text().isEmpty()) {
            showPrompt(QStringLiteral("IDS_INPUT_TIME_VOLUME_LIMIT"));
            return false;
        }
        m_pStore->updateUseLimitSetting(QStringLiteral("chkTimeVolume"), flag(m_pChkTimeVolume));
        m_pStore->updateUseLimitSetting(QStringLiteral("SizeTimeVolume"), m_pEditTimeVolume->text());
    }
    return true;
}

bool NetInfoSettingUIPlugin::saveWarning()
{
    NETINFO_SETTING_TRACE(kSource);
    if (!m_pStore || !m_pEditWarnPercent) {
        NETINFO_ARG_NULL(kSource);
        return false;
    }
    if (m_pChkWarnBefore) {
        if (m_pEditWarnPercent->text().isEmpty()) {
            showPrompt(QStringLiteral("IDS_INPUT_DATA_WARN_PERCENTAGE"));
            return false;
        }
        m_pStore->updateUseLimitSetting(QStringLiteral("chkWarnbefore"), flag(m_pChkWarnBefore));
        m_pStore->updateUseLimitSetting(QStringLiteral("WarnBeforPercentage"), m_pEditWarnPercent->text());
    }
    m_pStore->updateUseLimitSetting(QStringLiteral("chkWarnAfter"), flag(m_pChkWarnExceed));
    return true;
}

bool NetInfoSettingUIPlugin::CancelNetInfoSetting()
{
    NETINFO_SETTING_TRACE(kSource);
    // The pending period choices stay: the page shows the map, and the map
    // may hold choices of a refused OK.
    applySettings();
    return true;
}
