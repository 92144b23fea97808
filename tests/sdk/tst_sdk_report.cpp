// The report record and the query functions of the C API.
#include "SdkTestSupport.h"

#include <climits>
#include <cstring>

using velt::SdkCall;
using velt::SimulatedBackend;
using velt::StatisticsRecord;

Q_DECLARE_METATYPE(velt::StatisticsRecord)
Q_DECLARE_METATYPE(velt::SdkCall)

namespace {
constexpr unsigned char kDirt = 0xAB;

// Offset and width of every meaningful field; all other bytes are reserved.
const QList<QPair<int, int>> kFields = {
    {VELT_REPORT_OFFSET_BYTES_RECEIVED, 8}, {VELT_REPORT_OFFSET_BYTES_SENT, 8},
    {VELT_REPORT_OFFSET_RECEIVE_SPEED, 4},  {VELT_REPORT_OFFSET_SEND_SPEED, 4},
    {VELT_REPORT_OFFSET_DURATION, 8},       {VELT_REPORT_OFFSET_RESET_TIME, 4},
};

bool isFieldByte(int offset)
{
    for (const auto& [start, width] : kFields) {
        if (offset >= start && offset < start + width)
            return true;
    }
    return false;
}

QByteArray dirtyReport()
{
    return QByteArray(VELT_STATISTICS_REPORT_SIZE, char(kDirt));
}

template<typename T>
T at(const QByteArray& report, int offset)
{
    T value;
    std::memcpy(&value, report.constData() + offset, sizeof value);
    return value;
}

// The first reserved byte that is not `expected`, or -1.
int strayReservedByte(const QByteArray& report, unsigned char expected)
{
    for (int i = 0; i < report.size(); ++i) {
        if (!isFieldByte(i) && static_cast<unsigned char>(report.at(i)) != expected)
            return i;
    }
    return -1;
}

int dummyCallback(int, void*)
{
    return 1;
}

// Makes one call of the C function behind `call`, writing into `buffer` where it has an output.
int invoke(SdkCall call, QByteArray& buffer)
{
    switch (call) {
    case SdkCall::GetReport:
        return VELT_Statistics_GetReport(VELT_REPORT_MONTH, buffer.data(), 0);
    case SdkCall::GetSpecHistory:
        return VELT_Statistics_GetSpecHistroryData(buffer.data(), 3600);
    case SdkCall::Reset:
        return VELT_Statistics_Reset(0);
    case SdkCall::Register:
        return VELT_Statistics_RegisterStatisticsCallbackEvent(dummyCallback);
    case SdkCall::Unregister:
        // Directly, so that an armed registration failure is not consumed here.
        velt::Sdk::instance().registerCallback(dummyCallback);
        return VELT_Statistics_UnRegisterStatisticsCallbackEvent(dummyCallback);
    case SdkCall::GetCustomizeName:
        return VELT_DevSrv_GetCustomizeName(buffer.data());
    }
    return -1;
}

const QList<QPair<const char*, SdkCall>> kCalls = {
    {"GetReport", SdkCall::GetReport},   {"GetSpecHistroryData", SdkCall::GetSpecHistory},
    {"Reset", SdkCall::Reset},           {"Register", SdkCall::Register},
    {"UnRegister", SdkCall::Unregister}, {"GetCustomizeName", SdkCall::GetCustomizeName},
};
} // namespace

class TstSdkReport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void writeReportPlacesFields_data();
    void writeReportPlacesFields();
    void getReportZeroesReservedBytes_data();
    void getReportZeroesReservedBytes();
    void getReportRejectsBadInput_data();
    void getReportRejectsBadInput();
    void historyPassesKey_data();
    void historyPassesKey();
    void historyRejectsNull();
    void failNextFailsExactlyOnce_data();
    void failNextFailsExactlyOnce();
    void customizeName_data();
    void customizeName();
    void customizeNameRejectsNull();

private:
    SimulatedBackend* m_backend = nullptr;
};

void TstSdkReport::init()
{
    m_backend = installFreshBackend();
}

void TstSdkReport::cleanup()
{
    VELT_Statistics_UnRegisterStatisticsCallbackEvent(dummyCallback);
}

