// Utilities the host offers its plug-ins.
#pragma once

#include "TagUnits.h"
#include "hostcore_export.h"

#include <QLocale>
#include <QMessageBox>
#include <QString>
#include <QVariant>

#include <functional>

class QAbstractButton;
class QDialog;

class HOSTCORE_EXPORT CommonUtils
{
public:
    // <home>: the directory above the running executable's bin/, or the
    // directory named by NETINFO_LIBRARY_PATH. No trailing slash.
    static QString GetPluginLibraryPath();

    // A message box with up to three buttons whose texts are text keys,
    // translated here. Returns QMessageBox::Ok (1024) for the first button,
    // QMessageBox::Cancel for the second and QMessageBox::Ignore for the
    // third; closing the box counts as the last button. With modal false the
    // box is shown without waiting, deletes itself when closed, and 0 is
    // returned; *dialog (when given) receives it (hold it in a QPointer). For
    // a modal box *dialog is reset to null before returning. The trailing
    // string and flag are reserved.
    static int ShowMessage(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
        const QString& button1, const QString& button2, const QString& button3, bool modal,
        Qt::WindowFlags flags, QDialog** dialog, const QString& reserved, bool reservedFlag);

    // Answers message boxes without showing them: the hook gets the fully
    // built box and returns the button code. For tests only; pass an empty
    // function to show boxes again. Needs a QApplication.
    using MessageHook = std::function<int(QMessageBox& box)>;
    static void SetMessageHook(MessageHook hook);

    // value scaled to the largest unit of table that it reaches, with that
    // unit's translated name: "0 B", "512 B", "1.50 KB", "2.25 MB".
    static QString SpeedFluxToString(unsigned long long value, const TagUnitsTable& table,
        const QString& module, const QLocale& locale = QLocale());
    // The translated name of the unit that speeds are plotted in (entry 0).
    static QString SpeedUnitToString(const TagUnitsTable& table, const QString& module);

    // Publishes a value in the host's own settings, where the statistics
    // service reads it (for example "uselimit"/"startmonthdate").
    static void SetSettings(const QString& group, const QString& key, const QVariant& value);
    static QVariant GetSettings(
        const QString& group, const QString& key, const QVariant& defaultValue = QVariant());

    // Sets text on button, elided with mode (a Qt::TextElideMode) to the
    // button's current width; returns the text that was set.
    static QString AbstractButtonElidedText(QAbstractButton* button, const QString& text, int mode);
};
