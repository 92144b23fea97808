#include "AboutDialog.h"

#include "HostPaths.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("NetInfo_AboutDialog"));
    setWindowTitle(tr("About NetInfo"));

    const auto path = [](const QString& p) { return QDir::toNativeSeparators(p).toHtmlEscaped(); };
    const QString dataDir = HostPaths::userDataDir();
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("NetInfo_AboutText"));
    label->setTextFormat(Qt::RichText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setText(
        QStringLiteral("<h3>NetInfo %1</h3><p>%2</p><p>%3</p><table>"
                       "<tr><td>%4&nbsp;</td><td>%5</td></tr>"
                       "<tr><td>%6&nbsp;</td><td>%7</td></tr>"
                       "<tr><td>%8&nbsp;</td><td>%9</td></tr></table>")
            .arg(QCoreApplication::applicationVersion().toHtmlEscaped(),
                tr("Network usage of the mobile-broadband connection.").toHtmlEscaped(),
                tr("Released under the MIT licence.").toHtmlEscaped(), tr("User data:").toHtmlEscaped(),
                path(dataDir), tr("Settings:").toHtmlEscaped(),
                path(QFileInfo(HostPaths::hostSettingsFile()).path()), tr("Usage ledger:").toHtmlEscaped(),
                path(dataDir + QStringLiteral("/usage.sqlite"))));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(buttons);
}
