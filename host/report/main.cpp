// netinfo-report: the recorded usage for today, this week, month and year and
// the limit period, or for a range of days, as a table, JSON or CSV; the
// daily or monthly history; or the OpenMetrics text for a metrics collector.
#include "HostPaths.h"
#include "ReportRequest.h"
#include "UsageReport.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

int fail(const QString& message, int code)
{
    QTextStream(stderr) << "netinfo-report: " << message << '\n';
    return code;
}

void print(const report::ReportRequest& request, const QList<report::PeriodUsage>& usage,
    const allowance::Figures& figures, bool current)
{
    QTextStream out(stdout);
    switch (request.output) {
    case report::Output::OpenMetrics:
        out << report::toOpenMetrics(usage, figures);
        break;
    case report::Output::Json:
        out << (request.periods == report::Periods::History ? report::historyJson(usage)
                                                            : report::toJson(usage));
        break;
    case report::Output::Csv:
        out << report::toCsv(usage);
        break;
    case report::Output::Table:
        out << report::toTable(usage);
        if (current)
            out << '\n' << allowance::summary(figures) << '\n' << allowance::forecastExplanation() << '\n';
        break;
    }
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("netinfo-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));

    const QString defaultDatabase = HostPaths::userDataDir() + QStringLiteral("/usage.sqlite");
    const report::ReportRequest request
        = report::parseReportRequest(QCoreApplication::arguments(), QDate::currentDate(), defaultDatabase);
    switch (request.stop) {
    case report::ReportRequest::Stop::Shown:
        QTextStream(stdout) << request.message;
        return request.exitCode;
    case report::ReportRequest::Stop::Syntax:
        return fail(request.message, request.exitCode);
    case report::ReportRequest::Stop::Invalid:
    case report::ReportRequest::Stop::None:
        break;
    }
    // The parser's own errors come first, then a home that cannot be used,
    // then options that do not go together.
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty())
        return fail(problem, 2);
    if (request.stop == report::ReportRequest::Stop::Invalid)
        return fail(request.message, request.exitCode);

    const QDateTime now = QDateTime::currentDateTime();
    velt::PeriodSettingsReader settingsReader(HostPaths::hostSettingsFile());
    const velt::PeriodSettings settings = settingsReader.settings();
    const report::LimitSettings limit
        = report::readLimitSettings(HostPaths::userDataDir() + QStringLiteral("/DataUsageLimit.ini"));
    QList<report::Period> periods;
    switch (request.periods) {
    case report::Periods::History:
        periods = report::historyPeriods(now, settings, limit, request.history);
        break;
    case report::Periods::Range:
        periods << report::rangePeriod(request.first, request.last);
        break;
    case report::Periods::Current:
        periods = report::currentPeriods(now, settings, limit);
        break;
    }

    QString error;
    std::unique_ptr<report::UsageSource> source = report::openLedger(request.database, error);
    if (!source)
        return fail(error, 1);
    const QList<report::PeriodUsage> usage = report::collect(*source, periods);
    const bool current = request.periods == report::Periods::Current;
    const allowance::Figures figures = current
        ? report::limitFigures(
            usage, now, allowance::currentLimitPeriod(now, settings, limit), limit.limitBytes)
        : allowance::Figures();
    print(request, usage, figures, current);
    return 0;
}
