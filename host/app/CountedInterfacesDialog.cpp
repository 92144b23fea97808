#include "CountedInterfacesDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

CountedInterfacesDialog::CountedInterfacesDialog(
    const QStringList& present, const QStringList& chosen, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("NetInfo_CountedInterfacesDialog"));
    setWindowTitle(tr("Counted interfaces"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(tr("Count these interfaces. With none ticked, NetInfo counts the links "
                                "NetworkManager calls metered, else the one of the default route."),
        this);
    label->setWordWrap(true);
    layout->addWidget(label);
    m_pList = new QListWidget(this);
    m_pList->setObjectName(QStringLiteral("NetInfo_CountedInterfacesList"));
    QStringList names = present;
    for (const QString& name : chosen) {
        if (!names.contains(name))
            names << name;
    }
    names.sort();
    for (const QString& name : std::as_const(names)) {
        auto* item
            = new QListWidgetItem(present.contains(name) ? name : tr("%1 (not present)").arg(name), m_pList);
        item->setData(Qt::UserRole, name);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(chosen.contains(name) ? Qt::Checked : Qt::Unchecked);
    }
    layout->addWidget(m_pList);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

QStringList CountedInterfacesDialog::chosen() const
{
    QStringList names;
    for (int i = 0; i < m_pList->count(); ++i) {
        if (m_pList->item(i)->checkState() == Qt::Checked)
            names << m_pList->item(i)->data(Qt::UserRole).toString();
    }
    return names;
}

QStringList CountedInterfacesDialog::presentInterfaces(const QString& sysClassNet)
{
    QStringList names
        = QDir(sysClassNet).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
    names.removeAll(QStringLiteral("lo"));
    return names;
}
