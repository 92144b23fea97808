// The host's settings dialog against scripted pages: which page operations it
// calls, in which order, and when it stays open.
#include "SettingsDialog.h"

#include "ISettingUIPlugin.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// A page that logs every call as "<name>:<operation>" and answers OK from a
// script (true once the script runs out).
class ScriptedPage : public QObject, public ISettingUIPlugin
{
public:
    ScriptedPage(QString name, QList<bool> okAnswers, QStringList& log)
        : m_name(std::move(name))
        , m_okAnswers(std::move(okAnswers))
        , m_log(log)
    { }

    bool OnClickSettingOkButton() override
    {
        const bool saved = m_okAnswers.isEmpty() || m_okAnswers.takeFirst();
        return note("ok", saved && detach());
    }
    bool OnClickSettingCancelButton() override { return note("cancel", detach()); }
    bool ShowSettingDialog(QWidget* parent, QRect& rect) override
    {
        if (m_log.value(m_log.size() - 1) != m_name + QStringLiteral(":show"))
            note("show");
        m_widget.setParent(parent);
        m_widget.setGeometry(rect);
        m_widget.show();
        m_active = true;
        return true;
    }
    QString GetModuleName() override { return m_name; }
    bool HideSetting() override
    {
        m_widget.hide();
        return note("hide");
    }
    bool IsActiveSetting() override { return m_active; }

    QWidget m_widget;

private:
    bool note(const char* operation, bool result = true)
    {
        m_log << m_name + ':' + operation;
        return result;
    }
    bool detach()
    {
        m_widget.setParent(nullptr);
        m_active = false;
        return true;
    }

    QString m_name;
    QList<bool> m_okAnswers;
    QStringList& m_log;
    bool m_active = false;
};

} // namespace

class TestSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void pageProtocol_data()
    {
        QTest::addColumn<QList<bool>>("okAnswers"); // of page "A"
        QTest::addColumn<QStringList>("actions"); // "B" selects page B, "ok", "cancel", "close"
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<int>("result"); // -1 still open
        const auto row = [](const char* name, const QList<bool>& okAnswers, const char* actions,
                             const char* log, int result) {
            const auto list = [](const char* words) { return QString(words).split(' ', Qt::SkipEmptyParts); };
            QTest::newRow(name) << okAnswers << list(actions) << list(log) << result;
        };
        row("OK saves", {}, "ok", "A:show A:ok", QDialog::Accepted);
        row("refused OK keeps it open", { false }, "ok", "A:show A:ok", -1);
        row("refused OK, then Cancel", { false }, "ok cancel", "A:show A:ok A:cancel", QDialog::Rejected);
        row("closing cancels", {}, "close", "A:show A:cancel", QDialog::Rejected);
        row("leaving a page hides it; OK asks both", {}, "B ok", "A:show A:hide B:show A:ok B:ok",
            QDialog::Accepted);
        row("refusal brings its page back", { false }, "B ok", "A:show A:hide B:show A:ok B:hide A:show", -1);
    }

    void pageProtocol()
    {
        QFETCH(QList<bool>, okAnswers);
        QFETCH(QStringList, actions);
        QFETCH(int, result);
        QStringList calls;
        // Before the pages: a dialog left open must not outlive their widgets.
        SettingsDialog dialog;
        ScriptedPage a(QStringLiteral("A"), okAnswers, calls);
        ScriptedPage b(QStringLiteral("B"), {}, calls);
        ScriptedPage unnamed(QString(), {}, calls);
        dialog.addPage(&a);
        dialog.addPage(&unnamed);
        dialog.addPage(&b);
        QCOMPARE(dialog.pageCount(), 2);
        dialog.show();
        QCOMPARE(a.m_widget.parentWidget(), dialog.pageArea());
        QCOMPARE(a.m_widget.geometry(), dialog.pageArea()->rect());
        auto* buttons = dialog.findChild<QDialogButtonBox*>();
        for (const QString& action : actions) {
            if (action == QLatin1String("B"))
                dialog.findChild<QListWidget*>()->setCurrentRow(1);
            else if (action == QLatin1String("close"))
                dialog.close();
            else
                buttons->button(action == "ok" ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel)->click();
        }
        QTEST(calls, "log");
        QCOMPARE(dialog.isVisible() ? -1 : dialog.result(), result);
    }
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settings_dialog.moc"
