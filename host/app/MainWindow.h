// The host's main window: the plug-in's view fills the central area, the
// status panel that the plug-in hands over sits in a dock on the right.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

class QDockWidget;

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

signals:
    // Every size change of the view area.
    void viewAreaResized(const QRect& rect);
    // Once the resizing has been quiet for a moment.
    void viewAreaSettled();
    // The user asked for the settings dialog.
    void settingsRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_pViewArea = nullptr;
    QDockWidget* m_pStatusDock = nullptr;
    QPointer<QWidget> m_pStatusPanel;
    QTimer m_settleTimer;
};
