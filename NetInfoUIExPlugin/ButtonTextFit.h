// Keeps a button's text elided to the width its layout gives it. Eliding once
// when the button is made measures the width it has then, before any layout:
// a translation longer than that was cut although the button, once laid out,
// had room for it.
#pragma once

#include <QObject>
#include <QString>

class QAbstractButton;

class ButtonTextFit : public QObject
{
    Q_OBJECT
public:
    // Elides `text` into `button` now and again on every resize; a second
    // call for the same button only changes the text.
    static void fit(QAbstractButton* button, const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ButtonTextFit(QAbstractButton* button, const QString& text);
    void apply();

    QAbstractButton* m_pButton;
    QString m_strText;
};
