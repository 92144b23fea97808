// The start-date field of the usage-limit page. It takes no keys: the date is
// picked in the calendar pop-up (or stepped with the mouse), so a half-typed
// date can never become the period's start.
#pragma once

#include <QDateEdit>

class DateEdit : public QDateEdit
{
    Q_OBJECT
public:
    explicit DateEdit(QWidget* parent = nullptr);
    ~DateEdit() override;

protected:
    // Both mark the event ignored so that it goes on to the parent.
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
};
