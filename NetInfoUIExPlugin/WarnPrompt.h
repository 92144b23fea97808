// The usage warning: a small window-modal dialog with the warning text, an
// offer to disconnect while a connection is up, and OK.
#pragma once

#include "ExtendDialog.h"

#include <QObject>
#include <QPointer>
#include <QString>

class QCheckBox;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QWidget;

class WarnPrompt : public QObject
{
    Q_OBJECT
public:
    explicit WarnPrompt(QObject* parent = nullptr);
    ~WarnPrompt() override;

    // Shows text, creating the dialog on parent the first time; an open
    // dialog just takes the new text.
    void ShowWarnDlg(QWidget* parent, QString text, bool enableCheckBox);
    void createWarnDlg(QWidget* parent);
    void updateDialog(bool enableCheckBox);
    void CloseDlg();
    void SettingLanguage();

    ExtendDialog* dialog() const { return m_pDialog.data(); }

signals:
    void DisConnectDialup();

public slots:
    void onCheckBoxClicked(bool checked);
    void onOkButtonClicked();

private:
    // Built on the view's widget, so it can go with it.
    QPointer<ExtendDialog> m_pDialog;
    QWidget* m_pMainWidget = nullptr;
    QLabel* m_pWarnLabel = nullptr;
    QCheckBox* m_pCheckBox = nullptr;
    QPushButton* m_pOkButton = nullptr;
    bool m_bDisconnect = false;
    bool m_bCheckBoxEnabled = false;
    QVBoxLayout* m_pLayout = nullptr;
};
