// The report record and the query functions of the C API.
#include "SdkTestSupport.h"

#include <climits>
#include <cstring>

using velt::SdkCall;
using velt::StatisticsRecord;

Q_DECLARE_METATYPE(velt::SdkCall)

namespace {
const QByteArray kDirty(VELT_STATISTICS_REPORT_SIZE, char(0xAB));

// The 576-byte record as the C API documents it: native-order integers at
// fixed offsets, every other byte zero.
QByteArray expectedReport(const StatisticsRecord& r)
{
    QByteArray report(576, 0);
    auto put = [&report](int offset, const auto& value) {
        std::memcpy(report.data() + offset, &value, sizeof value);
    };
    put(524, quint64(r.bytesReceived));
    put(532, quint64(r.bytesSent));
    put(540, quint32(r.receiveSpeed));
    put(544, quint32(r.sendSpeed));
    put(556, qint64(r.duration));
    put(572, quint32(r.resetTime));
    return report;
}

// One call of the C function behind `call`, writing into `buffer` where it has an output.
int invoke(SdkCall call, char* buffer, int kind)
{
    switch (call) {
    case SdkCall::GetReport:
        return VELT_Statistics_GetReport(kind, buffer, 0);
    case SdkCall::GetSpecHistory:
        return VELT_Statistics_GetSpecHistroryData(buffer, 3600);
    case SdkCall::GetCustomizeName:
        return VELT_DevSrv_GetCustomizeName(buffer);
    default:
        return VELT_Statistics_Reset(0);
    }
}
} // namespace

class TstSdkReport : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_backend = installFreshBackend(); }

    void reportLayout_data()
    {
        QTest::addColumn<SdkCall>("call");
        QTest::addColumn<int>("kind");
        QTest::addColumn<quint64>("key");
        QTest::addColumn<StatisticsRecord>("record");
        // Every byte distinct, and a different record per kind, so that any misplaced byte or kind shows.
        for (int kind = VELT_REPORT_LIVE; kind <= VELT_REPORT_YEAR; ++kind)
            QTest::addRow("kind %d", kind)
                << SdkCall::GetReport << kind << quint64(0)
                << record(0x0102030405060708ull + kind, 0x1112131415161718ull, 0x21222324u, 0x31323334u,
                       0x4142434445464748ll, 0x51525354u + kind);
        QTest::newRow("extremes") << SdkCall::GetReport << int(VELT_REPORT_YEAR) << quint64(0)
                                  << record(ULLONG_MAX, ULLONG_MAX - 1, UINT_MAX, UINT_MAX - 1, LLONG_MIN,
                                         UINT_MAX);
        QTest::newRow("history, key 0")
            << SdkCall::GetSpecHistory << 0 << quint64(0) << record(52'428'800, 5'242'880, 0, 0, 3600);
        QTest::newRow("history, largest key")
            << SdkCall::GetSpecHistory << 0 << quint64(ULLONG_MAX) << record(1, 2, 3, 4, 5, 6);
    }

    void reportLayout()
    {
        QFETCH(SdkCall, call);
        QFETCH(int, kind);
        QFETCH(quint64, key);
        QFETCH(StatisticsRecord, record);
        call == SdkCall::GetReport ? m_backend->setReport(kind, record) : m_backend->setHistory(record);
        QByteArray report = kDirty;

        QCOMPARE(call == SdkCall::GetReport ? VELT_Statistics_GetReport(kind, report.data(), 0)
                                            : VELT_Statistics_GetSpecHistroryData(report.data(), key),
            0);

        QCOMPARE(report, expectedReport(record));
        QCOMPARE(velt::readReport(report.constData()), record);
        QCOMPARE(m_backend->lastHistoryKey(), key);
    }

    // A backend failure or a bad argument: an error, the output untouched,
    // and a failed reset clears nothing.
    void failsWithoutTouchingOutput_data()
    {
        QTest::addColumn<SdkCall>("call");
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("nullBuffer");
        QTest::addColumn<bool>("armed"); // failNext() rather than a bad argument
        for (SdkCall call :
            { SdkCall::GetReport, SdkCall::GetSpecHistory, SdkCall::Reset, SdkCall::GetCustomizeName })
            QTest::addRow("backend fails %d", int(call)) << call << int(VELT_REPORT_MONTH) << false << true;
        QTest::newRow("kind -1") << SdkCall::GetReport << -1 << false << false;
        QTest::newRow("kind 6") << SdkCall::GetReport << 6 << false << false;
        QTest::newRow("null report") << SdkCall::GetReport << int(VELT_REPORT_LIVE) << true << false;
        QTest::newRow("null history") << SdkCall::GetSpecHistory << 0 << true << false;
        QTest::newRow("null name") << SdkCall::GetCustomizeName << 0 << true << false;
    }

    void failsWithoutTouchingOutput()
    {
        QFETCH(SdkCall, call);
        QFETCH(int, kind);
        QFETCH(bool, nullBuffer);
        QFETCH(bool, armed);
        const StatisticsRecord today = record(4, 3, 2, 1, 1);
        m_backend->setReport(VELT_REPORT_TODAY, today);
        QByteArray buffer = kDirty;
        if (armed)
            m_backend->failNext(call);
        QVERIFY(invoke(call, nullBuffer ? nullptr : buffer.data(), kind) != 0);
        QCOMPARE(buffer, kDirty);
        QCOMPARE(m_backend->reportFor(VELT_REPORT_TODAY), today);
    }

    void customizeName_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("127 chars") << QByteArray(127, 'a') << QByteArray(127, 'a');
        QTest::newRow("128 chars") << QByteArray(128, 'b') << QByteArray(127, 'b');
        QTest::newRow("embedded NUL") << QByteArray("ab\0cd", 5) << QByteArray("ab");
    }

    void customizeName()
    {
        QFETCH(QByteArray, name);
        m_backend->setCustomizeName(name);
        // Larger than the promised size, to catch writes past it.
        QByteArray buffer(2 * VELT_CUSTOMIZE_NAME_SIZE, char(0xAB));

        QCOMPARE(VELT_DevSrv_GetCustomizeName(buffer.data()), 0);

        QTEST(QByteArray(buffer.constData()), "expected");
        QCOMPARE(buffer.mid(VELT_CUSTOMIZE_NAME_SIZE), QByteArray(VELT_CUSTOMIZE_NAME_SIZE, char(0xAB)));
    }

private:
    velt::SimulatedBackend* m_backend = nullptr;
};

QTEST_GUILESS_MAIN(TstSdkReport)
#include "tst_sdk_report.moc"