void TstSdkReport::writeReportPlacesFields_data()
{
    QTest::addColumn<StatisticsRecord>("record");
    QTest::newRow("zero") << StatisticsRecord();
    QTest::newRow("typical") << record(3'221'225'472ull, 304'087'040ull, 250'000, 24'000, 7325, 1'700'000'000u);
    QTest::newRow("every field distinct")
        << record(0x0102030405060708ull, 0x1112131415161718ull, 0x21222324u, 0x31323334u, 0x4142434445464748ll,
                  0x51525354u);
    QTest::newRow("extremes") << record(ULLONG_MAX, ULLONG_MAX - 1, UINT_MAX, UINT_MAX - 1, LLONG_MIN, UINT_MAX);
}

void TstSdkReport::writeReportPlacesFields()
{
    QFETCH(StatisticsRecord, record);
    QByteArray report = dirtyReport();

    velt::writeReport(record, report.data());

    QCOMPARE(at<quint64>(report, VELT_REPORT_OFFSET_BYTES_RECEIVED), record.bytesReceived);
    QCOMPARE(at<quint64>(report, VELT_REPORT_OFFSET_BYTES_SENT), record.bytesSent);
    QCOMPARE(at<quint32>(report, VELT_REPORT_OFFSET_RECEIVE_SPEED), record.receiveSpeed);
    QCOMPARE(at<quint32>(report, VELT_REPORT_OFFSET_SEND_SPEED), record.sendSpeed);
    QCOMPARE(at<qint64>(report, VELT_REPORT_OFFSET_DURATION), record.duration);
    QCOMPARE(at<quint32>(report, VELT_REPORT_OFFSET_RESET_TIME), record.resetTime);
    const int stray = strayReservedByte(report, kDirt);
    QVERIFY2(stray < 0, qPrintable(QStringLiteral("writeReport changed reserved byte %1").arg(stray)));
    QCOMPARE(velt::readReport(report.constData()), record);
}

void TstSdkReport::getReportZeroesReservedBytes_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = VELT_REPORT_LIVE; kind <= VELT_REPORT_YEAR; ++kind)
        QTest::addRow("kind %d", kind) << kind;
}

