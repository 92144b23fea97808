// The host's main window: the plug-in's view fills the central area, the
// status panel that the plug-in hands over sits in a dock on the right.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class AllowancePanel;
class HistoryWindow;
class QAction;
class QActionGroup;
class QDockWidget;
class QLabel;
class QMenu;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);

    // The area a plug-in view is embedded in.
    QWidget* viewArea() const { return m_pViewArea; }
    QRect viewRect() const;
    // Takes over the plug-in's status panel; a second panel replaces the first.
    void setStatusPanel(QWidget* panel);
    QWidget* statusPanel() const { return m_pStatusPanel; }
    // Offers these languages (code, name in its own script) in the menu.
    void setLanguages(const QList<QPair<QString, QString>>& languages);
    // Checks the language in use in the menu.
    void setCurrentLanguage(const QString& code);
    // What the figures measure, shown in the title.
    void setSource(bool simulated, const QString& interfaceName);
    // Who counts, in the status bar; a problem is shown beside it.
    void setRecordingState(const QString& text, const QString& problem);
    QMenu* toolsMenu() const { return m_pToolsMenu; }
    // Whether Tools offers to keep counting in the background.
    void setBackgroundOffered(bool offered);

    AllowancePanel* allowancePanel() const { return m_pAllowancePanel; }

public slots:
    // Daily and monthly usage from the ledger, in a window of its own.
    void showHistory();

signals:
    // The window's texts are in the new language; what others added follows.
    void retranslated();
    // Every size change of the view area.
    void viewAreaResized(const QRect& rect);
    // Once the resizing has been quiet for a moment.
    void viewAreaSettled();
    // The user asked for the settings dialog.
    void settingsRequested();
    // The user chose a language from the menu.
    void languageRequested(const QString& code);
    void countedInterfacesRequested();
    void backgroundRecordingRequested();
    void aboutRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QWidget* m_pViewArea = nullptr;
    QMenu* m_pToolsMenu = nullptr;
    QAction* m_pSettingsAction = nullptr;
    QAction* m_pInterfacesAction = nullptr;
    QAction* m_pBackgroundAction = nullptr;
    QAction* m_pHistoryAction = nullptr;
    QDockWidget* m_pAllowanceDock = nullptr;
    AllowancePanel* m_pAllowancePanel = nullptr;
    QPointer<HistoryWindow> m_pHistoryWindow;
    QLabel* m_pRecordingLabel = nullptr;
    QAction* m_pQuitAction = nullptr;
    QMenu* m_pLanguageMenu = nullptr;
    QMenu* m_pHelpMenu = nullptr;
    QAction* m_pAboutAction = nullptr;
    QActionGroup* m_pLanguageGroup = nullptr;
    bool m_bSimulated = false;
    QString m_strInterface;
    QDockWidget* m_pStatusDock = nullptr;
    QPointer<QWidget> m_pStatusPanel;
    QTimer m_settleTimer;
};
