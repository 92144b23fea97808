#include "Change.h"
#include "CommonUtils.h"
#include "ExtendDialog.h"
#include "MainFrameService.h"
#include "TestHome.h"

#include <QCheckBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(QMessageBox::Icon)

namespace {

int showMessage(const QStringList& keys, bool modal = true, QDialog** dialog = nullptr,
                Qt::WindowFlags flags = Qt::Dialog, QWidget* parent = nullptr)
{
    return CommonUtils::ShowMessage(QMessageBox::Warning, parent, QStringLiteral("Title"), QStringLiteral("Text"),
                                    keys.value(0), keys.value(1), keys.value(2), modal, flags, dialog, QString(),
                                    true);
}

QAbstractButton* buttonWithText(const QMessageBox& box, const QString& text)
{
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

} // namespace

class TestWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void messageBoxBuilt_data();
    void messageBoxBuilt();
    void messageBoxAnswers_data();
    void messageBoxAnswers();
    void scriptedAnswer_data();
    void scriptedAnswer();
    void badScriptedAnswerShowsBox();
    void nonModalBoxDeletesItself();
    void elidedText_data();
    void elidedText();
    void elidedTextWithoutButton();
    void extendDialogReplacesWidget();
    void mainFrameForgetsDeletedWidgets();

private:
    std::unique_ptr<TestHome> m_home;
};

void TestWidgets::initTestCase()
{
    m_home = std::make_unique<TestHome>();
    QVERIFY(m_home->isValid());
    QVERIFY2(m_home->installTranslations(), "no compiled translations in the build tree");
    QVERIFY(Change::LoadLanguage(QStringLiteral("en")));
}

void TestWidgets::cleanup()
{
    CommonUtils::SetMessageHook({});
    qunsetenv("NETINFO_MESSAGE_ANSWER");
}

void TestWidgets::messageBoxBuilt_data()
{
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("texts");     // of the Ok, Cancel and Ignore buttons; "" for none
    QTest::addColumn<int>("escapeCode");

    const int dialog = Qt::Dialog;
    QTest::newRow("three buttons") << QMessageBox::Warning << QStringList{"IDS_YES", "IDS_NO", "IDS_OK"} << dialog
                                   << QStringList{"Yes", "No", "OK"} << int(QMessageBox::Ignore);
    QTest::newRow("one button") << QMessageBox::Information << QStringList{"IDS_OK", "", ""} << dialog
                                << QStringList{"OK", "", ""} << int(QMessageBox::Ok);
    QTest::newRow("two buttons") << QMessageBox::Question << QStringList{"IDS_YES", "IDS_NO", ""} << dialog
                                 << QStringList{"Yes", "No", ""} << int(QMessageBox::Cancel);
    QTest::newRow("gap in the middle") << QMessageBox::Critical << QStringList{"IDS_OK", "", "IDS_NO"} << dialog
                                       << QStringList{"OK", "", "No"} << int(QMessageBox::Ignore);
    QTest::newRow("untranslated key") << QMessageBox::Warning << QStringList{"IDS_NO_SUCH_KEY", "", ""} << dialog
                                      << QStringList{"IDS_NO_SUCH_KEY", "", ""} << int(QMessageBox::Ok);
    QTest::newRow("extra flags") << QMessageBox::Warning << QStringList{"IDS_OK", "", ""}
                                 << int(Qt::Dialog | Qt::WindowStaysOnTopHint) << QStringList{"OK", "", ""}
                                 << int(QMessageBox::Ok);
    QTest::newRow("flags without a window type")
        << QMessageBox::Warning << QStringList{"IDS_OK", "", ""} << int(Qt::WindowStaysOnTopHint)
        << QStringList{"OK", "", ""} << int(QMessageBox::Ok);
}

