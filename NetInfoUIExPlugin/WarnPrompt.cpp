#include "WarnPrompt.h"

#include "Change.h"
#include "ExtendDialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QString translated(const char* key)
{
    return Change::tr(QLatin1String(key), QStringLiteral("NetInfoUIExPlugin"));
}
} // namespace

WarnPrompt::WarnPrompt(QObject* parent)
    : QObject(parent)
{ }

WarnPrompt::~WarnPrompt()
{
    // The dialog may already be gone with the parent it was built on.
    delete m_pDialog.data();
    m_pDialog = nullptr;
    m_pMainWidget = nullptr;
    m_pWarnLabel = nullptr;
    m_pCheckBox = nullptr;
    m_pOkButton = nullptr;
    m_pLayout = nullptr;
}

void WarnPrompt::ShowWarnDlg(QWidget* parent, QString text, bool enableCheckBox)
{
    m_bCheckBoxEnabled = enableCheckBox;
    if (!m_pDialog)
        createWarnDlg(parent);
    if (!m_pDialog)
        return;
    m_pCheckBox->setEnabled(m_bCheckBoxEnabled);
    m_pWarnLabel->setText(text);
    m_pDialog->show();
}

void WarnPrompt::createWarnDlg(QWidget* parent)
{
    m_pDialog = new ExtendDialog(parent);
    m_pMainWidget = new QWidget;
    m_pLayout = new QVBoxLayout(m_pMainWidget);
    m_pWarnLabel = new QLabel(m_pMainWidget);
    m_pCheckBox = new QCheckBox(m_pMainWidget);
    m_pOkButton = new QPushButton(m_pMainWidget);

    m_pDialog->setObjectName(QStringLiteral("WarnDlg_ExtendedDlg"));
    m_pMainWidget->setObjectName(QStringLiteral("WarnDlg_WidgetMain"));
    m_pWarnLabel->setObjectName(QStringLiteral("WarnDlg_LabelWarn"));
    m_pCheckBox->setObjectName(QStringLiteral("WarnDlg_CheckBox"));
    m_pOkButton->setObjectName(QStringLiteral("WarnDlg_ButtonOk"));
    m_pLayout->setObjectName(QStringLiteral("WarnDlg_layoutMain"));

    m_pWarnLabel->setWordWrap(true);
    m_pCheckBox->setEnabled(m_bCheckBoxEnabled);
    m_pLayout->addWidget(m_pWarnLabel);
    m_pLayout->addWidget(m_pCheckBox);
    m_pLayout->addWidget(m_pOkButton, 0, Qt::AlignRight);
    m_pDialog->AddMainWidget(m_pMainWidget);
    SettingLanguage();

    m_pDialog->setFixedSize(430, 155);
    m_pDialog->setWindowModality(Qt::WindowModal);

    connect(m_pCheckBox, &QCheckBox::clicked, this, &WarnPrompt::onCheckBoxClicked);
    connect(m_pOkButton, &QPushButton::clicked, this, &WarnPrompt::onOkButtonClicked);
}

void WarnPrompt::onCheckBoxClicked(bool checked)
{
    m_bDisconnect = checked;
    if (m_pCheckBox)
        m_pCheckBox->setChecked(checked);
}

void WarnPrompt::onOkButtonClicked()
{
    if (m_pDialog)
        m_pDialog->close();
    if (m_bDisconnect)
        emit DisConnectDialup();
    // The choice belongs to this warning only.
    if (m_pCheckBox)
        m_pCheckBox->setChecked(false);
    m_bDisconnect = false;
}

void WarnPrompt::updateDialog(bool enableCheckBox)
{
    if (!m_pDialog || !m_pCheckBox)
        return;
    m_pCheckBox->setEnabled(enableCheckBox);
    m_pDialog->update();
}

void WarnPrompt::CloseDlg()
{
    if (m_pDialog)
        m_pDialog->close();
}

void WarnPrompt::SettingLanguage()
{
    // Gone with the view's widget: so are the controls.
    if (!m_pDialog)
        return;
    m_pDialog->setWindowTitle(translated("IDS_BOX_WARNTITLE"));
    if (m_pCheckBox)
        m_pCheckBox->setText(translated("IDS_DISCONNECTDIALUP"));
    if (m_pOkButton)
        m_pOkButton->setText(translated("IDS_BOX_WARNIDOK"));
}
