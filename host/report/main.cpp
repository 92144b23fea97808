// netinfo-report: the recorded usage for today, this week, month and year and
// the limit period, or for a range of days, as a table, JSON or CSV.
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

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("netinfo-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(NETINFO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Shows the usage NetInfo recorded: today, this week, this month, this year and the usage limit's period, "
        "or --from/--to, in total and per interface. CSV rows of scope \"total\" hold the period's totals."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption from(QStringLiteral("from"), QStringLiteral("First day of a range (YYYY-MM-DD)."),
                                  QStringLiteral("date"));
    const QCommandLineOption to(QStringLiteral("to"), QStringLiteral("Last day of a range (YYYY-MM-DD; default today)."),
                                QStringLiteral("date"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print JSON."));
    const QCommandLineOption csv(QStringLiteral("csv"), QStringLiteral("Print CSV."));
    const QCommandLineOption database(QStringLiteral("database"),
                                      QStringLiteral("Read the usage ledger <file> (default: %1).")
                                          .arg(HostPaths::userDataDir() + QStringLiteral("/usage.sqlite")),
                                      QStringLiteral("file"));
    parser.addOptions({from, to, json, csv, database});
    parser.process(app);
    if (const QString problem = HostPaths::homeProblem(); !problem.isEmpty())
        return fail(problem, 2);

    if (parser.isSet(json) && parser.isSet(csv))
        return fail(QStringLiteral("choose one of --json and --csv"), 2);
    QList<report::Period> periods;
    if (parser.isSet(from) || parser.isSet(to)) {
        const auto date = [&parser](const QCommandLineOption& option, const QDate& fallback) {
            return parser.isSet(option) ? QDate::fromString(parser.value(option), Qt::ISODate) : fallback;
        };
        const QDate first = date(from, QDate());
        const QDate last = date(to, QDate::currentDate());
        if (!first.isValid() || !last.isValid())
            return fail(QStringLiteral("--from and --to take dates as YYYY-MM-DD, and a range needs --from"), 2);
        if (first > last)
            return fail(QStringLiteral("--from %1 is after --to %2").arg(first.toString(Qt::ISODate),
                                                                           last.toString(Qt::ISODate)), 2);
        periods << report::rangePeriod(first, last);
    } else {
        velt::PeriodSettingsReader settings(HostPaths::hostSettingsFile());
        periods = report::currentPeriods(
            QDateTime::currentDateTime(), settings.settings(),
            report::readLimitSettings(HostPaths::userDataDir() + QStringLiteral("/DataUsageLimit.ini")));
    }

    const QString path = parser.isSet(database) ? parser.value(database)
                                                : HostPaths::userDataDir() + QStringLiteral("/usage.sqlite");
    QString error;
    std::unique_ptr<report::UsageSource> source = report::openLedger(path, error);
    if (!source)
        return fail(error, 1);
    const QList<report::PeriodUsage> usage = report::collect(*source, periods);
    QTextStream out(stdout);
    if (parser.isSet(json))
        out << report::toJson(usage);
    else if (parser.isSet(csv))
        out << report::toCsv(usage);
    else
        out << report::toTable(usage);
    return 0;
}