void TestWidgets::messageBoxBuilt()
{
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QStringList, keys);
    QFETCH(int, flags);
    QFETCH(QStringList, texts);
    QFETCH(int, escapeCode);

    QWidget parent;
    QDialog* dialog = nullptr;
    QDialog* seenDialog = nullptr;
    // QCOMPARE cannot return a value, so the checks run in a void lambda.
    auto check = [&](QMessageBox& box) {
        seenDialog = dialog;
        QCOMPARE(box.icon(), icon);
        QCOMPARE(box.windowTitle(), QStringLiteral("Title"));
        QCOMPARE(box.text(), QStringLiteral("Verify the limit"));
        QCOMPARE(box.parentWidget(), &parent);
        QVERIFY(box.isWindow());
        QCOMPARE(int(box.windowFlags() & Qt::WindowFlags(flags)), flags);
        QStringList seen;
        for (auto code : {QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Ignore})
            seen << (box.button(code) ? box.button(code)->text() : QString());
        QCOMPARE(seen, texts);
        QCOMPARE(box.buttons().size(), int(texts.size() - texts.count(QString())));
        QVERIFY(box.escapeButton());
        QCOMPARE(box.escapeButton(), box.button(QMessageBox::StandardButton(escapeCode)));
    };
    int calls = 0;
    CommonUtils::SetMessageHook([&](QMessageBox& box) { ++calls; check(box); return 4242; });

    const int result = CommonUtils::ShowMessage(icon, &parent, QStringLiteral("Title"),
                                                QStringLiteral("Verify the limit"), keys[0], keys[1], keys[2], true,
                                                Qt::WindowFlags(flags), &dialog, QString(), true);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(calls, 1);
    QCOMPARE(result, 4242);
    QVERIFY2(seenDialog, "the out-pointer did not receive the box");
    QCOMPARE(dialog, nullptr);
}

void TestWidgets::messageBoxAnswers_data()
{
    QTest::addColumn<QString>("clicked");
    QTest::addColumn<int>("expected");

    QTest::newRow("first") << "Yes" << int(QMessageBox::Ok);
    QTest::newRow("second") << "No" << int(QMessageBox::Cancel);
    QTest::newRow("third") << "OK" << int(QMessageBox::Ignore);
}

// The hook answers as a user would: by the label it reads.
void TestWidgets::messageBoxAnswers()
{
    QFETCH(QString, clicked);
    QFETCH(int, expected);

    CommonUtils::SetMessageHook([&](QMessageBox& box) {
        QAbstractButton* button = buttonWithText(box, clicked);
        return button ? int(box.standardButton(button)) : -1;
    });
    QCOMPARE(showMessage({"IDS_YES", "IDS_NO", "IDS_OK"}), expected);
}

void TestWidgets::scriptedAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<bool>("modal");
    QTest::addColumn<int>("expected");

    const QStringList three = {"IDS_YES", "IDS_NO", "IDS_OK"};
    QTest::newRow("1") << QByteArray("1") << three << true << int(QMessageBox::Ok);
    QTest::newRow("2") << QByteArray("2") << three << true << int(QMessageBox::Cancel);
    QTest::newRow("3") << QByteArray("3") << three << true << int(QMessageBox::Ignore);
    QTest::newRow("non-modal") << QByteArray("2") << three << false << int(QMessageBox::Cancel);
    QTest::newRow("missing button: closed") << QByteArray("3") << QStringList{"IDS_YES", "IDS_NO", ""} << true
                                            << int(QMessageBox::Cancel);
}

void TestWidgets::scriptedAnswer()
{
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, keys);
    QFETCH(bool, modal);
    QFETCH(int, expected);

    qputenv("NETINFO_MESSAGE_ANSWER", answer);
    if (keys.contains(QString()))
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("does not have")));
    QCOMPARE(showMessage(keys, modal), expected);

    // A hook wins over the environment.
    CommonUtils::SetMessageHook([](QMessageBox&) { return 17; });
    QCOMPARE(showMessage(keys, modal), 17);
}

void TestWidgets::badScriptedAnswerShowsBox()
{
    qputenv("NETINFO_MESSAGE_ANSWER", "7");
    QDialog* dialog = nullptr;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("must be 1, 2 or 3")));
    QCOMPARE(showMessage({"IDS_OK"}, false, &dialog), 0);
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    dialog->close();
}

void TestWidgets::nonModalBoxDeletesItself()
{
    QDialog* dialog = nullptr;
    QCOMPARE(showMessage({"IDS_YES", "IDS_NO"}, false, &dialog), 0);
    QPointer<QDialog> box(dialog);
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QVERIFY(!box->isModal());

    auto* messageBox = qobject_cast<QMessageBox*>(box.data());
    QVERIFY(messageBox);
    QAbstractButton* no = buttonWithText(*messageBox, QStringLiteral("No"));
    QVERIFY(no);
    no->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!box);
}

