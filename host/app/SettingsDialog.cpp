#include "SettingsDialog.h"

#include "ISettingUIPlugin.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// Room for the largest page a plug-in is known to bring.
constexpr QSize kPageAreaSize(480, 480);
} // namespace

SettingsDialog::SettingsDialog(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("NetInfo_SettingsDialog"));
    setWindowTitle(tr("Settings"));

    m_pPageList = new QListWidget(this);
    m_pPageList->setObjectName(QStringLiteral("NetInfo_SettingsPageList"));
    m_pPageList->setFixedWidth(160);
    m_pPageArea = new QWidget(this);
    m_pPageArea->setObjectName(QStringLiteral("NetInfo_SettingsPageArea"));
    m_pPageArea->setMinimumSize(kPageAreaSize);
    // Pages are placed by rectangle, not by layout: follow the area's size.
    m_pPageArea->installEventFilter(this);
    m_pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto* pages = new QHBoxLayout;
    pages->addWidget(m_pPageList);
    pages->addWidget(m_pPageArea, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(pages, 1);
    layout->addWidget(m_pButtons);

    connect(m_pButtons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(m_pButtons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
    connect(m_pPageList, &QListWidget::currentRowChanged, this, &SettingsDialog::showPage);
}

void SettingsDialog::addPage(ISettingUIPlugin* page)
{
    if (!page)
        return;
    const QString name = page->GetModuleName();
    if (name.isEmpty())
        return;
    m_pages.append(page);
    m_pPageList->addItem(name);
    if (m_pPageList->currentRow() < 0)
        m_pPageList->setCurrentRow(0);
}

void SettingsDialog::showPage(int row)
{
    if (row == m_iCurrent || row < 0 || row >= m_pages.size())
        return;
    if (m_iCurrent >= 0)
        m_pages[m_iCurrent]->HideSetting();
    m_iCurrent = row;
    QRect rect = m_pPageArea->rect();
    m_pages[row]->ShowSettingDialog(m_pPageArea, rect);
}

bool SettingsDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pPageArea && event->type() == QEvent::Resize && m_iCurrent >= 0) {
        QRect rect = m_pPageArea->rect();
        m_pages[m_iCurrent]->ShowSettingDialog(m_pPageArea, rect);
    }
    return QDialog::eventFilter(watched, event);
}

void SettingsDialog::accept()
{
    for (int row = 0; row < m_pages.size(); ++row) {
        ISettingUIPlugin* page = m_pages[row];
        if (page->IsActiveSetting() && !page->OnClickSettingOkButton()) {
            // The page has told the user what is wrong; let them fix it.
            m_pPageList->setCurrentRow(row);
            return;
        }
    }
    QDialog::accept();
}

void SettingsDialog::reject()
{
    for (ISettingUIPlugin* page : std::as_const(m_pages)) {
        if (page->IsActiveSetting())
            page->OnClickSettingCancelButton();
    }
    QDialog::reject();
}
