// netinfo-report's command line: the input split into arguments at NULs and
// newlines; every piece is also read as a --from/--to date.
#include "ReportRequest.h"

#include <QCoreApplication>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "netinfo-report";
    static char* argv[] = { name, nullptr };
    static const QCoreApplication app(argc, argv); // the help text names the program
    static const QDate today(2026, 3, 15);

    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    QStringList arguments { QStringLiteral("netinfo-report") };
    for (const QByteArray& piece : bytes.split('\n')) {
        for (const QByteArray& argument : piece.split('\0')) {
            const QString text = QString::fromUtf8(argument);
            arguments << text;
            const QDate date = report::parseReportDate(text);
            // A date it accepts is one it prints back the same way.
            if (date.isValid() && report::parseReportDate(date.toString(Qt::ISODate)) != date)
                std::abort();
        }
    }

    const report::ReportRequest request
        = report::parseReportRequest(arguments, today, QStringLiteral("/nonexistent/usage.sqlite"));
    switch (request.stop) {
    case report::ReportRequest::Stop::None:
        if (request.periods == report::Periods::Range
            && (!request.first.isValid() || !request.last.isValid() || request.first > request.last))
            std::abort();
        if (request.output == report::Output::OpenMetrics && request.periods != report::Periods::Current)
            std::abort(); // the metrics are of the current periods only
        break;
    case report::ReportRequest::Stop::Shown:
        if (request.exitCode != 0 || request.message.isEmpty())
            std::abort();
        break;
    case report::ReportRequest::Stop::Syntax:
    case report::ReportRequest::Stop::Invalid:
        if (request.exitCode == 0 || request.message.trimmed().isEmpty())
            std::abort();
        break;
    }
    return 0;
}