void TestWidgets::elidedText_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("elided");

    const QString longText = QStringLiteral("Warn at this percentage of the limit of the current usage period:");
    QTest::newRow("push, long") << "push" << longText << 80 << int(Qt::ElideRight) << true;
    QTest::newRow("push, short") << "push" << "OK" << 200 << int(Qt::ElideRight) << false;
    QTest::newRow("check box, long") << "check" << longText << 120 << int(Qt::ElideRight) << true;
    QTest::newRow("check box, short") << "check" << "Daily" << 300 << int(Qt::ElideRight) << false;
    QTest::newRow("elide left") << "push" << longText << 80 << int(Qt::ElideLeft) << true;
    QTest::newRow("no eliding") << "push" << longText << 80 << int(Qt::ElideNone) << false;
}

void TestWidgets::elidedText()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(int, mode);
    QFETCH(bool, elided);

    std::unique_ptr<QAbstractButton> button;
    if (kind == "check")
        button = std::make_unique<QCheckBox>();
    else
        button = std::make_unique<QPushButton>();
    button->resize(width, 30);

    const QString result = CommonUtils::AbstractButtonElidedText(button.get(), text, mode);
    QCOMPARE(button->text(), result);
    if (!elided) {
        QCOMPARE(result, text);
        return;
    }
    const QChar ellipsis(0x2026);
    QVERIFY2(result != text, qPrintable(result));
    QVERIFY2(mode == Qt::ElideLeft ? result.startsWith(ellipsis) : result.endsWith(ellipsis), qPrintable(result));
    QVERIFY(button->fontMetrics().horizontalAdvance(result) < width);
}

void TestWidgets::elidedTextWithoutButton()
{
    QCOMPARE(CommonUtils::AbstractButtonElidedText(nullptr, QStringLiteral("Set limit"), Qt::ElideRight),
             QStringLiteral("Set limit"));
    QPushButton button;
    button.resize(400, 30);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("elide mode 99")));
    QCOMPARE(CommonUtils::AbstractButtonElidedText(&button, QStringLiteral("Set limit"), 99),
             QStringLiteral("Set limit"));
}

void TestWidgets::extendDialogReplacesWidget()
{
    ExtendDialog dialog;
    QVERIFY(dialog.layout());
    QCOMPARE(dialog.layout()->contentsMargins(), QMargins());
    QCOMPARE(dialog.MainWidget(), nullptr);

    QPointer<QWidget> first = new QLabel(QStringLiteral("first"));
    dialog.AddMainWidget(first);
    QCOMPARE(dialog.MainWidget(), first.data());
    QCOMPARE(first->parentWidget(), &dialog);

    auto* second = new QLabel(QStringLiteral("second"));
    dialog.AddMainWidget(second);
    QVERIFY2(!first, "the replaced widget was not deleted");
    QCOMPARE(dialog.MainWidget(), second);
    QCOMPARE(dialog.layout()->count(), 1);

    dialog.AddMainWidget(second);
    QCOMPARE(dialog.MainWidget(), second);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no main widget")));
    dialog.AddMainWidget(nullptr);
    QCOMPARE(dialog.MainWidget(), second);

    // Deleted behind the frame's back: forgotten, not deleted twice.
    delete second;
    QCOMPARE(dialog.MainWidget(), nullptr);
    auto* third = new QLabel(QStringLiteral("third"));
    dialog.AddMainWidget(third);
    QCOMPARE(dialog.MainWidget(), third);
    QCOMPARE(dialog.layout()->count(), 1);
}

void TestWidgets::mainFrameForgetsDeletedWidgets()
{
    MainFrameService service;
    QCOMPARE(service.GetTopLevelWidget(), nullptr);
    auto window = std::make_unique<QWidget>();
    auto* central = new QWidget(window.get());
    service.SetTopLevelWidget(window.get());
    service.SetCentralWidget(central);
    QCOMPARE(service.GetTopLevelWidget(), window.get());
    QCOMPARE(service.GetCentralWidget(), central);

    window.reset();
    QCOMPARE(service.GetTopLevelWidget(), nullptr);
    QCOMPARE(service.GetCentralWidget(), nullptr);
}

QTEST_MAIN(TestWidgets)
#include "tst_core_widgets.moc"