void TstSdkReport::getReportZeroesReservedBytes()
{
    QFETCH(int, kind);
    // A different record per kind, so that a mix-up of kinds shows.
    for (int k = VELT_REPORT_LIVE; k <= VELT_REPORT_YEAR; ++k)
        m_backend->setReport(k, record(1000 + k, 100 + k, 10 + k, 1 + k, 60 * k, 1'600'000'000u + k));
    QByteArray report = dirtyReport();

    QCOMPARE(VELT_Statistics_GetReport(kind, report.data(), 0), 0);

    QCOMPARE(velt::readReport(report.constData()), m_backend->reportFor(kind));
    const int stray = strayReservedByte(report, 0);
    QVERIFY2(stray < 0, qPrintable(QStringLiteral("reserved byte %1 not zeroed").arg(stray)));
    // The reserved argument carries no meaning.
    QByteArray again = dirtyReport();
    QCOMPARE(VELT_Statistics_GetReport(kind, again.data(), -12345), 0);
    QCOMPARE(again, report);
}

void TstSdkReport::getReportRejectsBadInput_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("nullReport");
    QTest::newRow("kind -1") << -1 << false;
    QTest::newRow("kind 6") << 6 << false;
    QTest::newRow("kind 8000") << 8000 << false;
    QTest::newRow("kind INT_MIN") << INT_MIN << false;
    QTest::newRow("null report") << int(VELT_REPORT_LIVE) << true;
    QTest::newRow("null report, bad kind") << 7 << true;
}

void TstSdkReport::getReportRejectsBadInput()
{
    QFETCH(int, kind);
    QFETCH(bool, nullReport);
    m_backend->setReport(VELT_REPORT_LIVE, record(1, 2, 3, 4, 5));
    QByteArray report = dirtyReport();

    QVERIFY(VELT_Statistics_GetReport(kind, nullReport ? nullptr : report.data(), 0) != 0);
    QCOMPARE(report, dirtyReport());
}

void TstSdkReport::historyPassesKey_data()
{
    QTest::addColumn<quint64>("key");
    QTest::newRow("0") << quint64(0);
    QTest::newRow("one hour") << quint64(3600);
    QTest::newRow("largest") << quint64(ULLONG_MAX);
}

void TstSdkReport::historyPassesKey()
{
    QFETCH(quint64, key);
    const StatisticsRecord history = record(52'428'800, 5'242'880, 0, 0, 3600);
    m_backend->setHistory(history);
    QByteArray report = dirtyReport();

    QCOMPARE(VELT_Statistics_GetSpecHistroryData(report.data(), key), 0);

    QCOMPARE(m_backend->lastHistoryKey(), key);
    QCOMPARE(velt::readReport(report.constData()), history);
    QCOMPARE(strayReservedByte(report, 0), -1);
}

void TstSdkReport::historyRejectsNull()
{
    QVERIFY(VELT_Statistics_GetSpecHistroryData(nullptr, 60) != 0);
}

void TstSdkReport::failNextFailsExactlyOnce_data()
{
    QTest::addColumn<SdkCall>("call");
    for (const auto& [name, call] : kCalls)
        QTest::newRow(name) << call;
}

void TstSdkReport::failNextFailsExactlyOnce()
{
    QFETCH(SdkCall, call);
    m_backend->setReport(VELT_REPORT_MONTH, record(9, 8, 7, 6, 5));
    m_backend->setReport(VELT_REPORT_TODAY, record(4, 3, 2, 1, 1));
    m_backend->setHistory(record(7, 7, 7, 7, 7));
    m_backend->failNext(call);

    // Arming one function leaves the others alone.
    for (const auto& [name, other] : kCalls) {
        if (other == call)
            continue;
        QByteArray buffer = dirtyReport();
        QVERIFY2(invoke(other, buffer) == 0, name);
    }
    const int callsBefore = m_backend->callCount(call);

    QByteArray buffer = dirtyReport();
    QVERIFY(invoke(call, buffer) != 0);
    QCOMPARE(buffer, dirtyReport());
    switch (call) {
    case SdkCall::Reset:
        QCOMPARE(m_backend->reportFor(VELT_REPORT_TODAY), record(4, 3, 2, 1, 1));
        break;
    case SdkCall::Register:
        QVERIFY(!velt::Sdk::instance().isRegistered(dummyCallback));
        break;
    case SdkCall::Unregister:
        QVERIFY(velt::Sdk::instance().isRegistered(dummyCallback));
        break;
    default:
        break;
    }

    QCOMPARE(invoke(call, buffer), 0);
    QCOMPARE(m_backend->callCount(call), callsBefore + 2);
}

void TstSdkReport::customizeName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("default") << QByteArray() << QByteArray("common");
    QTest::newRow("normal") << QByteArray("Mobile Partner Pro") << QByteArray("Mobile Partner Pro");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
    QTest::newRow("127 chars") << QByteArray(127, 'a') << QByteArray(127, 'a');
    QTest::newRow("128 chars") << QByteArray(128, 'b') << QByteArray(127, 'b');
    QTest::newRow("200 chars") << QByteArray(200, 'c') << QByteArray(127, 'c');
    QTest::newRow("embedded NUL") << QByteArray("ab\0cd", 5) << QByteArray("ab");
}

void TstSdkReport::customizeName()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, expected);
    if (!name.isNull())
        m_backend->setCustomizeName(name);
    // Larger than the promised size, to catch writes past it.
    QByteArray buffer(2 * VELT_CUSTOMIZE_NAME_SIZE, char(kDirt));

    QCOMPARE(VELT_DevSrv_GetCustomizeName(buffer.data()), 0);

    QCOMPARE(QByteArray(buffer.constData()), expected);
    QCOMPARE(buffer.mid(VELT_CUSTOMIZE_NAME_SIZE), QByteArray(VELT_CUSTOMIZE_NAME_SIZE, char(kDirt)));
}

void TstSdkReport::customizeNameRejectsNull()
{
    QVERIFY(VELT_DevSrv_GetCustomizeName(nullptr) != 0);
}

QTEST_GUILESS_MAIN(TstSdkReport)
#include "tst_sdk_report.moc"
