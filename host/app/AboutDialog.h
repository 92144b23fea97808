// Help > About: what is running and where it keeps the user's files, so a
// user can find, back up or delete them.
#pragma once

#include <QDialog>

class AboutDialog : public QDialog
{
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);
};
