// netinfo-report: the recorded usage for today, this week, month and year and
// the limit period, or for a range of days, as a table, JSON or CSV; the
// daily or monthly history; or the OpenMetrics text for a metrics collector.
#include "HostPaths.h"
#include "UsageReport.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

int fail(const QString& message, int code)
{
    QTextStream(stderr) << "netinfo-report: " << message << '\n';
    return code;
}

// The one range of --from/--to; an exit code when the dates are wrong, else -1.
int rangePeriod(const QCommandLineParser& parser, const QCommandLineOption& from,
    const QCommandLineOption& to, QList<report::Period>& periods)
{
    const auto date = [&parser](const QCommandLineOption& option, const QDate& fallback) {
        return parser.isSet(option) ? QDate::fromString(parser.value(option), Qt::ISODate) : fallback;
    };
    const QDate first = date(from, QDate());
    const QDate last = date(to, QDate::currentDate());
    if (!first.isValid() || !last.isValid())
        return fail(QStringLiteral("--from and --to take dates as YYYY-MM-DD, and a range needs --from"), 2);
    if (first > last)
        return fail(QStringLiteral("--from %1 is after --to %2")
                        .arg(first.toString(Qt::ISODate), last.toString(Qt::ISODate)),
            2);
    periods << report::rangePeriod(first, last);
    return -1;
}

void print(const QCommandLineParser& parser, const QList<report::PeriodUsage>& usage,
    const allowance::Figures& figures, bool current)
{
    QTextStream out(stdout);
    if (parser.isSet(QStringLiteral("history")) && parser.isSet(QStringLiteral("json")))
        out << report::historyJson(usage);
    else if (parser.isSet(QStringLiteral("openmetrics")))
        out << report::toOpenMetrics(usage, figures);
    else if (parser.isSet(QStringLiteral("json")))
        out << report::toJson(usage);
    else if (parser.isSet(QStringLiteral("csv")))
        out << report::toCsv(usage);
    else
        out << report::toTable(usage);
    if (current && !parser.isSet(QStringLiteral("json")) && !parser.isSet(QStringLiteral("csv"))
        && !parser.isSet(QStringLiteral("openmetrics")))
        out << '\n' << allowance::summary(figures) << '\n' << allowance::forecastExplanation() << '\n';
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("netinfo-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Shows the usage NetInfo recorded: today, this week, this month, this year and the usage limit's "
        "period, "
        "or --from/--to, in total and per interface. CSV rows of scope \"total\" hold the period's totals."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption from(
        QStringLiteral("from"), QStringLiteral("First day of a range (YYYY-MM-DD)."), QStringLiteral("date"));
    const QCommandLineOption to(QStringLiteral("to"),
        QStringLiteral("Last day of a range (YYYY-MM-DD; default today)."), QStringLiteral("date"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print JSON."));
    const QCommandLineOption csv(QStringLiteral("csv"), QStringLiteral("Print CSV."));
    const QCommandLineOption database(QStringLiteral("database"),
        QStringLiteral("Read the usage ledger <file> (default: %1).")
            .arg(HostPaths::userDataDir() + QStringLiteral("/usage.sqlite")),
        QStringLiteral("file"));
    const QCommandLineOption history(QStringLiteral("history"),
        QStringLiteral("Usage per day over the current and the previous limit period "
                       "(days), or per month over the last twelve (months)."),
        QStringLiteral("days|months"));
    const QCommandLineOption openMetrics(QStringLiteral("openmetrics"),
        QStringLiteral("Print the periods' counters and the limit's figures in the "
                       "OpenMetrics text format."));
    parser.addOptions({ from, to, json, csv, history, openMetrics, database });
    parser.process(app);
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty())
        return fail(problem, 2);

    if (int(parser.isSet(json)) + int(parser.isSet(csv)) + int(parser.isSet(openMetrics)) > 1)
        return fail(QStringLiteral("choose one of --json, --csv and --openmetrics"), 2);
    const bool ranged = parser.isSet(from) || parser.isSet(to);
    if (int(ranged) + int(parser.isSet(history)) + int(parser.isSet(openMetrics)) > 1)
        return fail(QStringLiteral("--from/--to, --history and --openmetrics go alone"), 2);
    const QString historyKind = parser.value(history);
    if (parser.isSet(history) && historyKind != QLatin1String("days")
        && historyKind != QLatin1String("months"))
        return fail(QStringLiteral("--history takes days or months, not \"%1\"").arg(historyKind), 2);

    const QDateTime now = QDateTime::currentDateTime();
    velt::PeriodSettingsReader settingsReader(HostPaths::hostSettingsFile());
    const velt::PeriodSettings settings = settingsReader.settings();
    const report::LimitSettings limit
        = report::readLimitSettings(HostPaths::userDataDir() + QStringLiteral("/DataUsageLimit.ini"));
    QList<report::Period> periods;
    if (parser.isSet(history)) {
        periods = report::historyPeriods(now, settings, limit,
            historyKind == QLatin1String("days") ? report::HistoryKind::Days : report::HistoryKind::Months);
    } else if (ranged) {
        if (const int code = rangePeriod(parser, from, to, periods); code >= 0)
            return code;
    } else {
        periods = report::currentPeriods(now, settings, limit);
    }

    const QString path = parser.isSet(database) ? parser.value(database)
                                                : HostPaths::userDataDir() + QStringLiteral("/usage.sqlite");
    QString error;
    std::unique_ptr<report::UsageSource> source = report::openLedger(path, error);
    if (!source)
        return fail(error, 1);
    const QList<report::PeriodUsage> usage = report::collect(*source, periods);
    const bool current = !ranged && !parser.isSet(history);
    const allowance::Figures figures = current
        ? report::limitFigures(
            usage, now, allowance::currentLimitPeriod(now, settings, limit), limit.limitBytes)
        : allowance::Figures();
    print(parser, usage, figures, current);
    return 0;
}
