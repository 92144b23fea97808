// Lets the user name the interfaces to count instead of the automatic choice
// (the metered links, else the default route's): one check box each.
#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;

class CountedInterfacesDialog : public QDialog
{
    Q_OBJECT
public:
    // present: the interfaces this machine has now; chosen: the setting.
    // Chosen interfaces that are absent now stay listed, so they can be unticked.
    CountedInterfacesDialog(const QStringList& present, const QStringList& chosen, QWidget* parent = nullptr);

    // The ticked interfaces; empty means the automatic choice.
    QStringList chosen() const;

    // The network interfaces of this machine, loopback left out.
    static QStringList presentInterfaces(const QString& sysClassNet = QStringLiteral("/sys/class/net"));

private:
    QListWidget* m_pList = nullptr;
};
