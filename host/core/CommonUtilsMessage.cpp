#include "CommonUtils.h"

#include "Change.h"
#include "HostLog.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>

#include <array>
#include <memory>

namespace {

const QString kContext = QStringLiteral("NetInfoUIExPlugin");
// Callers test the result against these codes, whatever the buttons say.
constexpr std::array<QMessageBox::StandardButton, 3> kButtonCodes
    = { QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Ignore };

using ButtonKeys = std::array<QString, 3>;

CommonUtils::MessageHook& messageHook()
{
    static CommonUtils::MessageHook hook;
    return hook;
}

void logAnswer(const QString& title, const QString& text, int code, const char* by)
{
    qCInfo(lcHost, "Message box \"%s\": \"%s\" answered %d by %s", qUtf8Printable(title),
        qUtf8Printable(text), code, by);
}

QMessageBox* buildBox(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
    const ButtonKeys& keys, Qt::WindowFlags flags)
{
    // Flags without a window type would make the box a child widget of parent.
    if (!(flags & Qt::WindowType_Mask))
        flags |= Qt::Dialog;
    auto* box = new QMessageBox(icon, title, text, QMessageBox::NoButton, parent, flags);
    QPushButton* last = nullptr;
    for (size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].isEmpty())
            continue;
        QPushButton* button = box->addButton(kButtonCodes[i]);
        button->setText(Change::tr(keys[i], kContext));
        if (!last)
            box->setDefaultButton(button);
        last = button;
    }
    if (last)
        box->setEscapeButton(last);
    return box;
}

} // namespace

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget* parent, const QString& title,
    const QString& text, const QString& button1, const QString& button2, const QString& button3, bool modal,
    Qt::WindowFlags flags, QDialog** dialog, const QString& reserved, bool reservedFlag)
{
    Q_UNUSED(reserved);
    Q_UNUSED(reservedFlag);
    const ButtonKeys keys = { button1, button2, button3 };
    const bool haveWidgets = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;

    // A copy: the hook may install another one while it runs.
    const MessageHook hook = messageHook();
    if (hook && haveWidgets) {
        std::unique_ptr<QMessageBox> box(buildBox(icon, parent, title, text, keys, flags));
        if (dialog)
            *dialog = box.get();
        const int code = hook(*box);
        if (dialog)
            *dialog = nullptr;
        logAnswer(title, text, code, "hook");
        return code;
    }
    if (hook)
        qCWarning(lcHost, "CommonUtils: the message hook needs a QApplication; not called for \"%s\"",
            qUtf8Printable(title));
    if (!haveWidgets) {
        qCWarning(
            lcHost, "CommonUtils: no QApplication; message box \"%s\" not shown", qUtf8Printable(title));
        return 0;
    }

    QMessageBox* box = buildBox(icon, parent, title, text, keys, flags);
    if (dialog)
        *dialog = box;
    if (!modal) {
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setWindowModality(Qt::NonModal);
        box->show();
        return 0;
    }

    // The parent may go away while the box waits, taking the box with it.
    QPointer<QMessageBox> guard(box);
    box->exec();
    int code = 0;
    if (guard) {
        code = guard->standardButton(guard->clickedButton());
        delete guard.data();
    }
    if (dialog)
        *dialog = nullptr;
    logAnswer(title, text, code, "user");
    return code;
}

void CommonUtils::SetMessageHook(MessageHook hook)
{
    messageHook() = std::move(hook);
}
