// The host's settings dialog: a list of pages on the left, the chosen page on
// the right, OK and Cancel below. Pages are plug-ins' ISettingUIPlugin
// objects; a page may refuse OK, which keeps the dialog open for corrections.
#pragma once

#include <QDialog>
#include <QList>

class ISettingUIPlugin;
class QDialogButtonBox;
class QListWidget;

class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    explicit SettingsDialog(QWidget* parent = nullptr);

    // Lists the page under its GetModuleName(); a page without a name is
    // left out. The first page added is shown at once.
    void addPage(ISettingUIPlugin* page);
    int pageCount() const { return int(m_pages.size()); }
    QWidget* pageArea() const { return m_pPageArea; }

public slots:
    // Asks every page that was shown to save; the first refusal shows that
    // page and keeps the dialog open.
    void accept() override;
    // Lets every page that was shown drop its changes.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showPage(int row);

    QListWidget* m_pPageList = nullptr;
    QWidget* m_pPageArea = nullptr;
    QDialogButtonBox* m_pButtons = nullptr;
    QList<ISettingUIPlugin*> m_pages;
    int m_iCurrent = -1;
};
